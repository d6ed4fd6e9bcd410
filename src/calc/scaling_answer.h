// What goes between a setup screen and the calculators that find its scaling.
#pragma once

#include <optional>
#include <string>

namespace ostrand {

// The screen that asks.
struct CalculatorSource {
  std::string kind;  // of its inputs: "Volts", "TK40M", "Brdg", "Pulse", "Totalize", "Temp",
                     // or "FieldGrid" for one repetition of a block
  std::string blockKind = {};  // of a "FieldGrid": the kind of its block
  bool onTemperature = false;  // a "TK40M" block of thermocouples
  bool inVolts = false;        // a "Brdg" block that gives volts per volt, not millivolts
  bool inOhms = false;         // a "Brdg" block that gives a resistance
};

struct ScalingAnswer {
  std::string multiplier;             // a number, as a field takes it
  std::optional<std::string> offset;  // nothing where the calculator gives none
  std::string units;                  // empty where none were named; the block's own ones stay
};

}  // namespace ostrand
