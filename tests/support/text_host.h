// Draws screens as text from the descriptions of their controls alone.
#pragma once

#include <string>

#include "controls/screen.h"

namespace ostrand::testing {

// The screen for a user: headings, repeated rows as tables, the rest a line for each control;
// hidden controls are left out. UTF-8, lines end in LF.
std::string DrawScreen(const Screen& screen);

}  // namespace ostrand::testing
