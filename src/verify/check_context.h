// The input of the checks.
#pragma once

#include "model/store.h"
#include "model/variables.h"
#include "model/warnings.h"
#include "platform/forms.h"

namespace ostrand {

// All members must outlive the context.
struct CheckContext {
  ProjectStore& store;
  platform::Forms& forms;
  i32 WarningMessageMask;
  const CalcVarRefs& calcVarRefs;  // collected when the project was opened

  [[nodiscard]] bool Warns(i32 bits) const { return (WarningMessageMask & bits) != 0; }
};

}  // namespace ostrand
