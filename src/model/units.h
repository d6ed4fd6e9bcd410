// Names of time units and thermocouple types by their codes.
#pragma once

#include <string_view>

namespace ostrand {

// "uSec", "mSec", "Sec", "Min", "Hour", "Day" for 0 to 5; empty for any other code.
std::string_view UnitAbbreviation(int unit);

// "microsecond" to "day" for 0 to 5; empty for any other code.
std::string_view UnitLongForm(int unit);

// "-" for -1, "T", "E", "K", "J", "B", "R", "S", "N" for 0 to 7; empty for any other code.
std::string_view ThermocoupleLetter(int typeNo);

}  // namespace ostrand
