#include "conditions/grouping.h"

#include <algorithm>

#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kSyntaxTitle = "GROUPING SYNTAX ERROR";

// Parses a grouping line from left to right up to its first fault.
class GroupingReader {
 public:
  GroupingReader(std::string_view line, int lastRow) : line_(line), lastRow_(lastRow) {}

  std::optional<GroupingFault> Read() {
    while (!fault_ && at_ < line_.size()) next();
    if (!fault_ && open_ != 0) mismatch();
    if (!fault_ && last_ == Last::kWord) syntax(at_);
    return fault_;
  }

 private:
  enum class Last { kNothing, kNumber, kOpen, kClose, kWord };

  void next() {
    const char letter = line_[at_];
    if (IsDigit(letter)) return number();
    switch (letter) {
      case ' ':
        ++at_;
        return;
      case '(':
        ++open_;
        return take(Last::kOpen);
      case ')':
        return close();
      case 'A':
      case 'a':
        return word("AND", "GROUPING SYNTAX ERROR - A");
      case 'O':
      case 'o':
        return word("OR", "GROUPING SYNTAX ERROR - O");
      default:
        return syntax(at_);
    }
  }

  void take(Last what) {
    last_ = what;
    ++at_;
  }

  void close() {
    if (open_ == 0) return mismatch();
    if (last_ == Last::kOpen || last_ == Last::kWord) return syntax(at_);
    --open_;
    take(Last::kClose);
  }

  void number() {
    if (joinable_) {
      return fail("TWO NUMBER TOGETHER WITHOUT LOGIC ERROR", "A syntax error was found", at_);
    }
    int value = 0;
    for (; at_ < line_.size() && IsDigit(line_[at_]); ++at_) {
      value = std::min(value * 10 + (line_[at_] - '0'), 1000);
    }
    if (value < 1 || value > lastRow_) {
      fault_ = {"CONDITION NUMBER RANGE ERROR",
                "Only condition numbers from 1 to the last valid condition may be grouped "
                "(1-10 maximum)."};
    }
    last_ = Last::kNumber;
    joinable_ = true;
  }

  void word(std::string_view spelling, std::string_view title) {
    if (last_ != Last::kNumber && last_ != Last::kClose) {
      const std::string what = std::string("A syntax error with '") + spelling[0] + "' was found";
      return fail(title, what, at_);
    }
    for (std::size_t i = 1; i < spelling.size(); ++i) {
      ++at_;
      if (at_ < line_.size() && SameText(line_.substr(at_, 1), spelling.substr(i, 1))) continue;
      const std::string letter(1, spelling[i]);
      return fail(titleOfMissing(spelling[i]), "A syntax error (no '" + letter + "') was found",
                  at_);
    }
    joinable_ = false;
    take(Last::kWord);
  }

  static std::string_view titleOfMissing(char letter) {
    if (letter == 'N') return "GROUPING SYNTAX ERROR - N";
    return letter == 'D' ? "GROUPING SYNTAX ERROR - D" : "GROUPING SYNTAX ERROR - R";
  }

  void syntax(std::size_t at) { fail(kSyntaxTitle, "A syntax error was found", at); }

  void mismatch() {
    fault_ = {"MISMATCHED PARENTHESES",
              "The parentheses in the condition groupings are not matched correctly"};
  }

  void fail(std::string_view title, std::string_view what, std::size_t at) {
    fault_ = {title, std::string(what) + " at character number " +
                         NumberText(static_cast<std::int64_t>(at) + 1)};
  }

  std::string_view line_;
  int lastRow_;
  std::size_t at_ = 0;
  int open_ = 0;
  Last last_ = Last::kNothing;
  bool joinable_ = false;  // a word may follow that joins the number on the left to the next
  std::optional<GroupingFault> fault_;
};

}  // namespace

std::optional<GroupingFault> FindGroupingFault(std::string_view line, int lastRow) {
  return GroupingReader(line, lastRow).Read();
}

std::string DefaultGrouping(int rows) {
  std::string line = "1";
  for (int n = 2; n <= rows; ++n) line += " OR " + NumberText(n);
  return line;
}

std::string StoredGrouping(std::string_view line, int rows) {
  const std::string upper = Upper(Trim(line));
  if (upper.empty() || rows < 1) return DefaultGrouping(rows);
  std::string stored;
  for (std::size_t at = 0; at < upper.size(); ++at) {
    const char letter = upper[at];
    const char previous = stored.empty() ? ' ' : stored.back();
    if (previous != ' ' && IsLetter(letter) != IsLetter(previous) && letter != ' ') stored += ' ';
    const bool leading = letter == '0' && !IsDigit(previous);
    const bool more = at + 1 < upper.size() && IsDigit(upper[at + 1]);
    if (leading && more) continue;
    stored += letter;
  }
  return stored;
}

std::string ExpandGrouping(std::string_view line, std::span<const std::string> rows, RowForm form) {
  const bool enclose = form == RowForm::kInParentheses;
  std::string text;
  for (std::size_t at = 0; at < line.size();) {
    if (!IsDigit(line[at])) {
      text += line[at++];
      continue;
    }
    const std::size_t first = at;
    std::size_t number = 0;
    for (; at < line.size() && IsDigit(line[at]); ++at) {
      number = std::min<std::size_t>(number * 10 + static_cast<std::size_t>(line[at] - '0'), 1000);
    }
    if (number < 1 || number > rows.size()) {
      text += line.substr(first, at - first);
    } else {
      const std::string& row = rows[number - 1];
      text += enclose ? "(" + row + ")" : row;
    }
  }
  return text;
}

}  // namespace ostrand
