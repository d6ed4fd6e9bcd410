// The screen of the bridge output calculator.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/mv_per_volt.h"

namespace ostrand {

class frmCalcmVPerVolt final : public Calculator {
 public:
  // `inVolts` for a bridge with output in volts per volt.
  frmCalcmVPerVolt(const ScreenContext& context, bool inVolts);

  TextField mVPerV;     // rated output at full scale
  TextField FullScale;  // rated capacity
  UnitField Units;
  Label Multiplier;
  // The try-out. The button switches to the next state; the computed value cannot be typed.
  Button Solves;  // "UNITS", "MVOUT", "EXCITE"
  Label Formula;
  TextField TestUnits, mVOut;
  TextField Excite;  // mV

 protected:
  void solve() override;
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;
  void writeRecord() override { store().MVPerVoltCalc = record_; }
  bool mayEnd() override;

 private:
  void showState();
  void tryOut();
  [[nodiscard]] TextField& computed();

  MVPerVoltCalcRecord record_;
  std::size_t state_ = 0;  // in kMVPerVoltStates
};

}  // namespace ostrand
