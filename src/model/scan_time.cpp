#include "model/scan_time.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace ostrand {
namespace {

template <class Group>
void addBlocks(std::vector<ScanShare>& shares, OutputFamily family, const Group& group,
               int slot = 0) {
  for (int b = 1; b <= group.BlockCount; ++b) {
    shares.push_back({family, slot, b, group[b].BlockTime});
  }
}

}  // namespace

std::vector<ScanShare> ScanShares(const ProjectStore& store) {
  std::vector<ScanShare> shares;
  const bool battery = store.Config.MonitorPower[kMonitorBattery] != 0;
  if (battery || store.Config.BatteryTime != 0) {
    shares.push_back({OutputFamily::kBattery, 0, 0, store.Config.BatteryTime});
  }
  // The panel is measured for thermocouples.
  if (store.TempBlock.BlockCount > 0 || store.Config.PanelTime != 0) {
    shares.push_back({OutputFamily::kPanel, 0, 0, store.Config.PanelTime});
  }
  addBlocks(shares, OutputFamily::kTemp, store.TempBlock);
  addBlocks(shares, OutputFamily::kVolt, store.VoltBlock);
  addBlocks(shares, OutputFamily::kBridge, store.BridgeBlock);
  int slot = 0;
  for (const PulseBlockGroup& group : store.PulseBlock) {
    addBlocks(shares, OutputFamily::kPulse, group, slot++);
  }
  addBlocks(shares, OutputFamily::kTK40M, store.TK40MBlock);
  return shares;
}

}  // namespace ostrand

namespace ostrand::ORVUS_COMMON {
namespace {

// Those of these families, or of all.
i32 sumOf(const ProjectStore& store, std::initializer_list<OutputFamily> families = {}) {
  std::int64_t sum = 0;
  for (const ScanShare& share : ScanShares(store)) {
    const bool counts = families.size() == 0 ||
                        std::find(families.begin(), families.end(), share.family) != families.end();
    if (counts) sum += share.micros;
  }
  return static_cast<i32>(std::clamp<std::int64_t>(sum, std::numeric_limits<i32>::min(),
                                                   std::numeric_limits<i32>::max()));
}

}  // namespace

i32 ThermocoupleTime(const ProjectStore& store) {
  return sumOf(store, {OutputFamily::kTemp, OutputFamily::kPanel});
}
i32 VoltageTime(const ProjectStore& store) { return sumOf(store, {OutputFamily::kVolt}); }
i32 BridgeTime(const ProjectStore& store) { return sumOf(store, {OutputFamily::kBridge}); }
i32 PulseTime(const ProjectStore& store) { return sumOf(store, {OutputFamily::kPulse}); }
i32 TK40MTime(const ProjectStore& store) { return sumOf(store, {OutputFamily::kTK40M}); }
i32 EstMeasTime(const ProjectStore& store) { return sumOf(store); }

}  // namespace ostrand::ORVUS_COMMON
