// Rows of conditions with the line that groups them.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "conditions/condition_row.h"
#include "conditions/condition_variables.h"
#include "conditions/grouping.h"
#include "controls/screen.h"
#include "controls/text_field.h"
#include "model/options.h"
#include "model/store.h"
#include "text/row.h"

namespace ostrand {

// The most characters of an expanded line with its rows in parentheses and variables for aliases.
inline constexpr std::size_t kMaxExpression = 490;

// The field of the grouping line. One that can not be taken is told in a box and keeps the focus.
class GroupingField : public TextField {
 public:
  using TextField::TextField;

  TextFont Font;  // to show it in; without a name the host's own

  // Brings the line into its form; false after a box that told what is wrong.
  std::function<bool(std::string& line)> Accept;

 protected:
  bool normalize(std::string& line) override { return Accept(line); }
};

// Up to ten rows and their grouping line.
class ConditionSet {
  using Rows = Row<std::unique_ptr<ConditionControls>, 1, kConditions>;
  Rows rows_;  // made before the line below them

 public:
  // Names of controls by the number of the row, from 1; those of the two below the rows.
  struct Names {
    std::string_view group;  // heading
    std::function<ConditionControlNames(int row)> row;
    std::string grouping;
    std::string expression;
  };
  // `firstCompare` is the place in the list that empty rows start with.
  ConditionSet(Screen& screen, const ConditionVariables& variables, const Names& names,
               int firstCompare = 0);

  // Row `n`, from 1 to kConditions; any other raises Fault 9.
  [[nodiscard]] ConditionControls& operator[](int n) { return *rows_[n]; }
  GroupingField Grouping;
  Label Expression;  // of all rows, with alias names

  std::function<void()> OnEdit;
  // A flag, from 1, was picked for a row.
  std::function<void(int flagNumber)> OnFlag;

  // `count` rows are in use; those behind them are shown empty.
  void Load(std::span<const ConditionRow> rows, int count, std::string_view grouping);
  // Whether the user may edit it, and why not; it is usable to begin with.
  void Enable(bool enabled, std::string_view whyDisabled);
  // Rows in use: those in front of the first empty one.
  [[nodiscard]] int Count() const;
  // A row as it is stored, from 1; one that is not in use is empty.
  [[nodiscard]] ConditionRow Stored(int n) const;
  [[nodiscard]] std::string StoredLine() const { return StoredGrouping(Grouping.Text(), Count()); }

  // The whole expression with its rows in parentheses; empty without rows.
  [[nodiscard]] std::string InVariables() const { return expanded(false); }
  [[nodiscard]] std::string InAliases() const { return expanded(true); }

  // Tests the line and the length of the whole; false after a box that told what is wrong.
  bool Check();
  // Shows code made of it in a box, if it passes the test.
  void View(std::string_view title, std::string text);

 private:
  static Rows makeRows(Screen& screen, const ConditionVariables& variables, const Names& names,
                       int firstCompare);
  [[nodiscard]] std::string expanded(bool aliases) const;
  bool acceptGrouping(std::string& line);
  bool allowPick(int n);
  void onEdit();
  void renewGrouping();
  void enableGrouping();
  void tell(std::string_view title, std::string text);

  Screen& screen_;
  const ConditionVariables& variables_;
  bool enabled_ = true;
  std::string whyDisabled_;
  int firstCompare_;
  int grouped_ = 0;  // rows when the line was last renewed
};

}  // namespace ostrand
