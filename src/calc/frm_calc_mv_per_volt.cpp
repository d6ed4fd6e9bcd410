#include "calc/frm_calc_mv_per_volt.h"

#include "calc/answers.h"
#include "controls/faces.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Enter the mV/V f.s., the Rated Capacity and the Units name. The proper multiplier will be "
    "computed.";

constexpr std::string_view kComputed = "Computed from the other two; the button chooses which one.";
constexpr Face kMVPerVoltFaces[] = {
    {"mVPerV", "Sensor"},
    {"FullScale", "Sensor", "Rated capacity"},
    {"Units", "Sensor", "Units"},
    {"Multiplier", "Result", "Multiplier", ControlKind::kFigure},
    {"Solves", "Try-out"},
    {"Formula", "Try-out", "Formula"},
    {"TestUnits", "Try-out", "Test units (U)", {}, kComputed},
    {"mVOut", "Try-out", {}, {}, kComputed},
    {"Excite", "Try-out", "Excitation E (mV)", {}, kComputed},
};

}  // namespace

frmCalcmVPerVolt::frmCalcmVPerVolt(const ScreenContext& context, bool inVolts)
    : Calculator(context, "frmCalcmVPerVolt", kHelp),
      mVPerV(*this, "mVPerV"),
      FullScale(*this, "FullScale"),
      Units(*this, "Units"),
      Multiplier(*this, "Multiplier"),
      Solves(*this, "Solves"),
      Formula(*this, "Formula"),
      TestUnits(*this, "TestUnits"),
      mVOut(*this, "mVOut"),
      Excite(*this, "Excite"),
      record_(context.store.MVPerVoltCalc) {
  Caption = inVolts ? "VOLT/VOLT CALCULATOR" : "mV/VOLT CALCULATOR";
  mVPerV.Caption = inVolts ? "V/V f.s." : "mV/V f.s.";
  mVOut.Caption = inVolts ? "Output V (volts)" : "Output V (mV)";
  bind(mVPerV, record_.mVPerV);
  bind(FullScale, record_.FullScale);
  bindUnits(Units, record_.Units);
  bind(mVOut, record_.mVOut);
  Excite.Text(NumberText(kMaxExcitation));
  TestUnits.OnChange = [this] { tryOut(); };
  Excite.OnChange = [this] { tryOut(); };
  Solves.OnPress = [this] {
    state_ = (state_ + 1) % kMVPerVoltStates.size();
    showState();
    tryOut();
  };
  showState();
  show();
  Describe(*this, kMVPerVoltFaces);
}

TextField& frmCalcmVPerVolt::computed() {
  switch (kMVPerVoltStates[state_].solves) {
    case MVPerVoltSolves::kUnits:
      return TestUnits;
    case MVPerVoltSolves::kMVOut:
      return mVOut;
    case MVPerVoltSolves::kExcite:
      break;
  }
  return Excite;
}

void frmCalcmVPerVolt::showState() {
  Solves.Caption = kMVPerVoltStates[state_].name;
  Formula.Text(kMVPerVoltStates[state_].formula);
  for (TextField* field : {&TestUnits, &mVOut, &Excite}) field->Enabled = field != &computed();
}

void frmCalcmVPerVolt::solve() {
  Multiplier.Text(MVPerVoltMultiplier(record_));
  tryOut();
}

void frmCalcmVPerVolt::tryOut() {
  computed().Text(SolveMVPerVolt(kMVPerVoltStates[state_].solves, Multiplier.Text(),
                                 {TestUnits.Text(), mVOut.Text(), Excite.Text()}));
  if (mVOut.Text() != kErrorText) record_.mVOut = mVOut.Text();  // the last good value stays
}

bool frmCalcmVPerVolt::mayEnd() {
  const auto question = ExcitationQuestion(Excite.Text());
  return !question || Ask(Forms(), kExcitationTitle, *question, platform::Buttons::kYesNo) !=
                          platform::Answer::kYes;
}

std::optional<ScalingAnswer> frmCalcmVPerVolt::answerShown() const {
  const auto multiplier = NumberHandedBack(Multiplier.Text());
  if (!multiplier) return std::nullopt;
  return ScalingAnswer{*multiplier, std::nullopt, std::string(Trim(record_.Units))};
}

}  // namespace ostrand
