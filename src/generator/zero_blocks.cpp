#include "generator/zero_blocks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "model/intervals.h"

namespace ostrand {

std::vector<BlockView> FlaggedBlocks(ProgramRun& run, int group) {
  std::vector<BlockView> found;
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M}) {
    for (BlockView& view : run.Blocks(family)) {
      if (HasReps(view) && view.data->ZeroFlag == group) found.push_back(std::move(view));
    }
  }
  return found;
}

std::vector<BlockView> ZeroedBlocks(ProgramRun& run, int group) {
  std::vector<BlockView> found = FlaggedBlocks(run, group);
  const ProjectStore& store = run.store;
  std::erase_if(found, [&](const BlockView& view) {
    return view.Kind() == Family::kTK40M &&
           !(store.Config.TK40MQty > 0 && store.TK40MBlock[view.n].TK40Volts == 1);
  });
  return found;
}

int ZeroScans(const ProjectStore& store) {
  const double period = ORVUS_COMMON::ScanIntervalMicros(store);
  if (period == 0) throw DivisionByZero();
  return static_cast<int>(std::clamp(std::floor(10000000 / period), 2.0, 100.0));
}

}  // namespace ostrand
