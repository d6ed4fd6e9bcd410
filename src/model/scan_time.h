// How long the measurements of one scan take, in microseconds (module ORVUS_COMMON).
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// The `BlockTime` of the blocks in use, added up by kind. A block whose time is not known yet has 0
// and adds nothing. Sums are exact; one past the limits of an i32 is given as the nearer limit.
// A block count above the limit of its kind raises Fault 9.
i32 ThermocoupleTime(const ProjectStore& store);  // with `PanelTime`, which is measured for them
i32 VoltageTime(const ProjectStore& store);
i32 BridgeTime(const ProjectStore& store);
i32 PulseTime(const ProjectStore& store);  // of both slots
i32 TK40MTime(const ProjectStore& store);

// The time of all measurements of a scan: the battery and the kinds above. Writing outputs, ports
// and flags counts as nothing, and so do CAN items. Limited in the same way.
i32 EstMeasTime(const ProjectStore& store);

}  // namespace ostrand::ORVUS_COMMON
