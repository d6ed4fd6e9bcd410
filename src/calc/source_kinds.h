// The kinds of setup screen that open a scaling calculator, by name, and the input axis each gives
// it.
#pragma once

#include <string_view>

namespace ostrand {

struct InputAxis {
  std::string_view label;
  std::string_view units;
};

// The axis for a source kind. `onTemperature` tells what a "TK40M" block measures; `inVolts` that a
// "Brdg" block gives volts per volt instead of millivolts per volt. Empty for a kind that gives no
// axis of its own, such as "FieldGrid", which stands for the block it was opened from.
InputAxis InputAxisOf(std::string_view sourceKind, bool onTemperature = false,
                      bool inVolts = false);

}  // namespace ostrand
