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

// The expression of a flag's or a port's state without a measurement.
inline constexpr std::string_view kNoCondition = "False";

// Where the project keeps the condition of a state.
struct StateFields {
  std::string& measurement;
  i16& compare;
  float& value;
  std::string& expression;
};

// A stored condition as the controls of a row take it. What the expression says goes before the
// code of the comparison: older projects count their codes in another list, and a sign that the
// screen does not offer must stay as long as the row is only looked at.
ConditionRow StoredState(std::string_view measurement, int compare, float value,
                         std::string_view expression, Compares compares);

// The condition that the project keeps into a row, and back. `none` is the expression that is kept
// of a row without a measurement.
void LoadState(ConditionControls& row, const StateFields& kept, Compares compares);
void KeepState(const ConditionControls& row, const StateFields& kept, std::string_view none);

// Tells the user when the measurement picked for the row is a flag that the flags screen drives.
// All three must outlive the row's use.
void ReportPickedFlag(ConditionControls& row, platform::Forms& forms, const ProjectStore& store);

// Shows or hides the controls of a state.
void ShowState(ConditionControls& state, bool visible);

// Shows program text in a box.
void ShowCode(platform::Forms& forms, std::string_view title, std::string code);

// ---- Flags and ports ----------------------------------------------------------------------------

// Keys of the project that the controls of a flag or a port are named by: "FlagInclude3", and
// "State1FlagVar3" for a condition.
struct TwoStateKeys {
  std::string_view include;
  std::string_view on;
  std::string_view measurement;
  std::string_view compare;
  std::string_view value;
  std::string_view expression;
};

// The controls of a flag or a port that one condition sets and another one clears.
class TwoStateControls {
 public:
  // `number` from 1; `variables` outlives the controls.
  TwoStateControls(Screen& screen, const ConditionVariables& variables, const TwoStateKeys& keys,
                   int number);

  // Puts them into a group, and into its row from 1 if it is a table; the screen describes the
  // boxes.
  void Describe(std::string_view group, int row = 0);

  CheckBox Include;
  CheckBox On;  // what the first condition makes of it; the second makes the other
  Label Lite1;  // "Red" or "Gray": what a state makes of it
  Label Lite2;
  ConditionControls State1;
  ConditionControls State2;
  Label Message;  // what it lacks, once it is included
  Button ViewCode;

  [[nodiscard]] ConditionControls& State(int state) { return state == 1 ? State1 : State2; }
  // Both states have a measurement.
  [[nodiscard]] bool Complete() const { return State1.Valid() && State2.Valid(); }

  // What the two colours of the lights stand for.
  struct LiteTips {
    std::string red;
    std::string gray;
  };
  void ShowLites(const LiteTips& tips);
  // Where conditions have a say, an included output tells which of them it lacks.
  void ShowMessage(bool conditions);
  // Whether its code can be viewed; a box says why not.
  bool MayView(platform::Forms& forms, std::string_view notIncluded, std::string_view incomplete,
               bool conditions);
};

}  // namespace ostrand
