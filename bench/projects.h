// Projects for measuring: as large as the limits of the system allow.
#pragma once

#include "model/store.h"

namespace ostrand::bench {

// Seven blocks of 100 repetitions of every kind, pulses, 128 CAN items of 64 values, all aliases
// set, all tables on with every output.
void MakeLargestProject(ProjectStore& store);

// 100 sensors of each kind, as many as inputs with four multiplexers or more, 100 CAN values and
// all calculated fields; all tables on with every output.
void MakeWiredProject(ProjectStore& store);

// Gives blocks the kinds that open the screens of their own: ranges of a thermocouple, a
// resistance.
void MakeEveryScreenReachable(ProjectStore& store);

// A project whose program fills the line buffer nearly to its end, without a failure.
void MakeLongestProgram(ProjectStore& store);

}  // namespace ostrand::bench
