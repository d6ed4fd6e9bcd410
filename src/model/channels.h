// The logger's panel and its use by the measurement blocks: free channels, and the channel on which
// each block starts when channels are selected automatically.
//
// Counts of analog inputs are single-ended channels; a differential channel n is the pair 2n-1 and
// 2n. A block's start is numbered in its kind of channel, from 1. The generator keeps separate
// cursors for the statements of the program.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "model/bridge_style.h"
#include "model/enums.h"
#include "model/store.h"
#include "text/strings.h"

namespace ostrand {

// Inputs and outputs of the panel.
inline constexpr int PanelSEChans = 40;       // single-ended inputs
inline constexpr int PanelExcitePorts = 4;    // switched excitations, VX1 to VX4
inline constexpr int PanelCAOPorts = 2;       // continuous analog outputs
inline constexpr int PanelPulseChans = 2;     // one pool for all kinds of pulses
inline constexpr int PanelControlPorts = 8;   // digital control ports
inline constexpr int TK40MChansPerUnit = 25;  // differential inputs of one multiplexer

// Limits of the screens, below the capacity of the store.
inline constexpr int kMaxBridgeBlocks = 4;
inline constexpr int kMaxMultiplexers = 4;
inline constexpr int kMaxCanModules = 1;

// Types of measurement, "SE" and "Diff", case-insensitive; a text may be neither.
inline bool IsSingleEnded(std::string_view measType) { return SameText(measType, "SE"); }
inline bool IsDifferential(std::string_view measType) { return SameText(measType, "DIFF"); }

// The channels that a block uses. Style and excitation are of bridges only.
struct ChannelBlock {
  int Reps = 0;
  std::string_view MeasType = {};
  int Style = 0;
  int ExciteReps = 0;  // repetitions on one excitation channel
  bool CheckCAO = false;
};
using ChannelBlocks = std::span<const ChannelBlock>;

// The blocks of a section in the store, 1 to its count. They point into the store.
std::vector<ChannelBlock> ChannelBlocksOf(const TempBlockGroup& group);
std::vector<ChannelBlock> ChannelBlocksOf(const VoltBlockGroup& group);
std::vector<ChannelBlock> ChannelBlocksOf(const BridgeBlockGroup& group);
std::vector<ChannelBlock> ChannelBlocksOf(const PulseBlockGroup& group);
std::vector<ChannelBlock> ChannelBlocksOf(const TK40MBlockGroup& group);

// A style of bridge, and the channels of one sensor.
struct BridgeStyleRow {
  std::string_view bridge;
  std::string_view measType;
  int channels;
};
inline constexpr std::array<BridgeStyleRow, 8> kBridgeStyles = {{
    {"4 wire full", "Diff", 2},
    {"6 wire full", "Diff", 4},
    {"half", "SE", 1},
    {"3 wire half", "SE", 2},
    {"resistance", "SE", 2},
    {"quarter strain", "Diff", 2},
    {"half strain", "Diff", 2},
    {"full strain", "Diff", 2},
}};

// Single-ended channels of a thermocouple or voltage section: a differential block starts on a
// whole pair, and the channel left out before it counts as used.
int LiveChannelCount(ChannelBlocks blocks);

// Single-ended channels of the bridge section; never below 0. A block that is neither differential
// nor single-ended uses none.
int LiveBridgeCount(ChannelBlocks blocks);

// Single-ended channels left by the three sections and one pair for each multiplexer; below 0 if
// too many are used.
int PanelFreeChans(int tempCount, int voltCount, int bridgeCount, int multiplexers);

// The two figures of free channels; nothing is shown as "?", when channels are selected by hand.
struct FreeFigures {
  std::optional<int> singleEnded;
  std::optional<int> differential;
};
FreeFigures FreeChannelFigures(bool autoChan, int free);

// Sensors that can still be added, in channels of that type; -1 when channels are selected by hand.
// One differential channel is reserved for an odd alignment.
int ChannelsAvailable(OrvusAnalogInputTypes type, bool autoChan, int free);

// Channels between the start of a block and the end of the panel, both included.
int ChannelsFrom(bool differential, int start);

// Sensors that a block can take beyond its repetitions; `available` is that of ChannelsAvailable
// for its type. When channels are selected by hand, -1 means any excess.
int MaxMore(bool autoChan, int available, bool differential, int start, int reps);

// Free inputs of all multiplexers.
int FreeTK40MInputs(int multiplexers, ChannelBlocks blocks);

// Free pulse channels; below 0 if there are too many sensors.
int FreePulseChans(ChannelBlocks blocks);

// A sensor count lowered by what the pool lacks, and the free channels then left.
struct PulseFit {
  int count;
  int free;
};
PulseFit FitPulseCount(int count, int free);

// Excitation channels of a block; each is shared by `exciteReps` repetitions, which is not 0.
int ExcitePortsOf(int reps, int exciteReps);

// Switched excitations used by bridge blocks; those on continuous outputs count too.
int ExciteSwitched(ChannelBlocks bridges);

// Continuous analog outputs used by bridge blocks, assigned from the last one down.
int CAOPortsTaken(ChannelBlocks bridges);

// Whether a bridge measurement uses output `port`, from 1, if `taken` outputs are in use.
bool CAOPortUsedByBridge(int port, int taken);

// First channels of the blocks.
struct StartChans {
  Row<int, 1, kBlocks> Temp;
  Row<int, 1, kBlocks> Volt;
  Row<int, 1, kBlocks> Bridge;
};

// The starts of all blocks under automatic selection, from the sizes of the blocks before them, in
// the order thermocouple, voltage, bridge. Rows without a block, and a first voltage or bridge
// block without sensors, keep their start; the first thermocouple row always starts on 1. More than
// kBlocks blocks of a kind raise Fault 9.
void ComputeStartChans(ChannelBlocks temps, ChannelBlocks volts, ChannelBlocks bridges,
                       StartChans& starts);

// Single-ended channels that the switch to automatic selection counts: all rows of the three
// sections, whatever their count and style, and one for each multiplexer.
int AutoSelectionTotal(const ProjectStore& store);

// Whether the panel has that many channels.
inline bool AutoSelectionFits(int total) { return total <= PanelSEChans; }

// The number of multiplexers that fit on the panel, at most the one entered; below 0 if the blocks
// alone are too many.
int FittingTK40MQty(const ProjectStore& store, int entered);

}  // namespace ostrand
