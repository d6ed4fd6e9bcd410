// Conditions as screens compose them: rows of measurement, comparison and value, and the line that
// joins rows by their numbers.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/screen.h"
#include "controls/text_field.h"
#include "model/options.h"
#include "model/store.h"

namespace ostrand {

// --- Names ---------------------------------------------------------------------------------------

// The variables that a row can name. Users see aliases; the program text and what is stored of an
// expression name the element of the block, so that renaming an alias leaves them valid.
class ConditionVariables {
 public:
  // The kinds to list, in their order (VariableKind); none for all.
  ConditionVariables(const ProjectStore& store, std::span<const i32> kinds);

  // As users see them, in the order of the lists.
  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
  // The place in Names() of a name or of an element that a name stands for, in any case of
  // letters; -1 when there is none.
  [[nodiscard]] int Find(std::string_view name) const;

  // "VBlk1(2)" for the alias, and "VBlk1(1)" for the array, of a value of a block; any other name
  // as it is.
  [[nodiscard]] std::string Variable(std::string_view name) const;
  // The same for all names in an expression, and back to what users see.
  [[nodiscard]] std::string InVariables(std::string_view expression) const;
  [[nodiscard]] std::string InAliases(std::string_view expression) const;

 private:
  struct Entry {
    std::string name;
    std::string element;  // empty for what is no value of a block
  };
  // The element that a name stands for; nothing for any other name.
  [[nodiscard]] std::optional<std::string> elementOf(std::string_view name) const;

  std::vector<std::string> names_;
  std::vector<Entry> all_;
};

// --- Rows ----------------------------------------------------------------------------------------

using Compares = std::span<const std::string_view>;

// Comparisons that a number is offered, by the code stored.
inline constexpr std::array<std::string_view, 6> kTriggerCompares = {" =",  " <>", " >",
                                                                     " >=", " <",  " <="};
inline constexpr std::array<std::string_view, 4> kStateCompares = {" >", " >=", " <", " <="};
inline constexpr std::array<std::string_view, 4> kPowerOffCompares = {" <", " <=", " >", " >="};
inline constexpr std::array<std::string_view, 5> kStatusCompares = {" >", " >=", " <",
                                                                    " <=", " <>"};

// Whether a measurement is a flag or the port that is read, which are True or False.
bool IsLogicVariable(std::string_view name);
// The number of the flag that a measurement is, "Flag(3)"; 0 for any other.
int FlagOfVariable(std::string_view name);

// A row as it is stored.
struct ConditionRow {
  std::string MeasVar;     // the name picked; empty for a row not in use
  int Compare = 0;         // place in the list of comparisons
  int VarIdx = 0;          // place of `Varb` in the list of values when it was picked
  float Value = 0;         // when it is compared with a number
  std::string Varb;        // when it is compared with a variable, or "True" or "False"
  std::string Expression;  // ready text

  friend bool operator==(const ConditionRow&, const ConditionRow&) = default;
};

// The ready text of a row: "Flag(3) = True", "VBlk1(2) >= 0.5". `value` is the text of its value.
// A comparison outside of the list is taken for the first one.
std::string ConditionText(std::string_view measurement, Compares compares, int compare,
                          std::string_view value);

// The field of a row's value: a number, "True" or "False" typed, or an item picked.
class ConditionValue : public ListField {
 public:
  ConditionValue(Screen& screen, std::string_view name);

  bool LogicOnly = false;  // takes True and False, and no number

 protected:
  bool normalize(std::string& text) override;
};

// Names of a row's controls in their screen.
struct ConditionControlNames {
  std::string measurement;
  std::string compare;
  std::string value;
  std::string expression;
};

// What a row lets a user choose.
struct ConditionOffer {
  Compares compares = kTriggerCompares;
  bool variablesAsValues = false;  // numbers can be compared with variables, not only with numbers
  int firstCompare = 0;            // place in the list that an empty row starts with
};

// The controls of one row. They keep the row as it was loaded until the user edits it.
class ConditionControls {
 public:
  // `variables` outlives the row.
  ConditionControls(Screen& screen, const ConditionVariables& variables,
                    const ConditionControlNames& names, const ConditionOffer& offer);

  Choice MeasVar;        // "(None)" first
  Choice Compare;        // " = " alone for flags and ports
  ConditionValue Value;  // filled when a measurement is picked: "True" or "0"
  Label Expression;      // with alias names

  // Asked after a measurement was picked, with the place picked before; false puts that back.
  std::function<bool()> AllowPick;
  // After any edit.
  std::function<void()> OnEdit;

  void Load(const ConditionRow& row);
  void Clear();
  // Whether the user may edit it; it is usable to begin with.
  void Enable(bool enabled);
  // Its expression names variables, not aliases.
  [[nodiscard]] ConditionRow Stored() const;
  // It has a measurement.
  [[nodiscard]] bool Valid() const { return MeasVar.Index() > 0; }

 private:
  void showMeasurement(std::string_view name);
  void showKind(bool logic);
  void onPickMeasurement();
  void edit();
  void enableControls();

  const ConditionVariables& variables_;
  ConditionOffer offer_;
  ConditionRow row_;
  int picked_ = 0;  // place of the measurement before the latest pick
  bool setting_ = false;
  bool enabled_ = true;
};

// --- Groups --------------------------------------------------------------------------------------

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

// The most characters of an expanded line with its rows in parentheses and variables for aliases.
inline constexpr std::size_t kMostExpression = 490;

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
  // Whether the user may edit it; it is usable to begin with.
  void Enable(bool enabled);
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
  void tell(std::string_view title, std::string text);

  Screen& screen_;
  const ConditionVariables& variables_;
  bool enabled_ = true;
  int firstCompare_;
  int grouped_ = 0;  // rows when the line was last renewed
};

}  // namespace ostrand
