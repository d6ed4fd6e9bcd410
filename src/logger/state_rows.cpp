#include "logger/state_rows.h"

#include <algorithm>

#include "conditions/flag_usage.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The operator of an expression "VBlk1(2) >= 0.5"; empty for one without.
std::string_view signOf(std::string_view expression) {
  for (const std::string_view word : Split(expression, ' ')) {
    if (!word.empty() && word.find_first_not_of("<>=") == std::string_view::npos) return word;
  }
  return {};
}

// The index of an operator in the list; -1 when the list does not offer it.
int placeOf(std::string_view sign, Compares compares) {
  const auto at = std::find_if(compares.begin(), compares.end(),
                               [&](std::string_view offered) { return Trim(offered) == sign; });
  return at == compares.end() ? -1 : static_cast<int>(at - compares.begin());
}

std::string keyed(std::string_view key, int number) {
  return std::string(key) + NumberText(number);
}

ConditionControlNames stateNames(const TwoStateKeys& keys, int state, int number) {
  const std::string head = "State" + NumberText(state);
  return {head + keyed(keys.measurement, number), head + keyed(keys.compare, number),
          head + keyed(keys.value, number), head + keyed(keys.expression, number)};
}

// An empty first state starts with " >=", a second one with " <", as in a new project.
ConditionOffer offerOf(int state) { return {.compares = kStateCompares, .firstCompare = state}; }

}  // namespace

// ---- Conditions ---------------------------------------------------------------------------------

ConditionRow StoredState(std::string_view measurement, int compare, float value,
                         std::string_view expression, Compares compares) {
  ConditionRow row;
  row.Compare = compare;
  if (Trim(measurement).empty() && SameText(Trim(expression), kNoCondition)) return row;
  row.MeasVar = measurement;
  row.Value = value;
  row.Expression = expression;
  const std::string_view sign = signOf(expression);
  if (!sign.empty()) row.Compare = placeOf(sign, compares);
  return row;
}

void LoadState(ConditionControls& row, const StateFields& kept, Compares compares) {
  row.Load(StoredState(kept.measurement, kept.compare, kept.value, kept.expression, compares));
}

void KeepState(const ConditionControls& row, const StateFields& kept, std::string_view none) {
  const ConditionRow stored = row.Stored();
  kept.measurement = stored.MeasVar;
  kept.compare = static_cast<i16>(stored.Compare);
  kept.value = stored.Value;
  kept.expression = row.Valid() ? std::string_view(stored.Expression) : none;
}

void ReportPickedFlag(ConditionControls& row, platform::Forms& forms, const ProjectStore& store) {
  row.AllowPick = [&row, &forms, &store] {
    const int flagNumber = FlagOfVariable(row.MeasVar.Text());
    if (flagNumber > 0) CheckFlagUsage(forms, store, flagNumber);
    return true;
  };
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

// ---- Flags and ports ----------------------------------------------------------------------------

TwoStateControls::TwoStateControls(Screen& screen, const ConditionVariables& variables,
                                   const TwoStateKeys& keys, int number)
    : Include(screen, keyed(keys.include, number)),
      On(screen, keyed(keys.on, number)),
      Lite1(screen, keyed("State1Lite", number)),
      Lite2(screen, keyed("State2Lite", number)),
      State1(screen, variables, stateNames(keys, 1, number), offerOf(1)),
      State2(screen, variables, stateNames(keys, 2, number), offerOf(2)),
      Message(screen, keyed("Message", number)),
      ViewCode(screen, keyed("ViewCode", number)) {}

void TwoStateControls::Describe(std::string_view group, int row) {
  const auto give = [&](Control& control, std::string_view caption) {
    control.Group = group;
    control.Row = row;
    control.Caption = caption;
  };
  give(Lite1, "State 1 light");
  give(Lite2, "State 2 light");
  State1.Describe(group, row, "State 1");
  State2.Describe(group, row, "State 2");
  give(Message, "Message");
  give(ViewCode, "View code");
}

void TwoStateControls::ShowLites(const LiteTips& tips) {
  const auto show = [&tips](Label& lite, bool on) {
    lite.Text(on ? "Red" : "Gray");
    lite.ToolTip = on ? tips.red : tips.gray;
  };
  show(Lite1, On.Checked());
  show(Lite2, !On.Checked());
}

void TwoStateControls::ShowMessage(bool conditions) {
  std::string_view text;
  if (Include.Checked() && conditions && !Complete()) {
    text = " Select Measurements for State 1 && State 2.";
    if (State2.Valid()) text = " Select a Measurement for State 1.";
    if (State1.Valid()) text = " Select a Measurement for State 2.";
  }
  Message.Text(text);
}

bool TwoStateControls::MayView(platform::Forms& forms, std::string_view notIncluded,
                               std::string_view incomplete, bool conditions) {
  constexpr std::string_view kTitle = "VIEW CODE";
  if (!Include.Checked()) {
    ShowWarning(forms, kTitle, std::string(notIncluded));
    return false;
  }
  if (!conditions || Complete()) return true;
  ShowWarning(forms, kTitle, std::string(incomplete));
  return false;
}

}  // namespace ostrand
