// Projects made by chance, and the largest one.
#pragma once

#include <cstdint>

#include "model/store.h"

namespace ostrand::testing {

// A project with its defaults and the logger's constants, then filled by chance: all families,
// counts and codes inside their limits. Holds only what a project file keeps, so that reading
// what was saved gives the same members. The same seed gives the same project everywhere.
void MakeRandomProject(ProjectStore& store, std::uint32_t seed);

// Everything that there is room for: 7 blocks of 100 repetitions of each analog kind, 2 of pulses,
// 128 CAN items of 64 values, every alias and every table.
void MakeLargestProject(ProjectStore& store);

}  // namespace ostrand::testing
