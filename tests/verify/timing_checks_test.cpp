#include "verify/timing_checks.h"

#include "verify/check_fixture.h"

namespace ostrand {
namespace {

using testing::Answer;
using namespace ORVUS_COMMON;

class TimingChecks : public testing::CheckTest {
 protected:
  bool measTimeIsBad() {
    bool bad = true;
    CheckMeasTime(context, bad);
    return bad;
  }
  bool slowSequenceIsBad() {
    bool bad = true;
    CheckSlowSequence(context, bad);
    return bad;
  }
};

TEST_F(TimingChecks, EstimateMayEqualTheScan) {
  constexpr const char* kTooLong =
      "Estimated measurement time is greater than the execution interval.\r\n\r\n"
      "Execution interval time  = 10,000 uSecs\r\n"
      "Estimated total measurement time = 10,001 uSecs\r\n\r\n"
      "THIS SHOULD BE CORRECTED BEFORE SAVING.\r\n\r\n"
      "Do you wish to continue?";
  store.EstMeasTime = 10000;
  EXPECT_FALSE(measTimeIsBad());
  store.EstMeasTime = 10001;
  forms.ExpectBox("INCORRECT PROGRAM TIMING", kTooLong, Answer::kNo);
  EXPECT_TRUE(measTimeIsBad());
  forms.ExpectBox("INCORRECT PROGRAM TIMING", kTooLong, Answer::kYes);
  EXPECT_FALSE(measTimeIsBad());
  EXPECT_EQ(forms.beeps, 2);
  forms.CollectBoxes();
  measTimeIsBad();
  ASSERT_EQ(forms.shown.size(), 1U);
  EXPECT_EQ(forms.shown[0].buttons, platform::Buttons::kYesNo);
  EXPECT_EQ(forms.shown[0].preselected, Answer::kNo);
  context.WarningMessageMask = 8191 - kWarnMeasTime;
  EXPECT_FALSE(measTimeIsBad());
  context.WarningMessageMask = kWarnMeasTime;
  scan(1.005F, 1);  // 1004.9999999999999 if it were multiplied
  store.EstMeasTime = 1005;
  EXPECT_FALSE(measTimeIsBad());
}

TEST_F(TimingChecks, ScanOfThirtySecondsAllowsTheBatterySaver) {
  constexpr const char* kText =
      "Because the scan interval is greater than 30 seconds, Battery Saver will be disabled.";
  flag& saver = store.Config.MonitorPower[kMonitorBatterySaver];
  scan(30.001F, 2);
  EXPECT_FALSE(slowSequenceIsBad());
  saver = kTrue;
  scan(0.5F, 3);
  EXPECT_FALSE(slowSequenceIsBad());
  scan(30.001F, 2);
  forms.ExpectBox("SLOW SEQUENCE NOT POSSIBLE", kText, Answer::kCancel);
  EXPECT_TRUE(slowSequenceIsBad());
  EXPECT_EQ(saver, kTrue);
  forms.ExpectBox("SLOW SEQUENCE NOT POSSIBLE", kText, Answer::kOk);
  EXPECT_FALSE(slowSequenceIsBad());
  EXPECT_EQ(saver, kFalse);
  EXPECT_EQ(forms.beeps, 2);
}

TEST_F(TimingChecks, IntervalMustBeAMultipleOfTheScan) {
  const struct {
    float time;
    i16 units;
    i32 interval;
    i16 intervalUnits;
    bool fine;
  } cases[] = {
      {10, 1, 25, 1, false},     {10, 1, 30, 1, true},    {10, 1, 5, 1, false},
      {1.1F, 1, 11, 1, true},    {0.1F, 2, 300, 1, true}, {33.3F, 1, 333, 1, true},
      {33.3F, 1, 100, 1, false}, {0.7F, 0, 7, 0, true},   {30, 3, 1, 4, true},
      {7, 0, 20000, 5, false},   {7, 0, 7, 5, true},      {10, 1, 0, 1, false},
      {0, 1, 25, 1, true},       {10, 4, 25, 1, true},  // scan period 0: nothing to compare with
  };
  for (const auto& c : cases) {
    scan(c.time, c.units);
    table(4, c.interval, c.intervalUnits);
    EXPECT_EQ(TableIntervalFindings(store).empty(), c.fine) << c.time << ' ' << c.interval;
  }
}

// Tables 1 and 3 are valid: one is synchronous, one is not in use. Table 5 is reported only when
// the first one is corrected.
TEST_F(TimingChecks, IntervalBoxDependsOnTheMode) {
  const std::string text =
      "TABLE 2 interval (25,000 uSecs) is not evenly divisible by the program scan\r\n"
      "rate (10,000 uSecs). New records will be added to the table\r\n"
      "only when the table interval is an exact multiple of the scan rate.\r\n\r\n"
      "WORKABLE TABLE INTERVALS ARE:\r\n"
      "10,000 uSecs   (10.000 mSecs)\r\n"
      "20,000 uSecs   (20.000 mSecs)\r\n"
      "30,000 uSecs   (30.000 mSecs)\r\n"
      "etc.\r\n\r\n";
  const std::string mustCheck = text + "*** MUST CHECK SCAN INTERVALS FOR OUTPUT TABLES ***";
  i16 bad = 9;
  table(1, 25, 1);
  table(3, 25, 1);
  store.Tables[1].SyncTable = kTrue;
  store.Tables[3].TableOn = kFalse;
  EXPECT_TRUE(CheckTableIntervals(context, -1, bad));
  EXPECT_EQ(bad, 0);
  table(2, 25, 1);
  table(5, 35, 1);
  const Findings findings = TableIntervalFindings(store);
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[1].key, "OutInt(5)");
  EXPECT_TRUE(findings[1].text.starts_with("TABLE 5 interval (35,000 uSecs)"));
  forms.ExpectBox("TIMING PROBLEM", text + "THIS MUST BE CORRECTED BEFORE EXITING");
  EXPECT_FALSE(CheckTableIntervals(context, -1, bad));
  EXPECT_EQ(bad, 2);
  EXPECT_EQ(forms.beeps, 1);
  forms.ExpectBox("TIMING PROBLEM 2", mustCheck);
  EXPECT_TRUE(CheckTableIntervals(context, 2, bad));
  forms.ExpectBox("TIMING PROBLEM 1", mustCheck);
  EXPECT_TRUE(CheckTableIntervals(context, 1, bad));
  context.WarningMessageMask = 8191 - kWarnTableIntervals;
  EXPECT_TRUE(CheckTableIntervals(context, 2, bad));
  forms.ExpectBoxWith("TIMING PROBLEM", "TABLE 2 ");
  EXPECT_FALSE(CheckTableIntervals(context, -1, bad));
}

}  // namespace
}  // namespace ostrand
