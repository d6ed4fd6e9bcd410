// Screens of other rooms that a setup screen can call up. A button without its screen is disabled.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "conditions/aliases.h"
#include "model/alias_rename.h"
#include "model/enums.h"

namespace ostrand {

// Who asks for a calculator: "Volts", "TK40M", "Brdg", "Pulse", "Totalize", "Temp".
struct SolveSource {
  std::string_view kind;
  bool onTemperature = false;  // "TK40M" on thermocouples
  bool inVolts = false;        // "Brdg" that gives volts per volt
  bool inOhms = false;         // "Brdg" that gives a resistance
};

// The rows of a block's field names, for editing in place.
struct FieldNamesRequest {
  OrvusDataObjTypes kind;
  int block;         // from 1
  std::string name;  // of the block's array
  DefaultScaling defaults;
  bool gaugeFactor = false;  // strain: the offset column is a gauge factor
  std::span<RepAlias> aliases;
  bool calibrated = false;  // on site: multipliers and offsets are called after their values
  // Of the calculators for one of them; without a kind it is that of the block.
  SolveSource solveSource = {};
  // After the project has got the new names: renames what the screens keep in copies.
  std::function<void(const AliasRenames&)> onRename = {};
};

struct SetupHooks {
  // Changes the scaling; false when the user cancelled.
  std::function<bool(const SolveSource&, DefaultScaling&)> Solve;
  std::function<void(const FieldNamesRequest&)> FieldNames;
  // Output of the multiplexers' reference temperature.
  std::function<void()> ReferenceOutput;
};

}  // namespace ostrand
