#include "model/scan_time.h"

#include <algorithm>
#include <limits>

namespace ostrand::ORVUS_COMMON {
namespace {

using Sum = std::int64_t;  // holds any sum of the store's times

template <class Group>
Sum sumOf(const Group& group) {
  Sum sum = 0;
  for (int b = 1; b <= group.BlockCount; ++b) sum += group[b].BlockTime;
  return sum;
}

Sum thermocouples(const ProjectStore& store) {
  return sumOf(store.TempBlock) + store.Config.PanelTime;
}

Sum pulses(const ProjectStore& store) {
  Sum sum = 0;
  for (const PulseBlockGroup& group : store.PulseBlock) sum += sumOf(group);
  return sum;
}

i32 limited(Sum sum) {
  return static_cast<i32>(
      std::clamp<Sum>(sum, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max()));
}

}  // namespace

i32 ThermocoupleTime(const ProjectStore& store) { return limited(thermocouples(store)); }
i32 VoltageTime(const ProjectStore& store) { return limited(sumOf(store.VoltBlock)); }
i32 BridgeTime(const ProjectStore& store) { return limited(sumOf(store.BridgeBlock)); }
i32 PulseTime(const ProjectStore& store) { return limited(pulses(store)); }
i32 TK40MTime(const ProjectStore& store) { return limited(sumOf(store.TK40MBlock)); }

i32 EstMeasTime(const ProjectStore& store) {
  return limited(store.Config.BatteryTime + thermocouples(store) + sumOf(store.VoltBlock) +
                 sumOf(store.BridgeBlock) + pulses(store) + sumOf(store.TK40MBlock));
}

}  // namespace ostrand::ORVUS_COMMON
