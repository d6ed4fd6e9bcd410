#include "output_report.h"

#include <algorithm>

#include "documents/makewire.h"
#include "platform/posix/terminal_forms.h"
#include "text/codepage.h"
#include "text/strings.h"
#include "text/unified_diff.h"

namespace ostrand::cli {
namespace {

std::string withoutReturns(std::string_view text) {
  std::string lines;
  for (const char letter : text) {
    if (letter != '\r') lines += letter;
  }
  return lines;
}

std::string paintedLine(std::string_view line) {
  if (line.starts_with("---") || line.starts_with("+++")) return Painted(Paint::kBold, line);
  if (line.starts_with("@@")) return Painted(Paint::kCyan, line);
  if (line.starts_with("-")) return Painted(Paint::kRed, line);
  if (line.starts_with("+")) return Painted(Paint::kGreen, line);
  return std::string(line);
}

bool printOne(const std::vector<Output>& outputs) {
  for (const std::string_view extension : {".VKP", ".VKG"}) {
    const auto output = std::find_if(outputs.begin(), outputs.end(), [&](const Output& made) {
      return made.path.ends_with(extension);
    });
    if (output != outputs.end()) return Print(output->content);
  }
  return true;
}

bool show(const CommandLine& line, const Output& output) {
  const std::string name = platform::TerminalName(output.path);
  bool printed = true;
  if (line.diff && !output.unchanged) {
    const std::string_view before = output.exists ? std::string_view(name) : "/dev/null";
    // The lines of a wiring diagram have a code page that others do not use.
    const auto shown = [&](const std::string& text) {
      return output.path.ends_with(".VKW") ? WiringUtf8(text) : Utf8FromWindows1252(text);
    };
    printed = Print(DifferenceText(before, shown(output.present), name, shown(output.content)));
  }
  const bool listed = line.dryRun || (line.check && !output.unchanged);
  if (!listed || line.quiet) return printed;
  return Print((output.unchanged ? "unchanged " : "would write ") + name + "\n") && printed;
}

}  // namespace

bool ReportOutputs(const CommandLine& line, const std::vector<Output>& outputs, bool worked) {
  if (line.OutputsAre() == Outputs::kWritten) return true;
  if (line.OutputsAre() == Outputs::kPrinted) return !worked || printOne(outputs);
  bool fine = true;
  for (const Output& output : outputs) {
    if (!show(line, output) || (line.check && !output.unchanged)) fine = false;
  }
  return fine;
}

std::string DifferenceText(std::string_view beforeName, std::string_view before,
                           std::string_view afterName, std::string_view after) {
  std::string text = platform::TerminalText(
      UnifiedDiff(beforeName, withoutReturns(before), afterName, withoutReturns(after)));
  if (!ColorIsOn()) return text;
  std::string painted;
  for (const std::string_view line : Split(text, '\n')) {
    if (line.data() + line.size() == text.data() + text.size() && line.empty()) break;
    painted += paintedLine(line) + "\n";
  }
  return painted;
}

}  // namespace ostrand::cli
