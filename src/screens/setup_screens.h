// The screens that the main buttons open, and those of the user's options.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "controls/screen.h"
#include "session/ostrand.h"

namespace ostrand {

// Connects the main buttons to their screens, shown by `host`. Both must outlive the control's use.
void ConnectSetupScreens(Ostrand& control, ScreenHost& host);

// The button that opens a screen, by the screen's name in any case; -1 when there is none.
int ButtonOfScreen(std::string_view name);

// The names of the screens that open from the main row, those of the options last.
std::vector<std::string_view> MainScreenNames();

// The two option screens and their names in ShowOptions.
struct OptionScreen {
  std::string_view name;
  std::string_view option;
};
inline constexpr std::array<OptionScreen, 2> kOptionScreens = {
    {{"frmOptOrvus", "Settings"}, {"frmOptGen", "Colors"}}};

}  // namespace ostrand
