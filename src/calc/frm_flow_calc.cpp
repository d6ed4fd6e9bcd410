#include "calc/frm_flow_calc.h"

#include "controls/faces.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Fill in the calibration data, select the system to use, select the desired output and then "
    "the proper multiplier will be computed.";

constexpr Face kFlowFaces[] = {
    {"CalFactor", "Calibration", "Calibration factor", ControlKind::kOptions},
    {"Pulses", "Calibration", "Calibration value"},
    {"OutSystem", "Output", "System", ControlKind::kOptions},
    {"OutUnits", "Output", "Time base", ControlKind::kOptions},
};

}  // namespace

frmFlowCalc::frmFlowCalc(const ScreenContext& context)
    : RateCalculator(context, "frmFlowCalc", kHelp, "Flow"),
      CalFactor(*this, "CalFactor"),
      Pulses(*this, "Pulses", NumberType::kDouble),
      OutSystem(*this, "OutSystem"),
      OutUnits(*this, "OutUnits"),
      record_(context.store.FlowCalc) {
  Caption = "FLOW CALCULATOR";
  CalFactor.SetItems({"Pulses/Gallon", "Pulses/Liter"});
  CalFactor.Items[0].ToolTip = "Click if the calibration factor is in Pulses per Gallon.";
  CalFactor.Items[1].ToolTip = "Click if the calibration factor is in Pulses per Liter.";
  OutSystem.SetItems({"English", "Metric"});
  OutUnits.SetItems({"Second", "Minute", "Hour"});
  OutUnits.PickAt(0);  // for a time base without an item
  bindCodes(CalFactor, record_.CalFactor);
  bindCodes(OutSystem, record_.OutSystem);
  const bool hasTimeBase = record_.OutUnits >= 1 && record_.OutUnits <= 3;
  bindCodes(OutUnits, record_.OutUnits);
  if (!hasTimeBase) {
    const Loading loading(*this);
    OutUnits.PickAt(0);
  }
  bind(WhatIf, record_.WhatIf);
  Pulses.Value(record_.Pulses);
  pulses_ = shownPulses_ = Pulses.Text();
  bind(Pulses, pulses_);
  Pulses.OnTake = [this] {
    pulses_ = Pulses.Text();
    solveAndSettle();
  };
  solveAndSettle();
  Describe(*this, kFlowFaces);
}

void frmFlowCalc::solve() {
  record_.Pulses = pulses_ == shownPulses_ ? store().FlowCalc.Pulses : TypedNumber(pulses_);
  RateCalculator::solve();
}

}  // namespace ostrand
