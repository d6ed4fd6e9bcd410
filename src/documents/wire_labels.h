// The wiring of each terminal of the logger's panel.
#pragma once

#include <string>

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

// Labels of at most kLabelWidth bytes of Windows-1252; empty for a free terminal.
struct WireLabels {
  Row<std::string, 1, kPanelTerminals> Analog;   // by single-ended channel
  Row<std::string, kNoWire, kCanGround> Others;  // by Wire; none at kNoWire
};

// The labels of a project. With automatic channels the blocks are where their program's statements
// measure, else where the user has put them; blocks past the panel get no label. If two blocks
// measure at one terminal, the later one is named.
WireLabels LabelsOf(const ProjectStore& store, const StatementChannels& statements);

}  // namespace ostrand
