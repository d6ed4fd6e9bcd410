// The screen of the flow calculator.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/flow.h"
#include "controls/numeric_field.h"

namespace ostrand {

class frmFlowCalc final : public RateCalculator {
 public:
  explicit frmFlowCalc(const ScreenContext& context);

  Choice CalFactor;     // pulses per gallon or per liter
  NumericField Pulses;  // the calibration
  Choice OutSystem;
  Choice OutUnits;  // the time base

 protected:
  void solve() override;
  [[nodiscard]] std::optional<RateAnswers> rates() const override { return SolveFlow(record_); }
  [[nodiscard]] std::string_view rateUnits() const override { return FlowUnits(record_); }
  void writeRecord() override { store().FlowCalc = record_; }

 private:
  FlowCalcRecord record_;
  // The calibration as typed, and as first shown: an unedited one keeps the digits that do not fit
  // into the field.
  std::string pulses_, shownPulses_;
};

}  // namespace ostrand
