// What the program does with a flag that the flags screen drives.
#pragma once

#include <string>

#include "model/store.h"

namespace ostrand {

// The code that sets flag `number`, from 1, by its two states, as screens show it.
std::string FlagCode(const ProjectStore& store, int number);

}  // namespace ostrand
