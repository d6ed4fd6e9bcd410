// The format version of a project (module ORVUS_COMMON).
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// Whether a save writes triggers or write conditions in a form newer than the project's format
// version: some table has any of them, and `Version` does not begin with a digit from 6 to 9.
bool NeedsUpgrade(const ProjectStore& store);

}  // namespace ostrand::ORVUS_COMMON
