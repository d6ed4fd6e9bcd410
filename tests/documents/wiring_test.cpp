// The wiring diagram against the program, and the parts that are equal for all projects.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

#include "documents/makewire.h"
#include "documents/wired_terminals.h"
#include "generator/generated.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

class WiringTest : public Generated {
 protected:
  // The diagram of the project, wired by its program.
  std::string Diagram() {
    MakeProgram();
    return WiringText(store, generator.Channels(), {"PUMP", {}});
  }
};

// A letter of a label with the code of a box character stays a letter, and vice versa.
TEST_F(WiringTest, KeepsLettersAndLinesApart) {
  store.Gen.Operator = "\xC4\xFE";
  store.VoltBlock.BlockCount = store.VoltBlock[1].Reps = 1;
  store.VoltBlock[1].MeasType = "SE";
  store.VoltBlock[1].Alias[1].AliasName = "\xC4\xB3\xFE\t\x80";
  const std::string shown = WiringUtf8(Diagram());
  for (const char* part :
       {"Written by  : Äþ ", "\n│01 VBlk1(1) Ä³þ €          ■ 01 01 H | ", "\n┌───", "───┐\n",
        "█▀▀▀▀▀▀█ | ", "\n│───", "─┼─", "\n└───", "─┴─", "───┘\n"}) {
    EXPECT_TRUE(Holds(shown, part)) << part << shown;
  }
}

// The drawing without its head and labels, equal for all projects.
std::string bare(std::string_view diagram) {
  std::string kept;
  for (std::string line : DiagramLines(diagram.substr(diagram.find('\xDA')))) {
    if (line.size() == 77 && line[38] == '|') {
      line.replace(40, 28, 28, ' ');
      line.replace(1, 28, 28, ' ');
    }
    kept += line + "\n";
  }
  return kept;
}

TEST_F(WiringTest, PanelsOfRandomProjectsAreComplete) {
  const std::string panel = bare(ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/engine-test-cell.VKW"));
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    MakeRandomProject(store, seed);
    // Statements inside the panel, across its end, outside of it and missing.
    StatementChannels channels;
    const int start = static_cast<int>(seed) - 5;
    for (int n = 1; n <= kBlocks; ++n) {
      channels.Temp[n] = start + n;
      channels.Volt[n] = start + 2 * n;
      channels.Bridge[n] = start + 5 * n;
      channels.Excite[n] = start % 7 + n - 2;
      store.BridgeBlock[n].CheckCAO = n % 3 == 0 ? kTrue : kFalse;
    }
    const std::string diagram = WiringText(store, channels, {"PUMP", {}});
    ASSERT_EQ(bare(diagram), panel);
    for (const WiredTerminal& terminal : TerminalsIn(diagram)) {
      const bool labelled = !WithoutBlanks(terminal.label).empty();
      EXPECT_EQ(terminal.mark, labelled ? " \xFE" : " O") << terminal.cell;
    }
  }
}

// The first single-ended channel of a statement in the scan and its block; nothing for other lines.
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
  // Array, repetitions and range precede the channel; the six-wire bridge has two ranges.
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

// The diagram names the first sensor of a block at the channel of its program statement.
TEST_F(WiringTest, BlocksAreWhereTheProgramMeasures) {
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
      // A block replaces an earlier one at its terminals.
      expected.erase(expected.lower_bound(measured->terminal), expected.end());
      for (int t = 0; t <= (measured->differential ? 1 : 0); ++t) {
        expected[measured->terminal + t] = wordOf(*measured, store);
      }
    }
    for (const auto& [terminal, word] : expected) {
      if (terminal > 40) continue;
      EXPECT_TRUE(Holds(labels[terminal], word)) << terminal;
      ++checked;
    }
  }
  EXPECT_GT(checked, 200);
}

}  // namespace
}  // namespace ostrand::testing
