// Type, temperature scale and range of a block of thermocouples.
#pragma once

#include <string_view>

#include "controls/choice.h"
#include "controls/control.h"

namespace ostrand {

class AnalogSetup;

class ThermocoupleControls {
 public:
  Choice TypeNo;
  Choice Scale;
  Choice Range;    // the two thermocouple ranges, as temperatures
  Label TypeInfo;  // replaces the ranges; its title is the caption

  ThermocoupleControls(AnalogSetup& screen, std::string_view scaleName, std::string_view rangeName);

  void Show();

 private:
  void onType();
  void onScale();
  void setTypeInfo();

  AnalogSetup& screen_;
};

}  // namespace ostrand
