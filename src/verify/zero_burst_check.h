// Zeroing and calibration on site, which exclude burst mode.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// Blocks with a zero flag, and blocks with calibration on site, of a project in burst mode.
Findings ZeroFlagFindings(const ProjectStore& store);
Findings CalOnSiteFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Offers to clear first all zero flags, then all calibrations on site. Cancel sets `bad`.
void VerifyZeroBurst(const CheckContext& context, bool& bad);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
