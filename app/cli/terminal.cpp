#include "terminal.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/terminal_forms.h"

namespace ostrand::cli {
namespace {

bool progressIsShown = false;
Color wishedColor = Color::kAuto;

bool isSet(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool isDumb() {
  const char* terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) == "dumb";
}

}  // namespace

void ReportError(std::string_view text) {
  ClearProgress();
  platform::WriteErrorLine(text);
}

bool Print(std::string_view text) {
  ClearProgress();
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
    if (text.size() > platform::PosixFileSystem::kMaxBytes) {
      return Error{"standard input: File too large"};
    }
  }
}

Result<std::string> ReadFileOrInput(platform::FileSystem& files, std::string_view path) {
  return path == "-" ? ReadInput() : files.Read(path);
}

void PrintHint(std::string_view text) {
  ClearProgress();
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, text));
}

void ShowProgress(std::string_view text) {
  if (::isatty(STDERR_FILENO) == 0) return;
  // The cursor stays at the start of the line, so that a message box covers it.
  const std::string line = "\r\x1B[K" + std::string(text) + "\r";
  progressIsShown = platform::WriteTerminal(STDERR_FILENO, line);
}

void ClearProgress() {
  if (!progressIsShown) return;
  progressIsShown = false;
  static_cast<void>(platform::WriteTerminal(STDERR_FILENO, "\r\x1B[K"));
}

void SetColor(Color color) { wishedColor = color; }

bool ColorIsOn() {
  if (wishedColor != Color::kAuto) return wishedColor == Color::kAlways;
  return !isSet("NO_COLOR") && !isDumb() && ::isatty(STDOUT_FILENO) != 0;
}

std::string Painted(Paint paint, std::string_view text) {
  if (!ColorIsOn()) return std::string(text);
  constexpr std::array<std::string_view, 5> kCodes = {"31", "32", "33", "36", "1"};
  return "\x1B[" + std::string(kCodes[static_cast<std::size_t>(paint)]) + "m" + std::string(text) +
         "\x1B[0m";
}

}  // namespace ostrand::cli
