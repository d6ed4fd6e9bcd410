// The drawing of the logger's panel: where its terminals are and where their labels stand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/wire_labels.h"

namespace ostrand {

// Width of every line of the panel.
inline constexpr int kPanelWidth = 77;

// Both pages of the panel with the page break between them, each line with its CR LF. The drawing
// is in code page 437, the labels are as the project holds them, in Windows-1252.
std::string PanelLines(const WireLabels& labels);

// For each byte of a diagram whether it is of the drawing; the others are of the head and of the
// labels. What a byte is follows from its place alone.
std::vector<bool> DrawnBytes(std::string_view diagram);

}  // namespace ostrand
