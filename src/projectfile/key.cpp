#include "projectfile/key.h"

#include "projectfile/tables.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr int kMostDigits = 4;  // the longest index is 610, condition 10 of table 6

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool takeText(std::string_view& text, std::string_view head) {
  if (!text.starts_with(head)) return false;
  text.remove_prefix(head.size());
  return true;
}

bool takeNumber(std::string_view& text, int& number) {
  std::size_t digits = 0;
  number = 0;
  while (digits < text.size() && isDigit(text[digits])) {
    if (digits == kMostDigits) return false;
    number = number * 10 + (text[digits++] - '0');
  }
  if (digits == 0 || (digits > 1 && text[0] == '0')) return false;
  text.remove_prefix(digits);
  return true;
}

// What stands between the brackets; false when it is no list of indices.
bool takeIndices(std::string_view inner, Key& key) {
  for (;;) {
    if (key.count == static_cast<int>(key.index.size())) return false;
    if (!takeNumber(inner, key.index[static_cast<std::size_t>(key.count)])) return false;
    ++key.count;
    if (inner.empty()) return true;
    if (key.count == 1 && takeText(inner, ", ")) {
      key.brackets = Brackets::kSpaced;
    } else if (key.brackets == Brackets::kSpaced || !takeText(inner, ",")) {
      break;
    }
  }
  if (key.count != 1 || !takeText(inner, " ")) return false;
  key.brackets = inner == kTriggerPrefix[0] ? Brackets::kStart : Brackets::kStop;
  return inner == kTriggerPrefix[0] || inner == kTriggerPrefix[1];
}

}  // namespace

Key ParseKey(std::string_view text) {
  Key key;
  const std::size_t open = text.find('(');
  if (open != std::string_view::npos && text.back() == ')' &&
      takeIndices(text.substr(open + 1, text.size() - open - 2), key)) {
    key.name = text.substr(0, open);
    return key;
  }
  return {text, {}, 0, Brackets::kCommas};
}

}  // namespace ostrand::ORVUS_GENFILE
