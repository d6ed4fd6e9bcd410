// The wiring diagram: whole as it is to be printed, and label by label.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "documents/makewire.h"
#include "documents/wired_terminals.h"
#include "generator/generated.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_random.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

constexpr platform::Moment kMoment = {2025, 11, 24, 9, 30, 0};

class WiringTest : public Generated {
 protected:
  WiringTest() { store.Config.AutoChan = kTrue; }

  // The diagram of the project, wired as its program measures.
  std::string Diagram() {
    Run();
    return WiringText(store, generator.Channels(), {"PUMP", kMoment});
  }

  template <class Group>
  auto& Add(Group& group, const char* measType, i16 reps) {
    auto& block = group[++group.BlockCount];
    block.MeasType = measType;
    block.Reps = reps;
    return block;
  }
  BridgeBlockData& AddBridge(i16 style, const char* measType, i16 reps) {
    BridgeBlockData& block = Add(store.BridgeBlock, measType, reps);
    block.Style = style;
    return block;
  }
  PulseBlockData& AddPulse(int slot, const char* meas, i16 reps) {
    PulseBlockGroup& group = store.PulseBlock[slot];
    PulseBlockData& block = group[++group.BlockCount];
    block.Meas = meas;
    block.Reps = reps;
    return block;
  }
};

// The drawing as a printer of code page 437 shows it.
constexpr char kWhole[] = R"(
File name   : PUMP.VKW                                 Date written: 11-24-2025
Written by  : Name                                     Time written: 09:30:00
I.D. number : Rig 7                                     QUILLON Vers : 6.1.0.07

┌───────────────────────────────────────────────────────────────────────────┐
│                            █▀▀▀▀▀▀█ |                             █▀▀▀▀▀▀█│
│Sensor                        -1-    | Sensor                        -2-   │
│Number                       Diff SE | Number                       Diff SE│
│─────────────────────────────────────┼─────────────────────────────────────│
│01 TBlk1(1) Exhaust        ■ 01 01 H |                            O 11 21 H│
│01 TBlk1(1) Exhaust        ■ 01 02 L |                            O 11 22 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│02 TBlk1(2) Intake         ■ 02 03 H |                            O 12 23 H│
│02 TBlk1(2) Intake         ■ 02 04 L |                            O 12 24 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│03 VBlk1(1)                ■ 03 05 H |                            O 13 25 H│
│04 VBlk1(2)                ■ 03 06 L |                            O 13 26 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│05 VBlk1(3)                ■ 04 07 H |                            O 14 27 H│
│                           O 04 08 L |                            O 14 28 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│06 B6WBlk1(1) In Load      ■ 05 09 H |                            O 15 29 H│
│06 B6WBlk1(1) In Load      ■ 05 10 L |                            O 15 30 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│06 B6WBlk1(1) Out Load     ■ 06 11 H |                            O 16 31 H│
│06 B6WBlk1(1) Out Load     ■ 06 12 L |                            O 16 32 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│07 BBlk2(1)                ■ 07 13 H |                            O 17 33 H│
│08 BBlk2(2)                ■ 07 14 L |                            O 17 34 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│                           O 08 15 H |                            O 18 35 H│
│                           O 08 16 L |                            O 18 36 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│                           O 09 17 H |                            O 19 37 H│
│                           O 09 18 L |                            O 19 38 L│
│                           O Gnd     |                            O Gnd    │
│                             ──────  |                              ────── │
│                           O 10 19 H |  TK40M 1 High              ■ 20 39 H│
│                           O 10 20 L |  TK40M 1 Low               ■ 20 40 L│
│                           O Gnd     | QB-CAN C                   ■ Gnd    │
└─────────────────────────────────────┴─────────────────────────────────────┘

──────────────────────────────── Page Break ─────────────────────────────────

┌───────────────────────────────────────────────────────────────────────────┐
│                            █▀▀▀▀█   |                             █▀▀▀▀█  │
│Sensor                        -3-    | Sensor                        -4-   │
│Number                               | Number                              │
│─────────────────────────────────────┼─────────────────────────────────────│
│  Excite B6WBlk1(1)        ■ VX1     |                                     │
│  Excite BBlk2(1)          ■ VX2     |                            O C5     │
│ TK40M AG                  ■ Gnd     |                            O C6     │
│                             ────    |                                     │
│  Excite BBlk2(2)          ■ VX3     |  TK40M Clock Port          ■ C7     │
│ TK40M Excitation          ■ VX4     |  TK40M Reset Port          ■ C8     │
│  Excite 1                 ■ CAO1    |                            O >2.0V  │
│                           O CAO2    |                                     │
│                           O Gnd     |                            O <0.8V  │
│                             ────    |                                     │
│                           O IX1     |                                     │
│                           O IX2     |                            O 5V     │
│                           O IX3     |                                     │
│                           O IX4     |                            O SDI-12 │
│                           O IXR     |  TK40M 12V                 ■ 12V    │
│                           O Gnd     |  TK40M Gnd                 ■ Gnd    │
│                             ────    |                                     │
│09 (HI)PBlk1(1) Speed      ■ P1      |                            O QB-C1  │
│                           O Gnd     |                            O QB-C2  │
│                           O P2      |                            O QB-C3  │
│                           O Gnd     |                                     │
│                             ────    |                                     │
│  Port Set 1               ■ C1      |                            O 12V    │
│                           O C2      |                                     │
│                           O C3      |                                     │
│                           O C4      |                            O SW-12  │
│                           O Gnd     |                            O Gnd    │
└─────────────────────────────────────┴─────────────────────────────────────┘
)";

// The bytes of a text that is shown with the characters of code page 437.
std::string codePage437(std::string_view shown) {
  struct Pair {
    std::string_view character;
    char code;
  };
  constexpr std::array<Pair, 11> kPairs = {{{"─", '\xC4'},
                                            {"│", '\xB3'},
                                            {"┌", '\xDA'},
                                            {"┐", '\xBF'},
                                            {"└", '\xC0'},
                                            {"┘", '\xD9'},
                                            {"┴", '\xC1'},
                                            {"┼", '\xC5'},
                                            {"█", '\xDB'},
                                            {"▀", '\xDF'},
                                            {"■", '\xFE'}}};
  std::string bytes;
  while (!shown.empty()) {
    std::size_t taken = 1;
    const auto pair = std::find_if(kPairs.begin(), kPairs.end(), [&](const Pair& known) {
      return shown.starts_with(known.character);
    });
    if (pair != kPairs.end()) {
      taken = pair->character.size();
      bytes += pair->code;
    } else if (shown.front() == '\n') {
      bytes += "\r\n";
    } else {
      bytes += shown.front();
    }
    shown.remove_prefix(taken);
  }
  return bytes;
}

TEST_F(WiringTest, ThePanelAsItIsPrinted) {
  store.Gen.Operator = "Name";
  store.Gen.IDNumber = "Rig 7";
  store.Gen.VersionLastSaved = "6.1.0.07";
  store.Config.TK40MQty = 1;
  store.Config.CanBusQty = 1;
  TempBlockData& exhaust = Add(store.TempBlock, "Diff", 2);
  exhaust.Alias[1].AliasName = "Exhaust";
  exhaust.Alias[2].AliasName = "Intake";
  Add(store.VoltBlock, "SE", 3);
  AddBridge(1, "Diff", 1).Alias[1].AliasName = "Load";
  AddBridge(2, "SE", 2);
  AddPulse(0, "HiLev", 1).Alias[1].AliasName = "Speed";
  store.Ports.Slot[0].ByteMode = 0;
  store.Ports.Slot[0].ReadMode = 0;
  store.Ports.Slot[0].Ports[1].Include = kTrue;
  store.ExciteOut.Slot[0][1].Include = kTrue;
  store.ExciteOut.Slot[0][1].DynamicStatic = 1;

  const std::string diagram = Diagram();
  EXPECT_EQ(diagram, codePage437(kWhole));
  EXPECT_EQ(WiringUtf8(diagram), kWhole);
}

// The excitation of a six-wire bridge is sensed on its first channel. Three wires, and a resistance
// bridge that an old project calls differential, take two terminals. The input stands before the
// name, so that the cut spares it.
TEST_F(WiringTest, SensorsWithTwoInputs) {
  Add(store.TempBlock, "SE", 3);
  AddBridge(4, "Diff", 1).ExciteReps = 9;
  AddBridge(1, "Diff", 1).Alias[1].AliasName = "Wishbone upper";
  AddBridge(3, "SE", 1).Alias[1].AliasName = "Left front upper";
  EXPECT_EQ(WiredIn(Diagram()),
            "01 01 H:01 TBlk1(1)\n"
            "01 02 L:02 TBlk1(2)\n"
            "02 03 H:03 TBlk1(3)\n"
            "03 05 H:04 B3WBlk1(1) In\n"
            "03 06 L:04 B3WBlk1(1) Out\n"
            "04 07 H:05 B6WBlk2(1) In Wishbone\n"
            "04 08 L:05 B6WBlk2(1) In Wishbone\n"
            "05 09 H:05 B6WBlk2(1) Out Wishbone\n"
            "05 10 L:05 B6WBlk2(1) Out Wishbone\n"
            "06 11 H:06 B3WBlk3(1) In Left fron\n"
            "06 12 L:06 B3WBlk3(1) Out Left fro\n"
            "VX1:  Excite B3WBlk1(1)\n"
            "VX2:  Excite B6WBlk2(1)\n"
            "VX3:  Excite B3WBlk3(1)\n");
}

// Channels chosen by hand stand as they are, past the panel there is nothing to wire, and a later
// block is named where two share a terminal. Sensors are numbered wherever they are.
TEST_F(WiringTest, ChannelsOfTheUser) {
  store.Config.AutoChan = kFalse;
  Add(store.TempBlock, "SE", 2).StartChan = 40;
  Add(store.VoltBlock, "diff", 3).StartChan = 19;
  Add(store.VoltBlock, "se", 1).StartChan = 38;
  Add(store.VoltBlock, "Diff", 1).StartChan = 0;
  AddBridge(2, "SE", 1).StartChan = 5;
  EXPECT_EQ(WiredIn(Diagram()),
            "03 05 H:08 BBlk1(1)\n"
            "19 37 H:03 VBlk1(1)\n"
            "19 38 L:06 VBlk2(1)\n"
            "20 39 H:04 VBlk1(2)\n"
            "20 40 L:04 VBlk1(2)\n"
            "VX1:  Excite BBlk1(1)\n");
}

// Five repetitions on excitations for two take three; the outputs move on by repetitions. An output
// that excites a bridge is not shown as an output of its own.
TEST_F(WiringTest, ExcitationIsSharedByRepetitions) {
  AddBridge(5, "Diff", 5).ExciteReps = 2;
  AddBridge(2, "SE", 1).CheckCAO = kTrue;
  BridgeBlockData& shared = AddBridge(2, "SE", 2);
  shared.CheckCAO = kTrue;
  shared.ExciteReps = 2;
  AddBridge(2, "SE", 3).ExciteReps = 1;
  store.ExciteOut.Slot[1][1].Include = kTrue;
  store.ExciteOut.Slot[0][2].Include = kTrue;
  const std::string wired = WiredIn(Diagram());
  EXPECT_EQ(wired.substr(wired.find("VX1")),
            "VX1:  Excite BBlk1(1-2)\n"
            "VX2:  Excite BBlk1(3-4)\n"
            "VX3:  Excite BBlk1(5)\n"
            "VX4:  Excite BBlk4(1)\n"
            "CAO1:  Excite BBlk2(1)\n"
            "CAO2:  Excite BBlk3(1-2)\n");

  store.BridgeBlock.BlockCount = 0;
  EXPECT_EQ(WiredIn(Diagram()), "CAO1:  Excite 1\nCAO2:  Excite 2\n");
}

// A block without a share of an excitation ends the bridges of the program: later ones have no
// statement, and nothing to be wired for it.
TEST_F(WiringTest, BlocksWithoutAStatement) {
  AddBridge(2, "SE", 2).ExciteReps = 0;
  AddBridge(2, "SE", 1);
  AddPulse(0, "LoLev", 1);
  ExpectFault(11, "Division by zero", "Bridges");
  EXPECT_EQ(WiredIn(Diagram()),
            "01 01 H:01 BBlk1(1)\n01 02 L:02 BBlk1(2)\n"
            "VX1:  Excite BBlk1(1)\nVX2:  Excite BBlk1(2)\nP1:04 (LO)PBlk1(1)\n");
}

// Each multiplexer takes a differential channel from the last one down, and all share the two ports
// and the excitation, whatever else the project wants there.
TEST_F(WiringTest, WiresOfMultiplexers) {
  store.Config.TK40MQty = 3;
  AddBridge(2, "SE", 4);
  store.Ports.Slot[0].ByteMode = 0;
  store.Ports.Slot[0].ReadMode = 0;
  for (Port& port : store.Ports.Slot[0].Ports) port.Include = kTrue;
  const std::string wired = WiredIn(Diagram());
  EXPECT_EQ(wired.substr(wired.find("18 35")),
            "18 35 H: TK40M 3 High\n18 36 L: TK40M 3 Low\n"
            "19 37 H: TK40M 2 High\n19 38 L: TK40M 2 Low\n"
            "20 39 H: TK40M 1 High\n20 40 L: TK40M 1 Low\n"
            "VX1:  Excite BBlk1(1)\nVX2:  Excite BBlk1(2)\nC5:  Port Set 5\n"
            "Gnd: TK40M AG\nC6:  Port Set 6\n"
            "VX3:  Excite BBlk1(3)\nC7: TK40M Clock Port\n"
            "VX4: TK40M Excitation\nC8: TK40M Reset Port\n"
            "12V: TK40M 12V\nGnd: TK40M Gnd\n"
            "C1:  Port Set 1\nC2:  Port Set 2\nC3:  Port Set 3\nC4:  Port Set 4\n");
}

// A byte takes all ports at once; single ports and the byte exclude each other.
TEST_F(WiringTest, Ports) {
  struct Case {
    const char* what;
    flag byteMode, readMode;
    int included;
    const char* wired;
  };
  const char* const kByte =
      "C5:  I/O Port 5\nC6:  I/O Port 6\nC7:  I/O Port 7\nC8:  I/O Port 8\n"
      "C1:  I/O Port 1\nC2:  I/O Port 2\nC3:  I/O Port 3\nC4:  I/O Port 4\n";
  for (const Case& row :
       {Case{"a port set", 0, 0, 8, "C8:  Port Set 8\n"},
        Case{"a port that the mode leaves out", -1, 0, 2, ""},
        Case{"a byte written", 1, 0, kPorts, kByte}, Case{"a byte read", 0, -1, kPorts, kByte},
        Case{"a byte that the mode leaves out", 0, 0, kPorts, ""}}) {
    for (int slot = 0; slot <= 1; ++slot) {
      SCOPED_TRACE(row.what);
      PortSlot& ports = store.Ports.Slot[slot];
      ports.ByteMode = row.byteMode;
      ports.ReadMode = row.readMode;
      ports.Ports[row.included].Include = kTrue;
      EXPECT_EQ(WiredIn(WiringText(store, {}, {"PUMP", kMoment})), row.wired);
      ports = {};
    }
  }
}

TEST_F(WiringTest, Pulses) {
  struct Case {
    const char* what;
    std::array<std::pair<const char*, i16>, 4> blocks;  // two of each slot
    const char* wired;
  };
  for (const Case& row :
       {Case{"two kinds",
             {{{"LoLev", 1}, {"SWTCH", 1}}},
             "P1:01 (LO)PBlk1(1)\nP2:02 (SW)PBlk2(1)\n"},
        Case{"one block", {{{"", 0}, {"HILev", 3}}}, "P1:01 (HI)PBlk2(1)\nP2:02 (HI)PBlk2(2)\n"},
        Case{"an unknown kind", {{{"Quad", 1}, {"Swtch", 1}}}, "P1:01 (SW)PBlk2(1)\n"},
        Case{"both slots",
             {{{"HiLev", 1}, {"", 0}, {"LoLev", 1}, {"LoLev", 1}}},
             "P1:01 (HI)PBlk1(1)\nP2:02 (LO)PBlk1(1)\n"}}) {
    SCOPED_TRACE(row.what);
    for (int slot = 0; slot <= 1; ++slot) {
      store.PulseBlock[slot].BlockCount = 0;
      for (int n = 0; n <= 1; ++n) {
        const auto& [meas, reps] = row.blocks[static_cast<std::size_t>(2 * slot + n)];
        AddPulse(slot, meas == nullptr ? "" : meas, reps);
      }
    }
    EXPECT_EQ(WiredIn(Diagram()), row.wired);
  }
}

// A letter of a label that has the code of a box character stays a letter, and the other way round.
TEST_F(WiringTest, LettersAndLinesDoNotMix) {
  store.Gen.Operator = "\xC4\xFE";
  Add(store.VoltBlock, "SE", 1).Alias[1].AliasName = "\xC4\xB3\xFE\t\x80";
  const std::string shown = WiringUtf8(Diagram());
  EXPECT_THAT(shown, ::testing::HasSubstr("Written by  : Äþ "));
  EXPECT_THAT(shown, ::testing::HasSubstr("\n│01 VBlk1(1) Ä³þ €          ■ 01 01 H | "));
  EXPECT_THAT(shown, ::testing::HasSubstr("\n│───"));
}

// What the drawing must be whatever the project: every line as wide as the panel, the lines joined,
// each terminal once and in its order, and marked as wired just where it has a label.
TEST_F(WiringTest, EveryPanelIsWhole) {
  const std::vector<WiredTerminal> panel = TerminalsIn(codePage437(kWhole));
  ASSERT_EQ(panel.size(), 60U + 39U);
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    MakeRandomProject(store, seed);
    // Statements inside of the panel, across its end, outside of it and missing.
    StatementChannels channels;
    const int start = static_cast<int>(seed) - 5;
    for (int n = 1; n <= kBlocks; ++n) {
      channels.Temp[n] = start + n;
      channels.Volt[n] = start + 2 * n;
      channels.Bridge[n] = start + 5 * n;
      channels.Excite[n] = start % 7 + n - 2;
      store.BridgeBlock[n].CheckCAO = n % 3 == 0 ? kTrue : kFalse;
    }
    const std::string diagram = WiringText(store, channels, {"PUMP", kMoment});
    const std::string_view drawn = std::string_view(diagram).substr(diagram.find('\xDA'));
    int tops = 0;
    for (const std::string& line : DiagramLines(drawn)) {
      if (line.empty()) continue;
      ASSERT_EQ(line.size(), 77U);
      ASSERT_EQ(line.find_first_of("\r\n\t"), std::string::npos);
      const std::string corners = {line.front(), line[38], line.back()};
      tops += corners == "\xDA\xC4\xBF" ? 1 : 0;
      EXPECT_THAT(corners,
                  ::testing::AnyOf("\xDA\xC4\xBF", "\xB3|\xB3", "\xB3\xC5\xB3", "\xC0\xC1\xD9",
                                   "\xC4"
                                   "B"
                                   "\xC4"));
    }
    EXPECT_EQ(tops, 2);
    const std::vector<WiredTerminal> terminals = TerminalsIn(diagram);
    ASSERT_EQ(terminals.size(), panel.size());
    for (std::size_t at = 0; at < panel.size(); ++at) {
      EXPECT_EQ(terminals[at].cell, panel[at].cell);
      const bool labelled = !WithoutBlanks(terminals[at].label).empty();
      EXPECT_EQ(terminals[at].mark, labelled ? " \xFE" : " O") << terminals[at].cell;
    }
    // But for the labels the drawing is the same for all projects.
    const std::string whole = codePage437(kWhole);
    const auto bare = [](std::string_view text) {
      std::string kept;
      for (std::string line : DiagramLines(text.substr(text.find('\xDA')))) {
        if (line.size() == 77 && line[38] == '|') {
          line.replace(40, 28, 28, ' ');
          line.replace(1, 28, 28, ' ');
        }
        kept += line + "\n";
      }
      return kept;
    };
    ASSERT_EQ(bare(diagram), bare(whole));
  }
}

// The single-ended channels that a statement in the scan begins with and the block that it
// measures; nothing for other lines.
struct Measured {
  char letter;  // T, V or B
  int block;
  int terminal;
  bool differential;
};
std::optional<Measured> measuredBy(const std::string& line, const ProjectStore& store) {
  const bool statement = line.starts_with("      TC") || line.starts_with("      Volt") ||
                         line.starts_with("      Br");
  const std::size_t blk = line.find("Blk");
  if (!statement || blk == std::string::npos || Holds(line, "Zero")) return std::nullopt;
  Measured found = {line[blk - 1], line[blk + 3] - '0', 0, false};
  found.differential = found.letter == 'B'
                           ? store.BridgeBlock[found.block].MeasType == "Diff"
                           : line.starts_with("      TCDiff") || line.starts_with("      VoltDiff");
  // Array, repetitions and range stand before the channel; the six-wire bridge has two ranges.
  const int before = Holds(line, "_2,") ? 4 : 3;
  std::size_t at = 0;
  for (int comma = 0; comma < before; ++comma) at = line.find(',', at) + 1;
  const int channel = std::stoi(line.substr(at));
  found.terminal = found.differential ? 2 * channel - 1 : channel;
  return found;
}

std::string wordOf(const Measured& measured, const ProjectStore& store) {
  std::string word(1, measured.letter);
  if (measured.letter == 'B') {
    const int style = store.BridgeBlock[measured.block].Style;
    if (style == 1) word += "6W";
    if (style == 3 || style == 4) word += "3W";
  }
  return " " + word + "Blk" + std::to_string(measured.block) + "(1)";
}

// The diagram names the first sensor of a block where the statement of its program measures.
TEST_F(WiringTest, BlocksStandWhereTheProgramMeasures) {
  forms.CollectBoxes();
  int checked = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    MakeRandomProject(store, seed);
    store.Config.AutoChan = kTrue;
    store.Config.TK40MQty = 0;
    for (BridgeBlockData& block : store.BridgeBlock.Blocks) {
      block.MeasType = block.Style >= 2 && block.Style <= 4 ? "SE" : "Diff";
    }
    std::map<int, std::string> labels;
    for (const WiredTerminal& terminal : TerminalsIn(Diagram())) {
      if (terminal.cell.size() == 7) {
        labels[std::stoi(terminal.cell.substr(3, 2))] = terminal.label;
      }
    }
    ASSERT_EQ(labels.size(), 40U);
    std::map<int, std::string> expected;
    for (const std::string& line : program) {
      const std::optional<Measured> measured = measuredBy(line, store);
      if (!measured) continue;
      // A block covers what an earlier one has at its terminals.
      expected.erase(expected.lower_bound(measured->terminal), expected.end());
      for (int t = 0; t <= (measured->differential ? 1 : 0); ++t) {
        expected[measured->terminal + t] = wordOf(*measured, store);
      }
    }
    for (const auto& [terminal, word] : expected) {
      if (terminal > 40) continue;
      EXPECT_THAT(labels[terminal], ::testing::HasSubstr(word)) << terminal;
      ++checked;
    }
  }
  EXPECT_GT(checked, 200);
}

// Create, write, sync, close, rename and the folder.
constexpr int kCallsOfAWrite = 6;

// Whatever the disk refuses, the user is told and an old diagram stands as it was.
TEST_F(WiringTest, AWriteThatFails) {
  MemoryFileSystem disk;
  FixedClock fixed;
  const std::string path = "/rigs/PUMP.VKW";
  MAKEWIRE good(store, disk, fixed, forms);
  ASSERT_TRUE(good.MakeWire_MasterWire("/rigs/PUMP", {}));
  const std::string written = disk.files[path];
  EXPECT_EQ(written, WiringText(store, {}, {"PUMP", fixed.Now()}));
  EXPECT_EQ(disk.files.size(), 1U);

  int failures = 0;
  for (bool done = false; !done; ++failures) {
    disk.files[path] = "old";
    FaultyFileSystem faulty(disk, failures + 1);
    ScriptedForms asked;
    asked.CollectBoxes();
    done = MAKEWIRE(store, faulty, fixed, asked).MakeWire_MasterWire("/rigs/PUMP", {});
    // Only the last step, which brings the new name to the disk, fails with the new file in place.
    const bool replaced = failures + 1 >= kCallsOfAWrite;
    EXPECT_EQ(disk.files[path], replaced ? written : "old");
    ASSERT_EQ(asked.shown.size(), done ? 0U : 1U);
    if (done) break;
    EXPECT_EQ(asked.shown[0].title, "FILE PROBLEM");
    EXPECT_EQ(asked.shown[0].text,
              "Permission denied to save /rigs/PUMP.VKW\r\n"
              "It probably already exists and is set for \"Read Only\".  ");
  }
  EXPECT_EQ(failures, kCallsOfAWrite);
}

}  // namespace
}  // namespace ostrand::testing
