// Voltage statements.
#include <string>

#include "generator/savedld.h"
#include "generator/terminal_alignment.h"

namespace ostrand {
namespace {

struct Neighbours {
  bool first;                 // of the array
  std::string_view previous;  // type of the block before it in the array
  std::string_view measured;  // type of the last block written, of any kind
};

// The channel of a block. The first block follows the last block written, so a project that has
// only voltage blocks begins at channel 1 in a new session, whatever its start channel.
int channelOf(const VoltBlockData& block, const Neighbours& near, bool automatic, int channel,
              int& cursor) {
  if (IsDifferential(block.MeasType)) {
    const bool afterSingleEnded = IsSingleEnded(near.measured);
    const std::string_view other = near.first ? near.measured : near.previous;
    if (!afterSingleEnded && !IsDifferential(other)) return channel;
    const int next = NextDifferential(cursor, afterSingleEnded);
    return automatic ? next : block.StartChan;
  }
  if (!IsSingleEnded(block.MeasType)) return channel;
  const std::string_view before = near.first ? near.measured : near.previous;
  if (!IsSingleEnded(before) && !IsDifferential(before)) return channel;
  return automatic ? NextSingleEnded(cursor, IsDifferential(before)) : block.StartChan;
}

}  // namespace

void SAVEDLD::Voltage() {
  if (run_.store.VoltBlock.BlockCount < 1) return;
  run_.PutBodyTitle(Family::kVolt);
  const bool automatic = run_.store.Config.AutoChan != 0;
  std::string_view previous;
  std::string reverse;
  for (const BlockView& view : run_.Blocks(Family::kVolt)) {
    const VoltBlockData& block = run_.store.VoltBlock[view.n];
    if (HasReps(view)) {
      run_.BlockChan = channelOf(block, {view.n == 1, previous, run_.PrevMeasType}, automatic,
                                 run_.BlockChan, run_.ChanCursor);
      if (IsSingleEnded(block.MeasType) || IsDifferential(block.MeasType)) {
        reverse = block.ReverseMes != 0 ? ",True" : ",False";
      }
      const int n = view.n;
      const std::string head =
          Joined({"      Volt", block.MeasType, "(VBlk", n, "(),VREP", n, ",VRNG", n, ",",
                  run_.BlockChan, reverse, ",VSETL", n, ",VINT", n});
      if (block.CalOnSite != 0 || view.except->Any()) {
        run_.Put({head, ",MVBlk", n, "(),OVBlk", n, "())"});
      } else if (block.ZeroFlag < 1) {
        run_.Put({head, ",VMULT", n, ",VOSET", n, ")"});
      } else {
        run_.Put({head, ",VMULT", n, ",OVBlk", n, "())"});
      }
      run_.channels.Volt[view.n] = run_.BlockChan;
      if (block.ZeroFlag != 0) run_.zero.VZeroText[n] = run_.lines[run_.lines.LineCount()];
      run_.ChanCursor += TerminalsOf(block.MeasType, block.Reps);
      run_.PrevMeasType = block.MeasType;
    }
    previous = block.MeasType;
  }
}

}  // namespace ostrand
