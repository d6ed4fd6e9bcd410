#include "documents/wiring.h"

#include <algorithm>

#include "model/channel_chart.h"
#include "model/channels.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kGroupsOfAStrip = 10;  // differential channels on each of the first two strips

// A terminal of the last two strips, or its empty place.
struct Printed {
  std::string_view name;
  int wire = kNoWire;
};

struct PrintedRow {
  Printed left;
  Printed right;
  bool ends = false;  // a group of terminals on the left
};

constexpr std::array<PrintedRow, 23> kLastStrips = {{
    {{"VX1", kVX1}, {}},
    {{"VX2", kVX1 + 1}, {"C5", kC1 + 4}},
    {{"Gnd", kMuxAnalogGround}, {"C6", kC1 + 5}, true},
    {{"VX3", kVX1 + 2}, {"C7", kC1 + 6}},
    {{"VX4", kVX1 + 3}, {"C8", kC1 + 7}},
    {{"CAO1", kCAO1}, {">2.0V"}},
    {{"CAO2", kCAO1 + 1}, {}},
    {{"Gnd"}, {"<0.8V"}, true},
    {{"IX1"}, {}},
    {{"IX2"}, {"5V"}},
    {{"IX3"}, {}},
    {{"IX4"}, {"SDI-12"}},
    {{"IXR"}, {"12V", kMuxPower}},
    {{"Gnd"}, {"Gnd", kMuxPowerGround}, true},
    {{"P1", kP1}, {"QB-C1"}},
    {{"Gnd"}, {"QB-C2"}},
    {{"P2", kP1 + 1}, {"QB-C3"}},
    {{"Gnd"}, {}, true},
    {{"C1", kC1}, {"12V"}},
    {{"C2", kC1 + 1}, {}},
    {{"C3", kC1 + 2}, {}},
    {{"C4", kC1 + 3}, {"SW-12"}},
    {{"Gnd"}, {"Gnd"}},
}};

// The high, low and ground terminals of the differential channels from `first` on.
TerminalStrip analogStrip(PanelUses& uses, std::string_view title, int first) {
  TerminalStrip strip{std::string(title), {}};
  for (int d = first; d < first + kGroupsOfAStrip; ++d) {
    strip.places.push_back({"H", d, 2 * d - 1, false, std::move(uses.Analog[2 * d - 1])});
    strip.places.push_back({"L", d, 2 * d, false, std::move(uses.Analog[2 * d])});
    strip.places.push_back({.name = "Gnd", .endsGroup = true});
  }
  strip.places.back().endsGroup = false;
  return strip;
}

TerminalStrip lastStrip(PanelUses& uses, std::string_view title, Printed PrintedRow::*side) {
  TerminalStrip strip{std::string(title), {}};
  for (const PrintedRow& row : kLastStrips) {
    const Printed& printed = row.*side;
    strip.places.push_back({.name = printed.name,
                            .endsGroup = row.ends && side == &PrintedRow::left,
                            .users = std::move(uses.Others[printed.wire])});
  }
  return strip;
}

WireUse useOf(const ProjectStore& store, const TerminalUse& terminal) {
  const auto& aliases = store.TK40MBlock[terminal.block].Alias;
  return {.kind = WireKind::kMultiplexed,
          .function = WireFunction::kPair,
          .number = terminal.block,
          .rep = terminal.rep,
          .lastRep = terminal.rep,
          .source = UseText(terminal),
          .alias = aliases.Holds(terminal.rep) ? aliases[terminal.rep].AliasName : std::string()};
}

std::vector<TerminalStrip> multiplexerStrips(const ProjectStore& store) {
  const int count = std::clamp(int{store.Config.TK40MQty}, 0, PanelSEChans / 2);
  std::vector<TerminalStrip> strips;
  int input = 0;
  for (const TerminalUse& terminal : MuxTerminals(ChannelBlocksOf(store.TK40MBlock), count)) {
    const int place = input++ % TK40MChansPerUnit + 1;
    if (place == 1) {
      strips.push_back({"TK40M " + NumberText(static_cast<int>(strips.size()) + 1), {}});
    }
    WireTerminal& wired = strips.back().places.emplace_back();
    wired = {.name = "HL", .differential = place};
    if (terminal.block > 0) wired.users.push_back(useOf(store, terminal));
  }
  return strips;
}

}  // namespace

std::string TerminalText(const WireTerminal& terminal) {
  std::string text;
  for (const int channel : {terminal.differential, terminal.singleEnded}) {
    if (channel > 0) text.append(PaddedNumberText(channel, 2)) += ' ';
  }
  return text += terminal.name;
}

Wiring WiringOf(const ProjectStore& store, const StatementChannels& statements) {
  PanelUses uses = PanelUsesOf(store, statements);
  Wiring wiring{
      {analogStrip(uses, "-1-", 1), analogStrip(uses, "-2-", 1 + kGroupsOfAStrip),
       lastStrip(uses, "-3-", &PrintedRow::left), lastStrip(uses, "-4-", &PrintedRow::right)},
      multiplexerStrips(store)};
  // The CAN module has its ground at the last terminal of strip 2.
  wiring.panel[1].places.back().users = std::move(uses.Others[kCanGround]);
  return wiring;
}

}  // namespace ostrand
