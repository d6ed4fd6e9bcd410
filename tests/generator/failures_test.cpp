// A program that outgrows the buffer in any section: the file keeps every line stored before, later
// sections still run, and each box names the routine that failed.
#include "generator/generated.h"

namespace ostrand::testing {
namespace {

constexpr std::size_t kMaxLines = 3000;
constexpr int kHead = 11;  // lines with the time of the run

class FullBufferTest : public Generated {
 protected:
  // Something of every section, and 2800 repetitions: an alias of each adds one line, all in one
  // place.
  FullBufferTest() {
    forms.CollectBoxes();
    Fill(store.TempBlock);
    Fill(store.VoltBlock);
    Fill(store.BridgeBlock);
    Fill(store.TK40MBlock);
    store.Config.TK40MQty = store.Config.CanBusQty = store.Can.Module[1].CanBusEnabled = 1;
    for (BridgeBlockData& block : store.BridgeBlock.Blocks) block.ExciteReps = kReps;
    store.PulseBlock[0].BlockCount = 1;
    store.PulseBlock[0][1].Reps = 1;
    store.Can.CanCount = 2;
    store.Can.Item[1].Name = "Rpm";
    store.Can.Item[1].Alias[1].AliasExcept = "2";
    store.Can.Item[2].Name = "Load";
    store.Can.Item[2].ItemMessageType = 1;
    store.CalcFields.CalcFieldCount = 1;
    store.CalcFields.Field[1].CalcField[1] = "Power";
    store.ExciteOut.Slot[0][1].Include = store.ExciteOut.Slot[0][1].DynamicStatic = kTrue;
    OutputTable& table = store.Tables[1];
    table.TableOn = kTrue;
    table.WriteIf = table.FlagMark = 1;
  }

  template <class Group>
  void Fill(Group& group) {
    group.BlockCount = kBlocks;
    for (auto& block : group.Blocks) {
      block.Reps = kReps;
      for (RepAlias& alias : block.Alias) aliases_.push_back(&alias.AliasName);
    }
  }

  // Generates the program with `count` aliases; returns the routines that its boxes name.
  std::string RunWithAliases(std::size_t count) {
    for (std::size_t i = 0; i < aliases_.size(); ++i) *aliases_[i] = i < count ? "A" : "";
    forms.shown.clear();
    MakeProgram();
    std::string routines;
    for (const platform::MessageBox& box : forms.shown) {
      constexpr std::string_view kBox =
          "Unexpected error 9, \"Subscript out of range\" has occurred in SAVEDLD.";
      EXPECT_EQ(std::string_view(box.text).substr(0, kBox.size()), kBox);
      const std::string_view name = std::string_view(box.text).substr(kBox.size());
      routines += std::string(name.substr(0, name.find('.'))) + " ";
    }
    return routines;
  }

  std::vector<std::string*> aliases_;
};

TEST_F(FullBufferTest, SectionKeepsLinesBeforeItsFailure) {
  // The start of a line, and the number of lines from it to the first line of a section; the
  // routines that fail when the buffer is full there.
  struct Section {
    const char* line;
    int further;
    const char* routines;
  };
  const Section sections[] = {
      {"Public Flag(8)", 0, "PubVars OutputTables Subroutines MainProgram "},
      {" OUTPUT SECTION ", -1, "OutputTables Subroutines MainProgram "},
      {"Sub TriggerCall", 0, "Subroutines MainProgram "},
      {" PROGRAM ", 0, "MainProgram "},
      {" exception multipliers", 0, "Exceptions MainProgram "},
      {"   ''''''''''''''''''''", 1, "MainProgram "},
      {" Excitation Control ", 0, "ExciteControl MainProgram "},
      {"      ''''''''''''''''", 1, "MainProgram "},
      {" Temp Blocks ", 0, "Temperature Voltage Bridges Pulses TK40Ms CanBus MainProgram "},
      {" Volt Blocks ", 0, "Voltage Bridges Pulses TK40Ms CanBus MainProgram "},
      {" Bridge Blocks ", 0, "Bridges Pulses TK40Ms CanBus MainProgram "},
      {" Pulse/Freq Blocks", 0, "Pulses TK40Ms CanBus MainProgram "},
      {" TK40M Blocks ", 0, "TK40Ms CanBus MainProgram "},
      {" Canbus Items ", 0, "CanBus MainProgram "},
      {" Calculated Fields ", 0, "MainProgram "},
      {" File Mark Logic ", 0, "MainProgram2 "},
      {" LOW PRIORITY ", -1, "LowPriority MainProgram2 "},
      {"EndProg", 0, "MainProgram2 "},
  };
  ASSERT_EQ(RunWithAliases(0), "");
  const Lines whole = program;
  std::vector<std::size_t> starts;
  for (const Section& section : sections) {
    const auto from = whole.begin() + (starts.empty() ? 0 : static_cast<long>(starts.back()));
    const auto at = std::find_if(from, whole.end(), [&](const std::string& line) {
      return line.find(section.line) != std::string::npos;
    });
    ASSERT_NE(at, whole.end()) << section.line;
    starts.push_back(static_cast<std::size_t>(at - whole.begin() + section.further));
  }
  const std::size_t aliasesAt = starts[0];
  starts.push_back(whole.size());
  for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
    for (const std::size_t lost : {starts[i], starts[i + 1] - 1}) {  // the first line left out
      SCOPED_TRACE(whole[lost]);
      const std::size_t count = kMaxLines - lost;
      ASSERT_LE(count, aliases_.size());
      EXPECT_EQ(RunWithAliases(count), sections[i].routines);
      ASSERT_EQ(program.size(), kMaxLines);
      const auto aliasLines = program.begin() + static_cast<long>(aliasesAt);
      const auto aliasesEnd = aliasLines + static_cast<long>(count);
      EXPECT_TRUE(std::equal(program.begin() + kHead, aliasLines, whole.begin() + kHead));
      EXPECT_TRUE(std::all_of(aliasLines, aliasesEnd,
                              [](const auto& line) { return line.starts_with("Alias "); }));
      EXPECT_TRUE(
          std::equal(aliasesEnd, program.end(), whole.begin() + static_cast<long>(aliasesAt)));
    }
  }
  EXPECT_EQ(RunWithAliases(kMaxLines - whole.size()), "");  // fits exactly
  EXPECT_EQ(program.back(), whole.back());
}

}  // namespace
}  // namespace ostrand::testing
