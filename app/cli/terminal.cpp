#include "terminal.h"

#include <unistd.h>

#include "platform/posix/terminal_forms.h"

namespace ostrand::cli {
void Complain(std::string_view text) {
  const std::string line = "ostrand: " + platform::TerminalLines(text) + "\n";
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, line));
}

bool Say(std::string_view text) {
  if (platform::WriteTerminal(STDOUT_FILENO, text)) return true;
  Complain("standard output cannot be written");
  return false;
}

void Hint(std::string_view text) {
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, text));
}

}  // namespace ostrand::cli
