// The line that joins rows of conditions by their numbers: "1 AND (2 OR 3)".
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ostrand {

// What is wrong with a grouping line, as its box says it.
struct GroupingFault {
  std::string_view title;
  std::string text;
};

// The first fault of a line that joins the rows 1 to `lastRow`; nothing for a good one. Positions
// count from 1, blanks included; the end of the line is the one behind its last character. A blank
// line is good: it stands for the default.
std::optional<GroupingFault> FindGroupingFault(std::string_view line, int lastRow);

// "1", "1 OR 2 OR 3".
std::string DefaultGrouping(int rows);

// A good line as it is stored, which is how the program gets it: upper case, a blank on either side
// of its words, numbers without leading zeros. A blank line gives the default.
std::string StoredGrouping(std::string_view line, int rows);

// The line with its numbers replaced by rows, which are counted from 1; a number without a row
// stays. Users see each row in parentheses, the program has them bare.
enum class RowForm { kBare, kInParentheses };
std::string ExpandGrouping(std::string_view line, std::span<const std::string> rows, RowForm form);

}  // namespace ostrand
