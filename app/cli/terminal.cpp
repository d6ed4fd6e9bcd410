#include "terminal.h"

#include <unistd.h>

#include <cerrno>

#include "platform/posix/terminal_forms.h"

namespace ostrand::cli {

void ReportError(std::string_view text) { platform::WriteErrorLine(text); }

bool Print(std::string_view text) {
  if (platform::WriteTerminal(STDOUT_FILENO, text)) return true;
  ReportError("cannot write to standard output");
  return false;
}

Result<std::string> ReadInput() {
  std::string text;
  char bytes[65536];
  for (;;) {
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count == 0) return text;
    if (count < 0 && errno != EINTR) return Error{"cannot read standard input"};
    if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
  }
}

void PrintHint(std::string_view text) {
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, text));
}

}  // namespace ostrand::cli
