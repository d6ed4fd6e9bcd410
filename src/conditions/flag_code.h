// Program code of outputs that conditions switch between two states.
#pragma once

#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// "If a Then", "    Flag(3) = True", "ElseIf b Then", "    Flag(3) = False", "End If".
std::string TwoStateCode(std::string_view condition1, std::string_view statement1,
                         std::string_view condition2, std::string_view statement2);

// The code for flag `number`, from 1, as the flags screen sets it.
std::string FlagCode(const ProjectStore& store, int number);

}  // namespace ostrand
