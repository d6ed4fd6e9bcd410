// Range, scaling and zeroing of a block that measures volts.
#pragma once

#include <string_view>

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/text_field.h"

namespace ostrand {

class AnalogSetup;

class VoltControls {
 public:
  UnitField Units;
  NumericField DefaultMult;
  NumericField DefaultOffset;
  Choice Range;
  CheckBox CalOnSite;
  Choice ZeroFlag;
  Opener Solve;

  VoltControls(AnalogSetup& screen, std::string_view unitsName, std::string_view solveKind);

  // For thermocouples only the scaling is visible; a new scale sets it.
  void Show();

 private:
  void onCalOnSite();
  void solve();

  AnalogSetup& screen_;
  std::string_view solveKind_;
};

}  // namespace ostrand
