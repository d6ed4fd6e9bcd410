// The warnings that a user can switch on and off.
#pragma once

#include "model/store.h"

namespace ostrand {

// Bits of WarningMessageMask. Unnamed bits are kept and ignored.
enum WarningBit : i32 {
  kWarnVariablesAfterEdits = 1,
  kWarnVariablesOnSave = 2,
  kWarnMeasTime = 8,
  kWarnFloatingGround = 16,
  kWarnTableIntervals = 2048,  // outside of a save
  kShowCompileResult = 4096    // a good one too
};

}  // namespace ostrand
