// The line buffer, what a run keeps for the next one and changes in the project, the file; and
// settings that a project file does not have.
#include "generator/calc_field_constants.h"
#include "generator/generated.h"
#include "generator/program_lines.h"
#include "generator/triggers.h"
#include "support/temp_folder.h"

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

// Short texts are copied in different ways, depending on their length.
TEST(ProgramLinesTest, JoinPiecesOfAnyLength) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  for (std::size_t length = 0; length <= letters.size(); ++length) {
    const std::string piece = letters.substr(0, length);
    EXPECT_EQ(Joined({"<", piece, ">", 7, -1, '|'}), "<" + piece + ">7-1|");
  }
}

TEST_F(FrameTest, ProgramNameIsShownInCapitals) {
  generator.BaseName("Kl\xE4r\x9A");  // a umlaut, s caron
  MakeProgram();
  EXPECT_EQ(program.at(1), "'" + std::string(20, ' ') + "   Program name: KL\xC4R\x8A.VKP");
}

TEST_F(FrameTest, FullBufferGivesOneMessageForEachSection) {
  store.TempBlock.BlockCount = 7;
  for (TempBlockData& block : store.TempBlock.Blocks) {
    block.Reps = 100;
    for (int t = 1; t <= 6; ++t) block.Output.OutputSelect[t][kLevelCrossing] = 1;
  }
  // 700 repetitions in 6 tables declare more sources than there are lines. Later sections fail
  // on their first line; Subroutines and the others have none to write.
  for (const char* routine : {"Constants", "PubVars", "OutputTables", "MainProgram"}) {
    ExpectFault(9, "Subscript out of range", routine);
  }
  MakeProgram();
  ASSERT_EQ(program.size(), 3000U);
  EXPECT_TRUE(program.back().starts_with("Dim LCTBl"));
}

TEST_F(FrameTest, FailedWriteNamesThePath) {
  TempFolder folder;
  const std::string base = folder / "missing/plant";
  forms.ExpectBoxWith("TROUBLE", base);
  EXPECT_FALSE(generator.SaveTheDld(base));
  EXPECT_TRUE(generator.SaveTheDld(folder / "plant"));
  EXPECT_EQ(LinesOf(ReadDisk(folder / "plant.VKP")).back(), "'***** Program End *****");
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

// The type of the last block outlives a run: a second run continues after it.
TEST_F(FrameTest, FirstVoltageBlockContinuesTheLastRun) {
  store.Config.AutoChan = kFalse;
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[1].MeasType = "SE";
  store.VoltBlock[1].Reps = 2;
  store.VoltBlock[1].StartChan = 31;
  for (const char* channel : {"VRNG1,1,", "VRNG1,31,"}) {
    MakeProgram();
    EXPECT_EQ(Holding(channel), 1) << channel;
  }
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

// A block takes one channel, whatever its repetitions; block numbers restart in each slot. A block
// without repetitions or of an unknown kind takes none.
TEST_F(FrameTest, PulseChannelsContinueInTheSecondSlot) {
  const char* kinds[2][2] = {{"HiLev", "swtch"}, {"Quad", "LOLEV"}};
  for (int slot = 0; slot <= 1; ++slot) {
    store.PulseBlock[slot].BlockCount = 2;
    for (int n = 1; n <= 2; ++n) {
      store.PulseBlock[slot][n].Meas = kinds[slot][n - 1];
      store.PulseBlock[slot][n].Reps = 2;
    }
  }
  store.PulseBlock[0][2].CalOnSite = 1;
  const std::string bars(23, '_');
  const std::string title = "      '" + bars + " Pulse/Freq Blocks" + bars;
  MakeProgram();
  ExpectRun({title, "      PulseCount(PBlk1(),PREP1,1,PCONF1,POPT1,PMULT1,POSET1)",
             "      PulseCount(PBlk2(),PREP2,2,PCONF2,POPT2,MPBlk2(),OPBlk2())", title,
             "      PulseCount(PBlk2(),PREP2,3,PCONF2,POPT2,PMULT2,POSET2)", ""});
}

// More than the screens offer and a file stores.
TEST_F(FrameTest, ReferencesTakeAllOutputs) {
  store.Config.TK40MQty = 2;
  store.Config.TcConfigOpts[1] = 1;
  store.Config.MonitorPower[kMonitorPanel] = kTrue;
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 2;
  store.Tables[1].TableOn = kTrue;
  for (ReferenceOutput* reference : {&store.TcRef, &store.TK40MRef}) {
    auto& selected = reference->Output.OutputSelect[1];
    selected[kAverage] = selected[kRainFlow] = 1;
  }
  store.TK40MRef.Output.OutputSelect[1][kLevelCrossing] = 1;
  MakeProgram();
  ExpectRun({"   RainFlow(1,TRef,FP2)~'1 Reps,Source,Res"});
  ExpectRun({"   Average(2,TK40Ref(),FP2,False)~'2 Reps,Source,Res,Enabled",
             "   RainFlow(TK40Ref(),FP2,False,)", "   LevelCrossing(LCABlk1_1_1(),FP2,False,,1)",
             "   LevelCrossing(LCABlk1_1_2(),FP2,False,,1)"});
}

// Only the first slot of ports has a title; a slot that reads needs no test. Ports 7 and 8 belong
// to a multiplexer.
TEST_F(FrameTest, OnlyTheFirstPortSlotHasATitle) {
  const std::string title = " Port Control ";
  const std::string test = "      If False Then ";
  store.Ports.Slot[0].ByteMode = 0;
  store.Ports.Slot[1].Ports[9].Include = kTrue;
  MakeProgram();
  EXPECT_EQ(Holding(title), 0);
  EXPECT_EQ(Holding(test), 1);
  store.Ports.Slot[0] = store.Ports.Slot[1];
  store.Ports.Slot[0].ReadMode = kTrue;
  MakeProgram();
  EXPECT_EQ(Holding(title), 1);
  EXPECT_EQ(Holding(test), 1);
  store.Ports.Slot[1].ByteMode = 0;
  for (const int p : {6, 7}) store.Ports.Slot[1].Ports[p].Include = kTrue;
  for (const i16 multiplexers : {i16{0}, i16{1}}) {
    store.Config.TK40MQty = multiplexers;
    MakeProgram();
    EXPECT_EQ(Holding("PortSet(6,Port(6))"), 1);
    EXPECT_EQ(Holding("PortSet(7,Port(7))"), 1 - multiplexers);
  }
}

// The last field of a name declares it; "Speed 1" must not separate equal names.
TEST(CalcFieldsTest, LastFieldOfANameDeclaresIt) {
  const char* names[] = {"Speed", "Force", " SPEED ", "Speed 1", "force", "Speed", ""};
  const bool repeated[] = {true, true, true, false, false, false, false};
  CalcFieldGroup fields;
  fields.CalcFieldCount = 7;
  for (int f = 1; f <= 7; ++f) fields.Field[f].CalcField[1] = names[f - 1];
  const auto found = CalcFieldRepeated(fields);
  for (int f = 1; f <= 7; ++f) EXPECT_EQ(found[f], repeated[f - 1]) << f;
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

}  // namespace
}  // namespace ostrand::testing
