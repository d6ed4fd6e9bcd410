// The screen of the resistor calculator.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/resistance.h"

namespace ostrand {

class frmRsCalc final : public Calculator {
 public:
  explicit frmRsCalc(const ScreenContext& context);

  TextField RsOhms;
  Choice Units;  // of the output
  Label Multiplier;

 protected:
  void solve() override;
  void settle() override { kept_.Settle(); }
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;
  void writeRecord() override { store().RsCalc = record_; }

 private:
  struct Shown {
    std::string multiplier;
    std::string units;
  };
  RsCalcRecord record_;
  KeptAnswers<Shown> kept_;
};

}  // namespace ostrand
