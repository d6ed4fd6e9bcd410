// Projects made by chance, and the largest one.
#pragma once

#include <cstdint>

#include "model/store.h"

namespace ostrand::testing {

// A project with its defaults and the logger's constants, then filled by chance: all families,
// counts and codes inside their limits. Holds only what a project file keeps, so that reading
// what was saved gives the same members, and nothing that the screens would not leave behind, so
// that its program is sound: every expression is about flags, every name is the only one of its
// kind but for two calculated fields, and the panel has room for the bridges. The same seed gives
// the same project everywhere.
void MakeRandomProject(ProjectStore& store, std::uint32_t seed);

// Everything that there is room for: 7 blocks of 100 repetitions of each analog kind, 2 of pulses,
// 128 CAN items of 64 values, every alias and every table.
void MakeLargestProject(ProjectStore& store);

}  // namespace ostrand::testing
