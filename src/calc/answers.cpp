#include "calc/answers.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "text/mask.h"
#include "text/number.h"

namespace ostrand {

double TypedNumber(std::string_view text) {
  const double value = Val(text);
  return std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

std::optional<std::string> NumberHandedBack(std::string_view shown) {
  std::string plain(shown);
  plain.erase(std::remove(plain.begin(), plain.end(), ','), plain.end());
  if (!ToDouble(plain)) return std::nullopt;
  return plain;
}

std::optional<RateAnswers> RateAnswersOf(double multiplier, std::string_view multiplierMask,
                                         std::string_view whatIf, std::string_view whatIfMask) {
  const double rate = TypedNumber(whatIf) * multiplier;
  if (!std::isfinite(multiplier) || !std::isfinite(rate)) return std::nullopt;
  return RateAnswers{FormatNumber(multiplier, multiplierMask), FormatNumber(rate, whatIfMask)};
}

}  // namespace ostrand
