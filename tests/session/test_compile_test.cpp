// The test compile against a stand-in compiler, started as a real process.
#include "session/test_compile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_process.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::WriteDisk;

// Marks what this process starts: other tests may have stand-ins of their own at the same time.
const std::string kOwner = std::to_string(::getpid());

// How many processes of the stand-in there are that this process has started.
int standInsAlive() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (error || program != OSTRAND_STAND_IN) continue;
    std::ifstream file(entry.path() / "environ", std::ios::binary);  // may be gone by now
    const std::string environment{std::istreambuf_iterator<char>(file), {}};
    if (environment.find("STAND_IN_OWNER=" + kOwner + '\0') != std::string::npos) ++count;
  }
  return count;
}

class TestCompileRun : public ::testing::Test {
 protected:
  void SetUp() override {
    ORVUS_COMMON::SetAllDefaults(*store_);
    store_->TempBlock.BlockCount = 3;
    for (const int block : {1, 3}) store_->TempBlock[block].Reps = 2;
    store_->BridgeBlock[7].BlockTime = 5;
    WriteDisk(source_,
              "TCDiff(before)\r\n  Scan(PERIOD)\r\n      TCDiff(TBlk1())\r\n"
              "      TCSE(TBlk3())\r\n  NextScan\r\n");
  }

  // Runs the stand-in, which leaves neither files nor processes; the box it leads to is expected
  // before.
  bool run(const char* behaviour, bool alwaysShow = false) {
    ::setenv("STAND_IN", behaviour, 1);
    ::setenv("STAND_IN_OWNER", kOwner.c_str(), 1);
    store_->TempBlock[1].BlockTime = 5;
    platform::PosixFileSystem files;
    platform::PosixProcesses processes;
    TestCompile compile({files, forms_, processes}, workDir_.Path());
    const bool compiled =
        compile.ParseCompileResults(*store_, MuxLines(), source_, compiler_, alwaysShow);
    skipped_ = compile.Skipped();
    // What was killed may take a moment to be gone.
    for (int wait = 0; wait < 2000 && standInsAlive() > 0; ++wait) forms_.DoEvents();
    EXPECT_EQ(standInsAlive(), 0);
    const std::filesystem::directory_iterator entries(workDir_.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << "besides the program";
    return compiled;
  }

  testing::TempFolder workDir_;
  std::string source_ = workDir_ / "TEMP $'\".VKP";
  std::string compiler_ = OSTRAND_STAND_IN;
  std::string skipped_;
  testing::ScriptedForms forms_;
  std::unique_ptr<ProjectStore> store_ = NewStore();
};

TEST_F(TestCompileRun, AGoodProgramGivesTheTimesOfItsBlocks) {
  for (const char* behaviour : {"good", "old", "exact", "lf", "slow", "flood", "child"}) {
    SCOPED_TRACE(behaviour);
    forms_.restingRounds = forms_.rounds + 20000;
    EXPECT_TRUE(run(behaviour));
    EXPECT_EQ(store_->TempBlock[1].BlockTime, 1003);
    EXPECT_EQ(store_->TempBlock[2].BlockTime, 0);
    EXPECT_EQ(store_->TempBlock[3].BlockTime, 1004);
    EXPECT_EQ(store_->BridgeBlock[7].BlockTime, 0);
  }
  EXPECT_TRUE(forms_.helpLines.empty());
}

TEST_F(TestCompileRun, TheResultIsShownWhenItIsBadOrAskedFor) {
  forms_.restingRounds = 60000;
  const std::string head = "Pre-Compiler: " + source_ + "\r\nVersion No: ";
  const std::string newHead = head + "6.3   Date Code: 051508\r\n\r\n";
  const std::string oldHead = head + "4.2   Date Code: 051507\r\n\r\n";
  forms_.ExpectBoxWith("COMPILE RESULT", newHead + "Line 1: Scan: (Subroutine)\r\n");
  EXPECT_FALSE(run("bad"));
  forms_.ExpectBox("COMPILE RESULT",
                   oldHead + "[Compile Results]\r\nLine 7: Undeclared variable\r\nEnd\r\n");
  EXPECT_FALSE(run("oldbad"));
  EXPECT_EQ(store_->TempBlock[3].BlockTime, 1004) << "a bad program has its times all the same";
  forms_.ExpectBox("COMPILE RESULT", newHead + "Test compiled OK.\r\n" + source_ + " Compiled OK");
  EXPECT_TRUE(run("good", true));
  forms_.ExpectBox("COMPILE RESULT", oldHead + "Test compiled OK.");
  EXPECT_TRUE(run("old", true));
  // Half a report of a compiler that ended is all there is to show.
  forms_.ExpectBoxWith("COMPILE RESULT", newHead + "Line 1: Scan:");
  EXPECT_FALSE(run("cut"));
}

TEST_F(TestCompileRun, ACompilerWithoutAReportIsToldAndChangesNothing) {
  // `restingRounds` is none for one that hangs: its bound is a count.
  const std::tuple<const char*, std::string, std::string, int> cases[] = {
      {"noversion", "Skipped version.", " ended without a report", 20000},
      {"none", "Skipped pre-compile.", " ended without a report", 20000},
      {"empty", "Skipped pre-compile.", " ended without a report", 20000},
      {"crash", "Skipped pre-compile.", " ended without a report", 20000},
      {"versionhang", "Skipped version.", " did not end in time", 0},
      {"cuthang", "Skipped pre-compile.", " did not end in time", 1000},
      {"missing", "Skipped version.", ": No such file or directory", 0},
  };
  for (const auto& [behaviour, told, why, restingRounds] : cases) {
    SCOPED_TRACE(behaviour);
    forms_.helpLines.clear();
    forms_.restingRounds = forms_.rounds + restingRounds;
    WriteDisk(workDir_ / "VERCOMP.TXT", "[Version] VERSION: 1 DATE: 051508");
    WriteDisk(workDir_ / "PRECOMP.TXT", "an old report: Compiled OK\r\n");
    if (behaviour == std::string_view("missing")) compiler_ = workDir_ / "no such compiler";
    EXPECT_FALSE(run(behaviour));
    EXPECT_EQ(skipped_, told + " " + compiler_ + why);
    EXPECT_EQ(forms_.helpLines, std::vector<std::string>{told});
    EXPECT_EQ(store_->TempBlock[1].BlockTime, 5);
  }
}

TEST(CompileReports, TellTheVersionAndTheFormOfTheCommand) {
  constexpr std::tuple<std::string_view, bool, std::string_view, std::string_view> cases[] = {
      {"[Version] VERSION: 6.1 DATE:060607", true, "6.1", "060607"},
      {"[Version] VERSION: 6.1 DATE: 060507\nVERSION: 4 DATE: 010101", false, "4", "010101"},
      {"x DATE: 123199\n[Version]\nVERSION: 4 DATE: 011999", false, "4", "011999"},
      {"x DATE: 010100\n[Version]", false, "", ""},
      {"DATE: 051508\n", true, "", ""},
      {"DATE: soon", false, "", ""},
  };
  for (const auto& [bytes, newCompiler, version, dateCode] : cases) {
    SCOPED_TRACE(bytes);
    const VersionReport report = ReadVersionReport(bytes);
    EXPECT_EQ(report.newCompiler, newCompiler);
    EXPECT_EQ(report.version, version);
    EXPECT_EQ(report.dateCode, dateCode);
  }
}

TEST(CompileReports, TimesGoToTheBlocksThatHaveTheStatements) {
  const auto store = NewStore();
  store->VoltBlock.BlockCount = 3;
  store->VoltBlock[2].Reps = 4;
  store->BridgeBlock.BlockCount = 1;
  store->PulseBlock[0].BlockCount = 2;
  PulseBlockData& pulses = store->PulseBlock[0][2];
  pulses.Meas = "HiLev";
  store->PulseBlock[0][1].Meas = "Volts";  // no kind that has a statement
  store->VoltBlock[3].Reps = store->BridgeBlock[1].Reps = pulses.Reps = 1;
  store->PulseBlock[0][1].Reps = 1;
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
  const auto times = [](const auto& group) {
    std::vector<i32> found;
    for (int b = 1; b <= group.BlockCount; ++b) found.push_back(group[b].BlockTime);
    return found;
  };
  EXPECT_EQ(times(store->VoltBlock), (std::vector<i32>{0, 13, 13}));
  EXPECT_EQ(times(store->BridgeBlock), (std::vector<i32>{15}));
  EXPECT_EQ(times(store->PulseBlock[0]), (std::vector<i32>{0, 18}))
      << "the first is no time that the store can hold";
  EXPECT_EQ(times(store->TK40MBlock), (std::vector<i32>{61, 32}));
}

}  // namespace
}  // namespace ostrand
