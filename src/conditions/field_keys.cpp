#include "conditions/field_keys.h"

#include <algorithm>
#include <cmath>

#include "text/number.h"

namespace ostrand {

void DropLeadingZeros(TextField& field) {
  const std::string text = field.Text();
  const std::size_t first = text.find_first_not_of('0');
  if (first == 0 || text.size() < 2) return;
  field.Correct(first == std::string::npos ? "0" : text.substr(first));
}

void LimitWhileTyped(NumericField& field, double min, double max) {
  const std::string text = field.Text();
  const std::optional<double> value = ToDouble(text);
  const bool onlyZeros = text.find_first_not_of('0') == std::string::npos;
  if (!value || onlyZeros || (*value >= min && *value <= max)) return;
  field.Correct(NumberText(std::clamp(*value, min, max)));
}

double SteppedToWhole(double value, bool up) { return std::floor(value + (up ? 1 : -1) + 0.5); }

i32 WholePart(const NumericField& field) {
  constexpr double kMax = 2147483647.0;
  return static_cast<i32>(std::clamp(std::trunc(field.Value()), -kMax, kMax));
}

}  // namespace ostrand
