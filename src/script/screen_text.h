// What a screen shows, as text.
#pragma once

#include <string>

#include "controls/screen.h"
#include "session/ostrand.h"

namespace ostrand {

// All in Windows-1252, with lines of CR LF.

// Name, text, caption and state of a control: a disabled or hidden one with the reason.
std::string ControlLine(const Control& control);

// The visible controls of a screen in their order, one a line in columns, and what it can open.
std::string ScreenText(const Screen& screen);

// The text boxes of the main screen, and the screens that its buttons open.
std::string MainScreenText(Ostrand& control);

}  // namespace ostrand
