#include "text/mask.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "text/number.h"

namespace ostrand {
namespace {

struct Mask {
  int wholeZeros = 0;    // places before the point that are always shown
  int places = 0;        // places after the point
  int forcedPlaces = 0;  // those of them that are always shown
  bool point = false;    // the mask has a point
  bool thousands = false;
  bool exponent = false;
  bool plusSign = false;  // of the exponent
  int exponentZeros = 0;
};

// A "0" or "#" of the mask.
void addPlace(Mask& mask, char c) {
  if (mask.point) {
    ++mask.places;
    if (c == '0') mask.forcedPlaces = mask.places;
  } else if (c == '0' || mask.wholeZeros > 0) {
    ++mask.wholeZeros;
  }
}

Mask readMask(std::string_view text) {
  Mask mask;
  for (const char c : text) {
    if (c == 'e' || c == 'E') {
      mask.exponent = true;
    } else if (mask.exponent) {
      if (c == '+') mask.plusSign = true;
      if (c == '0') ++mask.exponentZeros;
    } else if (c == ',') {
      mask.thousands = true;
    } else if (c == '.') {
      mask.point = true;
    } else if (c == '0' || c == '#') {
      addPlace(mask, c);
    }
  }
  return mask;
}

// A number as decimal digits: 0.d1d2d3... times ten to the power `point`.
struct Decimal {
  std::string digits;
  int point = 0;
};

Decimal decimalOf(double size) {
  std::array<char, 48> raw{};
  const auto end =
      std::to_chars(raw.data(), raw.data() + raw.size(), size, std::chars_format::scientific).ptr;
  const std::string_view text(raw.data(), static_cast<std::size_t>(end - raw.data()));
  const std::size_t mark = text.find('e');
  Decimal result;
  for (const char c : text.substr(0, mark)) {
    if (c != '.') result.digits += c;
  }
  const std::size_t first = mark + (text[mark + 1] == '+' ? 2 : 1);
  std::from_chars(text.data() + first, end, result.point);
  ++result.point;
  if (size == 0) result = {"", 0};
  return result;
}

// Keeps `places` digits after the point, rounding half away from zero.
void roundTo(Decimal& number, int places) {
  const int keep = number.point + places;
  if (keep < 0) {
    number = {"", 0};
    return;
  }
  if (keep >= static_cast<int>(number.digits.size())) return;
  const bool up = number.digits[static_cast<std::size_t>(keep)] >= '5';
  number.digits.resize(static_cast<std::size_t>(keep));
  if (!up) return;
  int at = keep - 1;
  for (; at >= 0; --at) {
    char& digit = number.digits[static_cast<std::size_t>(at)];
    if (digit != '9') {
      ++digit;
      return;
    }
    digit = '0';
  }
  number.digits.insert(number.digits.begin(), '1');
  ++number.point;
}

// Digit at a place: 0 is the first after the point, -1 the last before it.
char digitAt(const Decimal& number, int place) {
  const int at = number.point + place;
  if (at < 0 || at >= static_cast<int>(number.digits.size())) return '0';
  return number.digits[static_cast<std::size_t>(at)];
}

std::string layOut(const Decimal& number, const Mask& mask) {
  std::string whole;
  for (int place = -number.point; place < 0; ++place) whole += digitAt(number, place);
  whole.erase(0, whole.find_first_not_of('0'));  // npos clears a text of zeros
  while (static_cast<int>(whole.size()) < mask.wholeZeros) whole.insert(whole.begin(), '0');
  if (mask.thousands) {
    for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3) {
      whole.insert(static_cast<std::size_t>(at), 1, ',');
    }
  }
  std::string fraction;
  for (int place = 0; place < mask.places; ++place) fraction += digitAt(number, place);
  while (static_cast<int>(fraction.size()) > mask.forcedPlaces && fraction.back() == '0') {
    fraction.pop_back();
  }
  return mask.point ? whole + "." + fraction : whole;
}

bool isZero(const Decimal& number) {
  return number.digits.find_first_not_of('0') == std::string::npos;
}

// The digits in the form of a mask with an exponent.
std::string layOutWithExponent(Decimal& number, const Mask& mask) {
  int exponent = 0;
  if (!isZero(number)) {
    const int wholePlaces = mask.wholeZeros > 0 ? mask.wholeZeros : 1;
    exponent = number.point - wholePlaces;
    number.point = wholePlaces;
    roundTo(number, mask.places);
    if (number.point > wholePlaces) {
      --number.point;
      ++exponent;
    }
  }
  std::string result = layOut(number, mask) + "e";
  if (exponent < 0) {
    result += '-';
  } else if (mask.plusSign) {
    result += '+';
  }
  return result + PaddedNumberText(std::abs(exponent), mask.exponentZeros);
}

std::string formatDecimal(Decimal number, bool negative, const Mask& mask) {
  std::string result;
  if (mask.exponent) {
    result = layOutWithExponent(number, mask);
  } else {
    roundTo(number, mask.places);
    result = layOut(number, mask);
  }
  return negative && !isZero(number) ? "-" + result : result;
}

// A point without a digit after it is removed, before an exponent too.
void cutBarePoint(std::string& text) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return;
  if (point + 1 == text.size() || text[point + 1] == 'e') text.erase(point, 1);
}

}  // namespace

std::string FormatNumber(double value, std::string_view mask) {
  if (!std::isfinite(value)) return NumberText(value);
  return formatDecimal(decimalOf(std::fabs(value)), value < 0, readMask(mask));
}

std::string SignificantText(double value, int digits) {
  if (!std::isfinite(value)) return NumberText(value);
  Decimal number = decimalOf(std::fabs(value));
  roundTo(number, digits - number.point);
  const bool small = number.point <= 1 - digits;
  Mask mask;
  mask.wholeZeros = 1;
  mask.point = true;
  mask.exponent = !isZero(number) && (number.point > digits || small);
  mask.plusSign = true;
  mask.exponentZeros = 2;
  mask.places = mask.exponent ? digits - 2 : digits - 1;
  std::string result = formatDecimal(number, value < 0, mask);
  cutBarePoint(result);
  return result;
}

std::string SignificantText(float value, int digits) {
  return SignificantText(DecimalValue(value), digits);
}

std::string MicrosText(double micros) { return FormatNumber(micros, "#,##0") + " uSecs"; }

}  // namespace ostrand
