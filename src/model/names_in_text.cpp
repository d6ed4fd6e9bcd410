#include "model/names_in_text.h"

#include <algorithm>

#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool isOfName(char letter) { return !Holds(" ()=<>+-*/\\^,", std::string_view(&letter, 1)); }

// An index that no element has: that of a value called like a function.
constexpr int kNoElement = -1;

struct Found {
  NameInText name;
  std::size_t length = 0;  // of the whole match in the text
};

// The index in parentheses at the start of a text, "(2)"; its length is 0 if there is none.
Found indexAt(std::string_view text) {
  const std::size_t close = text.find(')');
  if (!text.starts_with('(') || close == std::string_view::npos) return {};
  const std::string_view inside = Trim(text.substr(1, close - 1));
  const bool isIndex = !inside.empty() && std::all_of(inside.begin(), inside.end(), [](char c) {
    return IsDigit(c) || c == ',';
  });
  if (!isIndex) return {};
  const bool isNumber = std::all_of(inside.begin(), inside.end(), IsDigit);
  const int index = isNumber ? RoundToInt16(Val(inside)).value_or(kNoElement) : kNoElement;
  return {{{}, index}, close + 1};
}

// The name at the start of a text; its length is 0 if there is none.
Found nameAt(std::string_view text) {
  const auto* end = std::find_if_not(text.begin(), text.end(), isOfName);
  const auto letters = static_cast<std::size_t>(end - text.begin());
  if (letters == 0) return {};
  const Found index = indexAt(text.substr(letters));
  return {{text.substr(0, letters), index.name.index}, letters + index.length};
}

}  // namespace

std::string NameInText::Text() const {
  return index == 0 ? std::string(base) : std::string(base) + "(" + NumberText(index) + ")";
}

std::string ReplaceNames(
    std::string_view text,
    const std::function<std::optional<std::string>(const NameInText&)>& nameFor) {
  std::string result;
  while (!text.empty()) {
    const Found found = nameAt(text);
    const std::size_t length = std::max<std::size_t>(found.length, 1);
    const std::string_view written = text.substr(0, length);
    std::optional<std::string> name;
    if (found.length > 0) name = nameFor(found.name);
    result += name ? std::string_view(*name) : written;
    text.remove_prefix(length);
  }
  return result;
}

}  // namespace ostrand
