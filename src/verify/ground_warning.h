// Differential measurements that nothing ties to the logger's ground.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

enum class GroundGroup { kThermocouples, kTK40MThermocouples, kVoltages };

Findings FloatingBlocks(const ProjectStore& store, GroundGroup group);
// Of all groups, in their order.
Findings FloatingGroundFindings(const ProjectStore& store);

namespace ORVUS_COMMON {

// Shown after a clean check, before the save; no box without such a block. Switched by
// kWarnFloatingGround.
void FloatingGroundWarning(const CheckContext& context);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
