// The kinds of input of pulse blocks.
#pragma once

#include "model/store.h"

namespace ostrand {

// Whether the block has a statement in the program: it has repetitions, and the logger knows its
// kind of input.
bool HasPulseStatement(const PulseBlockData& block);

}  // namespace ostrand
