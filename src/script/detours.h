// The ways to keys that the screens of a project no longer offer.
#pragma once

#include <span>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// A way to keys that their controls do not show beside the rest of a project: another project is
// made first, and the wanted one from that.
struct Detour {
  std::string_view keys;             // their beginning: "[SCAN SETUP] Burst"
  void (*change)(ProjectStore& on);  // makes the other project of the wanted one; null for none
  std::string_view doneAt = {};      // a screen that stores the keys when it is left by Done
  bool fromNew = false;              // the other project is made from a new one
};
std::span<const Detour> Detours();

}  // namespace ostrand
