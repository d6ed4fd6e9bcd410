#include "model/intervals.h"

#include <array>

#include "model/enums.h"
#include "text/number.h"

namespace ostrand::ORVUS_COMMON {
namespace {

// Microseconds of the scan's units; 0 for any other.
double scanUnitMicros(int unit) {
  constexpr std::array<double, 4> kMicros = {1, 1000, 1e6, 6e7};
  return unit >= 0 && unit < 4 ? kMicros[static_cast<std::size_t>(unit)] : 0;
}

}  // namespace

double ScanIntervalMicros(const ProjectStore& store) {
  return DecimalValue(store.Scan.ExecutionTime) * scanUnitMicros(store.Scan.ExecTimeUnits);
}

double TableIntervalMicros(const ProjectStore& store, int t) {
  const OutputTable& table = store.Tables[t];
  if (table.SyncTable != 0) return ScanIntervalMicros(store);
  const double interval = table.OutInt == 0 ? 1 : table.OutInt;
  return interval * TableUnitMicros(table.OutIntUnits);
}

}  // namespace ostrand::ORVUS_COMMON
