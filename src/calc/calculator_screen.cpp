#include "calc/calculator_screen.h"

#include "controls/faces.h"
#include "model/name_limits.h"
#include "model/names.h"
#include "text/number.h"

namespace ostrand {
namespace {

// Screens with a try-out rate; each names its result.
constexpr Face kRateFaces[] = {
    {"WhatIf", "What if", "Pulses/Second"},
    {"Multiplier", "Result", "Multiplier", ControlKind::kFigure},
    {"Units", "Result", "Units"},
    {"Speed", "What if", "Speed", ControlKind::kFigure},
    {"RPM", "What if", "RPM", ControlKind::kFigure},
    {"Flow", "What if", "Flow", ControlKind::kFigure},
};

}  // namespace

Calculator::Calculator(const ScreenContext& context, std::string_view name,
                       std::string_view helpLine)
    : Screen(context, name), helpLine_(helpLine) {
  Forms().SetHelpLine(std::string(helpLine));
}

void Calculator::show() {
  solve();
  const auto answer = answerShown();
  const bool zero = answer && Val(answer->multiplier) == 0;
  if (zero != warned_) {
    Forms().SetHelpLine(zero ? "WARNING - The multiplier is zero." : std::string(helpLine_));
  }
  warned_ = zero;
}

bool Calculator::onDone() {
  if (!mayEnd()) return false;
  writeRecord();
  answer_ = answerShown();
  if (request_ != nullptr) request_->answer = answer_;
  return true;
}

void Calculator::solveAndSettle() {
  show();
  settle();
}

void Calculator::bind(TextField& field, std::string& member) {
  field.Text(member);
  field.OnChange = [this, &field, &member] {
    // A text that does not extend the previous one starts a new entry.
    const std::string text = field.Text();
    if (text.size() <= member.size()) settle();
    member = text;
    show();
  };
  field.OnTake = [this] { settle(); };
}

// Units that fit into no block are not returned; the names of all arrays have the same length.
void Calculator::bindUnits(TextField& field, std::string& member) {
  bind(field, member);
  field.WhyNot = [](std::string_view units) {
    return UnitsFit(SourceName(ORVUS_DOBJ_BLK_VOLT, 1), units) ? "" : kTooLongHelp;
  };
}

void Calculator::bindCodes(Choice& choice, i16& member) {
  const Loading loading(*this);
  choice.PickAt(member - 1);
  choice.OnPick = [this, &choice, &member] {
    if (IsLoading()) return;
    member = static_cast<i16>(choice.Index() + 1);
    solveAndSettle();
  };
}

void Calculator::bindSwitch(CheckBox& box, i16& member) {
  const Loading loading(*this);
  box.Check(member != 0);
  box.OnClick = [this, &box, &member] {
    if (IsLoading()) return;
    SetSwitch(member, box.Checked());
    solveAndSettle();
  };
}

RateCalculator::RateCalculator(const ScreenContext& context, std::string_view name,
                               std::string_view helpLine, std::string_view result)
    : Calculator(context, name, helpLine),
      WhatIf(*this, "WhatIf"),
      Multiplier(*this, "Multiplier"),
      Units(*this, "Units"),
      Result(*this, result) {
  WhatIf.ToolTip = "An example for \"What If\" analysis only.";
  Describe(*this, kRateFaces);
}

void RateCalculator::solve() {
  const auto answers = rates();
  kept_.Take(answers ? std::optional<Shown>({*answers, std::string(rateUnits())}) : std::nullopt);
  const auto& shown = kept_.Shown();
  if (!shown) return;
  Multiplier.Text(shown->rates.multiplier);
  Units.Text(shown->units);
  Result.Text(shown->rates.whatIf);
}

std::optional<ScalingAnswer> RateCalculator::answerShown() const {
  const auto multiplier = NumberHandedBack(Multiplier.Text());
  if (!multiplier) return std::nullopt;
  return ScalingAnswer{*multiplier, std::nullopt, Units.Text()};
}

}  // namespace ostrand
