// The logger's own screens as a person goes through them: configuration, scan, flags, ports and
// analog outputs, and what the program gets of it.
#include <gmock/gmock.h>

#include "generator/generated.h"
#include "model/defaults.h"
#include "setup/config_power.h"
#include "setup/frm_config.h"
#include "setup/frm_excite.h"
#include "setup/frm_execute.h"
#include "setup/frm_flags.h"
#include "setup/frm_ports.h"
#include "table_screens_fixture.h"

namespace ostrand {
namespace {

using platform::Answer;

class ConfigScreens : public testing::TableScreens {
 protected:
  ConfigScreens() {
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 3;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
  }
  Configuration& config() { return store->Config; }
};

// ---- Configuration ------------------------------------------------------------------------------

TEST_F(ConfigScreens, CountsOfPeripheralsTakeTheirDigitsOnly) {
  frmConfig screen(context);
  type(screen, "CanBusQty", "1");
  EXPECT_EQ(config().CanBusQty, 1);
  type(screen, "CanBusQty", "2");
  EXPECT_EQ(shown(screen, "CanBusQty"), "0");
  type(screen, "TK40MQty", "4");
  EXPECT_EQ(config().TK40MQty, 4);
  type(screen, "TK40MQty", "12");
  EXPECT_EQ(shown(screen, "TK40MQty"), "0");
  EXPECT_EQ(forms.beeps, 2);
  screen.Cancel();
  EXPECT_EQ(config().CanBusQty, 0) << "Cancel loses what was typed";
}

TEST_F(ConfigScreens, MoreMultiplexersAskForPortsAndForChannels) {
  store->Ports.Slot[0].Ports[3].Include = kTrue;
  store->Ports.Slot[0].Ports[8].Include = kTrue;
  store->Ports.Slot[0].BinaryMask[2] = "11110000";
  store->VoltBlock[1].Reps = 18;
  frmConfig screen(context);
  const std::string question =
      "If You Press OK, changes may occur in the PORTS setup to accomodate this new configuration.";
  forms.ExpectBox("Change of Port Use", question, Answer::kCancel);
  type(screen, "TK40MQty", "1");
  EXPECT_EQ(shown(screen, "TK40MQty"), "0");
  forms.ExpectBox("Change of Port Use", question, Answer::kOk);
  forms.ExpectBox("NOT ENOUGH ANALOG CHANNELS", "Please Remove Some Measurements.");
  type(screen, "TK40MQty", "3");
  EXPECT_EQ(shown(screen, "TK40MQty"), "2") << "18 of 20 differential channels are in use";
  screen.Done();
  const PortSlot& slot = store->Ports.Slot[0];
  EXPECT_EQ(slot.Ports[3].Include, kTrue);
  EXPECT_EQ(slot.Ports[8].Include, kFalse);
  EXPECT_EQ(slot.BinaryMask[2], "00110000");
}

TEST_F(ConfigScreens, TheLastMultiplexerTakesItsBlocksWithIt) {
  config().TK40MQty = 2;
  store->TK40MBlock.BlockCount = 1;
  store->TK40MBlock[1].Reps = 5;
  frmConfig screen(context);
  const std::string question =
      "Warning:\r\nIf you proceed with this change, all TK40M blocks will be deleted. Continue?";
  type(screen, "TK40MQty", "0");
  forms.ExpectBox("Delete TK40M?", question, Answer::kNo);
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kNone);
  EXPECT_EQ(shown(screen, "TK40MQty"), "2");
  type(screen, "TK40MQty", "0");
  forms.ExpectBox("Delete TK40M?", question, Answer::kYes);
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_EQ(store->TK40MBlock.BlockCount, 0);
  EXPECT_EQ(store->TK40MBlock[1].Reps, 0);
}

TEST_F(ConfigScreens, AutomaticSelectionNeedsRoomForAllChannels) {
  config().AutoChan = kFalse;
  store->VoltBlock[1].Reps = 20;
  frmConfig screen(context);
  type(screen, "TK40MQty", "0");
  pick(screen, "AutoChan", "Auto Channel Selection");
  EXPECT_EQ(config().AutoChan, kTrue) << "40 channels fit";
  pick(screen, "AutoChan", "Manual Channel Selection");
  store->TempBlock[7].Reps = 1;
  store->TempBlock[7].MeasType = "SE";
  forms.ExpectBox("MEASURE COUNT TOO HIGH",
                  "41 single-ended channels currently in use.\r\n"
                  "Auto Channel Selection works for 40 or less selected.\r\n"
                  "Reduce measurement count and try again.");
  pick(screen, "AutoChan", "Auto Channel Selection");
  EXPECT_EQ(config().AutoChan, kFalse);
  EXPECT_EQ(shown(screen, "AutoChan"), "Manual Channel Selection");
}

TEST_F(ConfigScreens, ACardWithoutRoomMovesTheTablesAtDone) {
  config().SizeCard = 64;
  store->Tables[2].TableLocation = 2;
  store->Tables[2].FlagMark = 4;
  frmConfig screen(context);
  type(screen, "SizeCard", "2");
  pick(screen, "SizeCardUnits", "G bytes");
  EXPECT_EQ(config().SizeCard, 2048);
  forms.ExpectBox("WARNING", "All Table Ouputs Will be On RAM, Continue?", Answer::kNo);
  type(screen, "SizeCard", "0");
  EXPECT_EQ(shown(screen, "SizeCard"), "2");
  EXPECT_EQ(shown(screen, "SizeCardUnits"), "G bytes");
  forms.ExpectBox("WARNING", "All Table Ouputs Will be On RAM, Continue?", Answer::kYes);
  type(screen, "SizeCard", "0");
  EXPECT_EQ(store->Tables[2].TableLocation, 2) << "not before Done";
  screen.Done();
  EXPECT_EQ(store->Tables[2].TableLocation, 1);
  EXPECT_EQ(store->Tables[2].FlagMark, 0);
}

TEST_F(ConfigScreens, TheBatterySaverStepsWithinItsLimits) {
  frmConfig screen(context);
  EXPECT_FALSE(usable(screen, "BattTripVolts"));
  check(screen, "MonitorPower3", true);
  EXPECT_FALSE(usable(screen, "BattTripVolts")) << "locked by the default";
  check(screen, "DefaultBattVolt", false);
  type(screen, "BattTripVolts", "20");
  EXPECT_EQ(shown(screen, "BattTripVolts"), "14.0");
  control(screen, "BattTripVolts").Spin(true);
  EXPECT_EQ(shown(screen, "BattTripVolts"), "14.0");
  control(screen, "BattTripVolts").Spin(false);
  EXPECT_EQ(config().BattTripVolts, 13.9F);
  EXPECT_EQ(shown(screen, "SaverInterval"), "Interval = None");
  control(screen, "RetryInterval").Spin(true);
  EXPECT_EQ(shown(screen, "SaverInterval"), "Interval = 1 Minutes");
  pick(screen, "BattRetryMins", "Hours");
  EXPECT_EQ(shown(screen, "SaverInterval"), "Interval = 1 Hours");
  check(screen, "DoNotRetry", true);
  EXPECT_EQ(shown(screen, "SaverInterval"), "Interval = None");
  EXPECT_EQ(config().LowBattRetry, kFalse);
  EXPECT_EQ(config().RetryInterval, 0) << "an interval would switch it on again";
  check(screen, "DoNotRetry", false);
  EXPECT_EQ(config().RetryInterval, 1);
  check(screen, "DefaultBattVolt", true);
  EXPECT_EQ(config().BattTripVolts, 11.5F);
}

TEST_F(ConfigScreens, StatusRowsAreKeptAsTheProgramReadsThem) {
  frmConfig screen(context);
  check(screen, "MonitorPower5", true);
  pick(screen, "StatusField", "Status.SkippedScan(1,1)");
  pick(screen, "StatusCompare", ">=");
  type(screen, "StatusValue", "5");
  pick(screen, "StatusFlag", "3");
  pick(screen, "StatTrueFalse", "False");
  EXPECT_EQ(shown(screen, "StatusCode"),
            " If Status.SkippedScan(1,1) >= 5 Then\r\n       Flag(3) = False\r\n   End If");
  press(screen, "AddStatus");
  pick(screen, "StatTrueFalse", "True");
  for (int row = 2; row <= kStatusRows; ++row) press(screen, "AddStatus");
  EXPECT_FALSE(usable(screen, "AddStatus")) << "eleven rows are all";
  EXPECT_EQ(config().Status[1][2], ">=");
  EXPECT_EQ(config().Status[1][4], "3 F");
  EXPECT_EQ(config().Status[11][4], "3 T");
  control(screen, "StatusRows").Pick("Status.SkippedScan(1,1)  >=  5  3 F");
  press(screen, "DeleteStatus");
  EXPECT_EQ(config().StatusMonCount, 10);
  EXPECT_EQ(config().Status[1][4], "3 T");
}

TEST_F(ConfigScreens, PowerOffNamesTheVariableAndShowsTheAlias) {
  frmConfig screen(context);
  check(screen, "MonitorPower2", true);
  check(screen, "EnablePowerOff", true);
  EXPECT_EQ(shown(screen, "PowerOffMins"), "Day") << "raised from what no list shows";
  pick(screen, "PowerOffMeasVar", "Oil");
  pick(screen, "PowerOffCompare", ">");
  type(screen, "PowerOffValue", "0.5");
  type(screen, "PowerOffTime", "10");
  pick(screen, "PowerOffMins", "Min");
  EXPECT_EQ(shown(screen, "PowerOffCode"), "If Oil > 0.5 Then PowerOff (0,10,Min)");
  EXPECT_EQ(config().PowerOffLine, "If VBlk1(2) > 0.5 Then");
  EXPECT_EQ(config().PowerOffMeasVar, "Oil");
  EXPECT_EQ(config().PowerOffMins, 2);
  check(screen, "RemainOff", true);
  EXPECT_EQ(shown(screen, "PowerOffCode"), "If Oil > 0.5 Then PowerOff (0,0,0)");
  pick(screen, "PowerOffMeasVar", "Flag(3)");
  EXPECT_EQ(config().PowerOffLine, "If Flag(3) = True Then");
  pick(screen, "PowerOffMeasVar", "(None)");
  EXPECT_EQ(config().PowerOffLine, "");
}

TEST_F(ConfigScreens, AStoredPowerOffLineThatIsOnlyLookedAtStays) {
  config().MonitorPower[kMonitorBattery] = kTrue;
  config().MonitorPower[kMonitorPowerControl] = kTrue;
  config().PowerOffMeasVar = "BattVolt";
  config().PowerOffCompare = 4;
  config().PowerOffValue = 10.8F;
  config().PowerOffLine = "If BattVolt < 10.8 Then";
  config().PowerOffMins = 1;
  config().PowerOnMins = 2;
  const std::string before = config().PowerOffLine;
  frmConfig screen(context);
  EXPECT_EQ(shown(screen, "PowerOffCompare"), " <") << "the line tells, not the code";
  screen.Done();
  EXPECT_EQ(config().PowerOffLine, before);
  EXPECT_EQ(config().PowerOffCompare, 4);
}

TEST_F(ConfigScreens, ATimeIsStoredByItsParts) {
  frmConfig screen(context);
  check(screen, "MonitorPower2", true);
  check(screen, "EnableTime", true);
  EXPECT_EQ(shown(screen, "PowerOffString"), "---- --- -- --:--:--");
  pick(screen, "TimeOffMonth", "Mar");
  pick(screen, "TimeOffDay", "31");
  pick(screen, "TimeOffHour", "6");
  pick(screen, "TimeOffMonth", "Feb");
  EXPECT_EQ(shown(screen, "TimeOffDay"), "29") << "of any year";
  pick(screen, "TimeOffYear", "2023");
  EXPECT_EQ(shown(screen, "PowerOffString"), "2023 Feb 28 06:--:--");
  EXPECT_EQ(config().TimeOffDay, 28);
  EXPECT_EQ(config().TimeOffHourShow, kTrue);
  EXPECT_EQ(config().TimeOffMinShow, kFalse);
  pick(screen, "TimeOffWkDay", "Mon");
  EXPECT_EQ(config().TimeOffWkDay, 2);
  EXPECT_FALSE(usable(screen, "TimeOffYear"));
  for (const char* list : {"TimeOffWkDay", "TimeOffYear", "TimeOffMonth", "TimeOffDay"}) {
    pick(screen, list, "any");
  }
  pick(screen, "TimeOffHour", "any");
  EXPECT_EQ(config().TimeOffHourShow, kTrue) << "a time never set, not one that always is";
  EXPECT_EQ(config().TimeOffHour, 0);
  EXPECT_EQ(config().PowerOffString, "---- --- -- --:--:--");
}

TEST(Moments, MonthsHaveTheDaysOfTheCalendar) {
  EXPECT_EQ(DaysOfMonth({}, {}), 31);
  EXPECT_EQ(DaysOfMonth(9, {}), 30);
  EXPECT_EQ(DaysOfMonth(12, {}), 31);
  EXPECT_EQ(DaysOfMonth(2, {}), 29);
  EXPECT_EQ(DaysOfMonth(2, 2000), 29);
  EXPECT_EQ(DaysOfMonth(2, 2024), 29);
  EXPECT_EQ(DaysOfMonth(2, 2025), 28);
  EXPECT_EQ(DaysOfMonth(2, 2100), 28);
}

TEST_F(ConfigScreens, AScreenThatGoesAwayLeavesTheProjectAsItWas) {
  {
    frmConfig screen(context);
    type(screen, "TK40MQty", "3");
  }
  EXPECT_EQ(config().TK40MQty, 0);
  EXPECT_EQ(config().PowerOnMins, 0) << "nor is a unit raised";
}

TEST_F(ConfigScreens, TheBatteryOpensItsOutputAndCanBeNamed) {
  frmConfig screen(context);
  host.scenes.push_back([](Screen& output) {
    EXPECT_EQ(output.Name(), "frmPortTables");
    check(output, "Public", true);
    output.Done();
  });
  check(screen, "MonitorPower1", true);
  EXPECT_EQ(store->PowerOut.Public, kTrue);
  check(screen, "MonitorPower2", true);
  check(screen, "EnablePowerOff", true);
  pick(screen, "PowerOffMeasVar", "BattVolt");
  screen.Done();
  EXPECT_EQ(config().PowerOffLine, "If BattVolt < 0 Then");
  EXPECT_EQ(config().MonitorPower[kMonitorBattery], kTrue);
}

TEST_F(ConfigScreens, AConditionTellsOfAFlagThatIsDriven) {
  store->Flags[2].FlagInclude = kTrue;
  frmExcite screen(context);
  forms.ExpectBoxWith("FLAG INFORMATION", "Flag(2");
  pick(screen, "Excite1MeasVar1", "Flag(2)");
  pick(screen, "Excite2MeasVar1", "Flag(3)");
}

// ---- Scan ---------------------------------------------------------------------------------------

TEST_F(ConfigScreens, TheScanIntervalIsNeverZeroAndItsRateFollows) {
  frmExecute screen(context);
  EXPECT_EQ(shown(screen, "ScansPerSec"), "100.000");
  type(screen, "ExecutionTime", "05");
  EXPECT_EQ(shown(screen, "ExecutionTime"), "5");
  EXPECT_EQ(store->Scan.ExecutionTime, 5);
  forms.ExpectBox("SCAN INTERVAL", "Can't do Zero!");
  type(screen, "ExecutionTime", "0");
  EXPECT_EQ(shown(screen, "ExecutionTime"), "5");
  pick(screen, "ExecTimeUnits", "uSecs");
  EXPECT_EQ(shown(screen, "ScansPerSec"), "200,000.0");
  type(screen, "ExecutionTime", "45");
  pick(screen, "ExecTimeUnits", "Mins");
  EXPECT_EQ(shown(screen, "ExecutionTime"), "30");
  EXPECT_EQ(shown(screen, "ScansPerSec"), "0.00056");
  screen.Cancel();
  EXPECT_EQ(store->Scan.ExecutionTime, 10);
}

TEST_F(ConfigScreens, ABurstBufferIsCountedAndItsFlagWarnedOf) {
  store->Flags[3].FlagInclude = kTrue;
  store->VoltBlock[1].ReverseMes = kFalse;
  store->VoltBlock[1].Integration = 20000;
  frmExecute screen(context);
  EXPECT_FALSE(usable(screen, "BurstScans"));
  check(screen, "BurstMode", true);
  type(screen, "BurstScans", "250");
  EXPECT_EQ(shown(screen, "BurstTime"), "2.5");
  type(screen, "BufferScans", "83333");  // of 3 values with 4 bytes each
  EXPECT_EQ(shown(screen, "BufferBytes"), "999,996");
  EXPECT_FALSE(screen.BufferBytes.Flashes);
  type(screen, "BufferScans", "83334");
  EXPECT_TRUE(screen.BufferBytes.Flashes);
  forms.ExpectBox(
      "FLAG INFORMATION",
      "Flag(3) was previously enabled in the Flags Setup window.\r\n"
      "The expressions set for flag(3) will not be evaluated until\r\n"
      "after the burst is finished. Therefore it is not possible for Flag(3to control the burst "
      "except manually.  This is only a warning.");
  pick(screen, "FlagScan", "3");
  pick(screen, "FlagScan", "4");
  screen.Done();
  EXPECT_EQ(store->Scan.ScanBuffer, "1");
  EXPECT_EQ(store->Scan.BurstMode, kTrue);
  EXPECT_EQ(store->Scan.FlagScan, 4);
}

TEST_F(ConfigScreens, ANewIntervalIsHeldAgainstTheTables) {
  store->Tables[1].TableOn = kTrue;
  store->Tables[1].OutInt = 25;
  frmExecute same(context);
  same.Done();
  frmExecute screen(context);
  type(screen, "ExecutionTime", "7");
  forms.ExpectBoxWith("TIMING PROBLEM 2", "TABLE 1 interval (25,000 uSecs)");
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_EQ(store->Scan.ScanBuffer, "0");
}

// ---- Flags --------------------------------------------------------------------------------------

TEST_F(ConfigScreens, AFlagNeedsAMeasurementForEachState) {
  frmFlags screen(context);
  forms.ExpectBox("VIEW CODE", "You must Include Flag 2 setup to view the code.");
  press(screen, "ViewCode2");
  check(screen, "FlagInclude2", true);
  EXPECT_EQ(shown(screen, "Message2"), " Select Measurements for State 1 && State 2.");
  pick(screen, "State1FlagVar2", "Oil");
  EXPECT_EQ(shown(screen, "Message2"), " Select a Measurement for State 2.");
  forms.ExpectBox(
      "VIEW CODE",
      "You must select a Measurement for both State 1 and State 2 to view Flag 2 code.");
  press(screen, "ViewCode2");
  pick(screen, "State1FlagCompare2", ">=");
  type(screen, "State1FlagValue2", "30");
  pick(screen, "State2FlagVar2", "Flag(1)");
  pick(screen, "State2FlagValue2", "False");
  EXPECT_EQ(shown(screen, "Message2"), "");
  EXPECT_EQ(shown(screen, "State1Lite2"), "Red");
  check(screen, "FlagOn2", false);
  EXPECT_EQ(shown(screen, "State1Lite2"), "Gray");
  forms.ExpectBox("FLAG SET CODE",
                  "If VBlk1(2) >= 30 Then\r\n    Flag(2) = False\r\n"
                  "ElseIf Flag(1) = False Then\r\n    Flag(2) = True\r\nEnd If");
  press(screen, "ViewCode2");
  screen.Done();
  const FlagControl& stored = store->Flags[2];
  EXPECT_EQ(stored.State[1].FlagVar, "Oil");
  EXPECT_EQ(stored.State[1].FlagCompare, 1);
  EXPECT_EQ(stored.State[1].FlagExpression, "VBlk1(2) >= 30");
  EXPECT_EQ(stored.State[2].FlagExpression, "Flag(1) = False");
  EXPECT_EQ(stored.FlagOn, kFalse);
}

TEST_F(ConfigScreens, SignsOfOlderProjectsStayUntilTheyAreEdited) {
  store->Flags[1].FlagInclude = kTrue;
  store->Flags[1].State[1] = {"VBlk1(3)", 1, 5, "VBlk1(3) <> 5"};
  store->Flags[1].State[2] = {"VBlk1(3)", 3, 5, "VBlk1(3) >= 5"};
  const FlagControl before = store->Flags[1];
  frmFlags screen(context);
  EXPECT_EQ(shown(screen, "State1FlagExpression1"), "VBlk1(3) <> 5");
  EXPECT_EQ(shown(screen, "State2FlagCompare1"), " >=");
  screen.Done();
  EXPECT_EQ(store->Flags[1].State[1].FlagExpression, before.State[1].FlagExpression);
  EXPECT_EQ(store->Flags[1].State[2].FlagCompare, before.State[2].FlagCompare);
}

TEST_F(ConfigScreens, ClearingAMeasurementClearsItsState) {
  store->Flags[1].State[1] = {"VBlk1(3)", 0, 5, "VBlk1(3) > 5"};
  frmFlags screen(context);
  pick(screen, "State1FlagVar1", "(None)");
  screen.Done();
  EXPECT_EQ(store->Flags[1].State[1].FlagVar, "");
  EXPECT_EQ(store->Flags[1].State[1].FlagExpression, "False");
}

TEST_F(ConfigScreens, AFlagInUseElsewhereIsAskedAboutAndFreedAtDone) {
  store->Scan.BurstMode = kTrue;
  store->Scan.FlagScan = 5;
  store->Tables[1].FlagTable = 5;
  store->Tables[4].FlagFull = 5;
  store->Tables[5].FlagMark = 6;
  store->VoltBlock[1].ZeroFlag = 5;
  frmFlags screen(context);
  forms.ExpectBoxWith("FLAG INFORMATION", "Flag(5) was previously enabled");
  forms.ExpectBox("ZERO SUBROUTINE WARNING",
                  "Tables Or Isolated Modules previously selected interact with Flag(5) may not "
                  "give the results\r\ndesired with this logic. These are selected:\r\n\r\n"
                  "Table 1 Run Flag\r\nTable 4 Full Flag\r\n\r\n"
                  "WOULD YOU LIKE THE ABOVE DISABLED NOW?",
                  Answer::kYes);
  forms.ExpectBox("ZERO SUBROUTINE WARNING",
                  "Zero subroutines previously selected to run on Flag(5) may not give the "
                  "results\r\ndesired with this logic. These are selected:\r\n\r\n"
                  "Voltage Block 1\r\n\r\nWOULD YOU LIKE THE ABOVE DISABLED NOW?",
                  Answer::kNo);
  check(screen, "FlagInclude5", true);
  screen.Done();
  EXPECT_EQ(store->Tables[1].FlagTable, 0);
  EXPECT_EQ(store->Tables[4].FlagFull, 0);
  EXPECT_EQ(store->Tables[5].FlagMark, 6);
  EXPECT_EQ(store->VoltBlock[1].ZeroFlag, 5) << "No keeps it";
}

TEST_F(ConfigScreens, OnlyAsManyFlagsAreShownAsTheUserWants) {
  options.DefaultNumFlags = 2;
  store->Flags[7].FlagInclude = kTrue;
  frmFlags screen(context);
  EXPECT_TRUE(usable(screen, "FlagInclude2"));
  EXPECT_FALSE(usable(screen, "FlagInclude3"));
  EXPECT_TRUE(usable(screen, "FlagInclude7")) << "in use";
}

// ---- Ports --------------------------------------------------------------------------------------

TEST_F(ConfigScreens, MasksReadBackInEveryForm) {
  struct Case {
    std::string_view code;
    std::string_view typed;
    std::string_view bits;
    std::string_view shown;
  };
  constexpr Case cases[] = {
      {"BIN", "1010", "00001010", "&B00001010"},
      {"BIN", "&HFF", "11111111", "&B11111111"},
      {"HEX", "1f", "00011111", "&H1F"},
      {"DEC", "255", "11111111", "255"},
      {"DEC", "256", "", ""},
      {"BIN", "2", "", ""},
      {"HEX", "&H1FF", "", ""},
      {"BIN", "&B111111111", "", ""},
      {"DEC", "", "", ""},
      {"HEX", "&B", "", ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.typed);
    const std::string bits = MaskBits(row.typed, row.code);
    EXPECT_EQ(bits, row.bits);
    if (!bits.empty()) {
      EXPECT_EQ(MaskText(bits, row.code), row.shown);
    }
  }
}

TEST_F(ConfigScreens, SinglePortsAreSetByTheirStates) {
  frmPorts screen(context);
  EXPECT_FALSE(usable(screen, "Include3")) << "a byte is selected";
  pick(screen, "ByteMode", "Bit-Write");
  EXPECT_FALSE(usable(screen, "ReadMode"));
  forms.ExpectBox("VIEW CODE", "You must Include this Port setup to view it.");
  press(screen, "ViewCode3");
  check(screen, "Include3", true);
  pick(screen, "State1MeasureVar3", "Oil");
  pick(screen, "State2MeasureVar3", "Oil");
  pick(screen, "State2Compare3", "<=");
  forms.ExpectBox("PORTSET CODE",
                  "If VBlk1(2) > 0 Then\r\n    Port(3) = True\r\nElseIf VBlk1(2) <= 0 Then\r\n"
                  "    Port(3) = False\r\nEnd If\r\nPortSet(3,Port(3))");
  press(screen, "ViewCode3");
  pick(screen, "ByteMode", "Byte");
  forms.ExpectBoxWith("PORTSET CODE", "*** Code Will Not be Generated for De-Selected Mode ***");
  press(screen, "ViewCode3");
  screen.Done();
  const PortState& second = store->Ports.Slot[0].Ports[3].State[1];
  EXPECT_EQ(second.MeasureVar, "Oil");
  EXPECT_EQ(second.Compare, 3);
  EXPECT_EQ(second.Expression, "VBlk1(2) <= 0");
}

TEST_F(ConfigScreens, AByteIsReadOrWrittenByItsMask) {
  frmPorts screen(context);
  check(screen, "Include9", true);
  pick(screen, "CodeType", "BIN");
  type(screen, "BinaryMask3", "111");
  EXPECT_EQ(store->Ports.Slot[0].BinaryMask[2], "00000111");
  pick(screen, "CodeType", "HEX");
  EXPECT_EQ(shown(screen, "BinaryMask3"), "&H7");
  control(screen, "BinaryMask3").TypeText("1FF");
  EXPECT_FALSE(screen.MoveFocus(nullptr)) << "more than eight bits";
  static_cast<TextField&>(control(screen, "BinaryMask3")).Escape();
  pick(screen, "ReadMode", "Read");
  EXPECT_FALSE(usable(screen, "BinaryMask1"));
  forms.ExpectBox("READIO CODE",
                  "ReadIO(ReadPort,&H7)\r\n"
                  "''''The I/O ports have been read into variable ReadPort. ''''");
  press(screen, "ViewCode9");
  screen.Cancel();
  EXPECT_EQ(store->Ports.Slot[0].ReadMode, 0);
}

TEST_F(ConfigScreens, MultiplexersTakeTheLastTwoPorts) {
  config().TK40MQty = 1;
  store->Ports.Slot[0].ByteMode = 0;
  frmPorts screen(context);
  EXPECT_TRUE(usable(screen, "Include6"));
  EXPECT_FALSE(usable(screen, "Include7"));
  EXPECT_FALSE(usable(screen, "State1MeasureVar8"));
  pick(screen, "ByteMode", "Byte");
  type(screen, "BinaryMask3", "&HFF");
  EXPECT_EQ(shown(screen, "BinaryMask3"), "&H3F");
}

// ---- Analog outputs -----------------------------------------------------------------------------

TEST_F(ConfigScreens, BridgesTakeOutputsFromTheLastOneDown) {
  store->BridgeBlock.BlockCount = 1;
  store->BridgeBlock[1].Reps = 1;
  store->BridgeBlock[1].CheckCAO = kTrue;
  frmExcite screen(context);
  EXPECT_EQ(shown(screen, "PortMessage1"), "Port CAO1 is free.");
  EXPECT_EQ(shown(screen, "PortMessage2"), "Port CAO2 is used by a bridge measurement.");
  EXPECT_TRUE(usable(screen, "Include1"));
  EXPECT_FALSE(usable(screen, "Include2"));
}

TEST_F(ConfigScreens, AStaticOutputIsStoredAsTheProgramReadsIt) {
  frmExcite screen(context);
  check(screen, "Include1", true);
  pick(screen, "DynamicStatic1", "Static");
  EXPECT_FALSE(usable(screen, "State21"));
  type(screen, "State11", "2500");
  check(screen, "FastDelay1", true);
  EXPECT_EQ(shown(screen, "Delay1"), "300 uSec");
  pick(screen, "CurrentOut1", "5 mAmp Max");
  forms.ExpectBox("EXCITATION CODE", "ExciteCAO(CAO1,2500,False,True)");
  press(screen, "ViewCode1");
  screen.Done();
  const ExciteChannel& channel = store->ExciteOut.Slot[0][1];
  EXPECT_EQ(channel.DynamicStatic, 1);
  EXPECT_EQ(channel.State1, 2500);
  EXPECT_EQ(channel.FastDelay, 1);
  EXPECT_EQ(channel.CurrentOut, 1);
}

TEST_F(ConfigScreens, ADynamicOutputNeedsBothExpressions) {
  frmExcite screen(context);
  check(screen, "Include2", true);
  EXPECT_FALSE(usable(screen, "ViewCode2"));
  pick(screen, "Excite1MeasVar2", "Oil");
  pick(screen, "Excite1Compare2", "<>");
  EXPECT_EQ(store->ExciteOut.Slot[0][2].Excite1Expression, "VBlk1(2) <> 0");
  const std::string box =
      "The following ports have been selected as dynamic, \r\n"
      "but there are no expressions configured for the states as shown:\r\n\r\n"
      "Module Slot 1,  Port 2,  State 2\r\n\r\n"
      "These channels will be deactivated unless expressions are defined for both states.";
  forms.ExpectBox("Port Configurations Incomplete", box, Answer::kCancel);
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kNone);
  forms.ExpectBox("Port Configurations Incomplete", box, Answer::kOk);
  screen.Done();
  EXPECT_EQ(store->ExciteOut.Slot[0][2].Include, kFalse);
}

// ---- The program --------------------------------------------------------------------------------

// What is typed on the screens is what the logger does.
class ConfigProgram : public ConfigScreens {
 protected:
  testing::Lines generate() {
    platform::PosixFileSystem files;
    platform::PosixClock clock;
    SAVEDLD generator(*store, files, clock, forms);
    return testing::LinesOf(generator.ProgramText());
  }
};

TEST_F(ConfigProgram, PowerFlagsAndOutputsAreThoseOfTheScreens) {
  {
    frmConfig screen(context);
    check(screen, "MonitorPower2", true);
    check(screen, "EnablePowerOff", true);
    pick(screen, "PowerOffMeasVar", "Oil");
    pick(screen, "PowerOffCompare", "<=");
    type(screen, "PowerOffValue", "-1.5");
    type(screen, "PowerOffTime", "2");
    pick(screen, "PowerOffMins", "Hr");
    check(screen, "EnableTime", true);
    pick(screen, "TimeOffHour", "23");
    check(screen, "EnableOnTime", false);
    type(screen, "PowerOffPOTime", "30");
    pick(screen, "PowerOnMins", "Min");
    screen.Done();
  }
  {
    frmFlags screen(context);
    check(screen, "FlagInclude4", true);
    pick(screen, "State1FlagVar4", "VBlk1(1)");
    pick(screen, "State2FlagVar4", "Flag(1)");
    check(screen, "FlagOn4", false);
    screen.Done();
  }
  {
    frmExcite screen(context);
    check(screen, "Include2", true);
    pick(screen, "DynamicStatic2", "Static");
    type(screen, "State12", "-500");
    screen.Done();
  }
  using testing::At66;
  const testing::Lines lines = generate();
  EXPECT_THAT(lines,
              ::testing::IsSupersetOf(
                  {At66("      If VBlk1(2) <= -1.5 Then", "'Test for power off"),
                   At66("         PowerOff(0,2,Hr)", "'Kill the logger, restart in 2 Hr"),
                   At66("      If StopTime(4) = 23 Then", "'Hour"),
                   At66("         PowerOff(0,30,Min)", "'Kill the logger"),
                   At66("      If VBlk1(1) > 0 Then", "'Test measurement"),
                   At66("         Flag(4) = False", "'Flag(4) if test condition is true"),
                   At66("      ElseIf Flag(1) = True Then", "'Other condition"),
                   At66("      ExciteCAO(CAO2,-500,True,False)", "'Set excitation channel")}));
  EXPECT_THAT(lines, ::testing::Not(::testing::Contains(::testing::HasSubstr("If StopTime(1)"))));
}

}  // namespace
}  // namespace ostrand
