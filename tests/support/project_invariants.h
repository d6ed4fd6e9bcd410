// Invariants of every project made on the block screens.
#pragma once

#include <string>

#include "model/store.h"

namespace ostrand::testing {

// Each returns the faults, one a line; empty if there are none.

// Sensors without a value set by hand have that of their block or none, thermocouples the scaling
// of their scale, and rows beyond the count nothing.
std::string SensorsOutOfStep(const ProjectStore& store);

// With automatic selection the stored starts equal the computed ones, and no terminal has two
// blocks. Done of a list of blocks ensures this; switching to automatic selection does not. A
// differential block that is the first of its kind may follow an odd number of channels: the
// allocation does not count the channel that it skips, and no terminals are compared.
std::string WrongStarts(const ProjectStore& store);

// The blocks fit on the multiplexers and, with automatic selection, on the panel. The configuration
// can reduce the channels of existing blocks.
std::string ChannelsExceeded(const ProjectStore& store);

}  // namespace ostrand::testing
