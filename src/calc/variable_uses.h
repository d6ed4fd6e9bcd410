// Uses of a calculated field's variable in a project.
#pragma once

#include <string_view>

#include "model/store.h"

namespace ostrand {

// Whether a text contains a variable's name as a whole word, ignoring case.
bool NamesVariable(std::string_view text, std::string_view name);

// Whether anything except calculated field `field`, from 1, names its variable: another formula, a
// level crossing, or a condition. Conditions that are switched off count, since they can be
// switched on again unchanged.
bool IsVariableUsed(const ProjectStore& store, int field);

}  // namespace ostrand
