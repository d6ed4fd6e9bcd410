// Numbers by a mask, as the files and screens show them.
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// The value in the form of a mask such as "0.00", "###0", "#,##0", "#0.0###0" or "0.####0e-##": "0"
// is a place that is always shown, "#" one that is shown when needed, a comma adds thousands
// separators, "e-" or "e+" an exponent ("e+" writes its plus sign). Places before a "0" of the
// fraction are always shown. Rounding is half away from zero on the decimal digits of the value.
std::string FormatNumber(double value, std::string_view mask);

// Microseconds: "2,500 uSecs".
std::string MicrosText(double micros);

// The value as a numeric field shows it, rounded to `digits` significant digits, 2 to 15. It has at
// most `digits` - 1 places after the point, or, from 10 to the power `digits` on and below 10 to
// the power 1 - `digits`, the form "0.#####e+00" with `digits` - 2 places. A bare point is removed.
// With 7 digits: 1234.568, 5, 0.000001, 1.5e+07, 1e-07.
std::string SignificantText(float value, int digits = 7);
std::string SignificantText(double value, int digits = 10);

}  // namespace ostrand
