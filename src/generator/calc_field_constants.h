// Names of calculated fields that stand for one variable.
#pragma once

#include "model/store.h"
#include "text/row.h"

namespace ostrand {

// Whether a field, from 1, has a name that another field declares: of a group of equal names,
// without regard to case and to blanks at the ends, all but the last in the order of the names are
// marked. Fault 9 for a count past the fields that there are.
Row<bool, 1, kCalcFields> CalcFieldRepeated(const CalcFieldGroup& group);

}  // namespace ostrand
