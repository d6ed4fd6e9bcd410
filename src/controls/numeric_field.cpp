#include "controls/numeric_field.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "text/letters.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool isExponent(char letter) { return letter == 'e' || letter == 'E'; }
bool isPoint(char letter) { return letter == '.'; }
bool isSign(char letter) { return letter == '-' || letter == '+'; }

// An incomplete number: sign, digits with one point, and an exponent with a sign and up to
// `MaxExponentDigits`.
template <int MaxExponentDigits>
bool numberInTheMaking(std::string_view text) {
  const auto isAt = [&](std::size_t at, auto is) { return at < text.size() && is(text[at]); };
  std::size_t at = isAt(0, isSign) ? 1 : 0;
  const std::size_t start = at;
  while (isAt(at, IsDigit)) ++at;
  if (isAt(at, isPoint)) ++at;
  while (isAt(at, IsDigit)) ++at;
  if (at == text.size()) return true;
  // An exponent needs a preceding digit, not just a point.
  const bool bare = at == start || (start == 0 && at == 1 && isPoint(text[0]));
  if (bare || !isExponent(text[at])) return false;
  if (isAt(++at, isSign)) ++at;
  const std::string_view exponent = text.substr(at);
  return exponent.size() <= MaxExponentDigits &&
         std::all_of(exponent.begin(), exponent.end(), IsDigit);
}

struct TypeRow {
  KeyFilter filter;
  double min;
  double max;
  int digits;  // significant digits, 0 for whole numbers
};

constexpr std::array<TypeRow, 5> kTypes = {{
    {numberInTheMaking<1>, -32768, 32767, 0},
    {numberInTheMaking<1>, -2147483648.0, 2147483647.0, 0},
    {OnlyDigits, 0, 255, 0},
    {numberInTheMaking<2>, -3.402e38, 3.402e38, 7},
    {numberInTheMaking<3>, -1.7e308, 1.7e308, 10},
}};

const TypeRow& rowOf(NumberType type) { return kTypes[static_cast<std::size_t>(type)]; }

}  // namespace

bool SingleText(std::string_view text) { return rowOf(NumberType::kSingle).filter(text); }

NumericField::NumericField(Screen& screen, std::string_view name, NumberType type)
    : TextField(screen, ControlKind::kNumber, name, rowOf(type).filter),
      type_(type),
      min_(rowOf(type).min),
      max_(rowOf(type).max),
      digits_(rowOf(type).digits) {}

NumericField::~NumericField() = default;

void NumericField::Limits(double min, double max) {
  min_ = std::max(min, rowOf(type_).min);
  max_ = std::min(max, rowOf(type_).max);
}

bool NumericField::HasMin() const { return min_ > rowOf(type_).min; }

bool NumericField::HasMax() const { return max_ < rowOf(type_).max; }

double NumericField::Value() const { return ToDouble(Text()).value_or(0); }

void NumericField::Value(double value) { Text(shown(value)); }

std::string NumericField::shown(double value) const {
  if (digits_ > 0) return SignificantText(value, digits_);
  return NumberText(static_cast<std::int64_t>(RoundHalfEven(value)));
}

bool NumericField::normalize(std::string& text) {
  if (MayBeBlank && Trim(text).empty()) return true;
  const std::optional<double> value = ToDouble(text);
  if (!value) return false;
  const double limited = std::max(std::min(*value, max_), min_);
  text = shown(WholePart ? std::trunc(limited) : limited);
  return true;
}

}  // namespace ostrand
