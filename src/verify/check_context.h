// What the checks work on.
#pragma once

#include "model/store.h"
#include "model/variables.h"
#include "platform/forms.h"

namespace ostrand {

// Bits of WarningMessageMask that switch checks.
enum WarningBit : i32 {
  kWarnVariablesOnSave = 2,
  kWarnMeasTime = 8,
  kWarnFloatingGround = 16,
  kWarnTableIntervals = 2048  // outside of a save
};

// All of it must outlive the context.
struct CheckContext {
  ProjectStore& store;
  platform::Forms& forms;
  i32 WarningMessageMask;
  const CalcVarRefs& calcVarRefs;  // collected when the project was opened

  [[nodiscard]] bool Warns(i32 bits) const { return (WarningMessageMask & bits) != 0; }
};

}  // namespace ostrand
