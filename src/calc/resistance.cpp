#include "calc/resistance.h"

#include <cmath>

#include "calc/answers.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {

std::optional<std::string> ResistanceMultiplier(const RsCalcRecord& record) {
  const double ohms = TypedNumber(record.RsOhms);
  if (!std::isfinite(ohms)) return std::nullopt;
  return FormatNumber(SameText(record.Units, kKiloOhms) ? ohms / 1000 : ohms, "###0.0#####");
}

std::optional<std::string> ResistanceHandedBack(std::string_view shown) {
  const auto multiplier = ToDouble(shown);
  if (!multiplier) return std::nullopt;
  return FormatNumber(*multiplier, "###0.0######");
}

}  // namespace ostrand
