// The uses of the panel's analog inputs, and the positions of blocks on the multiplexers.
#pragma once

#include <string>
#include <vector>

#include "model/channels.h"
#include "model/enums.h"
#include "model/store.h"
#include "text/row.h"

namespace ostrand {

// The blocks shown in the chart. A screen passes its own blocks as edited and those of the other
// kinds from the store.
struct ChartBlocks {
  std::vector<ChannelBlock> temps;
  std::vector<ChannelBlock> volts;
  std::vector<ChannelBlock> bridges;
};
ChartBlocks ChartBlocksOf(const ProjectStore& store);

// The starts in the store, of blocks 1 to their counts; 0 for the others.
StartChans StoredStartChans(const ProjectStore& store);

// The starts under automatic selection; 0 for rows without a block.
StartChans AutomaticStartChans(const ChartBlocks& blocks);

// Gives all blocks of the panel their starts under automatic selection. A block that does not fit
// keeps its start, which is at least 1.
void TakeAutomaticStarts(ProjectStore& store);
// Does the same, unless channels are selected by hand.
void StoreAutomaticStarts(ProjectStore& store);

// One use of a terminal. A multiplexer is of kind ORVUS_DOBJ_BLK_TK40M, numbered by `block`.
struct TerminalUse {
  OrvusDataObjTypes kind;
  int block;  // from 1
  int rep;    // from 1; 0 for a multiplexer

  friend bool operator==(const TerminalUse&, const TerminalUse&) = default;
};
// "VBlk1(3)", "TK40M 2".
std::string UseText(const TerminalUse& use);

// The users of each single-ended input; none for a free one, several if blocks overlap, which is
// possible when channels are selected by hand. Inputs beyond the panel are left out.
using ChannelChart = Row<std::vector<TerminalUse>, 1, PanelSEChans>;
ChannelChart ChannelChartOf(const ChartBlocks& blocks, const StartChans& starts, int multiplexers);

// A position on the multiplexers; both numbers count from 1.
struct MuxPlace {
  int multiplexer = 1;
  int channel = 1;

  friend bool operator==(const MuxPlace&, const MuxPlace&) = default;
};

// Start and end of a block with sensors.
struct MuxBlockPlace {
  int block;  // from 1
  MuxPlace first;
  MuxPlace last;

  friend bool operator==(const MuxBlockPlace&, const MuxBlockPlace&) = default;
};

// Blocks follow each other over the multiplexers; those without sensors have no position.
std::vector<MuxBlockPlace> MuxMap(ChannelBlocks blocks);

// The user of each input of the multiplexers, multiplexer 1 first; block 0 for a free one.
std::vector<TerminalUse> MuxTerminals(ChannelBlocks blocks, int multiplexers);

}  // namespace ostrand
