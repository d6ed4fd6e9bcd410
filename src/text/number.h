// Numbers to text and back. Nothing else in the system turns one into the other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

// Room for the general text of any number, sign and exponent included.
inline constexpr int kNumberTextRoom = 32;

// Writes the general text of a number at `to`, which has kNumberTextRoom bytes, and returns its
// length. No blank on either side; singles and doubles take the fewest digits that read back to
// the same value. An exponent ("1E+07", "1.5E-05") stands from 1E7 on for singles, from 1E15 on
// for doubles, and below 1E-4 for both.
int WriteNumber(char* to, std::int64_t value);
int WriteNumber(char* to, float value);
int WriteNumber(char* to, double value);

// The general text: 10, 11.5, -0.5, 1E+07.
std::string NumberText(std::int64_t value);
std::string NumberText(float value);
std::string NumberText(double value);
inline std::string NumberText(int value) { return NumberText(static_cast<std::int64_t>(value)); }

// The general text with a blank in front of a number that is not negative, as the project file
// keeps numbers.
std::string StrText(std::int64_t value);
std::string StrText(float value);
inline std::string StrText(int value) { return StrText(static_cast<std::int64_t>(value)); }

// Upper case hexadecimal digits without leading zeros.
std::string HexText(std::uint64_t value);

// The number that stands at the head of a text: blanks are passed over, what follows the longest
// number is ignored, a text without one gives 0. "&H" and "&O" are understood.
double Val(std::string_view text);

// The number that the whole text is: outer blanks allowed, sign, point, exponent with E or D,
// "&H" and "&O". Nothing when the text is empty, has anything else in it or overflows a double.
std::optional<double> ToDouble(std::string_view text);

// The same, for a member of the type named: fractions are rounded half to even; nothing when the
// value lies outside of the type.
std::optional<std::int16_t> ToInt16(std::string_view text);
std::optional<std::int32_t> ToInt32(std::string_view text);
std::optional<float> ToSingle(std::string_view text);

// The same into `value`; false, and `value` as it was, for nothing. An optional number on its way
// back costs more than the reading of a short one, which counts in a large file.
bool ReadNumber(std::string_view text, std::int16_t& value);
bool ReadNumber(std::string_view text, std::int32_t& value);
bool ReadNumber(std::string_view text, float& value);
bool ReadNumber(std::string_view text, double& value);

// Nearest whole number, ties to the even one.
double RoundHalfEven(double value);

// The value as a whole number of the type named; nothing when it lies outside of it.
std::optional<std::int16_t> RoundToInt16(double value);
std::optional<std::int32_t> RoundToInt32(double value);

// The decimal value that the general text of a single shows, times ten to the power `tens`: 0.1F
// gives 0.1 and not 0.100000001490116. The product is that of the decimal digits, rounded once:
// 1.001F with 6 gives 1001000, where 1.001 * 1E6 falls short of it.
double DecimalValue(float value, int tens = 0);

}  // namespace ostrand
