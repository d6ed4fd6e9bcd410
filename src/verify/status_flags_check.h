// Flags that the status monitor sets and that something else in the project uses as well.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// None unless the status monitor is on.
Findings StatusFlagFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Asks whether to leave them so; No sets `bad`. `mode` is the caller's and makes no difference.
void CheckStatusFlags(const CheckContext& context, bool& bad, i16 mode);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
