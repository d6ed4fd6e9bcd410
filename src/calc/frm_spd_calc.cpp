#include "calc/frm_spd_calc.h"

#include "controls/faces.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Select the system you use, fill in the mechanism boxes, fill in the wheel data and then the "
    "proper multiplier will be computed.";

constexpr Face kSpeedFaces[] = {
    {"MKSSpd", "System", "System", ControlKind::kOptions},
    {"RevSpeed", "Mechanism", "Sensor shaft speed (RPM)"},
    {"PulsesSec", "Mechanism", "Pulses/Second at this speed"},
    {"GearRatio(1)", "Mechanism", "Gear ratio: shaft turns"},
    {"GearRatio(2)", "Mechanism", "Gear ratio: wheel turns"},
    {"WheelSize", "Wheel"},
    {"SizeOption", "Wheel", "Size measured", ControlKind::kOptions},
    {"LengthOption", "Speed", "Length unit", ControlKind::kOptions},
    {"UseMins", "Speed", "Minutes"},
    {"LengthPerPulse", "Result", "Length per pulse", ControlKind::kFigure},
    {"LengthPerPulseUnits", "Result", "Unit of length per pulse"},
    {"PulsesPerLength", "Result", "Pulses per length", ControlKind::kFigure},
    {"PulsesPerLengthUnits", "Result", "Unit of pulses per length"},
    {"Multiplier", "Result", "Multiplier", ControlKind::kFigure},
    {"Units", "Result", "Units"},
};

}  // namespace

frmSpdCalc::frmSpdCalc(const ScreenContext& context)
    : Calculator(context, "frmSpdCalc", kHelp),
      MKSSpd(*this, "MKSSpd"),
      RevSpeed(*this, "RevSpeed"),
      PulsesSec(*this, "PulsesSec"),
      GearRatio1(*this, "GearRatio(1)"),
      GearRatio2(*this, "GearRatio(2)"),
      WheelSize(*this, "WheelSize"),
      SizeOption(*this, "SizeOption"),
      LengthOption(*this, "LengthOption"),
      UseMins(*this, "UseMins"),
      LengthPerPulse(*this, "LengthPerPulse"),
      LengthPerPulseUnits(*this, "LengthPerPulseUnits"),
      PulsesPerLength(*this, "PulsesPerLength"),
      PulsesPerLengthUnits(*this, "PulsesPerLengthUnits"),
      Multiplier(*this, "Multiplier"),
      Units(*this, "Units"),
      record_(context.store.SpeedCalc) {
  Caption = "SPEED CALCULATOR";
  MKSSpd.SetItems({"English", "Metric"});
  MKSSpd.PickAt(record_.MKSSpd != 0 ? 1 : 0);
  MKSSpd.OnPick = [this] {
    SetSwitch(record_.MKSSpd, MKSSpd.Index() == 1);
    solveAndSettle();
  };
  SizeOption.SetItems({"Circumference", "Diameter", "Radius"});
  nameLengths();
  bind(RevSpeed, record_.RevSpeed);
  bind(PulsesSec, record_.PulsesSec);
  bind(GearRatio1, record_.GearRatio[1]);
  bind(GearRatio2, record_.GearRatio[2]);
  bind(WheelSize, record_.WheelSize);
  bindCodes(SizeOption, record_.SizeOption);
  bindCodes(LengthOption, record_.LengthOption);
  bindSwitch(UseMins, record_.UseMins);
  solveAndSettle();
  Describe(*this, kSpeedFaces);
}

void frmSpdCalc::nameLengths() {
  const Loading loading(*this);
  if (record_.MKSSpd != 0) {
    WheelSize.Caption = "Wheel size (cm)";
    LengthOption.SetItems({"Kilometers", "Meters", "Centimeters"});
  } else {
    WheelSize.Caption = "Wheel size (inches)";
    LengthOption.SetItems({"Miles", "Feet", "Inches"});
  }
  LengthOption.PickAt(record_.LengthOption - 1);
}

void frmSpdCalc::solve() {
  nameLengths();
  std::optional<Shown> now;
  if (const auto answers = SolveSpeed(record_)) {
    now = {*answers, SpeedUnitsOf(record_)};
    if (!answers->pulsesPerLength && kept_.Settled()) {
      now->answers.pulsesPerLength = kept_.Settled()->answers.pulsesPerLength;
      now->units.pulsesPerLength = kept_.Settled()->units.pulsesPerLength;
    }
  }
  kept_.Take(now);
  const auto& shown = kept_.Shown();
  if (!shown) return;
  LengthPerPulse.Text(shown->answers.lengthPerPulse);
  LengthPerPulseUnits.Text(shown->units.lengthPerPulse);
  PulsesPerLength.Text(shown->answers.pulsesPerLength.value_or(""));
  PulsesPerLengthUnits.Text(shown->units.pulsesPerLength);
  Multiplier.Text(shown->answers.multiplier);
  Units.Text(shown->units.multiplier);
}

std::optional<ScalingAnswer> frmSpdCalc::answerShown() const {
  const auto multiplier = NumberHandedBack(Multiplier.Text());
  if (!multiplier) return std::nullopt;
  return ScalingAnswer{*multiplier, std::nullopt, Units.Text()};
}

}  // namespace ostrand
