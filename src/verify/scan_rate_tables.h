// Tables that store every scan but contain instructions that need several.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// One for each table in use that is synchronous or as fast as the scan and has such an instruction.
// The save does not ask about them.
Findings ScanRateFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Asks on behalf of the table screen: Yes turns those instructions into samples, No sets `bad`.
void CheckScanRateTables(const CheckContext& context, bool& bad);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
