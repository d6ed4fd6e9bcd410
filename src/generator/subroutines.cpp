// Zero subroutines, followed by those of the triggers.
#include <algorithm>
#include <vector>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "generator/zero_blocks.h"
#include "model/intervals.h"
#include "model/names.h"
#include "text/mask.h"

namespace ostrand {
namespace {

BlockRefs zeroCandidates(ProgramRun& run) {
  BlockRefs found;
  for (const Family family : {Family::kVolt, Family::kBridge}) {
    const auto& blocks = run.Blocks(family);
    found.insert(found.end(), blocks.begin(), blocks.end());
  }
  if (run.store.Config.TK40MQty <= 0) return found;
  for (const BlockView& view : run.Blocks(Family::kTK40M)) {
    if (run.store.TK40MBlock[view.n].TK40Volts == 1) found.push_back(view);
  }
  return found;
}

// Keeps the place of a measurement statement: the scan that contains it is made later.
void reserveZeroLine(ProgramRun& run, const BlockView& view) {
  run.PutEmpty();
  auto& positions = view.Kind() == Family::kVolt     ? run.zero.VZeroLine
                    : view.Kind() == Family::kBridge ? run.zero.BZeroLine
                                                     : run.zero.AZeroLine;
  positions[view.n] = run.lines.LineCount();
}

// The negative of the average is the new offset; strain keeps the average as its zero.
void takeZero(ProgramRun& run, const BlockView& view, int n) {
  const bool strain = IsStrain(view);
  const std::string zeroed = ZeroName(view.texts->kind, view.n);
  run.Put({"   For I = 1 To ", view.names.reps}, {"'Do this ", view.data->Reps, " times"});
  run.Put({"      ", strain ? zeroed : view.names.offset, "(I) = ", strain ? "" : "-", "ZERO_", n,
           ".", zeroed, "_Avg(I,1)"});
  run.Put({"   Next I"}, {"'Do it again"});
}

void zeroSubroutine(ProgramRun& run, int n) {
  run.Put({"Sub Zero", n}, {"'Begin zero measure routine"});
  run.Put({"   Count = 0"}, {"'Set Count to zero"});
  const int scans = ZeroScans(run.store);
  const double seconds = scans * ORVUS_COMMON::ScanIntervalMicros(run.store) / 1000000;
  run.Put({"   Scan(PERIOD,P_UNITS,", run.store.Scan.ScanMode != 0 ? scans : 0, ",", scans, ")"},
          {"'Scan ", scans, " times. ", FormatNumber(seconds, "0.00"), " Seconds."});
  for (const BlockView& view : zeroCandidates(run)) {
    if (view.data->ZeroFlag == n) reserveZeroLine(run, view);
  }
  run.Put({"      Count = Count + 1"}, {"'Increment Count"});
  run.Put({"      CallTable ZERO_", n}, {"'Go up and run Table ZERO_", n});
  run.Put({"   Next Scan"}, {"'Loop up for the next scan"});
  for (const BlockView& view : ZeroedBlocks(run, n)) takeZero(run, view, n);
  run.Put({"   Flag(", n, ") = False"}, {"'Reset Flag(", n, ")"});
  run.Put({"End Sub"}, {"'End gauge zero measure routine"});
  run.PutEmpty();
}

}  // namespace

void SAVEDLD::Subroutines() {
  const auto candidates = zeroCandidates(run_);
  if (std::any_of(candidates.begin(), candidates.end(), [](const BlockView& view) {
        return HasReps(view) && view.data->ZeroFlag >= 1;
      })) {
    run_.PutSectionTitle(" SUBROUTINES ");
    run_.PutEmpty();
  }
  for (int n = 1; n <= kFlags; ++n) {
    if (!ZeroedBlocks(run_, n).empty()) zeroSubroutine(run_, n);
  }
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = run_.store.Tables[t];
    const bool triggered = table.TrigTable != 0 && table.DisableTrigger == 0;
    if (triggered || table.WriteIf != 0) TriggerCallSub(t);
  }
}

}  // namespace ostrand
