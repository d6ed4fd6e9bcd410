// Project files whose values lie at the ends of what their members hold, and everything that is
// made from a project.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrand::testing {

// The file of a random project with some of its values replaced by extreme ones; the bytes choose
// what and where. The same bytes give the same text.
std::string ExtremeProjectText(std::string_view bytes);

// Reads a file and makes all that is made from a project: program, table description, wiring
// diagram, summary, findings and the file anew. Gives all of it in one text. Every message box is
// answered by its first choice. The file that is made reads without a skipped line.
std::string MakeEverything(std::string_view projectText);

}  // namespace ostrand::testing
