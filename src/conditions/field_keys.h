// Small rules that fields of setup screens share.
#pragma once

#include <string>

#include "controls/numeric_field.h"
#include "model/store.h"

namespace ostrand {

// What is put right while a field is typed into; to be called from OnChange.
// Zeros at the head of a number go as soon as more follows.
void DropLeadingZeros(TextField& field);
// A number is kept within limits; a text that is none yet may go on, and so may zeros.
void LimitWhileTyped(NumericField& field, double min, double max);

// What a field says without its fraction, within a whole number's limits.
i32 WholePart(const NumericField& field);

// A click on the spin button of a multiplier or an offset: to whole numbers from the first on.
double SteppedToWhole(double value, bool up);

}  // namespace ostrand
