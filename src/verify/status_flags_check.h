// Flags set by the status monitor that something else in the project uses too.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// None unless the status monitor is on.
Findings StatusFlagFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Asks whether to leave them so; No sets `bad`. `mode` of the caller has no effect.
void CheckStatusFlags(const CheckContext& context, bool& bad, i16 mode);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
