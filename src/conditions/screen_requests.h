// Requests for screens that several folders open.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "conditions/aliases.h"
#include "controls/screen_factory.h"
#include "model/alias_rename.h"
#include "model/enums.h"

namespace ostrand {

// ---- frmSolveList: the calculators of multiplier and offset -------------------------------------

// The source of a request for a calculator.
struct SolveSource {
  std::string_view kind;            // of its inputs: "Volts", "TK40M", "Brdg", "Pulse", "Totalize",
                                    // "Temp", or "FieldGrid" for one repetition of a block
  std::string_view blockKind = {};  // of a "FieldGrid": the kind of its block
  bool onTemperature = false;       // a "TK40M" block of thermocouples
  bool inVolts = false;             // a "Brdg" block that gives volts per volt, not millivolts
  bool inOhms = false;              // a "Brdg" block that gives a resistance
};

struct SolveRequest {
  SolveSource source;
  DefaultScaling scaling;  // the present scaling; receives the answer
  bool answered = false;
};

// Opens the calculators; false when the user left without an answer.
bool SolveScaling(const ScreenContext& context, SolveRequest& request);

// ---- frmFldName: names, units and scaling of single sensors -------------------------------------

// The rows of a block's field names, for editing in place.
struct FieldNamesRequest {
  OrvusDataObjTypes kind;
  int block;         // from 1
  std::string name;  // of the block's array
  DefaultScaling defaults;
  bool gaugeFactor = false;  // strain: the offset column is a gauge factor
  std::span<RepAlias> aliases;
  bool calibrated = false;  // on site: multipliers and offsets are named after their values
  // Source of the calculators for one repetition; without a kind that of the block.
  SolveSource solveSource = {};
  // Called after the names in the project changed: renames the copies that screens keep.
  std::function<void(const AliasRenames&)> onRename = {};
};

// ---- frmPortTables: what the tables store of a single value -------------------------------------

enum class SingleValue {
  kPortBytes,  // read or written as a byte; number is the slot, from 0
  kPanelRef,   // reference temperature of the panel
  kTK40MRef,   // reference temperatures of the multiplexers
  kCalcField,  // number is the field, from 1
  kBatteryVolts
};

// A value of the project.
struct ValueOutputsRequest {
  SingleValue value;
  int number = 0;
};

// An item with the complete set of outputs.
struct ItemOutputsRequest {
  std::string caption;
  std::string source;  // name in the program, as LevelStem gives it
  std::string& resolution;
  flag& isPublic;
  OutputSet& output;
};

}  // namespace ostrand
