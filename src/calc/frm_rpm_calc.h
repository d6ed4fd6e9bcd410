// The screen of the RPM calculator.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/rpm.h"

namespace ostrand {

class frmRPMCalc final : public RateCalculator {
 public:
  explicit frmRPMCalc(const ScreenContext& context);

  TextField Pulses;  // of a revolution

 protected:
  [[nodiscard]] std::optional<RateAnswers> rates() const override { return SolveRpm(record_); }
  [[nodiscard]] std::string_view rateUnits() const override { return kRpmUnits; }
  void writeRecord() override { store().RpmCalc = record_; }

 private:
  RpmCalcRecord record_;
};

}  // namespace ostrand
