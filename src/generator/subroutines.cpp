// Zero subroutines, and the subroutines of the triggers behind them.
#include <algorithm>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "model/intervals.h"
#include "model/names.h"
#include "text/mask.h"

namespace ostrand {

void SAVEDLD::Subroutines() {
  for (auto* positions : {&VZeroLine_, &BZeroLine_, &AZeroLine_}) positions->Fill(0);
  const auto candidates = zeroCandidates();
  if (std::any_of(candidates.begin(), candidates.end(), [](const BlockView& view) {
        return HasReps(view) && view.data->ZeroFlag >= 1;
      })) {
    PutSectionTitle(" SUBROUTINES ");
    PutEmpty();
  }
  for (int n = 1; n <= kFlags; ++n) {
    if (!zeroedBlocks(n).empty()) zeroSubroutine(n);
  }
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store_.Tables[t];
    const bool triggered = table.TrigTable != 0 && table.DisableTrigger == 0;
    if (triggered || table.WriteIf != 0) TriggerCallSub(t);
  }
}

std::vector<BlockView> SAVEDLD::zeroCandidates() {
  std::vector<BlockView> found = blocksOf(Family::kVolt);
  for (BlockView& view : blocksOf(Family::kBridge)) found.push_back(std::move(view));
  if (store_.Config.TK40MQty <= 0) return found;
  for (BlockView& view : blocksOf(Family::kTK40M)) {
    if (store_.TK40MBlock[view.n].TK40Volts == 1) found.push_back(std::move(view));
  }
  return found;
}

void SAVEDLD::zeroSubroutine(int n) {
  Put({"Sub Zero", n}, {"'Begin zero measure routine"});
  Put({"   Count = 0"}, {"'Set Count to zero"});
  const int scans = zeroScans();
  const double seconds = scans * ORVUS_COMMON::ScanIntervalMicros(store_) / 1000000;
  Put({"   Scan(PERIOD,P_UNITS,", store_.Scan.ScanMode != 0 ? scans : 0, ",", scans, ")"},
      {"'Scan ", scans, " times. ", FormatNumber(seconds, "0.00"), " Seconds."});
  for (const BlockView& view : zeroCandidates()) {
    if (view.data->ZeroFlag == n) reserveZeroLine(view);
  }
  Put({"      Count = Count + 1"}, {"'Increment Count"});
  Put({"      CallTable ZERO_", n}, {"'Go up and run Table ZERO_", n});
  Put({"   Next Scan"}, {"'Loop up for the next scan"});
  for (const BlockView& view : zeroedBlocks(n)) takeZero(view, n);
  Put({"   Flag(", n, ") = False"}, {"'Reset Flag(", n, ")"});
  Put({"End Sub"}, {"'End gauge zero measure routine"});
  PutEmpty();
}

// The measurement statement belongs here, but the scan that it is part of is made later.
void SAVEDLD::reserveZeroLine(const BlockView& view) {
  PutEmpty();
  auto& positions = view.Kind() == Family::kVolt     ? VZeroLine_
                    : view.Kind() == Family::kBridge ? BZeroLine_
                                                     : AZeroLine_;
  positions[view.n] = lines_.LineCount();
}

// The negative of the average is the new offset; strain keeps the average as its zero.
void SAVEDLD::takeZero(const BlockView& view, int n) {
  const bool strain = view.Kind() == Family::kBridge && IsStrain(store_.BridgeBlock[view.n]);
  const std::string zeroed = ZeroName(view.texts->kind, view.n);
  Put({"   For I = 1 To ", view.names.reps}, {"'Do this ", view.data->Reps, " times"});
  Put({"      ", strain ? zeroed : view.names.offset, "(I) = ", strain ? "" : "-", "ZERO_", n, ".",
       zeroed, "_Avg(I,1)"});
  Put({"   Next I"}, {"'Do it again"});
}

}  // namespace ostrand
