// Fields of units, multiplier and offset, as the setups of blocks share them.
#pragma once

#include <functional>

#include "controls/numeric_field.h"
#include "model/enums.h"

namespace ostrand {

// Units that the program has no place for are refused while they are typed.
void LimitUnits(UnitField& units, OrvusDataObjTypes kind, int block);

// The field writes what it takes into a member of the block, and so do its spin buttons, whose
// value `step` works out.
void BindScale(NumericField& field, const std::function<float&()>& member,
               double (*step)(double value, bool up));

}  // namespace ostrand
