// The format version of a project (module ORVUS_COMMON).
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// Whether a save writes triggers or write conditions in a form that the format version of the
// project does not have: some table has any of them, and the first character of `Version` is a
// number below 6, or no number.
bool NeedsUpgrade(const ProjectStore& store);

}  // namespace ostrand::ORVUS_COMMON
