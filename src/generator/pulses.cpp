// Statements of the pulse and frequency blocks.
#include "generator/savedld.h"
#include "model/pulse_kinds.h"

namespace ostrand {
namespace {

bool anyReps(const PulseBlockGroup& group) {
  for (int k = 1; k <= group.BlockCount; ++k) {
    if (group[k].Reps > 0) return true;
  }
  return false;
}

}  // namespace

// A block takes one channel, whatever its repetitions. Channels continue from slot to slot, while
// block numbers restart at 1.
void SAVEDLD::Pulses() {
  int channel = 0;
  for (int slot = 0; slot <= 1; ++slot) {
    const PulseBlockGroup& group = run_.store.PulseBlock[slot];
    if (group.BlockCount < 1) continue;
    if (anyReps(group)) run_.PutTitle("      ", TextsOf(Family::kPulse).bodyTitle);

    Row<std::string, 1, kPulseBlocks> statements;
    for (int n = 1; n <= group.BlockCount; ++n) {
      const PulseBlockData& block = group[n];
      if (!HasPulseStatement(block)) continue;
      const bool own = block.CalOnSite != 0 || run_.needs.Except.Pulse[slot][n].Any();
      const std::string scaling = own ? Joined({",MPBlk", n, "(),OPBlk", n, "())"})
                                      : Joined({",PMULT", n, ",POSET", n, ")"});
      statements[n] = Joined(
          {"PulseCount(PBlk", n, "(),PREP", n, ",", ++channel, ",PCONF", n, ",POPT", n, scaling});
    }
    for (const std::string& statement : statements) {
      if (!statement.empty()) run_.Put({"      ", statement});
    }
  }
}

}  // namespace ostrand
