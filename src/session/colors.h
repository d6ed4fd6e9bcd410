// The colours of the control.
#pragma once

#include <array>
#include <string>

#include "model/scalars.h"

namespace ostrand {

// Colours that the user can choose.
inline constexpr int kColors = 6;
// Name, value and default of each.
using ColorTable = std::array<std::array<std::string, 3>, kColors>;

// A colour to paint: 0x00BBGGRR, or the number of a system colour with the top bit set.
struct Appearance {
  i32 FormBack = 0;
  i32 PanelBack = 0;
  i32 PanelText = 0;
  i32 SummaryBack = 0;
  i32 SummaryText = 0;
  i32 Highlight = 0;
  friend bool operator==(const Appearance&, const Appearance&) = default;
};

}  // namespace ostrand
