// Every screen of the program, by its name.
#pragma once

#include <functional>

#include "controls/screen_factory.h"
#include "session/settings.h"

namespace ostrand {

// What the screens of the user's options work on. All of it outlives them.
struct OptionsRequest {
  Settings& settings;
  std::function<void()> applyColors;
};

// Makes every screen. It holds nothing, and lives as long as the program.
const ScreenFactory& AllScreens();

}  // namespace ostrand
