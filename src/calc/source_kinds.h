// The kinds of setup screen that open a scaling calculator, by name, and the input axis for each.
#pragma once

#include <string_view>

namespace ostrand {

struct InputAxis {
  std::string_view label;
  std::string_view units;
};

// The axis for a source kind. `onTemperature` means a "TK40M" block that measures temperature;
// `inVolts` a "Brdg" block in volts per volt instead of millivolts per volt. Empty for kinds
// without an axis, such as "FieldGrid", which uses that of the block it was opened from.
InputAxis InputAxisOf(std::string_view sourceKind, bool onTemperature = false,
                      bool inVolts = false);

}  // namespace ostrand
