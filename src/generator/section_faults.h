// Where a section of the program failed.
#pragma once

#include <string>

#include "generator/program_lines.h"
#include "model/store.h"

namespace ostrand {

// The block, item or field at fault and the line that could not be stored: "in Volt Block 2, at:
// Alias VBlk2(1) = ...". A failure between two lines gives the last one stored: "in Can Item 3,
// after: ...".
std::string PlaceOfFault(const ProjectStore& store, const ProgramLines& lines);

}  // namespace ostrand
