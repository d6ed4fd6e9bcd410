// What holds of every project that was made on the screens.
#pragma once

#include <string>

#include "model/store.h"

namespace ostrand::testing {

// Each tells what is wrong, line by line; empty when all holds.

// Sensors without a value set by hand hold that of their block or none, thermocouples the scaling
// of their scale, and rows beyond the count nothing at all.
std::string SensorsOutOfStep(const ProjectStore& store);

// Under automatic selection the stored starts are the computed ones, and no terminal has two
// blocks. A differential block that is the first of its kind may lie behind an odd number of
// channels: the allocation does not count the one that it skips, and no terminals are compared.
std::string WrongStarts(const ProjectStore& store);

// Counts of blocks, sensors, multiplexers, excitations and channels within the panel's limits, and
// the totals that are kept of them. Room on the panel is looked at under automatic selection only.
std::string CountsOutOfLimits(const ProjectStore& store);

// All of them.
std::string BrokenInvariants(const ProjectStore& store);

}  // namespace ostrand::testing
