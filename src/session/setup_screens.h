// The setup screens behind the main buttons.
#pragma once

#include <string_view>

#include "session/ostrand.h"
#include "setup/controls/screen.h"

namespace ostrand {

// Lets the main buttons open their screens, shown by `host`. Both must outlive the control's use.
void ConnectSetupScreens(Ostrand& control, ScreenHost& host);

// The button that opens a screen, by the screen's name in any case; -1 when none does.
int ButtonOfScreen(std::string_view name);

}  // namespace ostrand
