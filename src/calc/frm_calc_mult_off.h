// The screens of the two-point calculators.
#pragma once

#include "calc/calculator_screen.h"
#include "calc/source_kinds.h"
#include "calc/two_point.h"
#include "controls/numeric_field.h"

namespace ostrand {

class LineCalculator : public Calculator {
 public:
  TextField YMax, YMin, XMax, XMin;
  UnitField Units;  // of Y
  Label XAxis;      // quantity of X: "Input mV"
  Label XUnits;
  Label M, B;
  // The try-out: a point of the line, by either coordinate or by the scroll bar.
  TextField YOut, XOut;
  NumericField Scroll;  // 0 at YMin to kLineScrollSteps at YMax

 protected:
  LineCalculator(const ScreenContext& context, std::string_view name, LineCalcRecord& record,
                 const InputAxis& axis);

  void solve() override;
  void settle() override { kept_.Settle(); }
  [[nodiscard]] std::optional<ScalingAnswer> answerShown() const override;
  void writeRecord() override { stored_ = record_; }

 private:
  void onYOut();
  void onXOut();
  void onScroll();
  void showXOut();
  void showScroll();

  LineCalcRecord& stored_;
  LineCalcRecord record_;
  KeptAnswers<LineAnswers> kept_;
};

class frmCalcMultOff final : public LineCalculator {
 public:
  frmCalcMultOff(const ScreenContext& context, const InputAxis& axis)
      : LineCalculator(context, "frmCalcMultOff", context.store.MultOffCalc, axis) {}
};

// The same for the ratio of a bridge.
class frmCalcPot final : public LineCalculator {
 public:
  frmCalcPot(const ScreenContext& context, const InputAxis& axis)
      : LineCalculator(context, "frmCalcPot", context.store.PotCalc, axis) {}
};

}  // namespace ostrand
