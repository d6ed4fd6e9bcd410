#include "verify/verify_before_save.h"

#include <algorithm>
#include <filesystem>

#include "projectfile/genfile.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "text/strings.h"
#include "verify/check_fixture.h"

namespace ostrand {
namespace {

using testing::Answer;

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};

class BeforeSave : public testing::CheckTest {
 protected:
  struct Outcome {
    bool bad;
    bool upgrade;
    bool operator==(const Outcome&) const = default;
  };
  Outcome verify() {
    Outcome outcome{true, true};
    ORVUS_COMMON::VerifyBeforeSave(context, outcome.bad, outcome.upgrade);
    return outcome;
  }
  // A fault for each check, in their order.
  void duplicateName() { store.Tables[2].TableName = "TABLE1"; }
  void longEstimate() { store.EstMeasTime = 10001; }
  void slowSequence() {
    scan(31, 2);
    store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  }
  void unevenTable() { table(1, 25, 1); }
  void lostVariable() {
    store.Tables[1].WriteIf = 1;
    store.Tables[1].Write[1].MeasureVar = "Gone";
  }
  void flagUsedTwice() {
    store.Config.MonitorPower[kMonitorStatus] = kTrue;
    store.Config.StatusMonCount = 1;
    store.Config.Status[1][4] = "1 T";
    store.Scan.FlagScan = 1;
  }
  void zeroInBurst() {
    store.Scan.BurstMode = kTrue;
    store.VoltBlock[1].ZeroFlag = 1;
  }
};

TEST_F(BeforeSave, FirstFourAlwaysRunAndStopTheRest) {
  EXPECT_EQ(verify(), (Outcome{false, false}));
  duplicateName();
  longEstimate();
  unevenTable();
  lostVariable();
  flagUsedTwice();
  zeroInBurst();
  store.Gen.Version = "5.3.1";
  forms.ExpectBoxWith("DUPLICATION FOUND", "TABLE1");
  forms.ExpectBoxWith("INCORRECT PROGRAM TIMING", "10,001", Answer::kYes);
  forms.ExpectBoxWith("TIMING PROBLEM", "TABLE 1");
  EXPECT_EQ(verify(), (Outcome{true, true}));
}

TEST_F(BeforeSave, EachOfTheFirstFourStopsTheRest) {
  longEstimate();
  lostVariable();
  forms.ExpectBoxWith("INCORRECT PROGRAM TIMING", "10,001", Answer::kNo);
  EXPECT_TRUE(verify().bad);
  slowSequence();
  forms.ExpectBoxWith("SLOW SEQUENCE NOT POSSIBLE", "30 seconds", Answer::kCancel);
  EXPECT_TRUE(verify().bad);
}

TEST_F(BeforeSave, WarningsDoNotStopTheRest) {
  longEstimate();
  lostVariable();
  flagUsedTwice();
  zeroInBurst();
  forms.ExpectBoxWith("INCORRECT PROGRAM TIMING", "10,001", Answer::kYes);
  forms.ExpectBoxWith("INVALID WRITE IF TRIGGER", "Gone");
  forms.ExpectBoxWith("DUPLICATE FLAGS", "Flag(1) in Scan Burst", Answer::kYes);
  forms.ExpectBoxWith("ZERO SUBROUTINE WARNING", "Voltage Block 1", Answer::kOk);
  EXPECT_EQ(verify(), (Outcome{false, false}));
  EXPECT_EQ(store.VoltBlock[1].ZeroFlag, 0);
}

TEST_F(BeforeSave, FlagsStopBeforeTheBurst) {
  flagUsedTwice();
  zeroInBurst();
  forms.ExpectBoxWith("DUPLICATE FLAGS", "Flag(1)", Answer::kNo);
  EXPECT_TRUE(verify().bad);
  forms.ExpectBoxWith("DUPLICATE FLAGS", "Flag(1)", Answer::kYes);
  forms.ExpectBoxWith("ZERO SUBROUTINE WARNING", "Voltage Block 1", Answer::kCancel);
  EXPECT_TRUE(verify().bad);
}

// A check that fails counts as passed.
TEST_F(BeforeSave, FailureOfACheckDoesNotStopTheOthers) {
  store.VoltBlock.BlockCount = 8;
  unevenTable();
  forms.ExpectBoxWith("TROUBLE", "has occurred in ORVUS_COMMON.CheckNames.");
  forms.ExpectBoxWith("TIMING PROBLEM", "TABLE 1");
  EXPECT_TRUE(verify().bad);
}

TEST_F(BeforeSave, CheckAllReportsWithoutBoxes) {
  duplicateName();
  longEstimate();
  slowSequence();
  store.EstMeasTime = 32'000'000;
  unevenTable();
  lostVariable();
  flagUsedTwice();
  zeroInBurst();
  store.VoltBlock[2].CalOnSite = 1;
  use(store.TempBlock, 1, 1);
  store.TempBlock[1].OpenSensDetect = kFalse;
  store.Tables[3].TableOn = store.Tables[3].SyncTable = kTrue;
  store.TempBlock[1].Output.OutputSelect[3][kMaximum] = kTrue;
  const std::string before = ORVUS_GENFILE::ProjectFileText(store, kMoment);
  std::string report;
  for (const Finding& finding : CheckAll(context)) {
    report += (finding.againstSaving ? "! " : "  ") + std::string(finding.title) + ": " +
              std::string(Before(finding.text, "\r\n")) + " " + std::string(finding.section) +
              finding.key + "\n";
  }
  EXPECT_EQ(report,
            "! DUPLICATION FOUND: \"TABLE1\" is used as [ Table1  name ] and [ Table2  name ]. "
            "[TABLE SETUP]TableName(2)\n"
            "! INCORRECT PROGRAM TIMING: Estimated measurement time is greater than the execution "
            "interval. [SCAN SETUP]ExecutionTime\n"
            "! SLOW SEQUENCE NOT POSSIBLE: Because the scan interval is greater than 30 seconds, "
            "Battery Saver will be disabled. [CONFIGURATION]MonitorPower(3)\n"
            "! TIMING PROBLEM: TABLE 1 interval (25,000 uSecs) is not evenly divisible by the "
            "program scan [TABLE SETUP]OutInt(1)\n"
            "  INVALID WRITE IF TRIGGER: Variable Gone,  Table #1 (TABLE1) "
            "[TABLE SETUP]MeasureVar(1)\n"
            "! DUPLICATE FLAGS: Flag(1) in Scan Burst [SCAN SETUP]FlagScan\n"
            "! ZERO SUBROUTINE WARNING: Voltage Block 1  Flag 1 [VOLTAGE BLOCKS]ZeroFlag(1)\n"
            "! ZERO SUBROUTINE WARNING: Voltage Block 2 [VOLTAGE BLOCKS]CalOnSite(2)\n"
            "  FLOATING GROUND WARNING: Thermocouple block 1. "
            "[THERMOCOUPLE BLOCKS]OpenSensDetect(1)\n"
            "  OUTPUT TABLES: Table #3 - 'Table3' [TABLE SETUP]SyncTable(3)\n");
  EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(store, kMoment), before);

  context.WarningMessageMask = 0;
  const Findings kept = CheckAll(context);
  EXPECT_TRUE(std::none_of(kept.begin(), kept.end(), [](const Finding& finding) {
    return finding.title == "INCORRECT PROGRAM TIMING" ||
           finding.title == "INVALID WRITE IF TRIGGER" ||
           finding.title == "FLOATING GROUND WARNING";
  }));
  EXPECT_EQ(kept.size(), 7U);
}

// Whether a section of a project file contains a key.
bool hasKey(std::string_view file, const Finding& finding) {
  for (std::string_view rest = file; Holds(rest, finding.section);) {
    rest = After(rest, finding.section);
    const std::string_view body = Before(rest, "\r\n[");
    if (Holds(body, "\r\n" + finding.key + "=")) return true;
  }
  return false;
}

class CheckAllProjects : public testing::CheckTest {
 protected:
  // Checks the project as read and finds the keys of the findings in its file.
  Findings check() {
    refs = CollectCalcVarRefs(store);
    const std::string file = ORVUS_GENFILE::ProjectFileText(store, kMoment);
    const Findings findings = CheckAll(context);
    for (const Finding& finding : findings) {
      EXPECT_TRUE(finding.key.empty() || hasKey(file, finding))
          << finding.title << ": " << finding.text << " " << finding.section << finding.key;
    }
    EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(store, kMoment), file);
    return findings;
  }
  void read(const std::filesystem::path& path) {
    ORVUS_COMMON::ClearStore(store);
    ORVUS_COMMON::SetAllDefaults(store);
    ORVUS_COMMON::SetLoggerConstants(store);
    ORVUS_GENFILE::ReadProjectText(store, testing::ReadDisk(path.string()));
  }
};

TEST_F(CheckAllProjects, ExamplesCanBeSaved) {
  std::string report;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/examples")) {
    if (entry.path().extension() != ".VKG") continue;
    SCOPED_TRACE(entry.path());
    read(entry.path());
    for (const Finding& finding : check()) {
      if (finding.againstSaving)
        report += entry.path().stem().string() + ": " + finding.text + "\n";
    }
    ++count;
  }
  EXPECT_EQ(report, "");
  EXPECT_EQ(count, 7);
}

TEST_F(CheckAllProjects, RandomProjectsAreCheckedToTheEnd) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(store, seed);
    check();
  }
  testing::MakeLargestProject(store);
  check();
  int samples = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/tests/samples")) {
    SCOPED_TRACE(entry.path());
    if (entry.path().extension() != ".VKG") continue;
    read(entry.path());
    check();
    ++samples;
  }
  EXPECT_EQ(samples, 5);
}

}  // namespace
}  // namespace ostrand
