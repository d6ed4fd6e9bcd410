#include "text/strings.h"

#include <algorithm>

#include "text/codepage.h"

namespace ostrand {
namespace {

char upper(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 'a' && byte <= 'z') return static_cast<char>(byte - 0x20);
  if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7) return static_cast<char>(byte - 0x20);
  switch (byte) {  // letters outside of the code page's Latin block: s and z caron, oe, y diaeresis
    case 0x9A:
    case 0x9C:
    case 0x9E:
      return static_cast<char>(byte - 0x10);
    case 0xFF:
      return static_cast<char>(0x9F);
    default:
      return c;
  }
}

}  // namespace

std::string Upper(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t sequence = Utf8Length(text);
    if (sequence == 0) {
      result += upper(text.front());
    } else {
      result += text.substr(0, sequence);
    }
    text.remove_prefix(sequence == 0 ? 1 : sequence);
  }
  return result;
}

bool SameText(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return upper(a) == upper(b); });
}

bool EndsWithText(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && SameText(text.substr(text.size() - end.size()), end);
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t at = text.find(separator);
    parts.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

}  // namespace ostrand
