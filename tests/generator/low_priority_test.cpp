#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class LowPriorityTest : public Generated {
 protected:
  LowPriorityTest() {
    store.Scan.ExecutionTime = 2;
    store.Scan.ExecTimeUnits = 2;
  }
  CanItemData& Item(int i, const char* name, int timeout) {
    store.Config.CanBusQty = 1;
    store.Can.Module[1].CanBusEnabled = 1;
    store.Can.CanCount = static_cast<i16>(i);
    CanItemData& item = store.Can.Item[i];
    item.Name = name;
    item.ItemMessageType = 1;
    item.TxDataFrame = "&H02010C0000000000";
    item.RxDataMatch = "&HXXXXxx0C41xxXX07";
    item.RxTimeout = timeout;
    return item;
  }
  const std::string hyphens = "'" + std::string(62, '-');
};

// A day of the week stands for the date; the flag of older projects counts in minutes.
TEST_F(LowPriorityTest, PowerControl) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorPowerControl] = config.EnablePowerOff = config.EnableTime = kTrue;
  config.TimeOffWkDayShow = kTrue;
  config.TimeOffWkDay = 7;
  config.TimeOffMinShow = config.EnableOnTime = kFalse;
  config.PowerOffLine = "If BattVolt < 11 Then";
  config.PowerOffTime = config.PowerOffPOTime = 4;
  config.PowerOffMins = 1;
  config.PowerOnMins = kTrue;
  Run();
  ExpectText("|   '" + std::string(25, '\\') + " LOW PRIORITY " + std::string(25, '/') +
             "||   'BackgroundSequence|   SlowSequence~'Used for slow measurements||"
             "   Dim StopTime(9)~'Dimension StopTime|   'SlowSequence Scan|   " +
             hyphens + "|   Scan(2,Sec,0,0)~'Scan once every 2 seconds|" +
             Bars("   ", 18, " Conditional Power Off ") +
             "|      If BattVolt < 11 Then~'Test for "
             "power off|         PowerOff(0,4,Hr)~'Kill the logger, restart in 4 Hr"
             "|      End If~'End of If||" +
             Bars("   ", 21, " Timed Power Off ") +
             "|      RealTime(StopTime)~'Populate StopTime with current time"
             "|      If StopTime(8) = 7 Then~'Day of week|         If StopTime(4) = 0 Then~'Hour"
             "|            If StopTime(6) = 0 Then~'Second"
             "|               PowerOff(0,4,Min)~'Kill the logger|            End If~'End of Second"
             "|         End If~'End of Hour|      End If~'End of Day of Week|   " +
             hyphens + "|" + kNextScan + "|" + kEndProg);
}

// Without a time to test, the logger is killed at the place of the first test.
TEST_F(LowPriorityTest, WakingUp) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorPowerControl] = config.EnablePowerOff = config.EnableTime = kTrue;
  config.TimeOffYearShow = config.TimeOffMonthShow = config.TimeOffDayShow = kFalse;
  config.TimeOffHourShow = config.TimeOffMinShow = config.TimeOffSecShow = kFalse;
  config.EnableOnTime = kFalse;
  config.PowerOffTime = 5;
  config.PowerOffPOTime = 6;
  const char* units[] = {"Day", "Hr", "Min", "Sec", "Min"};
  for (i16 code = 0; code <= 4; ++code) {
    config.PowerOffMins = config.PowerOnMins = code;
    const std::string unit = units[code];
    Run();
    ExpectText("         PowerOff(0,5," + unit + ")~'Kill the logger, restart in 5 " + unit);
    ExpectText("      PowerOff(0,6," + unit + ")~'Kill the logger|   " + hyphens);
  }
  config.RemainOff = config.RemainPOOff = config.EnableOnTime = kTrue;
  Run();
  ExpectText("         PowerOff(0,0,0)~'Kill the logger, do not restart");
  ExpectText("      PowerOff(StartTime,0,0)~'Kill the logger|   " + hyphens);
}

// A status test of 65 characters touches its comment, a longer one leaves one blank.
TEST_F(LowPriorityTest, StatusMonitor) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorStatus] = kTrue;
  config.StatusMonCount = 3;
  const std::string longest(43, 's');
  const std::string longer = longest + "s";
  const char* entries[][4] = {{"Errors", ">", " 0.50", "3T"},
                              {longest.c_str(), "<>", "", "8F"},
                              {longer.c_str(), "<>", "x", "1"}};
  for (int i = 1; i <= 3; ++i) {
    for (int k = 1; k <= 4; ++k) config.Status[i][k] = entries[i - 1][k - 1];
  }
  Run();
  ExpectText(
      "      CountSlow = CountSlow + 1~'Increment counter"
      "|      If CountSlow >= 30 Then~'Test counter|         CountSlow = 0~'Reset counter|" +
      Bars("   ", 22, " Monitor Status ") +
      "|         If Errors > 0.5 Then~'Status field being tested"
      "|            Flag(3) = True~'Flag(3) is set True|         End If~'End of If"
      "|         If " +
      longest +
      " <> 0 Then'Status field being tested"
      "|            Flag(8) = False~'Flag(8) is set False|         End If~'End of If"
      "|         If " +
      longest +
      "s <> 0 Then 'Status field being tested"
      "|            Flag(1) = ~'Flag(1) is set |         End If~'End of If|         '" +
      std::string(64, '-') + "|      End If~'End of If|" + kNextScan);
}

// Quotients of 60 by the period, rounded half to even first.
TEST_F(LowPriorityTest, PeriodOfTheSlowScan) {
  store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  for (const auto& [seconds, scan, scans] :
       {std::tuple{0.5F, "   Scan(1,Sec,0,0)~'Scan once every 1 second", 60},
        {2.5F, "   Scan(2.5,Sec,0,0)~'Scan once every 2.5 seconds", 30},
        {7.0F, "   Scan(7,Sec,0,0)~'Scan once every 7 seconds", 8},
        {100.0F, "   Scan(100,Sec,0,0)~'Scan once every 100 seconds", 0}}) {
    store.Scan.ExecutionTime = seconds;
    Run();
    ExpectText(scan);
    ExpectText("      If CountSlow >= " + std::to_string(scans) + " Then~'Test counter");
  }
}

// Items 1 and 3 share an exchange, and 4 too but for its type: its time-out still counts.
TEST_F(LowPriorityTest, CanLoops) {
  Item(1, "Rpm", 50);
  Item(2, "Other", 139).RxDataMatch = "&hxxxxxxxxxxxxxxxx";
  Item(3, "Load", 1000).Alias[1].AliasExcept = "2";
  store.Can.Item[3].Enabled = 0;
  Item(4, "Read", 2000).ItemMessageType = 0;
  store.Can.Module[1].CanDataIDType = 0;
  Run();
  EXPECT_EQ(store.Can.Item[1].RxTimeout, 2000);
  const std::string bus = "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,-0,";
  const std::string line = "|      " + hyphens;
  const auto loop = [&](const std::string& i, const std::string& match, const std::string& test) {
    return "||      'TxRx CANBUS Loop #" + i + line +
           "|      'TxDataFrame is &H02010C0000000000"
           "|      ByteTx(8)=&H02 : ByteTx(7)=&H01 : ByteTx(6)=&H0C : ByteTx(5)=&H00 : "
           "ByteTx(4)=&H00 : ByteTx(3)=&H00 : ByteTx(2)=&H00 : ByteTx(1)=&H00|      Canbus(ByteTx" +
           bus + "19,1,8,8,1,0)|      For idx=0 to NumRxReads(" + i +
           ")~'Look for the Rx that matches the Tx multiple times"
           "|         Delay(1,CANDelay,mSec)~'Wait for 20msec - timing issue|         "
           "Canbus(ByteRx" +
           bus +
           "1,1,8,8,1,0)|         'Check the Rx value just obtained; if it matches, then "
           "decode it|         'RxDataMatch is " +
           match + "|         " + test + " Then";
  };
  const auto decoding = [&](const std::string& name, const std::string& scaling) {
    return "|            Canbus(" + name + bus + name + "DataType," + name + "StartBit," + name +
           "NumBits," + name + "NumVals," + scaling + ")";
  };
  const std::string end =
      "|            ExitFor~|         EndIf~|      Next idx~'Return for next "
      "time through the loop";
  ExpectText(
      "   NumRxReads(1) = 100~'Execute 100 Rx reads for Tx #1|   NumRxReads(2) = 6~'Execute 6"
      " Rx reads for Tx #2|   NumRxReads(3) = 50~'Execute 50 Rx reads for Tx #3||   Do~'With "
      "CANBUS TxRx, we need multiple,repeating scans||      'Classic Slow Sequence Scan" +
      line + "|      'No classic slow sequence measurements|" + line +
      "|      'CANBUS TxRx Measurement Loops" + line +
      loop("1", "&HXXXXxx0C41xxXX07",
           "If (ByteRx(1) = &H07) And (ByteRx(4) = &H41) And (ByteRx(5) = &H0C)") +
      decoding("Rpm", "RpmMult,RpmOSet") + decoding("Load", "MCBlk3(),OCBlk3()") + end +
      loop("2", "&hxxxxxxxxxxxxxxxx", "If true ") + decoding("Other", "OtherMult,OtherOSet") + end +
      "||   Loop~'Loop back to the \"DO\" : With CANBUS TxRx, we need multiple,"
      "repeating scans||" +
      kEndProg);
}

// Beside the loops the classic scan is as short as the main scan, but no shorter than 100 ms.
TEST_F(LowPriorityTest, ClassicScanBesideCanLoops) {
  Item(1, "Rpm", 1000);
  store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  store.Scan.ExecTimeUnits = 1;
  for (const auto& [millis, scan] : {std::pair{200.0F, "100"}, {250.5F, "250"}}) {
    store.Scan.ExecutionTime = millis;
    Run();
    ExpectText("      " + hyphens + "|      " + hyphens + "|      Scan(" + scan +
               ",mSec,0,1)~'Scan once during every \"Do\" loop");
  }
  ExpectText("            End If~'End of If CountAvg|      End If~'End of If|   " +
             std::string(kNextScan));
}

// The scan has its title where no CAN item is asked for, and behind a slow main scan only where CAN
// is neither there nor enabled. Without the module nothing loops.
TEST_F(LowPriorityTest, TitleOfTheScanAndTheCanModule) {
  Item(1, "Rpm", 1000);
  store.Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  const std::string fast = "   Scan(1,Sec,0,0)~'Scan once every 1 second";
  const std::string slow = "   Scan(2,Sec,0,0)~'Scan once every 2 seconds";
  struct Case {
    float seconds;
    int modules, enabled, messageType;
    bool titled;
  };
  for (const Case& c : {Case{1, 1, 1, 0, true}, Case{1, 0, 1, 1, false}, Case{1, 1, 0, 1, false},
                        Case{2, 0, 0, 1, true}, Case{2, 1, 0, 0, false}, Case{2, 0, 1, 0, false},
                        Case{2, 1, 1, 0, false}}) {
    store.Scan.ExecutionTime = c.seconds;
    store.Config.CanBusQty = static_cast<i16>(c.modules);
    store.Can.Module[1].CanBusEnabled = static_cast<i16>(c.enabled);
    store.Can.Item[1].ItemMessageType = static_cast<i16>(c.messageType);
    Run();
    ExpectText("   Dim CountAvg~'Dimension CountAvg|" +
               std::string(c.titled ? "   'SlowSequence Scan|   " : "   ") + hyphens + "|" +
               (c.seconds > 1 ? slow : fast));
    EXPECT_FALSE(AnyHolds("NumRxReads"));
  }
  store.Config.MonitorPower[kMonitorBatterySaver] = kFalse;
  store.Config.CanBusQty = 0;
  store.Can.Item[1].ItemMessageType = 1;
  Run();
  ExpectText(
      "   SlowSequence~'Used for slow measurements||   'No classic slow sequence "
      "measurements|" +
      std::string(kEndProg));
}

TEST_F(LowPriorityTest, AStatusMonitorWithoutEntriesIsNone) {
  store.Config.MonitorPower[kMonitorStatus] = kTrue;
  Run();
  EXPECT_FALSE(AnyHolds("SlowSequence"));
}

// An item that is off or has no values is counted among those asked for, but it has no loop.
TEST_F(LowPriorityTest, ItemsWithoutALoop) {
  for (const auto& [values, enabled] : {std::pair<i16, i16>{0, 1}, {1, 0}}) {
    CanItemData& item = Item(1, "Rpm", 1000);
    item.Reps = values;
    item.Enabled = enabled;
    Run();
    ExpectText(
        "   NumRxReads(1) = 50~'Execute 50 Rx reads for Tx #1||   Do~'With CANBUS TxRx, we "
        "need multiple,repeating scans");
    ExpectText("      'CANBUS TxRx Measurement Loops|      " + hyphens +
               "||   Loop~'Loop back to the \"DO\" : With CANBUS TxRx, we need multiple,repeating "
               "scans");
  }
}

TEST_F(LowPriorityTest, AFailureLeavesTheEndOfTheProgram) {
  Item(1, "Rpm", 1000).TxDataFrame = "&H1234";
  ExpectFault(5, kBadCall, "LowPriority");
  Run();
  ExpectText("      'TxDataFrame is &H1234|" + std::string(kEndProg));
}

}  // namespace
}  // namespace ostrand::testing
