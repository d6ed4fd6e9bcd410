#include "model/format_version.h"

#include <algorithm>
#include <string_view>

#include "text/number.h"

namespace ostrand::ORVUS_COMMON {
namespace {

constexpr double kFirstWithConditionRows = 6;

bool hasConditions(const OutputTable& table) { return table.TrigTable > 0 || table.WriteIf > 0; }

}  // namespace

bool NeedsUpgrade(const ProjectStore& store) {
  const auto& tables = store.Tables.Table;
  return std::any_of(tables.begin(), tables.end(), hasConditions) &&
         Val(std::string_view(store.Gen.Version).substr(0, 1)) < kFirstWithConditionRows;
}

}  // namespace ostrand::ORVUS_COMMON
