#include "model/channel_chart.h"

#include <algorithm>

#include "model/names.h"
#include "text/number.h"

namespace ostrand {
namespace {

template <class Group>
void takeStarts(const Group& group, Row<int, 1, kBlocks>& starts) {
  for (int b = 1; b <= std::min<int>(group.BlockCount, kBlocks); ++b) {
    starts[b] = group[b].StartChan;
  }
}

template <class Group>
void giveStarts(Group& group, const Row<int, 1, kBlocks>& starts) {
  for (int b = 1; b <= std::min<int>(group.BlockCount, kBlocks); ++b) {
    i16& start = group[b].StartChan;
    if (starts[b] >= 1) start = static_cast<i16>(starts[b]);
    start = std::max<i16>(start, 1);
  }
}

// Single-ended channels of one sensor.
int width(const ChannelBlock& block, bool bridge) {
  const bool differential = IsDifferential(block.MeasType);
  if (bridge && block.Style >= 0 && block.Style < static_cast<int>(kBridgeStyles.size())) {
    const BridgeStyleRow& style = kBridgeStyles[static_cast<std::size_t>(block.Style)];
    if (IsDifferential(style.measType) == differential) return style.channels;
  }
  return differential ? 2 : 1;
}

void addBlocks(ChannelChart& chart, OrvusDataObjTypes kind, const std::vector<ChannelBlock>& blocks,
               const Row<int, 1, kBlocks>& starts) {
  int number = 0;
  for (const ChannelBlock& block : blocks) {
    const int start = starts[++number];
    int channel = IsDifferential(block.MeasType) ? 2 * start - 1 : start;
    const int wide = width(block, kind == ORVUS_DOBJ_BLK_BRIDGE);
    for (int rep = 1; rep <= block.Reps; ++rep) {
      for (int i = 0; i < wide; ++i, ++channel) {
        if (ChannelChart::Holds(channel)) chart[channel].push_back({kind, number, rep});
      }
    }
  }
}

MuxPlace placeOf(int sensors) {
  return {sensors / TK40MChansPerUnit + 1, sensors % TK40MChansPerUnit + 1};
}

}  // namespace

ChartBlocks ChartBlocksOf(const ProjectStore& store) {
  return {ChannelBlocksOf(store.TempBlock), ChannelBlocksOf(store.VoltBlock),
          ChannelBlocksOf(store.BridgeBlock)};
}

StartChans StoredStartChans(const ProjectStore& store) {
  StartChans starts;
  takeStarts(store.TempBlock, starts.Temp);
  takeStarts(store.VoltBlock, starts.Volt);
  takeStarts(store.BridgeBlock, starts.Bridge);
  return starts;
}

StartChans AutomaticStartChans(const ChartBlocks& blocks) {
  StartChans starts;
  ComputeStartChans(blocks.temps, blocks.volts, blocks.bridges, starts);
  return starts;
}

void TakeAutomaticStarts(ProjectStore& store) {
  const StartChans starts = AutomaticStartChans(ChartBlocksOf(store));
  giveStarts(store.TempBlock, starts.Temp);
  giveStarts(store.VoltBlock, starts.Volt);
  giveStarts(store.BridgeBlock, starts.Bridge);
}

void StoreAutomaticStarts(ProjectStore& store) {
  if (store.Config.AutoChan != kFalse) TakeAutomaticStarts(store);
}

std::string UseText(const TerminalUse& use) {
  if (use.rep == 0) return "TK40M " + NumberText(use.block);
  return SourceName(use.kind, use.block) + "(" + NumberText(use.rep) + ")";
}

ChannelChart ChannelChartOf(const ChartBlocks& blocks, const StartChans& starts, int multiplexers) {
  ChannelChart chart;
  addBlocks(chart, ORVUS_DOBJ_BLK_TEMP, blocks.temps, starts.Temp);
  addBlocks(chart, ORVUS_DOBJ_BLK_VOLT, blocks.volts, starts.Volt);
  addBlocks(chart, ORVUS_DOBJ_BLK_BRIDGE, blocks.bridges, starts.Bridge);
  // Multiplexers are wired to the last pairs, starting at the end of the panel.
  for (int m = 1; m <= multiplexers && 2 * m <= PanelSEChans; ++m) {
    for (const int channel : {PanelSEChans + 1 - 2 * m, PanelSEChans + 2 - 2 * m}) {
      chart[channel].push_back({ORVUS_DOBJ_BLK_TK40M, m, 0});
    }
  }
  return chart;
}

std::vector<MuxBlockPlace> MuxMap(ChannelBlocks blocks) {
  std::vector<MuxBlockPlace> places;
  int sum = 0;
  int number = 0;
  for (const ChannelBlock& block : blocks) {
    ++number;
    if (block.Reps < 1) continue;
    const MuxPlace first = placeOf(sum);
    sum += block.Reps;
    places.push_back({number, first, placeOf(sum - 1)});
  }
  return places;
}

std::vector<TerminalUse> MuxTerminals(ChannelBlocks blocks, int multiplexers) {
  std::vector<TerminalUse> terminals;
  int number = 0;
  for (const ChannelBlock& block : blocks) {
    ++number;
    for (int rep = 1; rep <= block.Reps; ++rep) {
      terminals.push_back({ORVUS_DOBJ_BLK_TK40M, number, rep});
    }
  }
  const int inputs = std::max(multiplexers, 0) * TK40MChansPerUnit;
  terminals.resize(static_cast<std::size_t>(inputs), {ORVUS_DOBJ_BLK_TK40M, 0, 0});
  return terminals;
}

}  // namespace ostrand
