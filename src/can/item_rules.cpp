#include "can/item_rules.h"

#include <algorithm>

#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHexMark = "&H";
constexpr std::size_t kFrameDigits = 16;
constexpr std::size_t kIdentifierDigits = 8;

bool isHexDigit(char letter) { return IsDigit(letter) || (letter >= 'A' && letter <= 'F'); }

bool isHexPair(std::string_view pair) { return isHexDigit(pair[0]) && isHexDigit(pair[1]); }
bool isHexOrMaskPair(std::string_view pair) { return pair == "XX" || isHexPair(pair); }

// "&H" and the pairs of digits of a frame.
std::optional<std::string> frameOf(std::string_view text, bool (*isPair)(std::string_view)) {
  std::string frame = Upper(Trim(text));
  if (frame.size() != kHexMark.size() + kFrameDigits || !frame.starts_with(kHexMark)) {
    return std::nullopt;
  }
  for (std::size_t at = kHexMark.size(); at < frame.size(); at += 2) {
    if (!isPair(std::string_view(frame).substr(at, 2))) return std::nullopt;
  }
  return frame;
}

}  // namespace

std::optional<std::string> TxDataFrameOf(std::string_view text) { return frameOf(text, isHexPair); }

std::optional<std::string> RxDataMatchOf(std::string_view text) {
  return frameOf(text, isHexOrMaskPair);
}

bool ItemNameText(std::string_view text) {
  if (text.empty()) return true;
  return IsLetter(text.front()) && std::all_of(text.begin() + 1, text.end(), [](char letter) {
           return IsLetter(letter) || IsDigit(letter) || letter == '_';
         });
}

std::optional<std::int64_t> IdentifierNumber(std::string_view text) {
  const std::string number = Upper(Trim(text));
  if (!number.starts_with(kHexMark)) {
    const std::optional<std::int32_t> value = ToInt32(number);
    return value ? std::optional<std::int64_t>(*value) : std::nullopt;
  }
  const std::string_view digits = std::string_view(number).substr(kHexMark.size());
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isHexDigit)) {
    return std::nullopt;
  }
  const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
  if (digits.size() - first > kIdentifierDigits) return std::nullopt;
  std::int64_t value = 0;
  for (const char digit : digits.substr(first)) {
    value = value * 16 + (IsDigit(digit) ? digit - '0' : digit - 'A' + 10);
  }
  return value;
}

}  // namespace ostrand
