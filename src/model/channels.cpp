#include "model/channels.h"

#include <algorithm>

namespace ostrand {
namespace {

constexpr int kPanelDiffChans = PanelSEChans / 2;

template <class Group, class Convert>
std::vector<ChannelBlock> blocksOf(const Group& group, Convert convert) {
  std::vector<ChannelBlock> blocks;
  for (int b = 1; b <= group.BlockCount; ++b) blocks.push_back(convert(group[b]));
  return blocks;
}

ChannelBlock analogBlock(const AnalogBlock& block) {
  return {.Reps = block.Reps, .MeasType = block.MeasType};
}

int roundedUpToEven(int count) { return 2 * ((count + 1) / 2); }

// Single-ended channels of a block, whatever a bridge's style.
int plainSize(const ChannelBlock& block) {
  return IsDifferential(block.MeasType) ? 2 * block.Reps : block.Reps;
}

// Single-ended channels of a bridge sensor for the count of the section.
int countedChannels(const ChannelBlock& block) {
  const int style = block.Style;
  if (IsDifferential(block.MeasType))
    return style == kSixWireBridge || style == kResistanceBridge ? 4 : 2;
  if (IsSingleEnded(block.MeasType))
    return style == kThreeWireBridge || style == kResistanceBridge ? 2 : 1;
  return 0;
}

// Single-ended channels of a bridge block for the start of the next one: none if the type is not
// that of the style, as with resistance bridges of old projects.
int bridgeSize(const ChannelBlock& block) {
  if (block.Style < 0 || block.Style >= static_cast<int>(kBridgeStyles.size())) return 0;
  const BridgeStyleRow& style = kBridgeStyles[static_cast<std::size_t>(block.Style)];
  return SameText(block.MeasType, style.measType) ? block.Reps * style.channels : 0;
}

int sumOfReps(ChannelBlocks blocks) {
  int sum = 0;
  for (const ChannelBlock& block : blocks) sum += block.Reps;
  return sum;
}

// Assigns the channels of the panel block by block.
class Allocation {
 public:
  explicit Allocation(StartChans& starts) : starts_(starts) {}

  void Temperatures(ChannelBlocks blocks) {
    starts_.Temp[1] = 1;
    followers(blocks, starts_.Temp, plainSize);
  }
  void Voltages(ChannelBlocks blocks) {
    first(blocks, starts_.Volt);
    followers(blocks, starts_.Volt, plainSize);
  }
  void Bridges(ChannelBlocks blocks) {
    first(blocks, starts_.Bridge);
    followers(blocks, starts_.Bridge, bridgeSize);
  }

 private:
  using Starts = Row<int, 1, kBlocks>;

  // The half used pair that the first block of a kind skips is not counted: the blocks after it
  // start one channel low.
  void first(ChannelBlocks blocks, Starts& starts) {
    if (blocks.empty() || blocks.front().Reps <= 0) return;
    const int before = used_;
    starts[1] = place(blocks.front());
    used_ = before;
  }

  void followers(ChannelBlocks blocks, Starts& starts, int (*size)(const ChannelBlock&)) {
    int number = 0;
    for (const ChannelBlock& block : blocks) {
      if (++number > 1) starts[number] = place(block);
      if (block.Reps > 0) used_ += size(block);
    }
  }

  int place(const ChannelBlock& block) {
    if (!IsDifferential(block.MeasType)) return used_ + 1;
    used_ = roundedUpToEven(used_);
    return used_ / 2 + 1;
  }

  StartChans& starts_;
  int used_ = 0;
};

// Single-ended channels of all rows of the three sections.
int sizeOfAllRows(const ProjectStore& store) {
  int total = 0;
  const auto add = [&total](const auto& group) {
    for (const AnalogBlock& block : group.Blocks) total += plainSize(analogBlock(block));
  };
  add(store.TempBlock);
  add(store.VoltBlock);
  add(store.BridgeBlock);
  return total;
}

}  // namespace

std::vector<ChannelBlock> ChannelBlocksOf(const TempBlockGroup& group) {
  return blocksOf(group, analogBlock);
}

std::vector<ChannelBlock> ChannelBlocksOf(const VoltBlockGroup& group) {
  return blocksOf(group, analogBlock);
}

std::vector<ChannelBlock> ChannelBlocksOf(const BridgeBlockGroup& group) {
  return blocksOf(group, [](const BridgeBlockData& block) {
    return ChannelBlock{block.Reps, block.MeasType, block.Style, block.ExciteReps,
                        block.CheckCAO != 0};
  });
}

std::vector<ChannelBlock> ChannelBlocksOf(const PulseBlockGroup& group) {
  return blocksOf(group, [](const MeasBlock& block) { return ChannelBlock{.Reps = block.Reps}; });
}

std::vector<ChannelBlock> ChannelBlocksOf(const TK40MBlockGroup& group) {
  return blocksOf(group, [](const MeasBlock& block) { return ChannelBlock{.Reps = block.Reps}; });
}

int LiveChannelCount(ChannelBlocks blocks) {
  int count = 0;
  for (const ChannelBlock& block : blocks) {
    if (IsDifferential(block.MeasType)) count = roundedUpToEven(count);
    count += plainSize(block);
  }
  return count;
}

int LiveBridgeCount(ChannelBlocks blocks) {
  int count = 0;
  for (const ChannelBlock& block : blocks) {
    if (IsDifferential(block.MeasType)) count = roundedUpToEven(count);
    count += block.Reps * countedChannels(block);
  }
  return std::max(count, 0);
}

int PanelFreeChans(int tempCount, int voltCount, int bridgeCount, int multiplexers) {
  return PanelSEChans - tempCount - voltCount - bridgeCount - 2 * multiplexers;
}

FreeFigures FreeChannelFigures(bool autoChan, int free) {
  if (!autoChan) return {};
  return {free, free / 2};
}

int ChannelsAvailable(OrvusAnalogInputTypes type, bool autoChan, int free) {
  if (!autoChan) return -1;
  return type == ORVUS_INPUT_SE ? free : (free - 1) / 2;
}

int ChannelsFrom(bool differential, int start) {
  return (differential ? kPanelDiffChans : PanelSEChans) + 1 - start;
}

int MaxMore(bool autoChan, int available, bool differential, int start, int reps) {
  return autoChan ? available : std::max(ChannelsFrom(differential, start) - reps, -1);
}

int FreeTK40MInputs(int multiplexers, ChannelBlocks blocks) {
  return TK40MChansPerUnit * multiplexers - sumOfReps(blocks);
}

int FreePulseChans(ChannelBlocks blocks) { return PanelPulseChans - sumOfReps(blocks); }

PulseFit FitPulseCount(int count, int free) {
  if (free < 0) return {count + free, 0};
  return {count, free};
}

int ExcitePortsOf(int reps, int exciteReps) {
  return reps / exciteReps + (reps % exciteReps != 0 ? 1 : 0);
}

int ExciteSwitched(ChannelBlocks bridges) {
  int ports = 0;
  for (const ChannelBlock& block : bridges) {
    if (block.ExciteReps > 0) ports += ExcitePortsOf(block.Reps, block.ExciteReps);
  }
  return ports;
}

int CAOPortsTaken(ChannelBlocks bridges) {
  int ports = 0;
  for (const ChannelBlock& block : bridges) {
    if (block.CheckCAO && block.ExciteReps > 0) {
      ports += ExcitePortsOf(block.Reps, block.ExciteReps);
    }
  }
  return ports;
}

bool CAOPortUsedByBridge(int port, int taken) { return port > PanelCAOPorts - taken; }

void ComputeStartChans(ChannelBlocks temps, ChannelBlocks volts, ChannelBlocks bridges,
                       StartChans& starts) {
  Allocation allocation(starts);
  allocation.Temperatures(temps);
  allocation.Voltages(volts);
  allocation.Bridges(bridges);
}

int AutoSelectionTotal(const ProjectStore& store) {
  return sizeOfAllRows(store) + store.Config.TK40MQty;
}

int FittingTK40MQty(const ProjectStore& store, int entered) {
  return std::min(entered, kPanelDiffChans - (sizeOfAllRows(store) + 1) / 2);
}

}  // namespace ostrand
