// Random projects whose programs can be held against the rules of the language.
#pragma once

#include <cstdint>

#include "model/store.h"

namespace ostrand::testing {

// A random project in which every expression is about something that the project has, every name
// is the only one of its kind (but for calculated fields, which may share one) and the panel has
// room for the bridges. It zeroes, triggers, calibrates, asks CAN items and uses the slow sequence;
// rarely it holds what the screens would not leave behind: a second slot in use, triggers of a
// table that is off, a multiplexer's blocks without the multiplexer.
void MakeProgramProject(ProjectStore& store, std::uint32_t seed);

}  // namespace ostrand::testing
