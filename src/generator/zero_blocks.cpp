#include "generator/zero_blocks.h"

#include <algorithm>
#include <cmath>

#include "model/intervals.h"

namespace ostrand {

BlockRefs FlaggedBlocks(ProgramRun& run, int group) {
  BlockRefs found;
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M}) {
    for (const BlockView& view : run.Blocks(family)) {
      if (HasReps(view) && view.data->ZeroFlag == group) found.push_back(view);
    }
  }
  return found;
}

BlockRefs ZeroedBlocks(ProgramRun& run, int group) {
  BlockRefs found = FlaggedBlocks(run, group);
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
