// Thermocouple statements.
#include <string>

#include "generator/savedld.h"
#include "generator/terminal_alignment.h"

namespace ostrand {
namespace {

// The channel of a block, given the type of the block before it in the array, empty for the first
// block. May move the cursor past a half-used pair.
int channelOf(const TempBlockData& block, bool first, std::string_view previous, bool automatic,
              int channel, int& cursor) {
  if (IsDifferential(block.MeasType)) {
    if (first) return automatic ? channel : block.StartChan;
    const int next = NextDifferential(cursor, IsSingleEnded(previous));
    return automatic ? next : block.StartChan;
  }
  // The first single-ended block keeps the channel even if channels are set by hand.
  if (!IsSingleEnded(block.MeasType) || first) return channel;
  if (!IsSingleEnded(previous) && !IsDifferential(previous)) return channel;
  return automatic ? NextSingleEnded(cursor, IsDifferential(previous)) : block.StartChan;
}

}  // namespace

void SAVEDLD::Temperature() {
  const auto putReference = [&] {
    run_.Put({"      PanelTemp(TRef,200)"}, {"'RefTemp,Integrate"});
  };
  const bool automatic = run_.store.Config.AutoChan != 0;
  bool referenceDone = false;
  std::string_view previous;
  std::string reverse;
  for (const BlockView& view : run_.Blocks(Family::kTemp)) {
    const TempBlockData& block = run_.store.TempBlock[view.n];
    if (HasReps(view)) {
      if (!referenceDone) {
        run_.PutBodyTitle(Family::kTemp);
        putReference();
        referenceDone = true;
      }
      run_.BlockChan =
          channelOf(block, view.n == 1, previous, automatic, run_.BlockChan, run_.ChanCursor);
      if (IsSingleEnded(block.MeasType) || IsDifferential(block.MeasType)) {
        reverse = block.ReverseMes != 0 ? "True," : "False,";
      }
      const int n = view.n;
      const std::string head =
          Joined({"      TC", block.MeasType, "(TBlk", n, "(),TREP", n, ",TRNG", n, ",",
                  run_.BlockChan, ",TTYPE", n, ",TRef,", reverse, "TSETL", n, ",TINT", n});
      if (view.except->Any()) {
        run_.Put({head, ",MTBlk", n, "(),OTBlk", n, "())"});
      } else {
        run_.Put({head, ",TMULT", n, ",TOSET", n, ")"});
      }
      run_.channels.Temp[view.n] = run_.BlockChan;
      run_.ChanCursor += TerminalsOf(block.MeasType, block.Reps);
      run_.PrevMeasType = block.MeasType;
    }
    previous = block.MeasType;
  }
  if (run_.store.TempBlock.BlockCount == 0 && run_.store.Config.MonitorPower[kMonitorPanel] != 0) {
    putReference();
  }
}

}  // namespace ostrand
