// The screen of the speed calculator for a wheel and gears.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/speed.h"

namespace ostrand {

class frmSpdCalc final : public Calculator {
 public:
  explicit frmSpdCalc(const ScreenContext& context);

  Choice MKSSpd;        // English or metric
  TextField RevSpeed;   // turns of the sensor's shaft in a minute
  TextField PulsesSec;  // at that speed
  TextField GearRatio1, GearRatio2;
  TextField WheelSize;
  Choice SizeOption;    // the known dimension of the wheel
  Choice LengthOption;  // length of the speed
  CheckBox UseMins;     // or seconds
  Label LengthPerPulse, LengthPerPulseUnits;
  Label PulsesPerLength, PulsesPerLengthUnits;
  Label Multiplier, Units;

 protected:
  void solve() override;
  void settle() override { kept_.Settle(); }
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;
  void writeRecord() override { store().SpeedCalc = record_; }

 private:
  struct Shown {
    SpeedAnswers answers;
    SpeedUnits units;
  };
  void nameLengths();

  SpeedCalcRecord record_;
  KeptAnswers<Shown> kept_;
};

}  // namespace ostrand
