#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class LowPriorityTest : public Generated {
 protected:
  LowPriorityTest() {
    store.Scan.ExecutionTime = 2;
    store.Scan.ExecTimeUnits = 2;
  }
  CanItemData& Item(int i, const char* name) {
    store.Config.CanBusQty = 1;
    store.Can.Module[1].CanBusEnabled = 1;
    store.Can.CanCount = static_cast<i16>(i);
    CanItemData& item = store.Can.Item[i];
    item.Name = name;
    item.ItemMessageType = 1;
    item.TxDataId = "&H7DF";
    item.DataId = "2024";
    item.TxDataFrame = "&H02010C0000000000";
    return item;
  }
  static std::string Title(int indent, std::size_t bar, const std::string& text) {
    return std::string(static_cast<std::size_t>(indent), ' ') + "'" + std::string(bar, '_') + text +
           std::string(bar, '_');
  }
};

const std::string kHyphens = "'" + std::string(62, '-');
const Lines kHead = {"",
                     "   '" + std::string(25, '\\') + " LOW PRIORITY " + std::string(25, '/'),
                     "",
                     "   'BackgroundSequence",
                     At66("   SlowSequence", "'Used for slow measurements"),
                     ""};
const std::string kEnd = At66("EndProg", "'Program ends here");

Lines Joined(Lines first, const Lines& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST_F(LowPriorityTest, NothingToDo) {
  store.Config.MonitorPower[kMonitorBattery] = kTrue;
  store.Config.MonitorPower[kMonitorStatus] = kTrue;  // without an entry
  Run();
  ExpectRun({At66("   Next Scan", "'Loop up for the next scan"), kEnd});
}

TEST_F(LowPriorityTest, PowerControl) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorPowerControl] = kTrue;
  config.EnablePowerOff = kTrue;
  config.PowerOffLine = "If BattVolt < 11 Then";
  config.PowerOffTime = 4;
  config.PowerOffMins = 1;
  config.EnableTime = kTrue;
  config.TimeOnYear = 2027;
  config.TimeOnSec = 9;
  config.TimeOffYearShow = config.TimeOffDayShow = config.TimeOffMinShow = kFalse;
  config.TimeOffMonth = 12;
  config.TimeOffHour = 18;
  config.RemainPOOff = kTrue;
  Run();
  const Lines declarations = {At66("   Dim StopTime(9)", "'Dimension StopTime"),
                              At66("   Dim StartTime(6)", "'Dimension StartTime"),
                              At66("   StartTime(1) = 2027", "'Year"),
                              At66("   StartTime(2) = 0", "'Month"),
                              At66("   StartTime(3) = 0", "'Day"),
                              At66("   StartTime(4) = 0", "'Hour"),
                              At66("   StartTime(5) = 0", "'Minute"),
                              At66("   StartTime(6) = 9", "'Second")};
  const Lines jobs = {"   'SlowSequence Scan",
                      "   " + kHyphens,
                      At66("   Scan(2,Sec,0,0)", "'Scan once every 2 seconds"),
                      Title(3, 18, " Conditional Power Off "),
                      At66("      If BattVolt < 11 Then", "'Test for power off"),
                      At66("         PowerOff(0,4,Hr)", "'Kill the logger, restart in 4 Hr"),
                      At66("      End If", "'End of If"),
                      "",
                      Title(3, 21, " Timed Power Off "),
                      At66("      RealTime(StopTime)", "'Populate StopTime with current time"),
                      At66("      If StopTime(2) = 12 Then", "'Month"),
                      At66("         If StopTime(4) = 18 Then", "'Hour"),
                      At66("            If StopTime(6) = 0 Then", "'Second"),
                      At66("               PowerOff(StartTime,0,0)", "'Kill the logger"),
                      At66("            End If", "'End of Second"),
                      At66("         End If", "'End of Hour"),
                      At66("      End If", "'End of Month"),
                      "   " + kHyphens,
                      At66("   Next Scan", "'Loop up for the next scan"),
                      kEnd};
  ExpectRun(Joined(Joined(kHead, declarations), jobs));

  // A day of the week stands for the date; no start time, so the logger comes back after a while.
  config.TimeOffWkDayShow = kTrue;
  config.TimeOffWkDay = 7;
  config.TimeOffHourShow = config.TimeOffSecShow = kFalse;
  config.EnableOnTime = kFalse;
  config.RemainPOOff = kFalse;
  config.PowerOffPOTime = 30;
  config.PowerOnMins = kTrue;  // the flag of older projects
  config.RemainOff = kTrue;
  Run();
  EXPECT_EQ(Count(At66("         PowerOff(0,0,0)", "'Kill the logger, do not restart")), 1);
  ExpectRun({At66("      If StopTime(8) = 7 Then", "'Day of week"),
             At66("         PowerOff(0,30,Min)", "'Kill the logger"),
             At66("      End If", "'End of Day of Week"), "   " + kHyphens});
  EXPECT_EQ(Count(At66("   Dim StartTime(6)", "'Dimension StartTime")), 0);
}

TEST_F(LowPriorityTest, BatterySaverAndStatusMonitor) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorBatterySaver] = kTrue;
  config.RetryInterval = 6;
  config.BattRetryMins = kFalse;
  config.MonitorPower[kMonitorStatus] = kTrue;
  config.StatusMonCount = 3;
  config.Status[1][1] = "Status.WatchdogErrors";
  config.Status[1][2] = ">";
  config.Status[1][3] = " 0.50";
  config.Status[1][4] = "3T";
  config.Status[2][1] = std::string(45, 's');  // 65 characters with what stands around it
  config.Status[2][2] = "<>";
  config.Status[2][3] = "";
  config.Status[2][4] = "8 F";
  config.Status[3][1] = std::string(46, 's');
  config.Status[3][2] = "<>";
  config.Status[3][4] = "1";
  store.Scan.ExecutionTime = 0.5F;
  Run();
  const Lines expected = {
      At66("   Dim CountSlow", "'Dimension CountSlow"),
      At66("   Dim TripVolt", "'Dimension TripVolt"),
      At66("   Dim CountAvg", "'Dimension CountAvg"),
      "   'SlowSequence Scan",
      "   " + kHyphens,
      At66("   Scan(1,Sec,0,0)", "'Scan once every 1 second"),
      At66("      Battery(TripVolt)", "'Battery voltage measurement"),
      At66("      CountSlow = CountSlow + 1", "'Increment counter"),
      At66("      If CountSlow >= 60 Then", "'Test counter"),
      At66("         CountSlow = 0", "'Reset counter"),
      Title(3, 22, " Battery Saver "),
      At66("         AvgRun(TripVolt,1,TripVolt,10)", "'Running average (10 mins) of TripVolt"),
      At66("         CountAvg = CountAvg + 1", "'Increment CountAvg"),
      At66("         If CountAvg > 9 Then", "'Test TripVolt after 10 AvgRun inputs"),
      At66("            CountAvg = 0", "'Reset AvgCount after it equals 10"),
      At66("            If TripVolt < 11.5 Then", "'Test for less than 11.5 volts"),
      At66("               PowerOff(0,6,Hr)", "'Kill the Logger"),
      At66("            End If", "'End of If TripVolt"),
      At66("         End If", "'End of If CountAvg"),
      Title(3, 22, " Monitor Status "),
      At66("         If Status.WatchdogErrors > 0.5 Then", "'Status field being tested"),
      At66("            Flag(3) = True", "'Flag(3) is set True"),
      At66("         End If", "'End of If"),
      "         If " + std::string(45, 's') + " <> 0 Then'Status field being tested",
      At66("            Flag(8) = False", "'Flag(8) is set False"),
      At66("         End If", "'End of If"),
      "         If " + std::string(46, 's') + " <> 0 Then 'Status field being tested",
      At66("            Flag(1) = ", "'Flag(1) is set "),
      At66("         End If", "'End of If"),
      "         '" + std::string(64, '-'),
      At66("      End If", "'End of If"),
      At66("   Next Scan", "'Loop up for the next scan"),
      kEnd};
  ExpectRun(Joined(kHead, expected));
}

TEST_F(LowPriorityTest, PeriodOfTheSlowScan) {
  struct Case {
    float time;
    int units;
    std::string scan, counter;
  };
  const Case cases[] = {{1, 2, "Scan(1,Sec,0,0)", "60"},      {1.5F, 2, "Scan(1.5,Sec,0,0)", "30"},
                        {2.5F, 2, "Scan(2.5,Sec,0,0)", "30"}, {7, 2, "Scan(7,Sec,0,0)", "8"},
                        {100, 2, "Scan(100,Sec,0,0)", "0"},   {1, 3, "Scan(60,Sec,0,0)", "1"}};
  store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  for (const Case& c : cases) {
    store.Scan.ExecutionTime = c.time;
    store.Scan.ExecTimeUnits = static_cast<i16>(c.units);
    Run();
    EXPECT_EQ(
        std::count_if(program.begin(), program.end(),
                      [&](const std::string& line) { return line.starts_with("   " + c.scan); }),
        1)
        << c.scan;
    EXPECT_EQ(Count(At66("      If CountSlow >= " + c.counter + " Then", "'Test counter")), 1);
  }
}

// Items 1 and 3 share an exchange, and 4 too but for its type; its time-out still counts.
TEST_F(LowPriorityTest, CanLoops) {
  Item(1, "Rpm").RxDataMatch = "&HXXXXxx0C41xxXX07";
  store.Can.Item[1].RxTimeout = 50;
  Item(2, "Other").RxDataMatch = "&hxxxxxxxxxxxxxxxx";
  store.Can.Item[2].RxTimeout = 139;
  Item(3, "Load").RxDataMatch = "&HXXXXxx0C41xxXX07";
  store.Can.Item[3].Alias[1].AliasExcept = "2";
  store.Can.Item[3].Enabled = 0;
  Item(4, "Read").RxDataMatch = "&HXXXXxx0C41xxXX07";
  store.Can.Item[4].ItemMessageType = 0;
  store.Can.Item[4].RxTimeout = 2000;
  store.Can.Module[1].CanDataIDType = 0;
  Run();
  EXPECT_EQ(store.Can.Item[1].RxTimeout, 2000);
  const std::string bus = "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,-";
  const std::string hyphens = "      " + kHyphens;
  const auto loop = [&](const std::string& i, const std::string& match, const std::string& test,
                        const Lines& decodings) {
    Lines lines = {"",
                   "      'TxRx CANBUS Loop #" + i,
                   hyphens,
                   "      'TxDataFrame is &H02010C0000000000",
                   "      ByteTx(8)=&H02 : ByteTx(7)=&H01 : ByteTx(6)=&H0C : ByteTx(5)=&H00 : "
                   "ByteTx(4)=&H00 : ByteTx(3)=&H00 : ByteTx(2)=&H00 : ByteTx(1)=&H00",
                   "      Canbus(ByteTx" + bus + "&H7DF,19,1,8,8,1,0)",
                   At66("      For idx=0 to NumRxReads(" + i + ")",
                        "'Look for the Rx that matches the Tx multiple times"),
                   At66("         Delay(1,CANDelay,mSec)", "'Wait for 20msec - timing issue"),
                   "         Canbus(ByteRx" + bus + "2024,1,1,8,8,1,0)",
                   "         'Check the Rx value just obtained; if it matches, then decode it",
                   "         'RxDataMatch is " + match,
                   "         " + test + " Then"};
    lines = Joined(lines, decodings);
    return Joined(lines, {At66("            ExitFor", ""), At66("         EndIf", ""),
                          At66("      Next idx", "'Return for next time through the loop")});
  };
  const auto decoding = [&](const std::string& name, const std::string& scaling) {
    return "            Canbus(" + name + bus + "2024," + name + "DataType," + name + "StartBit," +
           name + "NumBits," + name + "NumVals," + scaling + ")";
  };
  Lines expected = Joined(
      kHead,
      {At66("   Dim idx", "'Index for looping through Rx Retries"),
       At66("   Dim NumRxReads(4)", "'Number of Rx Reads to perform for each CAN item"),
       At66("   Public ByteTx(8),ByteRx(8)", "'Intermediate Transmit and Receive placeholders"),
       At66("   Const CANDelay = 20", "'Delay in mSec for each CAN TxRx Loop : 20"),
       At66("   NumRxReads(1) = 100", "'Execute 100 Rx reads for Tx #1"),
       At66("   NumRxReads(2) = 6", "'Execute 6 Rx reads for Tx #2"),
       At66("   NumRxReads(3) = 50", "'Execute 50 Rx reads for Tx #3"), "",
       At66("   Do", "'With CANBUS TxRx, we need multiple,repeating scans"), "",
       "      'Classic Slow Sequence Scan", hyphens, "      'No classic slow sequence measurements",
       "", hyphens, "      'CANBUS TxRx Measurement Loops", hyphens});
  expected = Joined(
      expected, loop("1", "&HXXXXxx0C41xxXX07",
                     "If (ByteRx(1) = &H07) And (ByteRx(4) = &H41) And (ByteRx(5) = &H0C)",
                     {decoding("Rpm", "RpmMult,RpmOSet"), decoding("Load", "MCBlk3(),OCBlk3()")}));
  expected = Joined(expected, loop("2", "&hxxxxxxxxxxxxxxxx", "If true ",
                                   {decoding("Other", "OtherMult,OtherOSet")}));
  expected =
      Joined(expected,
             {"",
              At66("   Loop",
                   "'Loop back to the \"DO\" : With CANBUS TxRx, we need multiple,repeating scans"),
              "", kEnd});
  ExpectRun(expected);
}

// Beside the loops the classic scan is as short as the main scan, but no shorter than 100 ms.
TEST_F(LowPriorityTest, ClassicScanBesideCanLoops) {
  Item(1, "Rpm");
  store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  const std::string comment = "'Scan once during every \"Do\" loop";
  for (const auto& [millis, scan] :
       {std::pair{200.0F, "100"}, {250.5F, "250"}, {1000.0F, "1000"}}) {
    store.Scan.ExecutionTime = millis;
    store.Scan.ExecTimeUnits = 1;
    Run();
    ExpectRun({"      'Classic Slow Sequence Scan", "      " + kHyphens, "      " + kHyphens,
               At66("      Scan(" + std::string(scan) + ",mSec,0,1)", comment),
               At66("         Battery(TripVolt)", "'Battery voltage measurement")});
  }
  ExpectRun({At66("         End If", "'End of If CountAvg"), At66("      End If", "'End of If"),
             At66("      Next Scan", "'Loop up for the next scan")});
}

TEST_F(LowPriorityTest, AFailureLeavesTheEndOfTheProgram) {
  Item(1, "Rpm").TxDataFrame = "&H1234";
  ExpectFault(5, "Invalid procedure call or argument", "LowPriority");
  Run();
  ExpectRun({"      'TxDataFrame is &H1234", kEnd, "", "'***** Program End *****"});
  store.Can.CanCount = 0;
  store.Config.MonitorPower[kMonitorPowerControl] = kTrue;
  store.Config.EnablePowerOff = kTrue;
  store.Config.PowerOffLine = std::string(60, 'x');
  ExpectFault(5, "Invalid procedure call or argument", "LowPriority");
  Run();
  ExpectRun({Title(3, 18, " Conditional Power Off "), kEnd});
}

}  // namespace
}  // namespace ostrand::testing
