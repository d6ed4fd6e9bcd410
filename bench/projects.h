// Projects for measuring: as large as the limits of the system allow.
#pragma once

#include "model/store.h"

namespace ostrand::bench {

// Seven blocks of 100 repetitions of every kind, pulses, 128 CAN items of 64 values, all aliases
// set, all tables on with every output.
void MakeLargestProject(ProjectStore& store);

// 100 sensors of each kind, the inputs of four multiplexers or more, 100 CAN values and all
// calculated fields; all tables on with every output.
void MakeWiredProject(ProjectStore& store);

// Gives blocks the kinds that open separate screens: ranges of a thermocouple, a resistance.
void MakeEveryScreenReachable(ProjectStore& store);

// A project whose program nearly fills the line buffer.
void MakeLongestProgram(ProjectStore& store);

}  // namespace ostrand::bench
