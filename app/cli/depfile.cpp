#include "depfile.h"

#include "platform/posix/posix_filesystem.h"

namespace ostrand::cli {
namespace {

std::string escaped(std::string_view name) {
  std::string text;
  for (const char letter : name) {
    if (letter == ' ' || letter == '#') text += '\\';
    if (letter == '$') text += '$';
    text += letter;
  }
  return text;
}

}  // namespace

std::string MakeRule(std::span<const std::string> outputs, std::string_view project) {
  std::string rule;
  for (const std::string& output : outputs) {
    if (output == project) continue;
    if (!rule.empty()) rule += " ";
    rule += escaped(output);
  }
  return rule.empty() ? rule : rule + ": " + escaped(project) + "\n";
}

bool WriteDepfile(const CommandLine& line, std::string_view rules) {
  if (line.depfile.empty() || line.OutputsAre() != Outputs::kWritten) return true;
  platform::PosixFileSystem files(line.syncing);
  const auto written = platform::WriteWhole(files, line.depfile, rules);
  if (!written) ReportError(written.ErrorText());
  return static_cast<bool>(written);
}

}  // namespace ostrand::cli
