// Numbers by a mask, as the files and screens show them.
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// The value by a mask such as "0.00", "###0", "#,##0", "#0.0###0" or "0.####0e-##": "0" is a
// place that is always shown, "#" one that is shown when needed, a comma asks for thousands
// separators, "e-" or "e+" for an exponent ("e+" writes its plus sign). Places before a "0" of the
// fraction are always shown. Rounding is half away from zero on the decimal digits that the value
// reads as.
std::string FormatNumber(double value, std::string_view mask);

// The value to so many significant digits, at least 2, as fields for numbers show it: "1234.568";
// with an exponent of two digits or more, "1.5e+07", from ten to the power of the digits on, and
// below one with as many places less one.
std::string SignificantText(double value, int digits);

}  // namespace ostrand
