// What is shown of outputs that are not written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "output_files.h"

namespace ostrand::cli {

// Prints what would become of the outputs of one project, or the one of them that goes to standard
// output: the program, or else the project file. `worked` is whether the command made all of them.
// False if an output would change and that is a fault, or if it could not be printed.
bool ReportOutputs(const CommandLine& line, const std::vector<Output>& outputs, bool worked);

// The difference of two contents of a file, in UTF-8, as `diff -u` shows it: for the terminal,
// without the CR at the ends of lines, and colored if colors are on. Empty if there is none.
std::string DifferenceText(std::string_view beforeName, std::string_view before,
                           std::string_view afterName, std::string_view after);

}  // namespace ostrand::cli
