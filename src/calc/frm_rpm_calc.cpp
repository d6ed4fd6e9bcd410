#include "calc/frm_rpm_calc.h"

#include "controls/faces.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Enter the number of pulses per revolution from the sensor and the proper multiplier will be "
    "computed.";

constexpr Face kRpmFaces[] = {
    {"Pulses", "Sensor", "Pulses/Revolution"},
};

}  // namespace

frmRPMCalc::frmRPMCalc(const ScreenContext& context)
    : RateCalculator(context, "frmRPMCalc", kHelp, "RPM"),
      Pulses(*this, "Pulses"),
      record_(context.store.RpmCalc) {
  Caption = "RPM CALCULATOR";
  bind(Pulses, record_.Pulses);
  bind(WhatIf, record_.WhatIf);
  solveAndSettle();
  Describe(*this, kRpmFaces);
}

}  // namespace ostrand
