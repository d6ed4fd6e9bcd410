// Numbers in the group expression of a trigger; each refers to a condition.
#pragma once

#include <string_view>

namespace ostrand {

// Position, from 1, of the first digit from 1 to 9; 0 when there is none.
int FirstDigit(std::string_view text);

// The number of one or two digits at the start of the text; 0 when it does not begin with a digit
// from 1 to 9.
int LeadingNumber(std::string_view text);

}  // namespace ostrand
