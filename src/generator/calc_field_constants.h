// Calculated fields that share a variable.
#pragma once

#include "model/store.h"
#include "text/row.h"

namespace ostrand {

// Whether a field, from 1, has a name that another field declares. Of fields with equal names
// (ignoring case and blanks at the ends), all but the last are marked. Fault 9 for a CalcFieldCount
// above the number of fields.
Row<bool, 1, kCalcFields> CalcFieldRepeated(const CalcFieldGroup& group);

}  // namespace ostrand
