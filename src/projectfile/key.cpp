#include "projectfile/key.h"

#include <cstddef>

#include "projectfile/tables.h"
#include "text/letters.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr std::ptrdiff_t kMaxDigits = 4;  // the longest index is 610, condition 10 of table 6

// Takes a number from the start of a text that does not end in a digit.
bool takeNumber(const char*& at, int& number) {
  const char* const first = at;
  unsigned value = 0;
  for (; IsDigit(*at); ++at) value = value * 10 + static_cast<unsigned>(*at - '0');
  number = static_cast<int>(value);
  const std::ptrdiff_t digits = at - first;
  return digits == 1 || (digits > 1 && digits <= kMaxDigits && *first != '0');
}

// Parses the text between the brackets, up to the closing one at `end`; false when it is not a list
// of indices.
bool takeIndices(const char* at, const char* end, Key& key) {
  int count = 0;
  for (int& index : key.index) {
    if (!takeNumber(at, index)) return false;
    key.count = ++count;
    if (at == end) return true;
    const char separator = *at++;
    if (separator == ' ' && count == 1) {
      const std::string_view word(at, end);
      key.brackets = word == kTriggerPrefix[0] ? Brackets::kStart : Brackets::kStop;
      return word == kTriggerPrefix[0] || word == kTriggerPrefix[1];
    }
    if (separator != ',') return false;
    if (count == 1 && *at == ' ') {
      key.brackets = Brackets::kSpaced;
      ++at;
    } else if (key.brackets == Brackets::kSpaced) {
      return false;
    }
  }
  return false;
}

}  // namespace

Key ParseKey(std::string_view text) {
  Key key;
  key.name = text;
  if (text.empty() || text.back() != ')') return key;
  const std::size_t open = text.find('(');
  if (open == std::string_view::npos) return key;
  if (takeIndices(text.data() + open + 1, text.data() + text.size() - 1, key)) {
    key.name.remove_suffix(text.size() - open);
  } else {
    key = Key{text, {}, 0, Brackets::kCommas};
  }
  return key;
}

}  // namespace ostrand::ORVUS_GENFILE
