// Where a project names the variable of a calculated field.
#pragma once

#include <string_view>

#include "model/store.h"

namespace ostrand {

// Whether a text holds a variable's name as a whole word, in any case of letters.
bool NamesVariable(std::string_view text, std::string_view name);

// Whether anything beside calculated field `field`, from 1, names its variable: another formula, a
// level crossing, or a condition, one that is switched off at present included, since it comes
// back as it was.
bool IsVariableUsed(const ProjectStore& store, int field);

}  // namespace ostrand
