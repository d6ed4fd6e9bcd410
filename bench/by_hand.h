// The yardstick of the generator: the longest program written by hand with {fmt}.
#pragma once

#include <string>

#include "model/store.h"
#include "platform/clock.h"

namespace ostrand::bench {

// The program of MakeLongestProgram, every value taken from the store. Handles only such projects:
// thermocouples and voltages in differential pairs, with exceptions, in tables without triggers.
std::string ProgramByHand(const ProjectStore& store, const platform::Moment& now);

}  // namespace ostrand::bench
