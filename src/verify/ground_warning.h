// Differential measurements without a connection to the logger's ground.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

enum class GroundGroup { kThermocouples, kTK40MThermocouples, kVoltages };

Findings FloatingBlocks(const ProjectStore& store, GroundGroup group);
// The floating blocks of all groups, in their order.
Findings FloatingGroundFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Shown after the checks found nothing, before the save; only if there is such a block. Switched by
// kWarnFloatingGround.
void FloatingGroundWarning(const CheckContext& context);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
