// The windows, against windows of Qt alone.
#pragma once

#include <string_view>

#include "row.h"

namespace ostrand::bench {

std::vector<Row> DesktopRows();

// The sides of the rows `start` and `whole`, each in a process: paints the main window at first or
// wholly, or an empty one.
inline constexpr std::string_view kPaintMain = "--paint-main";
inline constexpr std::string_view kPaintWhole = "--paint-whole";
inline constexpr std::string_view kPaintEmpty = "--paint-empty";
// False for any other word.
bool Paint(std::string_view what);

}  // namespace ostrand::bench
