// The warnings that a user can switch.
#pragma once

#include "model/store.h"

namespace ostrand {

// Bits of WarningMessageMask. Those without a name are kept and mean nothing.
enum WarningBit : i32 {
  kWarnVariablesAfterEdits = 1,
  kWarnVariablesOnSave = 2,
  kWarnMeasTime = 8,
  kWarnFloatingGround = 16,
  kWarnTableIntervals = 2048,  // outside of a save
  kShowCompileResult = 4096    // a good one too
};

}  // namespace ostrand
