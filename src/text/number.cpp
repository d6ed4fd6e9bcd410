#include "text/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "text/letters.h"

namespace ostrand {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

int digitValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return 99;
}

// Digits and decimal exponent of the shortest scientific text "d.ddde+xx".
struct Scientific {
  bool negative = false;
  std::array<char, 24> digits{};
  int count = 0;
  int exponent = 0;
};

char* putWhole(char* to, std::uint64_t value) {
  if (value < 10) {
    *to = static_cast<char>('0' + value);
    return to + 1;
  }
  return std::to_chars(to, to + kMaxNumberText, value).ptr;
}

// Fast path for numbers with at most six digits, two of them decimals; returns the end, or null for
// other numbers. Two texts of six digits never read back as one value, so they need no search for
// the shortest.
template <class Real>
char* putFewDigits(char* to, Real value) {
  constexpr std::uint64_t kParts = 100;
  constexpr double kHundred = kParts;
  constexpr double kHalf = 0.5;
  constexpr double kBelow = 10000;  // from here on two decimals make more than six digits
  const auto size = static_cast<double>(value < 0 ? -value : value);
  if (!(size < kBelow)) return nullptr;
  const auto hundredths = static_cast<std::uint64_t>(size * kHundred + kHalf);
  if (hundredths == 0) return nullptr;
  if (static_cast<Real>(static_cast<double>(hundredths) / kHundred) != static_cast<Real>(size)) {
    return nullptr;
  }
  if (value < 0) *to++ = '-';
  to = putWhole(to, hundredths / kParts);
  const std::uint64_t decimals = hundredths % kParts;
  if (decimals == 0) return to;
  *to++ = '.';
  *to++ = static_cast<char>('0' + decimals / 10);
  if (decimals % 10 != 0) *to++ = static_cast<char>('0' + decimals % 10);
  return to;
}

template <class Real>
Scientific shortestDigits(Real value) {
  Scientific result;
  std::array<char, 48> raw{};
  const auto end =
      std::to_chars(raw.data(), raw.data() + raw.size(), value, std::chars_format::scientific).ptr;
  const char* at = raw.data();
  if (*at == '-') {
    result.negative = true;
    ++at;
  }
  for (; *at != 'e'; ++at) {
    if (*at != '.') result.digits[static_cast<std::size_t>(result.count++)] = *at;
  }
  ++at;
  const bool below = *at++ == '-';
  std::from_chars(at, end, result.exponent);
  if (below) result.exponent = -result.exponent;
  return result;
}

char* put(char* to, const char* from, int count) {
  std::memcpy(to, from, static_cast<std::size_t>(count));
  return to + count;
}

char* putZeros(char* to, int count) {
  for (; count > 0; --count) *to++ = '0';
  return to;
}

template <class Real>
int writeReal(char* to, Real value, int plainBelow) {
  if (std::isnan(value)) return static_cast<int>(put(to, "NaN", 3) - to);
  if (std::isinf(value)) {
    return static_cast<int>((value < 0 ? put(to, "-INF", 4) : put(to, "INF", 3)) - to);
  }
  if (value == 0) {
    *to = '0';
    return 1;
  }
  if (const char* const end = putFewDigits(to, value)) return static_cast<int>(end - to);
  const Scientific number = shortestDigits(value);
  const char* digits = number.digits.data();
  char* at = to;
  if (number.negative) *at++ = '-';
  if (number.exponent < -4 || number.exponent >= plainBelow) {
    *at++ = digits[0];
    if (number.count > 1) {
      *at++ = '.';
      at = put(at, digits + 1, number.count - 1);
    }
    *at++ = 'E';
    *at++ = number.exponent < 0 ? '-' : '+';
    const int size = std::abs(number.exponent);
    if (size < 10) *at++ = '0';
    at = std::to_chars(at, at + 4, size).ptr;
  } else if (number.exponent < 0) {
    at = put(at, "0.", 2);
    at = putZeros(at, -number.exponent - 1);
    at = put(at, digits, number.count);
  } else {
    const int whole = number.exponent + 1;
    at = put(at, digits, whole < number.count ? whole : number.count);
    at = putZeros(at, whole - number.count);
    if (whole < number.count) {
      *at++ = '.';
      at = put(at, digits + whole, number.count - whole);
    }
  }
  return static_cast<int>(at - to);
}

// Beyond any exponent that the digits of a text could outweigh.
constexpr std::int64_t kBeyondAnyText = std::int64_t{1} << 60;

template <class Real>
struct Scan {
  Real value = 0;
  std::size_t length = 0;  // characters read; 0 if there is no number
};

// "&H1F", "&O17".
template <class Real>
Scan<Real> scanBased(std::string_view text) {
  if (text.size() < 3 || text[0] != '&') return {};
  const char kind = static_cast<char>(text[1] & ~0x20);
  if (kind != 'H' && kind != 'O') return {};
  const int base = kind == 'H' ? 16 : 8;
  Scan<Real> result;
  std::size_t at = 2;
  for (; at < text.size() && digitValue(text[at]) < base; ++at) {
    result.value = result.value * static_cast<Real>(base) + static_cast<Real>(digitValue(text[at]));
  }
  if (at > 2) result.length = at;
  return result;
}

// The extent of a decimal number at the start of a text, and the position of its exponent letter.
struct DecimalExtent {
  std::size_t length = 0;
  std::size_t exponent = std::string_view::npos;
};

DecimalExtent measureDecimal(std::string_view text) {
  const auto signAt = [&](std::size_t at) {
    return at < text.size() && (text[at] == '+' || text[at] == '-');
  };
  const auto digitsFrom = [&](std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && IsDigit(text[end])) ++end;
    return end - at;
  };
  std::size_t at = signAt(0) ? 1 : 0;
  std::size_t digits = digitsFrom(at);
  at += digits;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = digitsFrom(at + 1);
    digits += fraction;
    at += 1 + fraction;
  }
  if (digits == 0) return {};
  if (at < text.size() && std::string_view("EeDd").find(text[at]) != std::string_view::npos) {
    const std::size_t tail = at + 1 + (signAt(at + 1) ? 1U : 0U);
    if (const std::size_t count = digitsFrom(tail); count > 0) return {tail + count, at};
  }
  return {at, std::string_view::npos};
}

// The value for a number outside the range of a Real: 0 for a tiny one, infinity for a huge one.
// Digits and exponent count together: many digits may outweigh a negative exponent.
template <class Real>
Real valueOutOfRange(std::string_view plain) {
  const std::size_t mark = std::min(plain.find('e'), plain.size());
  const std::string_view digits = plain.substr(0, mark);
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
  std::int64_t exponent = 0;
  if (mark < plain.size()) {
    const char* at = plain.data() + mark + (plain[mark + 1] == '+' ? 2 : 1);
    const auto read = std::from_chars(at, plain.data() + plain.size(), exponent);
    if (read.ec != std::errc()) exponent = *at == '-' ? -kBeyondAnyText : kBeyondAnyText;
  }
  exponent = std::clamp(exponent, -kBeyondAnyText, kBeyondAnyText);
  const Real size = point - first + exponent < 0 ? Real{0} : std::numeric_limits<Real>::infinity();
  return plain[0] == '-' ? -size : size;
}

template <class Real>
Scan<Real> scanDecimal(std::string_view text) {
  const DecimalExtent extent = measureDecimal(text);
  if (extent.length == 0) return {};
  // The same number as from_chars wants it: no plus sign, a small e.
  std::string plain(text.substr(text[0] == '+' ? 1 : 0, extent.length - (text[0] == '+' ? 1 : 0)));
  if (extent.exponent != std::string_view::npos) {
    plain[extent.exponent - (text[0] == '+' ? 1 : 0)] = 'e';
  }
  Scan<Real> result;
  result.length = extent.length;
  const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), result.value);
  if (read.ec == std::errc::result_out_of_range) result.value = valueOutOfRange<Real>(plain);
  return result;
}

template <class Real>
Scan<Real> scanNumber(std::string_view text) {
  const Scan<Real> based = scanBased<Real>(text);
  return based.length > 0 ? based : scanDecimal<Real>(text);
}

// Fast path for a few digits with at most one point; false for any other text. The digits and the
// power of ten are exact in both types, so their quotient is the nearest value.
template <class Real>
bool readFewDigits(std::string_view text, Real& value) {
  static constexpr std::array<Real, 7> kTens = {1, 10, 100, 1000, 10000, 100000, 1000000};
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  if (text.size() > kTens.size() + 1) return false;
  std::int32_t digits = 0;
  std::size_t at = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) digits = 10 * digits + (text[at] - '0');
  if (at == 0) return false;
  std::size_t decimals = 0;
  if (at < text.size()) {
    decimals = text.size() - at - 1;
    if (text[at] != '.' || decimals == 0) return false;
    while (++at < text.size()) {
      if (!IsDigit(text[at])) return false;
      digits = 10 * digits + (text[at] - '0');
    }
  }
  value = static_cast<Real>(digits) / kTens[decimals];
  if (negative) value = -value;
  return true;
}

template <class Real>
bool readReal(std::string_view text, Real& value) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  if (readFewDigits(text, value)) return true;
  const Scan<Real> scan = scanNumber<Real>(text);
  if (scan.length == 0 || scan.length != text.size() || !std::isfinite(scan.value)) return false;
  value = scan.value;
  return true;
}

template <class Whole>
bool roundTo(double value, Whole& whole) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
    return false;
  }
  whole = static_cast<Whole>(rounded);
  return true;
}

template <class Whole>
bool readWhole(std::string_view text, Whole& value) {
  double real = 0;
  return readReal(text, real) && roundTo(real, value);
}

template <class Whole>
std::optional<Whole> roundedTo(double value) {
  Whole whole = 0;
  return roundTo(value, whole) ? std::optional(whole) : std::nullopt;
}

template <class Number>
std::optional<Number> numberOf(std::string_view text) {
  Number value = 0;
  return ReadNumber(text, value) ? std::optional(value) : std::nullopt;
}

template <class Number>
std::string textOf(Number value) {
  std::array<char, kMaxNumberText> room{};
  return {room.data(), static_cast<std::size_t>(WriteNumber(room.data(), value))};
}

template <class Number>
std::string strTextOf(Number value) {
  std::string result = textOf(value);
  if (result[0] != '-') result.insert(result.begin(), ' ');
  return result;
}

}  // namespace

int WriteNumber(char* to, std::int64_t value) {
  if (value >= 0) return static_cast<int>(putWhole(to, static_cast<std::uint64_t>(value)) - to);
  return static_cast<int>(std::to_chars(to, to + kMaxNumberText, value).ptr - to);
}
int WriteNumber(char* to, float value) { return writeReal(to, value, 7); }
int WriteNumber(char* to, double value) { return writeReal(to, value, 15); }

std::string NumberText(std::int64_t value) { return textOf(value); }
std::string NumberText(float value) { return textOf(value); }
std::string NumberText(double value) { return textOf(value); }

std::string PaddedNumberText(std::int64_t value, int digits) {
  std::string text = NumberText(value);
  const auto width = static_cast<std::size_t>(digits);
  if (text.size() < width) text.insert(0, width - text.size(), '0');
  return text;
}

std::string StrText(std::int64_t value) { return strTextOf(value); }
std::string StrText(float value) { return strTextOf(value); }

std::string HexText(std::uint64_t value) {
  std::array<char, kMaxNumberText> room{};
  const auto end = std::to_chars(room.data(), room.data() + room.size(), value, 16).ptr;
  std::string result(room.data(), end);
  for (char& c : result) {
    if (c >= 'a') c = static_cast<char>(c - 'a' + 'A');
  }
  return result;
}

double Val(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  return scanNumber<double>(text).value;
}

bool ReadNumber(std::string_view text, double& value) { return readReal(text, value); }
bool ReadNumber(std::string_view text, float& value) { return readReal(text, value); }
bool ReadNumber(std::string_view text, std::int16_t& value) { return readWhole(text, value); }
bool ReadNumber(std::string_view text, std::int32_t& value) { return readWhole(text, value); }

std::optional<double> ToDouble(std::string_view text) { return numberOf<double>(text); }
std::optional<float> ToSingle(std::string_view text) { return numberOf<float>(text); }
std::optional<std::int16_t> ToInt16(std::string_view text) { return numberOf<std::int16_t>(text); }
std::optional<std::int32_t> ToInt32(std::string_view text) { return numberOf<std::int32_t>(text); }

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest > 0.5) return below + 1;
  if (rest < 0.5) return below;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

std::optional<std::int16_t> RoundToInt16(double value) { return roundedTo<std::int16_t>(value); }
std::optional<std::int32_t> RoundToInt32(double value) { return roundedTo<std::int32_t>(value); }

double DecimalValue(float value, int tens) {
  if (value == 0 || !std::isfinite(value)) return value;
  const Scientific number = shortestDigits(value);
  std::array<char, 2 * kMaxNumberText> room{};
  char* at = put(room.data(), number.digits.data(), number.count);
  *at++ = 'e';
  at = std::to_chars(at, at + kMaxNumberText, number.exponent + 1 - number.count + tens).ptr;
  double size = 0;
  std::from_chars(room.data(), at, size);
  return number.negative ? -size : size;
}

}  // namespace ostrand
