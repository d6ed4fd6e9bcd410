// Flags used twice, zeroing in burst mode, floating blocks and tables as fast as the scan.
#include "verify/check_fixture.h"
#include "verify/ground_warning.h"
#include "verify/scan_rate_tables.h"
#include "verify/status_flags_check.h"
#include "verify/zero_burst_check.h"

namespace ostrand {
namespace {

using testing::Answer;
using namespace ORVUS_COMMON;

std::string keysOf(const Findings& findings) {
  std::string keys;
  for (const Finding& finding : findings) keys += finding.key + " ";
  return keys;
}

class StatusFlags : public testing::CheckTest {
 protected:
  StatusFlags() {
    store.Config.MonitorPower[kMonitorStatus] = kTrue;
    store.Config.StatusMonCount = 2;
    store.Config.Status[1][4] = "8 T";
    store.Config.Status[2][4] = "3F";
    store.Config.Status[3][4] = "1 T";  // past the rows
  }
  bool flagsAreBad() {
    bool bad = true;
    CheckStatusFlags(context, bad, 1);
    return bad;
  }
};

TEST_F(StatusFlags, OfTheirOwnAreFine) {
  store.Flags[1].FlagInclude = kTrue;
  store.Tables[1].FlagTable = 1;
  EXPECT_FALSE(flagsAreBad());
}

TEST_F(StatusFlags, AllOtherUsesAreTold) {
  store.Ports.Slot[1].Ports[9].Include = kTrue;
  store.Ports.Slot[1].Ports[9].State[1].Expression = "flag(3) = True";
  store.Ports.Slot[0].Ports[1].State[0].Expression = "Flag(3) = True";  // not included
  store.ExciteOut.Slot[0][2].Include = kTrue;
  store.ExciteOut.Slot[0][2].Excite1Expression = "Flag(3) = True";
  store.ExciteOut.Slot[0][2].Excite2Expression = "Flag(3) = False";
  store.Flags[3].FlagInclude = kTrue;
  store.Scan.FlagScan = 3;
  store.Tables[1].FlagTable = 3;
  store.Tables[1].FlagFull = 3;
  store.Tables[2].FlagMark = 3;
  store.Tables[5].TrigTable = 1;
  store.Tables[5].DataEventCode = "DataEvent (0,Flag(3) = True,0,0)";
  store.Tables[6].DataEventCode = "DataEvent (0,Flag(3) = True,0,0)";  // without a trigger
  store.Tables[5].WriteIf = 2;
  store.Tables[5].Write[1].Expression = "Flag(3) = True";
  store.Config.PowerOffLine = "If Flag(3) = True Then";
  store.Tables[4].FlagFull = 8;
  store.Tables[4].FlagTable = 5;  // no flag of the monitor
  const char* text =
      "The following Flag(s) in Status Monitor were also found in:\r\n\r\n"
      "Flag(3) in Ports Setup\r\n"
      "Flag(3) in CAO Trigger Setup\r\n"
      "Flag(3) in Flags Setup\r\n"
      "Flag(3) in Scan Burst\r\n"
      "Flag(3) Table 1 Control\r\n"
      "Flag(3) Table 1 Full\r\n"
      "Flag(3) Table 2 File Mark\r\n"
      "Flag(3) Table 5 Trigger\r\n"
      "Flag(3) Table 5 Write If\r\n"
      "Flag(3) in Power Off Trigger\r\n"
      "Flag(8) Table 4 Full\r\n"
      "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT.";
  forms.ExpectBox("DUPLICATE FLAGS", text, Answer::kNo);
  EXPECT_TRUE(flagsAreBad());
  forms.ExpectBox("DUPLICATE FLAGS", text, Answer::kYes);
  EXPECT_FALSE(flagsAreBad());
  EXPECT_EQ(keysOf(StatusFlagFindings(store)),
            "Expression(1,0,9) Excite1Expression(2) FlagInclude(3) FlagScan FlagTable(1) "
            "FlagFull(1) FlagMark(2) DataEventCode(5) Expression(5, 1) PowerOffLine FlagFull(4) ");
  store.Config.MonitorPower[kMonitorStatus] = kFalse;
  EXPECT_FALSE(flagsAreBad());
}

class ZeroBurst : public testing::CheckTest {
 protected:
  ZeroBurst() {
    store.Scan.BurstMode = kTrue;
    store.Config.TK40MQty = 1;
  }
  bool burstIsBad() {
    bool bad = true;
    VerifyZeroBurst(context, bad);
    return bad;
  }
  // Of blocks in use or not; of multiplexers only those of voltages.
  void setEverywhere(i16 MeasBlock::*setting) {
    store.BridgeBlock[1].*setting = 2;
    store.VoltBlock[7].*setting = 5;
    store.VoltBlock[2].*setting = 1;
    store.TK40MBlock[3].*setting = 4;
    store.TK40MBlock[3].TK40Volts = 1;
    store.TK40MBlock[4].*setting = 6;
  }
};

constexpr const char* kZeroText =
    "The Program Generator will not allow zero subroutines in conjunction with\r\n"
    "burst mode, as this operation may not achieve the results desired.\r\n\r\n"
    "The following blocks have been configured with zero flags:\r\n\r\n"
    "Voltage Block 2  Flag 1\r\n"
    "Voltage Block 7  Flag 5\r\n"
    "Bridge   Block 1  Flag 2\r\n"
    "TK40M Block 3  Flag 4\r\n\r\n"
    "Proceeding will disable all flags now.  Continue?";
constexpr const char* kCalText =
    "Cal-On-Site previously selected may not give the results desired\r\n"
    "with burst mode. These are selected:\r\n\r\n"
    "Voltage Block 2\r\n"
    "Voltage Block 7\r\n"
    "Bridge   Block 1\r\n"
    "TK40M Block 3\r\n\r\n"
    "WOULD YOU LIKE THEM DISABLED NOW?";

TEST_F(ZeroBurst, OnlyInBurstMode) {
  setEverywhere(&MeasBlock::ZeroFlag);
  setEverywhere(&MeasBlock::CalOnSite);
  store.Scan.BurstMode = kFalse;
  EXPECT_FALSE(burstIsBad());
}

TEST_F(ZeroBurst, CancelKeepsTheZeroFlagsAndEnds) {
  setEverywhere(&MeasBlock::ZeroFlag);
  setEverywhere(&MeasBlock::CalOnSite);
  forms.ExpectBox("ZERO SUBROUTINE WARNING", kZeroText, Answer::kCancel);
  EXPECT_TRUE(burstIsBad());
  EXPECT_EQ(store.VoltBlock[7].ZeroFlag, 5);
}

TEST_F(ZeroBurst, OkTakesAllZeroFlagsAway) {
  setEverywhere(&MeasBlock::ZeroFlag);
  forms.ExpectBox("ZERO SUBROUTINE WARNING", kZeroText, Answer::kOk);
  EXPECT_FALSE(burstIsBad());
  for (int b = 1; b <= kBlocks; ++b) {
    EXPECT_EQ(
        store.VoltBlock[b].ZeroFlag + store.BridgeBlock[b].ZeroFlag + store.TK40MBlock[b].ZeroFlag,
        0);
  }
  EXPECT_FALSE(burstIsBad());
}

TEST_F(ZeroBurst, AnswersAboutCalibrationOnSite) {
  setEverywhere(&MeasBlock::CalOnSite);
  forms.ExpectBox("ZERO SUBROUTINE WARNING", kCalText, Answer::kNo);
  EXPECT_FALSE(burstIsBad());
  forms.ExpectBox("ZERO SUBROUTINE WARNING", kCalText, Answer::kCancel);
  EXPECT_TRUE(burstIsBad());
  EXPECT_EQ(store.TK40MBlock[3].CalOnSite, 4);
  EXPECT_EQ(keysOf(CalOnSiteFindings(store)),
            "CalOnSite(2) CalOnSite(7) CalOnSite(1) CalOnSite(3) ");
  forms.ExpectBox("ZERO SUBROUTINE WARNING", kCalText, Answer::kYes);
  EXPECT_FALSE(burstIsBad());
  EXPECT_EQ(store.TK40MBlock[4].CalOnSite, 0);
  EXPECT_EQ(store.BridgeBlock[1].CalOnSite, 0);
}

TEST_F(ZeroBurst, NoMultiplexerNoBlock) {
  store.Config.TK40MQty = 0;
  setEverywhere(&MeasBlock::ZeroFlag);
  EXPECT_EQ(keysOf(ZeroFlagFindings(store)), "ZeroFlag(2) ZeroFlag(7) ZeroFlag(1) ");
}

class GroundWarning : public testing::CheckTest {};

constexpr const char* kGroundHead =
    "The following measurement blocks are NOT automatically\r\n"
    "referenced to ground in the data logger:\r\n\r\n";
constexpr const char* kGroundTail =
    "If any differential measurements are floating (not referenced\r\n"
    "to ground) then the low terminal may need to be\r\n"
    "connected to the adjacent ground terminal.\r\n\r\n"
    "SEE WIRING DIAGRAM";

// The blocks of a new project test for open sensors.
TEST_F(GroundWarning, NoBoxWithoutAFloatingBlock) {
  use(store.TempBlock, 7, 1);
  use(store.VoltBlock, 7, 1);
  FloatingGroundWarning(context);
}

TEST_F(GroundWarning, GroupsWithBlankLinesBetween) {
  use(store.TempBlock, 4, 1);
  store.TempBlock[1].OpenSensDetect = kFalse;
  store.TempBlock[2].OpenSensDetect = kFalse;
  store.TempBlock[2].MeasType = "SE";
  store.TempBlock[3].OpenSensDetect = kFalse;
  store.TempBlock[3].Reps = 0;
  store.TempBlock[4].OpenSensDetect = kFalse;
  store.TempBlock[5].OpenSensDetect = kFalse;  // past the blocks
  use(store.VoltBlock, 3, 1);
  store.VoltBlock[1].RangeNo = 1;  // 1000 mV, which knows no open sensor
  store.VoltBlock[2].RangeNo = 2;
  store.VoltBlock[3].RangeNo = 2;
  store.VoltBlock[3].OpenSensDetect = kFalse;
  use(store.TK40MBlock, 2, 1);
  store.TK40MBlock[1].OpenSensDetect = kFalse;
  store.TK40MBlock[1].TK40Volts = 1;
  store.TK40MBlock[2].OpenSensDetect = kFalse;
  const std::string head =
      std::string(kGroundHead) + "Thermocouple block 1.\r\nThermocouple block 4.\r\n\r\n";
  const std::string tail =
      "Voltage block 1.\r\nVoltage block 3.\r\n\r\n" + std::string(kGroundTail);
  forms.ExpectBox("FLOATING GROUND WARNING", head + tail);
  FloatingGroundWarning(context);
  store.Config.TK40MQty = 1;
  forms.ExpectBox("FLOATING GROUND WARNING", head + "TK40M Thermocouple block 2.\r\n\r\n" + tail);
  FloatingGroundWarning(context);
  EXPECT_EQ(keysOf(FloatingGroundFindings(store)),
            "OpenSensDetect(1) OpenSensDetect(4) OpenSensDetect(2) RangeNo(1) OpenSensDetect(3) ");
  context.WarningMessageMask = 8191 - kWarnFloatingGround;
  FloatingGroundWarning(context);
}

class ScanRateTables : public testing::CheckTest {
 protected:
  bool tablesAreBad() {
    bool bad = true;
    CheckScanRateTables(context, bad);
    return bad;
  }
};

constexpr const char* kScanRateText =
    "The following tables have their intervals equal to the system scan interval.  \r\n"
    "They also have previously been configured for output processing instructions \r\n"
    "that assume that multiple scans occur between output table writes.\r\n"
    "(For example, Averages, Min/Max, Histograms, etc.)\r\n\r\n"
    "Table #2 - 'Fast'\r\n"
    "Table #3 - 'Table3'\r\n\r\n"
    "If you proceed, these output processing configurations will be removed\r\n"
    "in the associated measurement blocks, and replaced with the Sample\r\n"
    "output instruction.  Proceed?";

TEST_F(ScanRateTables, SamplesTakeThePlaceOfWhatNeedsSeveralScans) {
  scan(0.1F, 2);
  table(1, 200, 1);
  table(2, 100, 1);
  table(3, 5, 3);
  table(4, 100, 1);
  store.Tables[2].TableName = "Fast";
  store.Tables[3].SyncTable = kTrue;
  use(store.VoltBlock, 1, 1);
  auto& volts = store.VoltBlock[1].Output.OutputSelect;
  volts[1][kAverage] = volts[2][kAverage] = volts[2][kHistogram] = volts[4][kSample] = kTrue;
  store.TcRef.Output.OutputSelect[3][kMaximum] = kTrue;
  store.CalcFields.CalcFieldCount = 1;
  store.CalcFields.Field[1].Output.OutputSelect[3][kLevelCrossing] = kTrue;
  store.Ports.Slot[0].Output.OutputSelect[6][kMinimum] = kTrue;  // table not in use
  EXPECT_EQ(keysOf(ScanRateFindings(store)), "OutInt(2) SyncTable(3) ");
  forms.ExpectBox("OUTPUT TABLES", kScanRateText, Answer::kNo);
  EXPECT_TRUE(tablesAreBad());
  EXPECT_EQ(volts[2][kAverage], kTrue);
  forms.ExpectBox("OUTPUT TABLES", kScanRateText, Answer::kYes);
  EXPECT_FALSE(tablesAreBad());
  EXPECT_EQ(volts[2][kSample], 1);
  EXPECT_EQ(volts[2][kAverage] + volts[2][kHistogram], 0);
  EXPECT_EQ(volts[1][kAverage], kTrue);
  EXPECT_EQ(volts[1][kSample], kFalse);
  EXPECT_EQ(store.TcRef.Output.OutputSelect[3][kSample], 1);
  EXPECT_EQ(store.CalcFields.Field[1].Output.OutputSelect[3][kLevelCrossing], kFalse);
  EXPECT_EQ(store.CalcFields.Field[1].Output.OutputSelect[3][kSample], 1);
  EXPECT_EQ(store.Ports.Slot[0].Output.OutputSelect[6][kMinimum], kTrue);
  EXPECT_EQ(store.BridgeBlock[1].Output.OutputSelect[2][kSample], kFalse);  // had nothing
  EXPECT_FALSE(tablesAreBad());
}

}  // namespace
}  // namespace ostrand
