// Measurement times of a scan, in microseconds (module ORVUS_COMMON).
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// The sum of `BlockTime` over the blocks in use, by kind. A block whose time is not known yet has
// 0. Sums are exact, limited to an i32. A block count above the limit of its kind raises Fault 9.
i32 ThermocoupleTime(const ProjectStore& store);  // with `PanelTime`, which is measured for them
i32 VoltageTime(const ProjectStore& store);
i32 BridgeTime(const ProjectStore& store);
i32 PulseTime(const ProjectStore& store);  // of both slots
i32 TK40MTime(const ProjectStore& store);

// The time of all measurements of a scan: the battery and the kinds above. Writing outputs, ports
// and flags, and CAN items count 0. Limited to an i32.
i32 EstMeasTime(const ProjectStore& store);

}  // namespace ostrand::ORVUS_COMMON
