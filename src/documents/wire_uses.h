// The users of each terminal of the logger's panel.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/statement_channels.h"
#include "model/store.h"

namespace ostrand {

// Maximum width of a label on the panel. A longer one is cut.
inline constexpr int kLabelWidth = 26;

inline constexpr int kPanelTerminals = 40;  // analog inputs; a differential channel has two
inline constexpr int kPanelExcitations = 4;
inline constexpr int kPanelAnalogOutputs = 2;
inline constexpr int kPanelPulses = 2;
inline constexpr int kPanelPorts = 8;

// The other terminals. Of a numbered kind the first is named, and the others follow it.
enum Wire : int {
  kNoWire,
  kVX1,
  kCAO1 = kVX1 + kPanelExcitations,
  kP1 = kCAO1 + kPanelAnalogOutputs,
  kC1 = kP1 + kPanelPulses,
  kMuxAnalogGround = kC1 + kPanelPorts,
  kMuxPower,
  kMuxPowerGround,
  kCanGround
};

enum class WireKind {
  kThermocouple,
  kVoltage,
  kBridge,
  kPulse,
  kMultiplexed,  // a block on the multiplexers
  kMultiplexer,
  kPort,
  kAnalogOutput,
  kCan
};

enum class WireFunction {
  kHigh,
  kLow,
  kSingleEnded,
  kPair,  // both wires of a multiplexer's input
  kExcitation,
  kPulse,
  kPort,
  kOutput,
  kClock,
  kReset,
  kGround,
  kPower
};

// One use of a terminal.
struct WireUse {
  WireKind kind = WireKind::kThermocouple;
  WireFunction function = WireFunction::kHigh;
  int number = 0;               // of the block, port or output, from 1; 0 for none
  int slot = 0;                 // of pulse blocks, ports and outputs
  int rep = 0;                  // first repetition, from 1; 0 for none
  int lastRep = 0;              // of several on one excitation
  std::string_view input = {};  // "In" or "Out" of a sensor with two inputs
  std::string source = {};      // in the program: "VBlk1(2)", or what it is: "Port Set 3"
  std::string alias = {};       // of the sensor; not cut
  std::string label = {};       // in the wiring diagram, at most kLabelWidth bytes
};
using WireUses = std::vector<WireUse>;

// Whether users of one terminal are different sensors or devices, which cannot share it.
bool IsConflict(const WireUses& users);

// Users by terminal, none of a free one. The wiring diagram names the first one.
struct PanelUses {
  Row<WireUses, 1, kPanelTerminals> Analog;   // by single-ended channel
  Row<WireUses, kNoWire, kCanGround> Others;  // by Wire; none at kNoWire
};

// With automatic channels the blocks are where their program's statements measure, else where the
// user has put them; blocks past the panel are left out. Of two blocks at one terminal the later
// one comes first.
PanelUses PanelUsesOf(const ProjectStore& store, const StatementChannels& statements);

}  // namespace ostrand
