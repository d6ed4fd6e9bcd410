// Small text helpers over bytes of Windows-1252.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

// Upper case of a text, with the accented letters of the code page. UTF-8 sequences, as in names of
// files, are unchanged.
std::string Upper(std::string_view text);

// Whether two texts are equal without regard to case.
bool SameText(std::string_view left, std::string_view right);

// Whether a text ends with another one, without regard to case.
bool EndsWithText(std::string_view text, std::string_view end);

// The text without blanks at its ends.
std::string_view Trim(std::string_view text);

// The parts between the separators; one part for a text without any.
std::vector<std::string_view> Split(std::string_view text, char separator);

// Takes the next line off `rest` and returns it without its end, CR LF or LF; the last may have
// none.
inline std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  if (end == std::string_view::npos) {
    rest = {};
    return line;
  }
  rest.remove_prefix(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// Whether `text` contains `part`, case-sensitive.
inline bool Holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The text before the first `mark`, or the whole text if there is none.
inline std::string_view Before(std::string_view text, std::string_view mark) {
  return text.substr(0, text.find(mark));
}

// The text after the first `mark`, or the empty text if there is none.
inline std::string_view After(std::string_view text, std::string_view mark) {
  const std::size_t at = text.find(mark);
  return at == std::string_view::npos ? std::string_view{} : text.substr(at + mark.size());
}

}  // namespace ostrand
