#include "conditions/condition_row.h"

#include <algorithm>
#include <array>
#include <optional>

#include "controls/numeric_field.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kNone = "(None)";
constexpr std::string_view kTrueWord = "True";
constexpr std::string_view kFalseWord = "False";
constexpr std::array<std::string_view, 1> kLogicCompares = {" = "};
constexpr double kMaxSingle = 3.402e38;
constexpr int kSingleDigits = 7;

bool startsWith(std::string_view text, std::string_view head) {
  return SameText(text.substr(0, head.size()), head);
}

// "True" or "False" for a text that equals one of them in any case; empty for any other.
std::string_view logicWord(std::string_view text) {
  for (const std::string_view word : {kTrueWord, kFalseWord}) {
    if (SameText(text, word)) return word;
  }
  return {};
}

bool isHeadOfLogicWord(std::string_view text) {
  return startsWith(kTrueWord, text) || startsWith(kFalseWord, text);
}

bool valueInTheMaking(std::string_view text) {
  return SingleText(text) || (text.size() <= kFalseWord.size() && isHeadOfLogicWord(text));
}

// The value that a row shows. Rows without a separate text for it have it in their expression.
std::string valueOf(const ConditionRow& row, bool logic) {
  if (!Trim(row.Varb).empty()) return std::string(Trim(row.Varb));
  const std::string_view expression = Trim(row.Expression);
  const std::string_view word = logicWord(expression.substr(expression.rfind(' ') + 1));
  if (!word.empty()) return std::string(word);
  if (logic) return std::string(kTrueWord);
  return SignificantText(DecimalValue(row.Value), kSingleDigits);
}

}  // namespace

bool IsLogicVariable(std::string_view name) {
  return startsWith(name, "Flag(") || startsWith(name, "ReadPort");
}

int FlagOfVariable(std::string_view name) {
  if (!startsWith(name, "Flag(")) return 0;
  const auto number = static_cast<int>(Val(name.substr(5, 2)));
  return number >= 1 && number <= kFlags ? number : 0;
}

std::string ConditionText(std::string_view measurement, Compares compares, int compare,
                          std::string_view value) {
  std::string_view sign = "=";
  if (!IsLogicVariable(measurement)) {
    const bool known = compare >= 0 && compare < static_cast<int>(compares.size());
    sign = Trim(compares[known ? static_cast<std::size_t>(compare) : 0]);
  }
  std::string text(Trim(measurement));
  return text.append(" ").append(sign).append(" ").append(value);
}

ConditionValue::ConditionValue(Screen& screen, std::string_view name)
    : ListField(screen, name, valueInTheMaking) {
  MayHold = [this](std::string_view text) { return !LogicOnly || isHeadOfLogicWord(text); };
}

bool ConditionValue::normalize(std::string& text) {
  const std::string_view word = logicWord(Trim(text));
  if (!word.empty() || LogicOnly) {
    text = word;
    return !word.empty();
  }
  if (ItemIndex() >= 0) return true;
  const std::optional<double> value = ToDouble(text);
  if (!value) return false;
  text = SignificantText(std::clamp(*value, -kMaxSingle, kMaxSingle), kSingleDigits);
  return true;
}

ConditionControls::ConditionControls(Screen& screen, const ConditionVariables& variables,
                                     const ConditionControlNames& names,
                                     const ConditionOffer& offer)
    : MeasVar(screen, names.measurement),
      Compare(screen, names.compare),
      Value(screen, names.value),
      Expression(screen, names.expression),
      variables_(variables),
      offer_(offer) {
  MeasVar.OnPick = [this] { onPickMeasurement(); };
  Compare.OnPick = [this] {
    if (!setting_) edit();
  };
  Value.OnTake = [this] { edit(); };
  Clear();
}

void ConditionControls::Describe(std::string_view group, int row, std::string_view state) {
  const auto give = [&](Control& control, std::string_view caption, std::string_view ofState) {
    control.Group = group;
    control.Row = row;
    control.Caption = state.empty() ? caption : state;
    if (!state.empty()) control.Caption.append(" ").append(ofState);
  };
  give(MeasVar, "Measurement", "measurement");
  give(Compare, "Comparison", "comparison");
  give(Value, "Value", "value");
  give(Expression, "Expression", "expression");
  Expression.Kind(ControlKind::kCode);
}

// Lists the measurements and picks one. A measurement that no longer exists is added at the end, so
// that viewing a row loses nothing.
void ConditionControls::showMeasurement(std::string_view name) {
  MeasVar.Items.clear();
  MeasVar.Items.reserve(variables_.Names().size() + 2);
  MeasVar.Add(kNone);
  for (const std::string& listed : variables_.Names()) {
    MeasVar.Add(listed);
  }
  int place = 0;
  if (!name.empty()) {
    place = variables_.Find(name) + 1;
    if (place == 0) {
      place = static_cast<int>(MeasVar.Items.size());
      MeasVar.Add(name);
    }
  }
  MeasVar.PickAt(place);
  picked_ = place;
}

// Lists the values that suit the kind of the measurement.
void ConditionControls::showKind(bool logic) {
  const Compares compares = logic ? Compares(kLogicCompares) : offer_.compares;
  Compare.Items.clear();
  for (const std::string_view sign : compares) {
    Compare.Add(sign);
  }
  Compare.Index(-1);
  Value.LogicOnly = logic;
  Value.Items.clear();
  if (logic) {
    Value.Items = {std::string(kTrueWord), std::string(kFalseWord)};
  } else if (offer_.variablesAsValues) {
    Value.Items = variables_.Names();
  }
}

void ConditionControls::Load(const ConditionRow& row) {
  setting_ = true;
  row_ = row;
  // A row of an older project has only its expression.
  const std::string_view measurement = Trim(row.MeasVar).empty() ? row.Expression : row.MeasVar;
  showMeasurement(Trim(measurement));
  Compare.Items.clear();
  Compare.Index(-1);
  Value.Items.clear();
  Value.Text({});
  Expression.Text({});
  if (Valid()) {
    const bool logic = IsLogicVariable(MeasVar.Text());
    showKind(logic);
    Compare.PickAt(logic ? 0 : row.Compare);
    Value.Text(variables_.InAliases(valueOf(row, logic)));
    Expression.Text(variables_.InAliases(row.Expression));
  }
  enableControls();
  setting_ = false;
}

void ConditionControls::Clear() {
  ConditionRow empty;
  empty.Compare = offer_.firstCompare;
  Load(empty);
}

void ConditionControls::Enable(bool enabled, std::string_view whyDisabled) {
  enabled_ = enabled;
  whyDisabled_ = whyDisabled;
  enableControls();
}

void ConditionControls::enableControls() {
  MeasVar.Enabled = enabled_;
  MeasVar.WhyDisabled = whyDisabled_;
  Compare.Enabled = Value.Enabled = enabled_ && Valid();
  Compare.WhyDisabled = Value.WhyDisabled = enabled_ ? "Needs a measurement." : whyDisabled_;
}

void ConditionControls::onPickMeasurement() {
  if (setting_ || MeasVar.Index() == picked_) return;
  if (AllowPick && !AllowPick()) {
    setting_ = true;
    MeasVar.PickAt(picked_);
    setting_ = false;
    return;
  }
  picked_ = MeasVar.Index();
  if (!Valid()) {
    Clear();
    if (OnEdit) OnEdit();
    return;
  }
  setting_ = true;
  const bool logic = IsLogicVariable(MeasVar.Text());
  const bool sameKind = !Compare.Items.empty() && Value.LogicOnly == logic;
  if (!sameKind) {
    showKind(logic);
    Compare.PickAt(logic ? 0 : offer_.firstCompare);
    Value.Text(logic ? kTrueWord : "0");
  }
  enableControls();
  setting_ = false;
  edit();
}

void ConditionControls::edit() {
  if (!Valid()) return;
  const std::string value = Value.Text();
  const bool isNumber = ToDouble(value).has_value();
  row_.MeasVar = MeasVar.Text();
  if (Compare.Index() < 0) Compare.Index(0);
  row_.Compare = Compare.Index();
  row_.Varb = isNumber ? std::string() : value;
  row_.VarIdx = isNumber ? 0 : std::max(Value.ItemIndex(), 0);
  row_.Value = isNumber ? ToSingle(value).value_or(0) : 0;
  row_.Expression = ConditionText(row_.MeasVar, offer_.compares, row_.Compare, value);
  Expression.Text(variables_.InAliases(row_.Expression));
  if (OnEdit) OnEdit();
}

ConditionRow ConditionControls::Stored() const {
  ConditionRow row = row_;
  row.Expression = variables_.InVariables(row.Expression);
  return row;
}

}  // namespace ostrand
