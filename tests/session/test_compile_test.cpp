// The test compile against a stand-in compiler, started as a real process.
#include "session/test_compile.h"

#include <dirent.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_process.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;
using testing::WriteDisk;

// How many processes of the stand-in there are.
int standInsAlive() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (!error && program == OSTRAND_STAND_IN) ++count;
  }
  return count;
}

class TestCompileRun : public ::testing::Test {
 protected:
  void SetUp() override {
    ORVUS_COMMON::SetAllDefaults(*store_);
    store_->TempBlock.BlockCount = 3;
    for (const int block : {1, 3}) store_->TempBlock[block].Reps = 2;
    store_->TempBlock[1].BlockTime = 5;
    store_->BridgeBlock[7].BlockTime = 5;
    WriteDisk(source_,
              "TCDiff(before)\r\n  Scan(PERIOD)\r\n      TCDiff(TBlk1())\r\n"
              "      TCSE(TBlk3())\r\n  NextScan\r\n");
  }

  // Runs the stand-in; the box it leads to is expected before.
  bool run(const char* behaviour, bool alwaysShow = false) {
    ::setenv("STAND_IN", behaviour, 1);
    platform::PosixFileSystem files;
    platform::PosixProcesses processes;
    TestCompile compile({files, forms_, processes}, workDir_.Path());
    const bool compiled =
        compile.ParseCompileResults(*store_, MuxLines(), source_, compiler_, alwaysShow);
    skipped_ = compile.Skipped();
    return compiled;
  }

  void expectNothingLeft() {
    // What was killed may take a moment to be gone.
    for (int wait = 0; wait < 2000 && standInsAlive() > 0; ++wait) forms_.DoEvents();
    EXPECT_EQ(standInsAlive(), 0);
    const std::filesystem::directory_iterator entries(workDir_.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << "besides the program";
  }

  testing::TempFolder workDir_;
  std::string source_ = workDir_ / "TEMP $'\".VKP";
  std::string compiler_ = OSTRAND_STAND_IN;
  std::string skipped_;
  testing::ScriptedForms forms_;
  std::unique_ptr<ProjectStore> store_ = NewStore();
};

TEST_F(TestCompileRun, AGoodProgramGivesTheTimesOfItsBlocks) {
  for (const char* behaviour : {"good", "old", "exact", "lf", "slow", "flood", "child", "huge"}) {
    SCOPED_TRACE(behaviour);
    store_->TempBlock[1].BlockTime = 5;
    forms_.restingRounds = forms_.rounds + 20000;
    EXPECT_TRUE(run(behaviour));
    EXPECT_EQ(store_->TempBlock[1].BlockTime, 1003);
    EXPECT_EQ(store_->TempBlock[2].BlockTime, 0);
    EXPECT_EQ(store_->TempBlock[3].BlockTime, 1004);
    EXPECT_EQ(store_->BridgeBlock[7].BlockTime, 0);
    EXPECT_EQ(store_->VoltBlock[1].BlockTime, 0);
    expectNothingLeft();
  }
  EXPECT_TRUE(forms_.helpLines.empty());
}

TEST_F(TestCompileRun, TheResultIsShownWhenItIsBadOrAskedFor) {
  forms_.restingRounds = 60000;
  const std::string head = "Pre-Compiler: " + source_ + "\r\nVersion No: ";
  forms_.ExpectBoxWith("COMPILE RESULT",
                       head + "6.3   Date Code: 051508\r\n\r\nLine 1: Scan: (Subroutine)\r\n");
  EXPECT_FALSE(run("bad"));
  forms_.ExpectBox("COMPILE RESULT", head +
                                         "4.2   Date Code: 051507\r\n\r\n[Compile Results]\r\n"
                                         "Line 7: Undeclared variable\r\nEnd\r\n");
  EXPECT_FALSE(run("oldbad"));
  EXPECT_EQ(store_->TempBlock[3].BlockTime, 1004) << "a bad program has its times all the same";
  forms_.ExpectBox("COMPILE RESULT", head + "6.3   Date Code: 051508\r\n\r\nTest compiled OK.\r\n" +
                                         source_ + " Compiled OK");
  EXPECT_TRUE(run("good", true));
  forms_.ExpectBox("COMPILE RESULT", head + "4.2   Date Code: 051507\r\n\r\nTest compiled OK.");
  EXPECT_TRUE(run("old", true));
  // Half a report of a compiler that ended is all there is to show.
  forms_.ExpectBoxWith("COMPILE RESULT", head + "6.3   Date Code: 051508\r\n\r\nLine 1: Scan:");
  EXPECT_FALSE(run("cut"));
  expectNothingLeft();
}

TEST_F(TestCompileRun, ACompilerWithoutAReportIsToldAndChangesNothing) {
  struct Case {
    const char* behaviour;
    std::string_view told;
    std::string_view why;
    int restingRounds;  // none for one that hangs: its bound is a count
  };
  constexpr Case cases[] = {
      {"noversion", "Skipped version.", "ended without a report", 20000},
      {"none", "Skipped pre-compile.", "ended without a report", 20000},
      {"empty", "Skipped pre-compile.", "ended without a report", 20000},
      {"crash", "Skipped pre-compile.", "ended without a report", 20000},
      {"versionhang", "Skipped version.", "did not end in time", 0},
      {"cuthang", "Skipped pre-compile.", "did not end in time", 1000},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.behaviour);
    forms_.helpLines.clear();
    forms_.restingRounds = forms_.rounds + row.restingRounds;
    WriteDisk(workDir_ / "VERCOMP.TXT", "[Version] VERSION: 1 DATE: 051508");
    WriteDisk(workDir_ / "PRECOMP.TXT", "an old report: Compiled OK\r\n");
    EXPECT_FALSE(run(row.behaviour));
    EXPECT_EQ(skipped_, std::string(row.told) + " " + compiler_ + " " + std::string(row.why));
    EXPECT_EQ(forms_.helpLines, std::vector<std::string>{std::string(row.told)});
    EXPECT_EQ(store_->TempBlock[1].BlockTime, 5);
    expectNothingLeft();
  }
  compiler_ = workDir_ / "no such compiler";
  EXPECT_FALSE(run("good"));
  EXPECT_EQ(forms_.helpLines.back(), "Skipped version.");
  EXPECT_EQ(skipped_, "Skipped version. " + compiler_ + ": No such file or directory");
}

TEST(CompileReports, TellTheVersionAndTheFormOfTheCommand) {
  struct Case {
    std::string_view report;
    bool newCompiler;
    std::string_view version;
    std::string_view dateCode;
  };
  constexpr Case cases[] = {
      {"[Version] VERSION: 6.1 DATE:060607", true, "6.1", "060607"},
      {"[Version] VERSION: 6.1 DATE: 060507\nVERSION: 4 DATE: 010101", false, "4", "010101"},
      {"x DATE: 123199\n[Version]\nVERSION: 4 DATE: 011999", false, "4", "011999"},
      {"x DATE: 010100\n[Version]", false, "", ""},
      {"DATE: 051508\n", true, "", ""},
      {"DATE: soon", false, "", ""},
      {"", false, "", ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.report);
    const VersionReport report = ReadVersionReport(row.report);
    EXPECT_EQ(report.newCompiler, row.newCompiler);
    EXPECT_EQ(report.version, row.version);
    EXPECT_EQ(report.dateCode, row.dateCode);
  }
}

TEST(CompileReports, TimesGoToTheBlocksThatHaveTheStatements) {
  const auto store = NewStore();
  store->VoltBlock.BlockCount = 3;
  store->VoltBlock[2].Reps = 4;
  store->VoltBlock[3].Reps = 1;
  store->BridgeBlock.BlockCount = 1;
  store->BridgeBlock[1].Reps = 1;
  store->PulseBlock[0].BlockCount = 2;
  store->PulseBlock[0][2].Reps = 1;
  store->PulseBlock[0][2].Meas = "HiLev";
  store->PulseBlock[0][1].Reps = 1;
  store->PulseBlock[0][1].Meas = "Volts";  // no kind that has a statement
  store->TK40MBlock.BlockCount = 2;
  store->TK40MBlock[1].Reps = store->TK40MBlock[2].Reps = 30;
  MuxLines lines;
  lines[1] = "30 31 ";
  lines[2] = "32 33 ";
  StoreMeasuredTimes(
      *store,
      "Line 5: VOLTSE = 1\r\nScan: (Subroutine)\r\nLine 6: VOLTSE = 1\r\n"
      "Scan:\r\nLine 10: Battery = 10.5\r\nLine 10: Battery = 1\r\n"
      "Line 11: PanelTemp=11\r\nLine 12: VoltSE = 12 uSec\r\nLine 12: VoltSE = 1\r\n"
      "Line 13:VOLTDIFF=13\r\nLine 14: VOLTSE = 14\r\nLine 15: BrHalf3W = 15\r\n"
      "Line 16: StrainCalc = 16\r\nLine 17: BrFull = 17\r\n"
      "Line 18: PulseCount = 2147483648\r\nLine 18: PulseCount = 18\r\nLine 19: Delay = 9\r\n"
      "PulseCount = 3\r\nLine 20: PulseCount 3\r\n"
      "Line 30: TK40M = 30\r\nLine 31: TK40M = 31\r\nLine 32: TK40M = 32\r\n"
      "Scan: slow\r\nLine 33: TK40M = 33\r\n",
      lines);
  EXPECT_EQ(store->Config.BatteryTime, 11) << "half to even, then added up";
  EXPECT_EQ(store->Config.PanelTime, 11);
  EXPECT_EQ(store->VoltBlock[1].BlockTime, 0);
  EXPECT_EQ(store->VoltBlock[2].BlockTime, 13);
  EXPECT_EQ(store->VoltBlock[3].BlockTime, 13);
  EXPECT_EQ(store->BridgeBlock[1].BlockTime, 15);
  EXPECT_EQ(store->PulseBlock[0][1].BlockTime, 0);
  EXPECT_EQ(store->PulseBlock[0][2].BlockTime, 18)
      << "the first is no time that the store can hold";
  EXPECT_EQ(store->TK40MBlock[1].BlockTime, 61);
  EXPECT_EQ(store->TK40MBlock[2].BlockTime, 32);
}

}  // namespace
}  // namespace ostrand
