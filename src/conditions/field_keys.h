// Small rules shared by fields of setup screens.
#pragma once

#include <string>

#include "controls/numeric_field.h"
#include "model/store.h"

namespace ostrand {

// Corrections while a field is typed into, called from OnChange. Removes leading zeros as soon as
// more digits follow.
void DropLeadingZeros(TextField& field);
// Clamps a number to limits; leaves incomplete numbers and zeros.
void LimitWhileTyped(NumericField& field, double min, double max);

// The number in a field, without its fraction, clamped to the limits of a whole number.
i32 WholePart(const NumericField& field);

// One click on the spin button of a multiplier or an offset; the first click drops the fraction.
double SteppedToWhole(double value, bool up);

}  // namespace ostrand
