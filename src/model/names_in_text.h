// The variables that a text names: a condition of a table, a formula.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// A variable as it stands in a text.
struct NameInText {
  std::string_view base;  // without its index
  int index = 0;          // "VBlk1(2)" has 2, also when written "VBlk1( 2 )"; 0 for none

  // "VBlk1(2)", "Oil".
  [[nodiscard]] std::string Text() const;
};

// The text with each name replaced by what `nameFor` gives for it; with nothing a name stays as it
// is written. Names are whole, with their index; what lies between them, signs and blanks, stays.
std::string ReplaceNames(
    std::string_view text,
    const std::function<std::optional<std::string>(const NameInText&)>& nameFor);

}  // namespace ostrand
