#include "moments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "text/strings.h"

namespace ostrand::cli {
namespace {

// A date or time extends from its label to the end of the line, in the lines of the head.
struct MomentLabel {
  std::string_view extension;
  std::string_view label;
  bool startsLine;  // otherwise a text of the user can be before it
};
constexpr std::array<MomentLabel, 7> kLabels = {{
    {".VKG", "PCTime=", true},
    {".VKP", "'                       Date written: ", true},
    {".VKP", "'                       Time written: ", true},
    {".VKD", "Date written: ", false},
    {".VKD", "Time written: ", false},
    {".VKW", "Date written: ", false},
    {".VKW", "Time written: ", false},
}};
constexpr int kHeadLines = 12;

struct Span {
  std::size_t at;
  std::size_t length;
};

std::optional<Span> find(const MomentLabel& label, std::string_view content) {
  std::size_t start = 0;
  for (int line = 0; line < kHeadLines && start < content.size(); ++line) {
    const std::size_t end = std::min(content.find("\r\n", start), content.size());
    const std::string_view text = content.substr(start, end - start);
    // The last one: an operator can have any name.
    const std::size_t found = label.startsLine
                                  ? (text.starts_with(label.label) ? 0 : std::string_view::npos)
                                  : text.rfind(label.label);
    if (found != std::string_view::npos) {
      const std::size_t at = start + found + label.label.size();
      return Span{at, end - at};
    }
    start = end + 2;
  }
  return std::nullopt;
}

}  // namespace

std::string WithMomentOf(std::string_view path, std::string_view content,
                         std::string_view present) {
  std::string text(content);
  for (const MomentLabel& label : kLabels) {
    if (!EndsWithText(path, label.extension)) continue;
    const auto old = find(label, present);
    const auto now = find(label, text);
    if (old && now) text.replace(now->at, now->length, present.substr(old->at, old->length));
  }
  return text;
}

}  // namespace ostrand::cli
