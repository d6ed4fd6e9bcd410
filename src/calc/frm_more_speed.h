// The screen of the speed calculator for sensors of known pulses per length.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/more_speed.h"

namespace ostrand {

class frmMoreSpeed final : public RateCalculator {
 public:
  explicit frmMoreSpeed(const ScreenContext& context);

  Choice InSystem;
  Choice InUnits;  // those of the system
  TextField InPulses;
  Choice OutSystem;
  Choice OutUnits;   // those of the system and the time
  CheckBox UseMins;  // or seconds
  Label OutName;     // the unit of the speed in short

 protected:
  void solve() override;
  [[nodiscard]] std::optional<RateAnswers> rates() const override {
    return SolveMoreSpeed(record_);
  }
  [[nodiscard]] std::string_view rateUnits() const override { return MoreSpeedUnits(record_); }
  void writeRecord() override { store().MoreSpeedCalc = record_; }

 private:
  void listUnits();

  MoreSpeedCalcRecord record_;
};

}  // namespace ostrand
