#include "terminal.h"

#include <unistd.h>

#include <cerrno>

#include "platform/posix/terminal_forms.h"

namespace ostrand::cli {
namespace {

bool put(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

void Complain(std::string_view text) {
  put(STDERR_FILENO, platform::TerminalText("ostrand: " + std::string(text) + "\n"));
}

bool Say(std::string_view text) {
  if (put(STDOUT_FILENO, text)) return true;
  Complain("standard output cannot be written");
  return false;
}

void Hint(std::string_view text) { put(STDERR_FILENO, text); }

}  // namespace ostrand::cli
