// Outputs that conditions switch between two states: their controls and how they are stored.
#pragma once

#include <string>
#include <string_view>

#include "conditions/condition_row.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/screen.h"
#include "platform/forms.h"

namespace ostrand {

// ---- Conditions ---------------------------------------------------------------------------------

// The expression stored for a state of a flag or port without a measurement.
inline constexpr std::string_view kNoCondition = "False";

// Where the project keeps the condition of a state.
struct StateFields {
  std::string& measurement;
  i16& compare;
  float& value;
  std::string& expression;
};

// Converts a stored condition for the controls of a row. The comparison in the expression wins over
// the stored code: older projects number the comparisons differently, and an operator that the
// screen does not offer must survive as long as the row is not edited.
ConditionRow StoredState(std::string_view measurement, int compare, float value,
                         std::string_view expression, Compares compares);

// Loads a stored condition into a row, and stores it. `none` is the expression stored for a row
// without a measurement.
void LoadState(ConditionControls& row, const StateFields& kept, Compares compares);
void KeepState(const ConditionControls& row, const StateFields& kept, std::string_view none);

// Warns the user when the measurement picked for the row is a flag that the flags screen drives.
// All three arguments must outlive the row's use.
void ReportPickedFlag(ConditionControls& row, platform::Forms& forms, const ProjectStore& store);

// Shows or hides the controls of a state.
void ShowState(ConditionControls& state, bool visible);

// Shows program text in a box.
void ShowCode(platform::Forms& forms, std::string_view title, std::string code);

// ---- Flags and ports ----------------------------------------------------------------------------

// Project keys that name the controls of a flag or a port: "FlagInclude3", and "State1FlagVar3" for
// a condition.
struct TwoStateKeys {
  std::string_view include;
  std::string_view on;
  std::string_view measurement;
  std::string_view compare;
  std::string_view value;
  std::string_view expression;
};

// The controls of a flag or a port that one condition sets and another clears.
class TwoStateControls {
 public:
  // `number` from 1; `variables` must outlive the controls.
  TwoStateControls(Screen& screen, const ConditionVariables& variables, const TwoStateKeys& keys,
                   int number);

  // Puts them into a group, and into row `row` from 1 if it is a table; the screen sets the
  // captions of the boxes.
  void Describe(std::string_view group, int row = 0);

  CheckBox Include;
  CheckBox On;  // result of the first condition; the second gives the opposite
  Label Lite1;  // "Red" or "Gray": result of a state
  Label Lite2;
  ConditionControls State1;
  ConditionControls State2;
  Label Message;  // what is missing, once it is included
  Button ViewCode;

  [[nodiscard]] ConditionControls& State(int state) { return state == 1 ? State1 : State2; }
  // Whether both states have a measurement.
  [[nodiscard]] bool Complete() const { return State1.Valid() && State2.Valid(); }

  // Legend for the two colours of the lights.
  struct LiteTips {
    std::string red;
    std::string gray;
  };
  void ShowLites(const LiteTips& tips);
  // An included output that depends on conditions shows which of them are missing.
  void ShowMessage(bool conditions);
  // Whether its code can be viewed; if not, a box shows why.
  bool MayView(platform::Forms& forms, std::string_view notIncluded, std::string_view incomplete,
               bool conditions);
};

}  // namespace ostrand
