// Fields of units, multiplier and offset in setups of blocks.
#pragma once

#include <functional>

#include "controls/numeric_field.h"
#include "model/enums.h"

namespace ostrand {

// Refuses units that the program cannot hold, while they are typed.
void LimitUnits(UnitField& units, OrvusDataObjTypes kind);

// Binds the field and its spin buttons to a member of the block; `step` calculates the value of the
// buttons.
void BindScale(NumericField& field, const std::function<float&()>& member,
               double (*step)(double value, bool up));

}  // namespace ostrand
