// The frame of a run: the line buffer, the comment column, failures of sections, the file.
#include "generator/generated.h"
#include "generator/program_lines.h"
#include "support/temp_folder.h"

namespace ostrand::testing {
namespace {

class FrameTest : public Generated {};

TEST(ProgramLinesTest, PadsUpToTheCommentColumn) {
  struct Case {
    int length;
    Pad pad;
    int blanks;  // -1 for a failure
  };
  const Case cases[] = {
      {1, Pad::kStrict, 64},   {64, Pad::kStrict, 1},   {65, Pad::kStrict, 0},
      {66, Pad::kStrict, -1},  {64, Pad::kGuarded, 1},  {65, Pad::kGuarded, 1},
      {90, Pad::kGuarded, 1},  {65, Pad::kOver, 0},     {66, Pad::kOver, 1},
      {65, Pad::kTouching, 0}, {66, Pad::kTouching, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.length);
    ProgramLines lines;
    lines.Add({"before"});
    if (c.blanks < 0) {
      EXPECT_THROW(lines.Add({Fill{'x', c.length}}, {"'c"}, c.pad), Fault);
      EXPECT_EQ(lines.LineCount(), 1);
    } else {
      lines.Add({Fill{'x', c.length}}, {"'c"}, c.pad);
      EXPECT_EQ(lines[2], std::string(static_cast<std::size_t>(c.length), 'x') +
                              std::string(static_cast<std::size_t>(c.blanks), ' ') + "'c");
    }
    EXPECT_EQ(lines[1], "before");
  }
}

TEST(ProgramLinesTest, TheLineBehindTheLastIsAFault) {
  ProgramLines lines;
  for (int i = 0; i < ProgramLines::kRoom; ++i) lines.Add({i});
  try {
    lines.Add({"one too many"});
    FAIL();
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.number, 9);
  }
  EXPECT_EQ(lines.LineCount(), 3000);
  EXPECT_EQ(lines[3000], "2999");
}

TEST_F(FrameTest, AProjectWithoutBlocksIsWhole) {
  generator.BaseName("Kl\xE4r\x9A");  // a umlaut, s caron
  Run();
  ASSERT_GT(program.size(), 11U);
  EXPECT_EQ(program[1], "'" + std::string(20, ' ') + "   Program name: KL\xC4R\x8A.VKP");
  const Lines expected = {
      "",
      At66("BeginProg", "'Program begins here"),
      "   'MainSequence",
      At66("   Scan(PERIOD,P_UNITS,10,0)", "'Scan once every 10 mSecs, non-burst"),
      "",
      "",
      At66("   Next Scan", "'Loop up for the next scan"),
      At66("EndProg", "'Program ends here"),
      "",
      "'***** Program End *****"};
  ExpectRun(expected);
}

TEST_F(FrameTest, ALongUnitEndsItsSectionAlone) {
  store.TempBlock.BlockCount = 2;
  store.TempBlock[1].Reps = store.TempBlock[2].Reps = 1;
  store.TempBlock[1].Units = std::string(60, 'u');
  ExpectFault(5, "Invalid procedure call or argument", "Constants");
  Run();
  // The source stands, its units and the second block are lost, the variables follow.
  ExpectRun({At66("Dim TBlk1(TREP1)", "'Block1 dimensioned source"), "",
             "'" + std::string(18, '\\') + " ALIASES & OTHER VARIABLES " + std::string(18, '/')});
  EXPECT_EQ(
      Count("      TCDiff(TBlk2(),TREP2,TRNG2,2,TTYPE2,TRef,True,TSETL2,TINT2,TMULT2,TOSET2)"), 1);
}

TEST_F(FrameTest, AFullBufferGivesOneMessageForEachSection) {
  store.TempBlock.BlockCount = 7;
  for (int b = 1; b <= 7; ++b) {
    store.TempBlock[b].Reps = 100;
    for (int t = 1; t <= 6; ++t) store.TempBlock[b].Output.OutputSelect[t][kLevelCrossing] = 1;
  }
  // 700 repetitions in 6 tables declare more sources than there are lines. The sections behind
  // fail on their first line; Subroutines and the others have none to write.
  const std::string subscript = "Subscript out of range";
  for (const char* routine : {"Constants", "PubVars", "OutputTables", "MainProgram"}) {
    ExpectFault(9, subscript, routine);
  }
  Run();
  ASSERT_EQ(program.size(), 3000U);
  EXPECT_EQ(program[2999].substr(0, 9), "Dim LCTBl");
}

TEST_F(FrameTest, AnUnknownScanUnitFailsWhereItDivides) {
  store.Scan.ExecTimeUnits = 4;
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[1].Reps = 1;
  store.VoltBlock[1].ZeroFlag = 1;
  ExpectFault(11, "Division by zero", "OutputTables");
  ExpectFault(11, "Division by zero", "Subroutines");
  Run();
  ExpectRun({At66("Sub Zero1", "'Begin zero measure routine"),
             At66("   Count = 0", "'Set Count to zero"),
             "'" + std::string(28, '\\') + " PROGRAM " + std::string(28, '/')});
}

TEST_F(FrameTest, AFailedWriteNamesThePath) {
  TempFolder folder;
  const std::string base = folder / "missing/plant";
  forms.ExpectBoxWith("TROUBLE", base);
  EXPECT_FALSE(generator.SaveTheDld(base));
  EXPECT_TRUE(generator.SaveTheDld(folder / "plant"));
  EXPECT_EQ(LinesOf(ReadDisk(folder / "plant.VKP")).back(), "'***** Program End *****");
}

}  // namespace
}  // namespace ostrand::testing
