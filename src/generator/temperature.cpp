// Thermocouple statements.
#include <string>

#include "generator/savedld.h"
#include "generator/terminal_alignment.h"

namespace ostrand {
namespace {

// The channel of a block, given the type of the block before it in the array, empty for the first
// block. The cursor may skip the rest of a half used pair.
int channelOf(const TempBlockData& block, bool first, std::string_view previous, bool automatic,
              int channel, int& cursor) {
  if (IsDifferential(block.MeasType)) {
    if (first) return automatic ? channel : block.StartChan;
    const int next = NextDifferential(cursor, IsSingleEnded(previous));
    return automatic ? next : block.StartChan;
  }
  // A first single-ended block keeps the channel even when channels are chosen by hand.
  if (!IsSingleEnded(block.MeasType) || first) return channel;
  if (!IsSingleEnded(previous) && !IsDifferential(previous)) return channel;
  return automatic ? NextSingleEnded(cursor, IsDifferential(previous)) : block.StartChan;
}

}  // namespace

void SAVEDLD::Temperature() {
  const auto putReference = [this] { Put({"      PanelTemp(TRef,200)"}, {"'RefTemp,Integrate"}); };
  const bool automatic = store_.Config.AutoChan != 0;
  bool referenceDone = false;
  std::string_view previous;
  std::string reverse;
  for (const BlockView& view : blocksOf(Family::kTemp)) {
    const TempBlockData& block = store_.TempBlock[view.n];
    if (HasReps(view)) {
      if (!referenceDone) {
        PutBodyTitle(Family::kTemp);
        putReference();
        referenceDone = true;
      }
      BlockChan_ = channelOf(block, view.n == 1, previous, automatic, BlockChan_, ChanCursor_);
      if (IsSingleEnded(block.MeasType) || IsDifferential(block.MeasType)) {
        reverse = block.ReverseMes != 0 ? "True," : "False,";
      }
      const int n = view.n;
      const std::string head =
          Joined({"      TC", block.MeasType, "(TBlk", n, "(),TREP", n, ",TRNG", n, ",", BlockChan_,
                  ",TTYPE", n, ",TRef,", reverse, "TSETL", n, ",TINT", n});
      if (view.except->Any()) {
        Put({head, ",MTBlk", n, "(),OTBlk", n, "())"});
      } else {
        Put({head, ",TMULT", n, ",TOSET", n, ")"});
      }
      channels_.Temp[view.n] = BlockChan_;
      ChanCursor_ += TerminalsOf(block.MeasType, block.Reps);
      PrevMeasType_ = block.MeasType;
    }
    previous = block.MeasType;
  }
  if (store_.TempBlock.BlockCount == 0 && store_.Config.MonitorPower[kMonitorPanel] != 0) {
    putReference();
  }
}

}  // namespace ostrand
