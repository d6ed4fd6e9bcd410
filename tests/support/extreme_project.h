// Project files with values at the limits of their members, and all files made from a project.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrand::testing {

// The file of a random project with some of its values replaced by extreme ones; the bytes select
// the lines and values. The same bytes give the same text.
std::string ExtremeProjectText(std::string_view bytes);

// Reads a file and makes program, table description, wiring diagram, summary, findings and the file
// again; returns all of it as one text. Every message box is answered with its first choice. The
// new file reads without a skipped line.
std::string MakeEverything(std::string_view projectText);

}  // namespace ostrand::testing
