// The drawing of the logger's panel in letters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/wiring.h"

namespace ostrand {

// Width of every line of the panel.
inline constexpr int kPanelWidth = 77;

// Both pages of the panel with the page break between them, each line with its CR LF. The drawing
// is in code page 437, the labels in Windows-1252 as in the project.
std::string PanelLines(const Wiring& wiring);

// For each byte of a diagram whether it belongs to the drawing; the others belong to the head and
// the labels. Only the position of a byte decides.
std::vector<bool> DrawnBytes(std::string_view diagram);

}  // namespace ostrand
