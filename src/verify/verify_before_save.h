// All checks of a project.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {
namespace ORVUS_COMMON {

// Runs the checks before a save, which ask and may repair. Sets `bad` if anything prevents saving,
// and `upgrade` if the save changes the format of the project.
void VerifyBeforeSave(const CheckContext& context, bool& bad, bool& upgrade);

}  // namespace ORVUS_COMMON

// The findings of all checks, in their order, those outside of a save last. Asks nothing and
// changes nothing; only a failure of a check itself shows its box. Checks switched off by
// WarningMessageMask find nothing. Uses the estimate of the measurement time in the store.
Findings CheckAll(const CheckContext& context);

}  // namespace ostrand
