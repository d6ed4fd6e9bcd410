// Entries of a repetition that were set by hand.
#pragma once

#include "model/store.h"

namespace ostrand {

// Columns, as the bits of `AliasExcept`. The offset column of strain holds the gauge factor.
inline constexpr int kUnitsByHand = 1;
inline constexpr int kMultByHand = 2;
inline constexpr int kOffsetByHand = 4;

// The bits of a repetition; none if the text is not a number from 0 to 7.
int ExceptionsOf(const RepAlias& alias);
// Sets or clears the bit of a column.
void MarkByHand(RepAlias& alias, int column, bool byHand);

}  // namespace ostrand
