// What the command says, on standard output and standard error.
#pragma once

#include <string>
#include <string_view>

namespace ostrand::cli {

enum ExitCode : int { kDone = 0, kFault = 1, kWrongUsage = 2 };

// Tells the user what is wrong, in one line on standard error.
void Complain(std::string_view text);

// Puts bytes on standard output as they are. False, with a complaint, when they cannot be written:
// standard output is a file like any other.
bool Say(std::string_view text);

// Puts a line of help behind a complaint.
void Hint(std::string_view text);

}  // namespace ostrand::cli
