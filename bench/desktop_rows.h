// The windows, against windows of Qt alone.
#pragma once

#include <string_view>

#include "row.h"

namespace ostrand::bench {

std::vector<Row> DesktopRows();

// The two sides of the row `start`, each in a process: paints the main window, or an empty one.
inline constexpr std::string_view kPaintMain = "--paint-main";
inline constexpr std::string_view kPaintEmpty = "--paint-empty";
void PaintMain();
void PaintEmpty();

}  // namespace ostrand::bench
