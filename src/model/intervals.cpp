#include "model/intervals.h"

#include <array>

#include "model/enums.h"
#include "text/number.h"

namespace ostrand::ORVUS_COMMON {
namespace {

// Microseconds of a unit of the scan: `times` times ten to the power `tens`.
struct ScanUnit {
  int times;
  int tens;
};
constexpr std::array<ScanUnit, 4> kScanUnits = {{{1, 0}, {1, 3}, {1, 6}, {6, 7}}};

}  // namespace

// The digits are shifted, not multiplied: a period of 1.001 seconds must divide the intervals of
// tables without remainder.
double ScanIntervalMicros(const ProjectStore& store) {
  const int unit = store.Scan.ExecTimeUnits;
  if (unit < 0 || unit >= static_cast<int>(kScanUnits.size())) return 0;
  const ScanUnit& micros = kScanUnits[static_cast<std::size_t>(unit)];
  return DecimalValue(store.Scan.ExecutionTime, micros.tens) * micros.times;
}

double TableIntervalMicros(const ProjectStore& store, int t) {
  const OutputTable& table = store.Tables[t];
  if (table.SyncTable != 0) return ScanIntervalMicros(store);
  const double interval = table.OutInt == 0 ? 1 : table.OutInt;
  return interval * TableUnitMicros(table.OutIntUnits);
}

}  // namespace ostrand::ORVUS_COMMON
