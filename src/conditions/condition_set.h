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

// Maximum length of an expanded line, with rows in parentheses and variables in place of aliases.
inline constexpr std::size_t kMaxExpression = 490;

// The field of the grouping line. An invalid line is reported in a box and keeps the focus.
class GroupingField : public TextField {
 public:
  using TextField::TextField;

  TextFont Font;  // to show it in; the host's font when it has no name

  // Normalizes the line; false after a box that reported a fault.
  std::function<bool(std::string& line)> Accept;

 protected:
  bool normalize(std::string& line) override { return Accept(line); }
};

// Up to ten rows and their grouping line.
class ConditionSet {
  using Rows = Row<std::unique_ptr<ConditionControls>, 1, kConditions>;
  Rows rows_;  // created before the line below them

 public:
  // Names of controls by row number, from 1, and of the two below the rows.
  struct Names {
    std::string_view group;  // heading
    std::function<ConditionControlNames(int row)> row;
    std::string grouping;
    std::string expression;
  };
  // `firstCompare` is the initial comparison of empty rows, as an index in the list.
  ConditionSet(Screen& screen, const ConditionVariables& variables, const Names& names,
               int firstCompare = 0);

  // Row `n`, from 1 to kConditions; any other number raises Fault 9.
  [[nodiscard]] ConditionControls& operator[](int n) { return *rows_[n]; }
  GroupingField Grouping;
  Label Expression;  // of all rows, with alias names

  std::function<void()> OnEdit;
  // Called when a flag, from 1, was picked for a row.
  std::function<void(int flagNumber)> OnFlag;

  // Loads `count` rows; those after them are shown empty.
  void Load(std::span<const ConditionRow> rows, int count, std::string_view grouping);
  // Whether the user may edit it, and why not; initially enabled.
  void Enable(bool enabled, std::string_view whyDisabled);
  // Number of rows in use: those before the first empty one.
  [[nodiscard]] int Count() const;
  // A row as it is stored, from 1; empty when not in use.
  [[nodiscard]] ConditionRow Stored(int n) const;
  [[nodiscard]] std::string StoredLine() const { return StoredGrouping(Grouping.Text(), Count()); }

  // The whole expression with its rows in parentheses; empty without rows.
  [[nodiscard]] std::string InVariables() const { return expanded(false); }
  [[nodiscard]] std::string InAliases() const { return expanded(true); }

  // Checks the line and the total length; false after a box that reported a fault. The focus is
  // then on the line.
  bool Check();
  // Shows the code made from the expression in a box, if the expression is valid.
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
  void report(std::string_view title, std::string text);

  Screen& screen_;
  const ConditionVariables& variables_;
  bool enabled_ = true;
  std::string whyDisabled_;
  int firstCompare_;
  int grouped_ = 0;  // rows at the last update of the line
};

}  // namespace ostrand
