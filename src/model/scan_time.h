// Measurement times of a scan, in microseconds (module ORVUS_COMMON).
#pragma once

#include <vector>

#include "model/record_layout.h"
#include "model/store.h"

namespace ostrand {

// The time of one measurement of a scan: the battery, the panel temperature, or a block of a kind
// that is timed.
struct ScanShare {
  OutputFamily family = OutputFamily::kBattery;
  int slot = 0;    // of pulse blocks
  int block = 0;   // from 1; 0 for no block
  i32 micros = 0;  // 0 for a time that is not known yet
};

// The measurements of a scan, in the order of its program. A block count above the limit of its
// kind raises Fault 9.
std::vector<ScanShare> ScanShares(const ProjectStore& store);

}  // namespace ostrand

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
