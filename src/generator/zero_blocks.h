// The blocks that a flag zeroes.
#pragma once

#include <functional>
#include <vector>

#include "generator/program_run.h"

namespace ostrand {

using BlockRefs = std::vector<std::reference_wrapper<const BlockView>>;

// Blocks with repetitions whose ZeroFlag is `group`: voltage, bridge, multiplexer, in this order.
BlockRefs FlaggedBlocks(ProgramRun& run, int group);

// Those of them with a zero subroutine: multiplexer blocks only if they measure voltage and the
// logger has a multiplexer.
BlockRefs ZeroedBlocks(ProgramRun& run, int group);

// Scans of a zeroing burst, 2 to 100. Fault 11 for a scan interval of 0.
int ZeroScans(const ProjectStore& store);

}  // namespace ostrand
