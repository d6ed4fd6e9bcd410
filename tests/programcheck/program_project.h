// Random projects whose programs can be held against the rules of the language.
#pragma once

#include "support/project_random.h"

namespace ostrand::testing {

inline void MakeProgramProject(ProjectStore& store, std::uint32_t seed) {
  MakeRandomProject(store, seed);
}

}  // namespace ostrand::testing
