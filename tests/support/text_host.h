// Draws screens as text, from what their controls say about themselves and nothing else.
#pragma once

#include <string>

#include "controls/screen.h"

namespace ostrand::testing {

// The screen as a person would see it: headings, rows that repeat as tables, the rest a line for
// each control; hidden controls are left out. UTF-8, lines end in LF.
std::string DrawScreen(const Screen& screen);

}  // namespace ostrand::testing
