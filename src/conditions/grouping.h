// The line that joins rows of conditions by their numbers: "1 AND (2 OR 3)".
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ostrand {

// A fault in a grouping line, as its box reports it.
struct GroupingFault {
  std::string_view title;
  std::string text;
};

// The first fault of a line that joins the rows 1 to `lastRow`; nothing for a valid one. Positions
// count from 1, blanks included; a fault at the end is positioned after the last character. A blank
// line is valid: it means the default.
std::optional<GroupingFault> FindGroupingFault(std::string_view line, int lastRow);

// "1", "1 OR 2 OR 3".
std::string DefaultGrouping(int rows);

// A valid line in its stored form, which the program uses: upper case, a blank on either side of
// its words, numbers without leading zeros. A blank line gives the default.
std::string StoredGrouping(std::string_view line, int rows);

// Replaces the numbers of the line by rows, counted from 1; a number without a row stays. Users see
// each row in parentheses, the program has none.
enum class RowForm { kBare, kInParentheses };
std::string ExpandGrouping(std::string_view line, std::span<const std::string> rows, RowForm form);

}  // namespace ostrand
