// The line buffer, what a run keeps for the next one and changes in the project, the file; and
// settings that a project file does not have.
#include "generator/generated.h"
#include "generator/program_lines.h"
#include "generator/triggers.h"

namespace ostrand::testing {
namespace {

using FrameTest = Generated;

TEST(ProgramLinesTest, PadsUpToTheCommentColumn) {
  const struct {
    int length;
    Pad pad;
    int blanks;  // -1 for a failure
  } cases[] = {
      {1, Pad::kStrict, 64},   {64, Pad::kStrict, 1},   {65, Pad::kStrict, 0},
      {66, Pad::kStrict, -1},  {64, Pad::kGuarded, 1},  {65, Pad::kGuarded, 1},
      {90, Pad::kGuarded, 1},  {65, Pad::kOver, 0},     {66, Pad::kOver, 1},
      {65, Pad::kTouching, 0}, {66, Pad::kTouching, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.length);
    ProgramLines lines;
    lines.Add({"before"});
    const auto add = [&] { lines.Add({Fill{'x', c.length}}, {"'c"}, c.pad); };
    if (c.blanks < 0) {
      EXPECT_THROW(add(), Fault);
      EXPECT_EQ(lines.LineCount(), 1);
      lines.Add({"after"});
      EXPECT_EQ(lines[2], "after");
    } else {
      add();
      EXPECT_EQ(lines[2], std::string(static_cast<std::size_t>(c.length), 'x') +
                              std::string(static_cast<std::size_t>(c.blanks), ' ') + "'c");
    }
    EXPECT_EQ(lines[1], "before");
  }
}

// Longer than the initial memory and than its first growth.
TEST(ProgramLinesTest, TakeLinesOfAnyLength) {
  ProgramLines lines;
  std::string expected;
  for (const int length : {65535, 0, 3, 400000, 17}) {
    const std::string line(static_cast<std::size_t>(length), 'x');
    lines.Add({line});
    EXPECT_EQ(lines[lines.LineCount()], line);
    expected += line + "\r\n";
  }
  EXPECT_EQ(lines.Between(1, 6), expected);
  EXPECT_EQ(lines.Between(2, 4), "\r\nxxx\r\n");
  EXPECT_EQ(lines.Between(6, 6), "");
  lines.Clear();
  EXPECT_EQ(lines.Unstored(), "");
}

TEST_F(FrameTest, RunRepairsTheProject) {
  for (const int t : {1, 2}) store.Tables[t].TableOn = kTrue;
  store.Tables[1].SyncTable = kTrue;
  store.Tables[1].OutIntUnits = 9;
  store.Tables[2].WriteIf = 1;
  store.Tables[2].GroupWriteIf = "1";
  for (const auto& [before, after] : {std::pair{"FLAG(2) True", "FLAG(2) = True"},
                                      {"Flag(2) = True", "Flag(2) = True"},
                                      {"Flag 2", "Flag 2"},
                                      {"Port(2) True", "Port(2) True"}}) {
    store.Tables[2].Write[1].Expression = before;
    MakeProgram();
    EXPECT_EQ(store.Tables[2].Write[1].Expression, after);
    ExpectRun({"  bWriteIfCall = (" + std::string(after) + ")"});
  }
  EXPECT_EQ(store.Tables[1].OutIntUnits, 2);  // a synchronous table counts in seconds
}

TEST_F(FrameTest, RunForgetsTheBlocksOfTheLast) {
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[1].ZeroFlag = 1;
  // Keeps the second program longer than the first up to its zero subroutine.
  for (FlagControl& control : store.Flags) control.FlagInclude = kTrue;
  for (const i16 reps : {i16{2}, i16{0}}) {
    store.VoltBlock[1].Reps = reps;
    MakeProgram();
    EXPECT_EQ(Holding("(VBlk1Zero()") > 0, reps > 0);
    EXPECT_EQ(generator.Channels().Volt[1] > 0, reps > 0);
  }
}

// Each run appends the positions of its multiplexer statements. A zero routine reserves one line
// for all statements of a block; the file has one for each.
TEST_F(FrameTest, ZeroRoutineRepeatsMultiplexerStatements) {
  store.Config.TK40MQty = 4;
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 30;
  store.TK40MBlock[1].TK40Volts = 1;
  store.TK40MBlock[1].ZeroFlag = 4;
  MakeProgram();
  const std::string rest = "ATYPE1,TK40Ref(1),7,8,0,True,ASETL1,AINT1,AMULT1,0)";
  ExpectRun({"      TK40M(ABlk1Zero(1),25,ARNG1,1,20," + rest,
             "      TK40M(ABlk1Zero(26),5,ARNG1,1,19,ATYPE1,TK40Ref(2)" + rest.substr(17),
             "      Count = Count + 1~'Increment Count"});
  const std::string positions = generator.TK40MLines()[1];
  const int first = std::stoi(positions);
  EXPECT_EQ(positions, std::to_string(first) + " " + std::to_string(first + 1) + " ");
  EXPECT_TRUE(generator.Lines()[first].starts_with("      TK40M(ABlk1(1),25,"));
  MakeProgram();
  EXPECT_EQ(generator.TK40MLines()[1], positions + positions);
}

TEST(TriggerNumbers, FirstDigitAndLeadingNumber) {
  const struct {
    const char* text;
    int first, leading;
  } cases[] = {{"", 0, 0},   {"(1)", 2, 0}, {"10 OR 2", 1, 10}, {"0", 0, 0},
               {"1)", 1, 1}, {"05", 2, 0},  {"123", 1, 12},     {"20E", 1, 20}};
  for (const auto& c : cases) {
    EXPECT_EQ(FirstDigit(c.text), c.first) << c.text;
    EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text;
  }
}

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
