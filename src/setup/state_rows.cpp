#include "setup/state_rows.h"

#include <algorithm>

#include "text/strings.h"

namespace ostrand {
namespace {

// The sign of an expression "VBlk1(2) >= 0.5"; empty for one without.
std::string_view signOf(std::string_view expression) {
  for (const std::string_view word : Split(expression, ' ')) {
    if (!word.empty() && word.find_first_not_of("<>=") == std::string_view::npos) return word;
  }
  return {};
}

// The place of a sign in the list; -1 when the list does not offer it.
int placeOf(std::string_view sign, Compares compares) {
  const auto at = std::find_if(compares.begin(), compares.end(),
                               [&](std::string_view offered) { return Trim(offered) == sign; });
  return at == compares.end() ? -1 : static_cast<int>(at - compares.begin());
}

}  // namespace

ConditionRow StoredState(std::string_view measurement, int compare, float value,
                         std::string_view expression, Compares compares) {
  ConditionRow row;
  if (Trim(measurement).empty() && SameText(Trim(expression), kNoCondition)) return row;
  row.MeasVar = measurement;
  row.Value = value;
  row.Expression = expression;
  const std::string_view sign = signOf(expression);
  row.Compare = sign.empty() ? compare : placeOf(sign, compares);
  return row;
}

std::string_view MissingStates(const ConditionControls& state1, const ConditionControls& state2) {
  if (!state1.Valid() && !state2.Valid()) return " Select Measurements for State 1 && State 2.";
  if (!state1.Valid()) return " Select a Measurement for State 1.";
  if (!state2.Valid()) return " Select a Measurement for State 2.";
  return {};
}

void ShowState(ConditionControls& state, bool visible) {
  for (Control* control : std::initializer_list<Control*>{&state.MeasVar, &state.Compare,
                                                          &state.Value, &state.Expression}) {
    control->Visible = visible;
  }
}

void ShowCode(platform::Forms& forms, std::string_view title, std::string code) {
  platform::MessageBox box;
  box.title = title;
  box.text = std::move(code);
  box.icon = platform::Icon::kNone;
  forms.ShowBox(box);
}

}  // namespace ostrand
