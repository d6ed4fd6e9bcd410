// What holds of every project that was made on the screens of blocks.
#pragma once

#include <string>

#include "model/store.h"

namespace ostrand::testing {

// Each tells what is wrong, line by line; empty when all holds.

// Sensors without a value set by hand hold that of their block or none, thermocouples the scaling
// of their scale, and rows beyond the count nothing at all.
std::string SensorsOutOfStep(const ProjectStore& store);

// Under automatic selection the stored starts are the computed ones, and no terminal has two
// blocks. Done of a list of blocks brings that about; switching to automatic selection does not. A
// differential block that is the first of its kind may lie behind an odd number of channels: the
// allocation does not count the one that it skips, and no terminals are compared.
std::string WrongStarts(const ProjectStore& store);

// Counts of blocks, sensors, excitations and pulses within their limits, the totals that are kept
// of them, and whether the reference temperature of the multiplexers is measured.
std::string CountsOutOfLimits(const ProjectStore& store);

// Times, channels and kinds of blocks that their screens don't allow, and times of bridges and
// pulses other than they take.
std::string ValuesOutOfLimits(const ProjectStore& store);

// Room on the multiplexers and, under automatic selection, on the panel. The configuration can take
// room away from blocks that are there already.
std::string RoomOverdrawn(const ProjectStore& store);

}  // namespace ostrand::testing
