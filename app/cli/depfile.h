// Rules for make: which project an output is made from.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "command_line.h"

namespace ostrand::cli {

// "out/pump.VKP out/pump.VKD: pump.VKG" and a line end; blanks, "#" and "$" in names are escaped.
// Empty without an output besides the project itself.
std::string MakeRule(std::span<const std::string> outputs, std::string_view project);

// Writes the rules to the depfile of the line; nothing without one, or when outputs are not
// written. False if that fails, which has been reported then.
bool WriteDepfile(const CommandLine& line, std::string_view rules);

}  // namespace ostrand::cli
