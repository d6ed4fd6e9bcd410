// Output of the command on standard output and standard error.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "text/result.h"

namespace ostrand::cli {

enum ExitCode : int { kDone = 0, kFault = 1, kWrongUsage = 2 };

// Writes an error to standard error, in one line.
void ReportError(std::string_view text);

// Writes bytes to standard output unchanged. False when that fails, which has been reported then:
// standard output is a file like any other.
bool Print(std::string_view text);

// All of standard input, or why it cannot be read.
Result<std::string> ReadInput();
// The same of a file; "-" is standard input.
Result<std::string> ReadFileOrInput(platform::FileSystem& files, std::string_view path);

// Writes a line of help after an error.
void PrintHint(std::string_view text);

// Shows a line of progress on standard error until anything else is written there or to standard
// output. Nothing when standard error is not a terminal.
void ShowProgress(std::string_view text);
void ClearProgress();

// kAuto is on when standard output is a terminal, and neither NO_COLOR nor TERM=dumb is set.
enum class Color { kAuto, kAlways, kNever };
void SetColor(Color color);
bool ColorIsOn();

enum class Paint { kRed, kGreen, kYellow, kCyan, kBold };
// The text in a color, if colors are on.
std::string Painted(Paint paint, std::string_view text);

}  // namespace ostrand::cli
