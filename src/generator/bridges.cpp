// Measurement statements of the bridge blocks, and strain statements of strain gauges.
#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "generator/terminal_alignment.h"

namespace ostrand {
namespace {

std::string_view trueOrFalse(flag value) { return value != 0 ? ",True" : ",False"; }

// Single-ended terminals of one repetition.
int terminalsOf(int style) {
  switch (style) {
    case kSixWireBridge:
      return 4;
    case kHalfBridge:
      return 1;
    default:
      return style >= 0 ? 2 : 0;
  }
}

// Inputs of a block's channel.
struct ChannelRule {
  const BridgeBlockData& block;
  std::string before;  // type of the block before it
  bool first;          // of the array
  bool automatic;      // channels follow from the order of the blocks
};

// The channel that a block starts on; `kept` if no rule applies. A differential block after
// single-ended ones moves the cursor, even if its channel is set by hand.
int channelOf(const ChannelRule& rule, int& cursor, int kept) {
  const bool single = IsSingleEnded(rule.block.MeasType);
  if (!single && !IsDifferential(rule.block.MeasType)) return kept;
  const int start = rule.block.StartChan;
  if (rule.first && rule.before.empty()) return rule.automatic ? 1 : start;

  const bool afterSingle = IsSingleEnded(rule.before);
  if (!afterSingle && !IsDifferential(rule.before)) return kept;
  const int next =
      single ? NextSingleEnded(cursor, !afterSingle) : NextDifferential(cursor, afterSingle);
  return rule.automatic ? next : start;
}

// Where a block is wired to the panel: its channel and its excitation, "CAO1" or "VX1".
struct Place {
  int channel;
  std::string excitation;
};

std::string rangeOf(const BridgeBlockData& block, int n) {
  if (block.Style == kSixWireBridge) return Joined({",BRNG", n, "_1,BRNG", n, "_2"});
  return Joined({",BRNG", n});
}

// Multiplier and offset, to the end of the statement. Strain is scaled in the strain statement, so
// a zeroed gauge is measured with multiplier 1.
std::string scalingOf(const BlockView& view, const BridgeBlockData& block) {
  const bool strain = IsStrain(block);
  const bool own = (block.CalOnSite != 0 && !strain) || view.except->Any();
  const bool plain = strain && (own ? block.ZeroFlag >= 1 : block.ZeroFlag != 0);
  const std::string mult = plain ? "1" : own ? view.names.mult + "()" : view.names.multConst;
  const bool offsets = !strain && (own || block.ZeroFlag >= 1);
  return Joined({",", mult, ",", offsets ? view.names.offset + "()" : view.names.offsetConst, ")"});
}

std::string statementOf(const BlockView& view, const BridgeBlockData& block, const Place& place) {
  const int n = view.n;
  const bool raw = block.ZeroFlag >= 1 && IsStrain(block);
  const bool reversible =
      block.Style == kFullBridge || block.Style == kSixWireBridge || IsStrain(block);
  return Joined({"      ",
                 block.Type,
                 "(",
                 view.names.source,
                 raw ? "mV_V" : "",
                 "(),",
                 view.names.reps,
                 rangeOf(block, n),
                 ",",
                 place.channel,
                 ",",
                 place.excitation,
                 ",",
                 block.ExciteReps,
                 ",BEXCIT",
                 n,
                 trueOrFalse(block.RevExcite),
                 reversible ? trueOrFalse(block.ReverseMes) : "",
                 ",BSETL",
                 n,
                 ",BINT",
                 n,
                 scalingOf(view, block),
                 IsStrain(block) ? " 'Strain" : ""});
}

std::string strainStatementOf(const BlockView& view, const BridgeBlockData& block) {
  const std::string& source = view.names.source;
  const std::string measured = block.ZeroFlag != 0 ? Joined({source, "mV_V(),", source, "ZeroMv()"})
                                                   : Joined({source, "(),0"});
  const bool ownGauge = view.except->ExceptOffset || block.ZeroFlag >= 1;
  const std::string gauge = Joined({ownGauge ? "GBBlk" : "BGF", view.n, ownGauge ? "()" : ""});
  return Joined({"      StrainCalc(", source, "(),", view.names.reps, ",", measured, ",BCODE",
                 view.n, ",", gauge, ",0) 'Strain calculation"});
}

// Excitation channels of a block that shares each of them among `ExciteReps` repetitions.
int excitationsOf(const BridgeBlockData& block) {
  if (block.ExciteReps == 0) throw DivisionByZero();
  return ExcitePortsOf(block.Reps, block.ExciteReps);
}

}  // namespace

void SAVEDLD::Bridges() {
  if (run_.store.BridgeBlock.BlockCount < 1) return;
  run_.PutBodyTitle(Family::kBridge);
  int vxUsed = 0;
  int caoUsed = 0;
  for (const BlockView& view : run_.Blocks(Family::kBridge)) {
    const BridgeBlockData& block = run_.store.BridgeBlock[view.n];
    if (!HasReps(view)) continue;
    const bool first = view.n == 1;
    const std::string& before =
        first ? run_.PrevMeasType : run_.store.BridgeBlock[view.n - 1].MeasType;
    run_.BlockChan = channelOf({block, before, first, run_.store.Config.AutoChan != 0},
                               run_.ChanCursor, run_.BlockChan);

    const bool cao = block.CheckCAO != 0;
    const int excite = (cao ? caoUsed : vxUsed) + 1;
    const std::string excitation = Joined({cao ? "CAO" : "VX", excite});
    const std::string statement = statementOf(view, block, {run_.BlockChan, excitation});
    run_.Put({statement});
    run_.channels.Bridge[view.n] = run_.BlockChan;
    run_.channels.Excite[view.n] = excite;
    if (block.ZeroFlag != 0) run_.zero.BZeroText[view.n] = statement;
    if (IsStrain(block)) run_.Put({strainStatementOf(view, block)});

    run_.ChanCursor += terminalsOf(block.Style) * block.Reps;
    run_.PrevMeasType = block.MeasType;
    if (cao) {
      caoUsed += block.Reps;
    } else {
      vxUsed += excitationsOf(block);
    }
  }
}

}  // namespace ostrand
