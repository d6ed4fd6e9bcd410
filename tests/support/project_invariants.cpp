#include "support/project_invariants.h"

#include <array>
#include <cmath>

#include "blocks/bridge_rules.h"
#include "conditions/aliases.h"
#include "model/channel_chart.h"
#include "model/channels.h"
#include "text/number.h"

namespace ostrand::testing {
namespace {

struct Scale {
  std::string_view units;
  float mult;
  float offset;
};
constexpr std::array<Scale, 4> kScales = {
    {{"Deg_C", 1, 0}, {"Deg_F", 1.8F, 32}, {"Kelvin", 1, 273.16F}, {"Rankine", 1.8F, 491.72F}}};

const Scale* scaleOf(const MeasBlock& block) {
  for (const Scale& scale : kScales) {
    if (scale.units == block.Units) return &scale;
  }
  return nullptr;
}

// Blank or the number of the block.
bool follows(const std::string& text, float value) {
  return text.empty() || ToSingle(text) == value;
}

// Collects faults under the name of a block.
class Findings {
 public:
  void Expect(bool holds, std::string_view name, int block, std::string_view what) {
    if (!holds) text += std::string(name) + NumberText(block) + ": " + std::string(what) + "\n";
  }
  std::string text;
};

template <class Block>
void checkSensors(Findings& found, std::string_view name, int number, const Block& block,
                  bool strain) {
  for (int r = 1; r <= kReps; ++r) {
    const RepAlias& alias = block.Alias[r];
    if (r > block.Reps) {
      const bool empty =
          (alias.AliasName + alias.AliasUnits + alias.AliasMult + alias.AliasOffset).empty() &&
          ExceptionsOf(alias) == 0;
      found.Expect(empty, name, number, "row beyond the count: " + NumberText(r));
      continue;
    }
    const int byHand = ExceptionsOf(alias);
    const bool units = alias.AliasUnits.empty() || alias.AliasUnits == block.Units;
    found.Expect(units || (byHand & kUnitsByHand) != 0, name, number,
                 "units " + alias.AliasUnits + " of sensor " + NumberText(r));
    found.Expect(follows(alias.AliasMult, block.DefaultMult) || (byHand & kMultByHand) != 0, name,
                 number, "multiplier " + alias.AliasMult + " of sensor " + NumberText(r));
    const bool offset =
        follows(alias.AliasOffset, block.DefaultOffset) || (strain && alias.AliasOffset == "0");
    found.Expect(offset || (byHand & kOffsetByHand) != 0, name, number,
                 "offset " + alias.AliasOffset + " of sensor " + NumberText(r));
  }
}

template <class Group>
void checkGroup(Findings& found, std::string_view name, const Group& group) {
  for (int b = 1; b <= group.BlockCount; ++b) {
    bool strain = false;
    if constexpr (requires { group[b].Style; }) strain = IsStrainStyle(group[b].Style);
    checkSensors(found, name, b, group[b], strain);
  }
}

// Whether the first block of a kind skips a channel that the later ones ignore.
bool skipsOne(ChannelBlocks blocks, int used) {
  return !blocks.empty() && blocks.front().Reps > 0 && IsDifferential(blocks.front().MeasType) &&
         used % 2 == 1;
}

bool allocationIsOneLow(const ChartBlocks& blocks) {
  const ChannelBlock probe = {.Reps = 1, .MeasType = "SE"};
  const ChannelBlocks first{&probe, 1};
  StartChans starts;
  ComputeStartChans(blocks.temps, first, {}, starts);
  if (skipsOne(blocks.volts, starts.Volt[1] - 1)) return true;
  ComputeStartChans(blocks.temps, blocks.volts, first, starts);
  return skipsOne(blocks.bridges, starts.Bridge[1] - 1);
}

template <class Group>
void checkStarts(Findings& found, std::string_view name, const Group& group,
                 const Row<int, 1, kBlocks>& computed) {
  for (int b = 1; b <= group.BlockCount; ++b) {
    const int start = group[b].StartChan;
    found.Expect(start >= 1 && (computed[b] < 1 || start == computed[b]), name, b,
                 "starts on " + NumberText(start) + ", not on " + NumberText(computed[b]));
  }
}

void checkTerminals(Findings& found, const ProjectStore& store) {
  const ChartBlocks blocks = ChartBlocksOf(store);
  if (allocationIsOneLow(blocks)) return;
  const ChannelChart chart = ChannelChartOf(blocks, StoredStartChans(store), 0);
  for (int channel = 1; channel <= PanelSEChans; ++channel) {
    std::string users;
    for (const TerminalUse& use : chart[channel]) users += " " + UseText(use);
    found.Expect(chart[channel].size() < 2, "terminal ", channel, "used by" + users);
  }
}

// A block without sensors is aligned too, but occupies no channel.
template <class Group>
std::vector<ChannelBlock> occupied(const Group& group) {
  std::vector<ChannelBlock> blocks = ChannelBlocksOf(group);
  std::erase_if(blocks, [](const ChannelBlock& block) { return block.Reps == 0; });
  return blocks;
}

}  // namespace

std::string SensorsOutOfStep(const ProjectStore& store) {
  Findings found;
  checkGroup(found, "TBlk", store.TempBlock);
  checkGroup(found, "VBlk", store.VoltBlock);
  checkGroup(found, "BBlk", store.BridgeBlock);
  checkGroup(found, "PBlk", store.PulseBlock[0]);
  checkGroup(found, "ABlk", store.TK40MBlock);
  for (int b = 1; b <= store.TempBlock.BlockCount; ++b) {
    const TempBlockData& block = store.TempBlock[b];
    const Scale* scale = scaleOf(block);
    found.Expect(scale != nullptr && scale->mult == block.DefaultMult &&
                     scale->offset == block.DefaultOffset,
                 "TBlk", b, "scaling of " + block.Units);
  }
  for (int b = 1; b <= store.TK40MBlock.BlockCount; ++b) {
    const TK40MBlockData& block = store.TK40MBlock[b];
    found.Expect(block.TK40Volts != 0 || scaleOf(block) != nullptr, "ABlk", b,
                 "scale " + block.Units);
  }
  return found.text;
}

std::string WrongStarts(const ProjectStore& store) {
  if (store.Config.AutoChan == kFalse) return {};
  Findings found;
  const StartChans computed = AutomaticStartChans(ChartBlocksOf(store));
  checkStarts(found, "TBlk", store.TempBlock, computed.Temp);
  checkStarts(found, "VBlk", store.VoltBlock, computed.Volt);
  checkStarts(found, "BBlk", store.BridgeBlock, computed.Bridge);
  checkTerminals(found, store);
  return found.text;
}

std::string ChannelsExceeded(const ProjectStore& store) {
  Findings found;
  const int multiplexers = store.Config.TK40MQty;
  const int inputs = FreeTK40MInputs(multiplexers, ChannelBlocksOf(store.TK40MBlock));
  found.Expect(inputs >= 0, "multiplexer", inputs, "free inputs");
  const int free = PanelFreeChans(LiveChannelCount(occupied(store.TempBlock)),
                                  LiveChannelCount(occupied(store.VoltBlock)),
                                  LiveBridgeCount(occupied(store.BridgeBlock)), multiplexers);
  found.Expect(free >= 0 || store.Config.AutoChan == kFalse, "panel", free, "free channels");
  return found.text;
}

}  // namespace ostrand::testing
