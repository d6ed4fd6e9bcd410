#include "model/intervals.h"

#include <array>

#include "text/number.h"

namespace ostrand::ORVUS_COMMON {
namespace {

template <std::size_t Count>
double factorOf(const std::array<double, Count>& factors, int unit) {
  return unit >= 0 && unit < static_cast<int>(Count) ? factors[static_cast<std::size_t>(unit)] : 0;
}

// Microseconds of the scan's units.
constexpr std::array<double, 4> kScanFactors = {1, 1000, 1e6, 6e7};
// Microseconds of OrvusTableTimeUnits. The 10 of the first is a fixed choice of the system.
constexpr std::array<double, 6> kTableFactors = {10, 1000, 1e6, 6e7, 3.6e9, 8.64e10};

}  // namespace

double ScanIntervalMicros(const ProjectStore& store) {
  return DecimalValue(store.Scan.ExecutionTime) * factorOf(kScanFactors, store.Scan.ExecTimeUnits);
}

double TableIntervalMicros(const ProjectStore& store, int t) {
  const OutputTable& table = store.Tables[t];
  if (table.SyncTable != 0) return ScanIntervalMicros(store);
  const double interval = table.OutInt == 0 ? 1 : table.OutInt;
  return interval * factorOf(kTableFactors, table.OutIntUnits);
}

}  // namespace ostrand::ORVUS_COMMON
