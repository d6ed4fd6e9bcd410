// The screens that the main buttons open, and those of the user's options.
#pragma once

#include <array>
#include <string_view>

#include "controls/screen.h"
#include "session/ostrand.h"

namespace ostrand {

// Lets the main buttons open their screens, shown by `host`. Both must outlive the control's use.
void ConnectSetupScreens(Ostrand& control, ScreenHost& host);

// The button that opens a screen, by the screen's name in any case; -1 when none does.
int ButtonOfScreen(std::string_view name);

// The two option screens and what ShowOptions calls them.
struct OptionScreen {
  std::string_view name;
  std::string_view option;
};
inline constexpr std::array<OptionScreen, 2> kOptionScreens = {
    {{"frmOptOrvus", "Settings"}, {"frmOptGen", "Colors"}}};

}  // namespace ostrand
