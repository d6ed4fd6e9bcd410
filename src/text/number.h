// Numbers to text and back. No other source converts between them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// Maximum length of the general text of a number, sign and exponent included.
inline constexpr int kMaxNumberText = 32;

// Writes the general text of a number at `to`, which has kMaxNumberText bytes, and returns its
// length. No blank on either side; singles and doubles have the fewest digits that read back to the
// same value. An exponent ("1E+07", "1.5E-05") is used from 1E7 on for singles, from 1E15 on for
// doubles, and below 1E-4 for both.
int WriteNumber(char* to, std::int64_t value);
int WriteNumber(char* to, float value);
int WriteNumber(char* to, double value);

// The general text: 10, 11.5, -0.5, 1E+07.
std::string NumberText(std::int64_t value);
std::string NumberText(float value);
std::string NumberText(double value);
inline std::string NumberText(int value) { return NumberText(static_cast<std::int64_t>(value)); }

// A value that is not negative, with zeros in front to `digits` digits: 007.
std::string PaddedNumberText(std::int64_t value, int digits);

// The general text with a blank before a number that is not negative, as in the project file.
std::string StrText(std::int64_t value);
std::string StrText(float value);
inline std::string StrText(int value) { return StrText(static_cast<std::int64_t>(value)); }

// Upper case hexadecimal digits without leading zeros.
std::string HexText(std::uint64_t value);

// The number at the start of a text: blanks are skipped, text after the longest number is ignored,
// a text without a number gives 0. "&H" and "&O" are understood.
double Val(std::string_view text);

// The number of a whole text: outer blanks allowed, sign, point, exponent with E or D, "&H" and
// "&O". Nothing if the text is empty, contains anything else or overflows a double.
std::optional<double> ToDouble(std::string_view text);

// As ToDouble, for the named type: fractions are rounded half to even; nothing if the value is
// outside the range of the type.
std::optional<std::int16_t> ToInt16(std::string_view text);
std::optional<std::int32_t> ToInt32(std::string_view text);
std::optional<float> ToSingle(std::string_view text);

// As ToInt16 and its like, into `value`; on failure returns false and leaves `value`. Faster than
// an optional, which counts in a large file.
bool ReadNumber(std::string_view text, std::int16_t& value);
bool ReadNumber(std::string_view text, std::int32_t& value);
bool ReadNumber(std::string_view text, float& value);
bool ReadNumber(std::string_view text, double& value);

// Nearest whole number, ties to the even one.
double RoundHalfEven(double value);

// The value as a whole number of the named type; nothing if it is outside its range.
std::optional<std::int16_t> RoundToInt16(double value);
std::optional<std::int32_t> RoundToInt32(double value);

// The decimal value of a single's general text, times ten to the power `tens`: 0.1F gives 0.1 and
// not 0.100000001490116. The product is that of the decimal digits, rounded once: 1.001F with 6
// gives 1001000, while 1.001 * 1E6 is less.
double DecimalValue(float value, int tens = 0);

}  // namespace ostrand
