// The variables named in a text: a condition of a table, a formula.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// A variable in a text.
struct NameInText {
  std::string_view base;  // without its index
  int index = 0;          // "VBlk1(2)" has 2, also when written "VBlk1( 2 )"; 0 for none

  // "VBlk1(2)", "Oil".
  [[nodiscard]] std::string Text() const;
};

// The text with each name replaced by the result of `nameFor`; a name without a result is
// unchanged. Names include their index; signs and blanks between them are unchanged.
std::string ReplaceNames(
    std::string_view text,
    const std::function<std::optional<std::string>(const NameInText&)>& nameFor);

}  // namespace ostrand
