#include "verify/scan_rate_tables.h"

#include <string>

#include "platform/box.h"
#include "platform/guarded.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"
#include "verify/timing_checks.h"

namespace ostrand {
namespace {

using namespace project_keys;

constexpr std::string_view kTitle = "OUTPUT TABLES";

// Calls `visit` with each output of the project but those of CAN items. `Store` may be const.
template <class Store, class Visit>
void forOutputs(Store& store, Visit visit) {
  visit(store.TcRef.Output);
  visit(store.TK40MRef.Output);
  visit(store.PowerOut.Output);
  const auto visitBlocks = [&](auto& group) {
    for (int b = 1; b <= group.BlockCount; ++b) visit(group[b].Output);
  };
  visitBlocks(store.TempBlock);
  visitBlocks(store.VoltBlock);
  visitBlocks(store.BridgeBlock);
  for (auto& slot : store.PulseBlock) visitBlocks(slot);
  visitBlocks(store.TK40MBlock);
  for (auto& slot : store.Ports.Slot) visit(slot.Output);
  for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
    visit(store.CalcFields.Field[c].Output);
  }
}

bool storesEveryScan(const ProjectStore& store, int t) {
  return store.Tables[t].TableOn != 0 && StoresEveryScan(store, t);
}

bool needsSeveralScans(const ProjectStore& store, int t) {
  bool found = false;
  forOutputs(store, [&](const OutputSet& output) {
    for (int k = kMaximum; k <= kLevelCrossing; ++k) {
      found = found || output.OutputSelect[t][k] != 0;
    }
  });
  return found;
}

void sampleInstead(ProjectStore& store, int t) {
  forOutputs(store, [&](OutputSet& output) {
    auto& selected = output.OutputSelect[t];
    for (int k = kMaximum; k <= kLevelCrossing; ++k) {
      if (selected[k] == 0) continue;
      selected[k] = 0;
      selected[kSample] = 1;
    }
  });
}

}  // namespace

Findings ScanRateFindings(const ProjectStore& store) {
  Findings findings;
  for (int t = 1; t <= kTables; ++t) {
    if (!storesEveryScan(store, t) || !needsSeveralScans(store, t)) continue;
    const bool synchronous = store.Tables[t].SyncTable != 0;
    findings.push_back({kTitle,
                        "Table #" + NumberText(t) + " - '" + store.Tables[t].TableName + "'",
                        kTableSetupSection, KeyOf(synchronous ? kSyncTable : kOutInt, t)});
  }
  return findings;
}

namespace ORVUS_COMMON {

void CheckScanRateTables(const CheckContext& context, bool& bad) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.CheckScanRateTables", [&] {
    const Findings findings = ScanRateFindings(context.store);
    if (findings.empty()) return;
    const std::string text =
        JoinLines({"The following tables have their intervals equal to the system scan interval.  ",
                   "They also have previously been configured for output processing instructions ",
                   "that assume that multiple scans occur between output table writes.",
                   "(For example, Averages, Min/Max, Histograms, etc.)", "", TextsOf(findings), "",
                   "If you proceed, these output processing configurations will be removed",
                   "in the associated measurement blocks, and replaced with the Sample",
                   "output instruction.  Proceed?"});
    bad = Ask(context.forms, kTitle, text, platform::Buttons::kYesNo) != platform::Answer::kYes;
    if (bad) return;
    for (int t = 1; t <= kTables; ++t) {
      if (storesEveryScan(context.store, t)) sampleInstead(context.store, t);
    }
  });
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
