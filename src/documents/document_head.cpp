#include "documents/document_head.h"

#include "platform/moment_text.h"

namespace ostrand {
namespace {

constexpr int kSecondColumn = 56;

std::string headLine(std::string left, std::string_view right) {
  TabTo(left, kSecondColumn);
  left += right;
  left += "\r\n";
  return left;
}

}  // namespace

void TabTo(std::string& line, int position) {
  const auto before = static_cast<std::size_t>(position - 1);
  if (line.size() < before) {
    line.resize(before, ' ');
  } else {
    line += ' ';
  }
}

std::string HeadLines(const DocumentHead& head, const General& general, const HeadStyle& style) {
  return "\r\n" +
         headLine("File name   : " + head.title + std::string(style.extension),
                  "Date written: " + DateText(head.written)) +
         headLine("Written by  : " + general.Operator, "Time written: " + TimeText(head.written)) +
         headLine("I.D. number : " + general.IDNumber,
                  std::string(style.versionLabel) + general.VersionLastSaved);
}

}  // namespace ostrand
