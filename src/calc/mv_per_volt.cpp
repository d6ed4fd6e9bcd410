#include "calc/mv_per_volt.h"

#include <cmath>
#include <limits>

#include "calc/answers.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

struct MultiplierMask {
  double above;  // the mask applies to multipliers above this
  std::string_view mask;
};
constexpr std::array<MultiplierMask, 6> kMultiplierMasks = {{
    {999999.0, "######0.0"},
    {99999.9, "#####0.00"},
    {9999.99, "####0.000"},
    {999.999, "###0.0000"},
    {99.9999, "##0.00000"},
    {9.99999, "#0.000000"},
}};

std::string_view maskOf(double multiplier) {
  for (const auto& row : kMultiplierMasks) {
    if (multiplier > row.above) return row.mask;
  }
  return "0.0000000";
}

// NaN for a text out of the range of a single.
float single(std::string_view text) {
  const double value = TypedNumber(text);
  return std::fabs(value) <= std::numeric_limits<float>::max()
             ? static_cast<float>(value)
             : std::numeric_limits<float>::quiet_NaN();
}

float solve(MVPerVoltSolves solves, float m, float u, float v, float e) {
  switch (solves) {
    case MVPerVoltSolves::kUnits:
      return v / (e / 1000) * m;
    case MVPerVoltSolves::kMVOut:
      return u * (e / 1000) / m;
    case MVPerVoltSolves::kExcite:
      return v / u * m * 1000;
  }
  return 0;
}

}  // namespace

std::string MVPerVoltMultiplier(const MVPerVoltCalcRecord& record) {
  const double multiplier = 1 / TypedNumber(record.mVPerV) * TypedNumber(record.FullScale);
  if (!std::isfinite(multiplier)) return std::string(kErrorText);
  return FormatNumber(multiplier, maskOf(multiplier));
}

std::string SolveMVPerVolt(MVPerVoltSolves solves, std::string_view multiplier,
                           const MVPerVoltTryOut& tryOut) {
  if (!ToDouble(multiplier)) return std::string(kErrorText);
  const float answer = solve(solves, single(multiplier), single(tryOut.units), single(tryOut.mVOut),
                             single(tryOut.excite));
  if (!std::isfinite(answer)) return std::string(kErrorText);
  return FormatNumber(DecimalValue(answer), "###0.0###");
}

std::optional<std::string> ExcitationQuestion(std::string_view excite) {
  if (TypedNumber(excite) <= kMaxExcitation) return std::nullopt;
  return "Excitation voltage is " + std::string(excite) + " mV which is greater than the " +
         NumberText(kMaxExcitation) +
         " mV limit of the logger.\r\nDo you want to go back and edit the values?";
}

}  // namespace ostrand
