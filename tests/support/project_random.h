// Random projects, and the largest one.
#pragma once

#include <cstdint>
#include <string>

#include "model/store.h"

namespace ostrand::testing {

// A project with its defaults and the logger's constants, then filled at random: all families,
// counts and codes inside their limits. Has only values that a project file keeps, so that it
// survives a save, and that the screens would leave, so that its program is correct: every
// expression is about flags, every name is unique in its kind except for two calculated fields, and
// the bridges fit on the panel. The same seed gives the same project everywhere.
void MakeRandomProject(ProjectStore& store, std::uint32_t seed);

// The file of that project, at the time of all golden files.
std::string RandomProjectText(std::uint32_t seed);

// A project at all limits: 7 blocks of 100 repetitions of each analog kind, 2 of pulses, 128 CAN
// items of 64 values, every alias and every table.
void MakeLargestProject(ProjectStore& store);

}  // namespace ostrand::testing
