// The terminals of the logger and its multiplexers, strip by strip, with what is wired to them. The
// wiring diagram and every picture of it are made from this.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "documents/wire_uses.h"

namespace ostrand {

// A terminal, or an empty place between terminals.
struct WireTerminal {
  std::string_view name;  // as printed beside it; empty for an empty place
  int differential = 0;   // channels of an analog input, from 1; 0 for other terminals
  int singleEnded = 0;
  bool endsGroup = false;  // a line follows it
  WireUses users = {};     // as in PanelUses
};
// "01 02 L": channels and name; "VX1".
std::string TerminalText(const WireTerminal& terminal);

struct TerminalStrip {
  std::string title;  // "-1-", "TK40M 1"
  std::vector<WireTerminal> places;
};

struct Wiring {
  std::array<TerminalStrip, 4> panel;  // all places of strips 1 and 2, and of 3 and 4, face another
  std::vector<TerminalStrip> multiplexers;  // their inputs, one place for both wires
};

Wiring WiringOf(const ProjectStore& store, const StatementChannels& statements);

}  // namespace ostrand
