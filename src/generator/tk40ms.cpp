// Statements of the multiplexer blocks.
#include <algorithm>

#include "generator/savedld.h"

namespace ostrand {
namespace {

constexpr int kMuxChannels = 25;

// What one statement measures.
struct MuxPart {
  int index;   // first repetition
  int count;   // repetitions
  int start;   // first channel of the multiplexer
  int analog;  // differential channel of the logger that the multiplexer is wired to
  int number;  // of the multiplexer, from 1
};

// Allocates the channels: the first multiplexer is wired to channel 20 of the logger, each further
// one to the next lower channel.
class MuxChannels {
 public:
  // The first part of a block of `reps` repetitions.
  MuxPart First(int reps) {
    const int start = used_ % kMuxChannels + 1;
    const int count = std::min(reps, kMuxChannels + 1 - start);
    used_ += count;
    return part(1, count, start);
  }

  // The next part of a block: `reps` repetitions are left, the first of them is `index`.
  MuxPart Next(int index, int reps) {
    const int start = (used_ + 1) % kMuxChannels;
    if (kMuxChannels + 1 - start > kMuxChannels - 1) used_ = 0;
    const int count = std::min(reps, kMuxChannels);
    used_ += count;
    return part(index, count, start);
  }

 private:
  MuxPart part(int index, int count, int start) {
    if (start == 1) {
      --analog_;
      ++number_;
    }
    return {index, count, start, analog_, number_};
  }

  int used_ = 0;
  int number_ = 0;
  int analog_ = 21;
};

bool zeroedVoltage(const TK40MBlockData& block) {
  return block.TK40Volts == 1 && block.ZeroFlag != 0;
}

std::string statementOf(const BlockView& view, const TK40MBlockData& block, const MuxPart& part) {
  const int n = view.n;
  const std::string place = Joined({"(", part.index, ")"});
  const bool own = block.CalOnSite != 0 || view.except->Any();
  const std::string mult = own ? Joined({view.names.mult, place, "()"}) : view.names.multConst;
  const std::string offset = own || zeroedVoltage(block) ? Joined({view.names.offset, place, "()"})
                                                         : view.names.offsetConst;
  return Joined({"      TK40M(",
                 view.names.source,
                 place,
                 ",",
                 part.count,
                 ",ARNG",
                 n,
                 ",",
                 part.start,
                 ",",
                 part.analog,
                 ",ATYPE",
                 n,
                 ",TK40Ref(",
                 part.number,
                 "),7,8,",
                 block.TK40Volts == 1 ? "0," : "VX4,",
                 block.ReverseMes != 0 ? "True," : "False,",
                 "ASETL",
                 n,
                 ",AINT",
                 n,
                 ",",
                 mult,
                 ",",
                 offset,
                 ")"});
}

}  // namespace

void SAVEDLD::TK40Ms() {
  if (run_.store.TK40MBlock.BlockCount < 1) return;
  run_.PutBodyTitle(Family::kTK40M);
  MuxChannels channels;
  int kept = 0;  // statements kept for zeroing, over all blocks
  for (const BlockView& view : run_.Blocks(Family::kTK40M)) {
    const TK40MBlockData& block = run_.store.TK40MBlock[view.n];
    int done = 0;
    while (done < block.Reps) {
      const MuxPart part =
          done == 0 ? channels.First(block.Reps) : channels.Next(done + 1, block.Reps - done);
      const std::string statement = statementOf(view, block, part);
      run_.Put({statement});
      run_.TK40MLines[view.n] += Joined({run_.lines.LineCount(), " "});
      if (zeroedVoltage(block)) run_.zero.AZeroText[view.n][++kept] = statement;
      done += part.count;
    }
  }
}

}  // namespace ostrand
