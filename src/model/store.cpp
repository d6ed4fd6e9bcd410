#include "model/store.h"

#include "model/new_store.h"

namespace ostrand {

std::unique_ptr<ProjectStore> NewStore() { return std::make_unique<ProjectStore>(); }

ProjectStore& TheStore() {
  static ProjectStore store;
  return store;
}

template class LateRow<HistoSet, 1, kTables>;
template class LateRow<RepAlias, 1, kReps>;
template class LateRow<RepAlias, 1, kCanValues>;
template class LateRow<TriggerCondition, 1, kConditions>;
template class LateRow<WriteCondition, 1, kConditions>;
template class LateRow<TempBlockData, 1, kBlocks>;
template class LateRow<VoltBlockData, 1, kBlocks>;
template class LateRow<BridgeBlockData, 1, kBlocks>;
template class LateRow<TK40MBlockData, 1, kBlocks>;
template class LateRow<PulseBlockData, 1, kPulseBlocks>;
template class LateRow<CanItemData, 1, kCanItems>;
template class LateRow<CalcFieldData, 1, kCalcFields>;

}  // namespace ostrand
