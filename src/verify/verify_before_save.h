// All checks of a project.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {
namespace ORVUS_COMMON {

// The checks that run before a save, which ask and may repair. `bad` becomes whether something
// stands against saving, `upgrade` whether the save changes the format of the project.
void VerifyBeforeSave(const CheckContext& context, bool& bad, bool& upgrade);

}  // namespace ORVUS_COMMON

// Everything that any check finds, in the order of the checks and those outside of a save last.
// Asks nothing and changes nothing; only a failure of a check itself shows its box. Checks that
// WarningMessageMask switches off find nothing. The estimate of the measurement time is taken as
// it stands in the store.
Findings CheckAll(const CheckContext& context);

}  // namespace ostrand
