// One condition on a screen: a row of measurement, comparison and value.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/list_field.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

using Compares = std::span<const std::string_view>;

// Comparisons offered for numbers, by stored code.
inline constexpr std::array<std::string_view, 6> kTriggerCompares = {" =",  " <>", " >",
                                                                     " >=", " <",  " <="};
inline constexpr std::array<std::string_view, 4> kStateCompares = {" >", " >=", " <", " <="};
inline constexpr std::array<std::string_view, 4> kPowerOffCompares = {" <", " <=", " >", " >="};
inline constexpr std::array<std::string_view, 5> kStatusCompares = {" >", " >=", " <",
                                                                    " <=", " <>"};

// Whether a measurement is a flag or the port being read, whose values are True and False.
bool IsLogicVariable(std::string_view name);
// The number of a flag, "Flag(3)"; 0 for any other measurement.
int FlagOfVariable(std::string_view name);

// A row as it is stored.
struct ConditionRow {
  std::string MeasVar;     // the name picked; empty for a row not in use
  int Compare = 0;         // index in the list of comparisons
  int VarIdx = 0;          // index of `Varb` in the list of values when it was picked
  float Value = 0;         // when compared with a number
  std::string Varb;        // when compared with a variable, "True" or "False"
  std::string Expression;  // ready text

  friend bool operator==(const ConditionRow&, const ConditionRow&) = default;
};

// The ready text of a row: "Flag(3) = True", "VBlk1(2) >= 0.5". `value` is the text of its value. A
// comparison outside the list counts as the first one.
std::string ConditionText(std::string_view measurement, Compares compares, int compare,
                          std::string_view value);

// The value field of a row: a number, "True" or "False" typed, or an item picked.
class ConditionValue : public ListField {
 public:
  ConditionValue(Screen& screen, std::string_view name);

  bool LogicOnly = false;  // accepts only True and False

 protected:
  bool normalize(std::string& text) override;
};

// Names of a row's controls on its screen.
struct ConditionControlNames {
  std::string measurement;
  std::string compare;
  std::string value;
  std::string expression;
};

// The choices that a row offers.
struct ConditionOffer {
  Compares compares = kTriggerCompares;
  bool variablesAsValues = false;  // numbers can also be compared with variables
  int firstCompare = 0;            // initial index of an empty row
};

// The controls of one row. They keep the loaded row until the user edits it.
class ConditionControls {
 public:
  // `variables` must outlive the row.
  ConditionControls(Screen& screen, const ConditionVariables& variables,
                    const ConditionControlNames& names, const ConditionOffer& offer);

  Choice MeasVar;        // "(None)" first
  Choice Compare;        // " = " alone for flags and ports
  ConditionValue Value;  // set when a measurement is picked: "True" or "0"
  Label Expression;      // with alias names

  // Called after a measurement was picked, with the previous index; false restores that.
  std::function<bool()> AllowPick;
  // Called after any edit.
  std::function<void()> OnEdit;

  // Puts the controls into a group, and into row `row` from 1 if it is a table. With a state, their
  // captions begin with it: "State 1 measurement".
  void Describe(std::string_view group, int row = 0, std::string_view state = {});

  void Load(const ConditionRow& row);
  void Clear();
  // Whether the user may edit it, and why not; initially enabled.
  void Enable(bool enabled, std::string_view whyDisabled);
  // The expression, with variables in place of aliases.
  [[nodiscard]] ConditionRow Stored() const;
  // Whether the row has a measurement.
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
  int picked_ = 0;  // index of the measurement before the latest pick
  bool setting_ = false;
  bool enabled_ = true;
  std::string whyDisabled_;
};

}  // namespace ostrand
