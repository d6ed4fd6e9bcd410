#include "terminal.h"

#include <unistd.h>

#include "platform/posix/terminal_forms.h"

namespace ostrand::cli {

void ReportError(std::string_view text) { platform::WriteErrorLine(text); }

bool Print(std::string_view text) {
  if (platform::WriteTerminal(STDOUT_FILENO, text)) return true;
  ReportError("cannot write to standard output");
  return false;
}

void PrintHint(std::string_view text) {
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, text));
}

}  // namespace ostrand::cli
