#include "projectfile/read_report.h"

#include "text/number.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr std::size_t kMaxLetters = 60;  // of a line that is shown

}  // namespace

std::string SkippedLineText(const SkippedLine& line) {
  std::string text = "line " + NumberText(line.number) + ": ";
  text.append(line.text, 0, kMaxLetters);
  if (line.text.size() > kMaxLetters) text += "...";
  return text.append(": ").append(line.why);
}

std::string SkippedText(const ReadReport& report) {
  std::string text = NumberText(report.skipped) +
                     (report.skipped == 1 ? " line of the file was" : " lines of the file were") +
                     " not read, and the next save drops " +
                     (report.skipped == 1 ? "it." : "them.");
  for (const SkippedLine& line : report.first) text.append("\r\n").append(SkippedLineText(line));
  if (report.skipped > static_cast<int>(report.first.size())) text += "\r\n...";
  return text;
}

}  // namespace ostrand::ORVUS_GENFILE
