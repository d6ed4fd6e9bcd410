// What a pulse block can measure with.
#pragma once

#include "model/store.h"

namespace ostrand {

// Whether the block has a statement in the program: it has repetitions, and its input is one of
// the kinds that the logger knows.
bool HasPulseStatement(const PulseBlockData& block);

}  // namespace ostrand
