// The arrays of level crossing, which blocks, CAN items and calculated fields declare alike.
#pragma once

#include <string_view>

#include "generator/program_run.h"

namespace ostrand {

// Declares the level crossing arrays of an output in table `t`, with their data. `array` is the
// stem of their names, `label` the head of the comments. `secondDataComment` is the whole comment
// of the second data line if that reaches the comment column.
void PutLevelArrays(ProgramRun& run, const OutputSet& output, int t, std::string_view array,
                    std::string_view label, std::string_view secondDataComment);

}  // namespace ostrand
