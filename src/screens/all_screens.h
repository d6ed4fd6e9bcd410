// Every screen of the program, by name.
#pragma once

#include <functional>

#include "controls/screen_factory.h"
#include "session/settings.h"

namespace ostrand {

// The data for the screens of the user's options. Everything here must outlive them.
struct OptionsRequest {
  Settings& settings;
  std::function<void()> applyColors;
};

// Makes every screen. Stateless; lives as long as the program.
const ScreenFactory& AllScreens();

}  // namespace ostrand
