// The logger's own screens as a person goes through them: configuration, scan, flags, ports and
// analog outputs, and what the program gets of it.
#include <gmock/gmock.h>

#include "generator/generated.h"
#include "model/defaults.h"
#include "model/port_mask.h"
#include "setup/config_moment.h"
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

TEST_F(ConfigScreens, MoreMultiplexersAskForPortsAndForChannels) {
  store->Ports.Slot[0].Ports[3].Include = kTrue;
  store->Ports.Slot[0].Ports[8].Include = kTrue;
  store->Ports.Slot[1].Ports[8].Include = kTrue;
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
  EXPECT_EQ(store->Ports.Slot[1].Ports[8].Include, kTrue) << "C7 and C8 are of the first group";
}

TEST_F(ConfigScreens, TheLastMultiplexerTakesItsBlocksWithIt) {
  config().TK40MQty = 2;
  config().TcConfigOpts[1] = 1;
  store->TK40MBlock.BlockCount = 1;
  store->TK40MBlock[1].Reps = 5;
  frmConfig screen(context);
  for (const Answer answer : {Answer::kNo, Answer::kYes}) {
    type(screen, "TK40MQty", "0");
    forms.ExpectBoxWith("Delete TK40M?", "Warning:\r\n", answer);
    screen.Done();
    EXPECT_EQ(config().TK40MQty, answer == Answer::kYes ? 0 : 2);
  }
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_EQ(store->TK40MBlock.BlockCount, 0);
  EXPECT_EQ(store->TK40MBlock[1].Reps, 0);
  EXPECT_EQ(config().TcConfigOpts[1], 0);
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

TEST_F(ConfigScreens, ACardThatGoesMovesTheTablesAtDone) {
  config().SizeCard = 64;
  store->Tables[2].TableLocation = 2;
  store->Tables[3].FlagMark = 4;
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
  pick(screen, "SizeCardUnits", "M bytes");  // without asking again
  EXPECT_EQ(store->Tables[2].TableLocation, 2) << "not before Done";
  screen.Done();
  EXPECT_EQ(store->Tables[2].TableLocation, 1);
  EXPECT_EQ(store->Tables[3].FlagMark, 0) << "of all tables";

  store->Tables[3].FlagMark = 4;
  frmConfig again(context);
  type(again, "SizeCard", "0");
  again.Done();
  EXPECT_EQ(store->Tables[3].FlagMark, 4) << "no table was on the card";
}

TEST_F(ConfigScreens, ABatterySaverThatDoesNotRetryHasNoInterval) {
  frmConfig screen(context);
  EXPECT_FALSE(usable(screen, "DoNotRetry"));
  check(screen, "MonitorPower3", true);
  control(screen, "RetryInterval").Spin(true);
  check(screen, "DoNotRetry", true);
  EXPECT_EQ(config().LowBattRetry, kFalse);
  EXPECT_EQ(config().RetryInterval, 0) << "an interval would switch it on again";
  check(screen, "DoNotRetry", false);
  EXPECT_EQ(config().RetryInterval, 1);
  check(screen, "DefaultBattVolt", false);
  type(screen, "BattTripVolts", "13.86");
  EXPECT_EQ(config().BattTripVolts, 13.9F);
  check(screen, "DefaultBattVolt", true);
  EXPECT_EQ(config().BattTripVolts, 11.5F);
}

TEST_F(ConfigScreens, StatusRowsAreKeptAsTheProgramReadsThem) {
  frmConfig screen(context);
  check(screen, "MonitorPower5", true);
  pick(screen, "StatusCompare", ">=");
  pick(screen, "StatusFlag", "3");
  pick(screen, "StatTrueFalse", "False");
  press(screen, "AddStatus");
  pick(screen, "StatTrueFalse", "True");
  for (int row = 2; row <= kStatusRows; ++row) press(screen, "AddStatus");
  EXPECT_FALSE(usable(screen, "AddStatus")) << "eleven rows are all";
  EXPECT_EQ(config().Status[1][2], ">=");
  EXPECT_EQ(config().Status[1][4], "3 F");
  EXPECT_EQ(config().Status[11][4], "3 T");
  control(screen, "StatusRows").Pick("Status.SkippedScan(1,1)  >=  0  3 F");
  press(screen, "DeleteStatus");
  EXPECT_EQ(config().StatusMonCount, 10);
  check(screen, "MonitorPower2", true);
  check(screen, "EnablePowerOff", true);
  pick(screen, "PowerOffMeasVar", "Status.SkippedScan(1,1)");  // is a variable at once
  EXPECT_EQ(config().Status[1][4], "3 T");
}

TEST_F(ConfigScreens, PowerOffNamesTheVariableAndShowsTheAlias) {
  frmConfig screen(context);
  check(screen, "MonitorPower2", true);
  check(screen, "EnablePowerOff", true);
  EXPECT_EQ(shown(screen, "PowerOffMins"), "Day") << "raised from what no list shows";
  pick(screen, "PowerOffMeasVar", "Oil");
  pick(screen, "PowerOffMins", "Min");
  EXPECT_EQ(shown(screen, "PowerOffCode"), "If Oil < 0 Then PowerOff (0,0,Min)");
  EXPECT_EQ(config().PowerOffLine, "If VBlk1(2) < 0 Then");
  EXPECT_EQ(config().PowerOffMeasVar, "Oil");
  EXPECT_EQ(config().PowerOffMins, 2);
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

TEST_F(ConfigScreens, CancelTakesBackAlsoWhatOtherScreensWereOpenedFor) {
  frmConfig screen(context);
  host.scenes.push_back([](Screen& output) {
    EXPECT_EQ(output.Name(), "frmPortTables");
    check(output, "Public", true);
    output.Done();
  });
  check(screen, "MonitorPower1", true);
  EXPECT_EQ(store->PowerOut.Public, kTrue);
  check(screen, "MonitorPower2", true);
  type(screen, "TK40MQty", "3");
  screen.Cancel();
  EXPECT_EQ(config().MonitorPower[kMonitorBattery], kFalse);
  EXPECT_EQ(store->PowerOut.Public, kFalse);
  EXPECT_EQ(config().TK40MQty, 0);
  EXPECT_EQ(config().PowerOnMins, 0) << "nor is a unit raised";
}

// ---- Scan ---------------------------------------------------------------------------------------

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
  forms.ExpectBoxWith("FLAG INFORMATION", "Flag(3) was previously enabled");
  forms.ExpectBoxWith("FLAG INFORMATION", "settings:\r\nFlags Setup\r\nScan Burst");
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

TEST_F(ConfigScreens, StatesStartWithTheirComparisonsAndGoBackToThem) {
  frmFlags screen(context);
  pick(screen, "State1FlagVar2", "Oil");
  pick(screen, "State2FlagVar2", "Oil");
  EXPECT_EQ(shown(screen, "State1FlagCompare2"), " >=");
  EXPECT_EQ(shown(screen, "State2FlagCompare2"), " <");
  pick(screen, "State2FlagCompare2", "<=");
  const auto& states = store->Flags[2].State;
  EXPECT_EQ(states[1].FlagVar, "Oil");
  EXPECT_EQ(states[1].FlagExpression, "VBlk1(2) >= 0");
  EXPECT_EQ(states[2].FlagCompare, 3);
  pick(screen, "State2FlagVar2", "(None)");
  EXPECT_EQ(states[2].FlagVar, "");
  EXPECT_EQ(states[2].FlagCompare, 2);
  EXPECT_EQ(states[2].FlagExpression, "False");
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
  check(screen, "FlagInclude7", false);
  EXPECT_TRUE(usable(screen, "FlagInclude7")) << "was in use";
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
      EXPECT_EQ(PortMaskText(bits, row.code), row.shown);
    }
  }
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
    check(screen, "FastDelay2", true);
    pick(screen, "CurrentOut2", "5 mAmp Max");
    screen.Done();
  }
  {
    frmPorts screen(context);
    pick(screen, "ByteMode", "Bit-Write");
    check(screen, "Include3", true);
    pick(screen, "State1MeasureVar3", "Oil");
    pick(screen, "State2MeasureVar3", "Oil");
    check(screen, "Polarity3", false);
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
                   At66("      If VBlk1(1) >= 0 Then", "'Test measurement"),
                   At66("         Flag(4) = False", "'Flag(4) if test condition is true"),
                   At66("      ElseIf Flag(1) = True Then", "'Other condition"),
                   At66("      ElseIf VBlk1(2) < 0 Then", "'Other condition"),
                   At66("         Port(3) = False", "'Port 3 if test condition is true"),
                   At66("      ExciteCAO(CAO2,-500,False,True)", "'Set excitation channel")}));
  EXPECT_THAT(lines, ::testing::Not(::testing::Contains(::testing::HasSubstr("If StopTime(1)"))));
}

}  // namespace
}  // namespace ostrand
