// The slow sequence that runs in parallel with the main scan: power control, battery saver, status
// monitor, and the loops of CAN items that are requested.
#include <array>
#include <cmath>
#include <vector>

#include "generator/can_bus.h"
#include "generator/savedld.h"
#include "model/intervals.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kFrameBytes = 8;
constexpr std::string_view kAnyMatch = "&HXXXXXXXXXXXXXXXX";

std::string_view unitOf(flag code) {
  switch (code) {
    case 0:
      return "Day";
    case 1:
      return "Hr";
    case 3:
      return "Sec";
    default:  // 2; older projects store another number for minutes
      return "Min";
  }
}

// When the logger wakes up again, as the last arguments of PowerOff.
std::string wakeUp(flag remainOff, int time, flag unit) {
  return remainOff != 0 ? "0,0" : Joined({time, ",", unitOf(unit)});
}

// One condition of the time to switch off.
struct TimeTest {
  int field;  // of StopTime, from 1
  int value;
  std::string_view comment;
  std::string_view endComment;
};

// The tests to write, the outermost first. A day of the week replaces the date.
std::vector<TimeTest> timeTestsOf(const Configuration& config) {
  std::vector<TimeTest> tests;
  const auto add = [&](flag shown, const TimeTest& test) {
    if (shown != 0) tests.push_back(test);
  };
  if (config.TimeOffWkDayShow != 0) {
    tests.push_back({8, config.TimeOffWkDay, "'Day of week", "'End of Day of Week"});
  } else {
    add(config.TimeOffYearShow, {1, config.TimeOffYear, "'Year", "'End of Year"});
    add(config.TimeOffMonthShow, {2, config.TimeOffMonth, "'Month", "'End of Month"});
    add(config.TimeOffDayShow, {3, config.TimeOffDay, "'Day", "'End of Day"});
  }
  add(config.TimeOffHourShow, {4, config.TimeOffHour, "'Hour", "'End of Hour"});
  add(config.TimeOffMinShow, {5, config.TimeOffMin, "'Minute", "'End of Minute"});
  add(config.TimeOffSecShow, {6, config.TimeOffSec, "'Second", "'End of Second"});
  return tests;
}

// The two digits of byte `n` of a frame, counted from 1 at its end. Fault 5 if the frame is too
// short.
std::string_view byteOf(std::string_view frame, int n) {
  const auto fromEnd = 2 * static_cast<std::size_t>(n);
  if (frame.size() < fromEnd) throw InvalidProcedureCall();
  return frame.substr(frame.size() - fromEnd, 2);
}

std::string frameStatement(std::string_view frame) {
  std::string text;
  for (int n = kFrameBytes; n >= 1; --n) {
    text += Joined({"ByteTx(", n, ")=&H", byteOf(frame, n), n > 1 ? " : " : ""});
  }
  return text;
}

// The test of a reply; bytes "XX" match any value.
std::string matchTest(std::string_view match) {
  if (SameText(match, kAnyMatch)) return "If true ";
  std::string text;
  for (int n = 1; n <= kFrameBytes; ++n) {
    const std::string_view digits = byteOf(match, n);
    if (SameText(digits, "XX")) continue;
    text += Joined({text.empty() ? "If " : " And ", "(ByteRx(", n, ") = &H", digits, ")"});
  }
  return text;
}

bool sameExchange(const CanItemData& left, const CanItemData& right) {
  return left.DataId == right.DataId && left.TxDataId == right.TxDataId &&
         left.TxDataFrame == right.TxDataFrame && left.RxDataMatch == right.RxDataMatch;
}

using CanGroups = Row<int, 1, kCanItems>;  // number of the item whose loop decodes an item

// What the sequence contains and how it is indented.
struct SlowSequence {
  bool Power = false;    // power control
  bool Saver = false;    // battery saver
  bool Status = false;   // status monitor
  bool CanTxRx = false;  // some CAN item is requested
  bool CanLoop = false;  // loops of requested CAN items are written
  double Period = 0;     // of the main scan, microseconds
  int Ind = 3;

  [[nodiscard]] bool Classic() const { return Power || Saver || Status; }
  [[nodiscard]] bool Counts() const { return Saver || Status; }
  [[nodiscard]] bool SubSecond() const { return Period <= 1000000; }
  [[nodiscard]] float SlowSecs() const {
    return SubSecond() ? 1.0F : static_cast<float>(Period / 1000000);
  }
  [[nodiscard]] Fill Indent(int more = 0) const { return {' ', Ind + more}; }
};

void putHyphens(ProgramRun& run, const SlowSequence& slow) {
  run.Put({slow.Indent(), "'", Fill{'-', 62}});
}

void slowDeclarations(ProgramRun& run, const SlowSequence& slow) {
  const Configuration& config = run.store.Config;
  if (slow.Counts()) run.Put({"   Dim CountSlow"}, {"'Dimension CountSlow"});
  if (slow.Saver) {
    run.Put({"   Dim TripVolt"}, {"'Dimension TripVolt"});
    run.Put({"   Dim CountAvg"}, {"'Dimension CountAvg"});
  }
  if (!slow.Power || config.EnableTime == 0) return;
  run.Put({"   Dim StopTime(9)"}, {"'Dimension StopTime"});
  if (config.EnableOnTime == 0) return;
  run.Put({"   Dim StartTime(6)"}, {"'Dimension StartTime"});
  const std::array<int, 6> times = {config.TimeOnYear, config.TimeOnMonth, config.TimeOnDay,
                                    config.TimeOnHour, config.TimeOnMin,   config.TimeOnSec};
  constexpr std::array<std::string_view, 6> kParts = {"'Year", "'Month",  "'Day",
                                                      "'Hour", "'Minute", "'Second"};
  for (std::size_t i = 0; i < times.size(); ++i) {
    run.Put({"   StartTime(", static_cast<int>(i) + 1, ") = ", times[i]}, {kParts[i]});
  }
}

void slowScanLine(ProgramRun& run, const SlowSequence& slow) {
  const bool canAbsent =
      run.store.Can.Module[1].CanBusEnabled == 0 && run.store.Config.CanBusQty < 1;
  const bool titled = slow.SubSecond() ? !slow.CanTxRx : canAbsent;
  if (titled) run.Put({slow.Indent(), "'SlowSequence Scan"});
  putHyphens(run, slow);
  if (!slow.SubSecond()) {
    run.Put({slow.Indent(), "Scan(", slow.SlowSecs(), ",Sec,0,0)"},
            {"'Scan once every ", slow.SlowSecs(), " seconds"});
  } else if (!slow.CanLoop) {
    run.Put({slow.Indent(), "Scan(1,Sec,0,0)"}, {"'Scan once every 1 second"});
  } else {
    const int millis =
        slow.Period <= 200000 ? 100 : static_cast<int>(std::floor(slow.Period / 1000));
    run.Put({slow.Indent(), "Scan(", millis, ",mSec,0,1)"},
            {"'Scan once during every \"Do\" loop"});
  }
}

void conditionalPowerOff(ProgramRun& run, const SlowSequence& slow) {
  const Configuration& config = run.store.Config;
  run.PutBarTitle(slow.Indent(), 18, " Conditional Power Off ");
  run.Put({slow.Indent(3), config.PowerOffLine}, {"'Test for power off"});
  const std::string comment =
      config.RemainOff != 0
          ? "do not restart"
          : Joined({"restart in ", config.PowerOffTime, " ", unitOf(config.PowerOffMins)});
  run.Put({slow.Indent(6), "PowerOff(0,",
           wakeUp(config.RemainOff, config.PowerOffTime, config.PowerOffMins), ")"},
          {"'Kill the logger, ", comment});
  run.Put({slow.Indent(3), "End If"}, {"'End of If"});
  run.PutEmpty();
}

void timedPowerOff(ProgramRun& run, const SlowSequence& slow) {
  const Configuration& config = run.store.Config;
  run.PutBarTitle(slow.Indent(), 21, " Timed Power Off ");
  run.Put({slow.Indent(3), "RealTime(StopTime)"}, {"'Populate StopTime with current time"});
  const auto tests = timeTestsOf(config);
  int indent = 3;
  for (const TimeTest& test : tests) {
    run.Put({slow.Indent(indent), "If StopTime(", test.field, ") = ", test.value, " Then"},
            {test.comment}, Pad::kGuarded);
    indent += 3;
  }
  run.Put({slow.Indent(indent), "PowerOff(", config.EnableOnTime != 0 ? "StartTime," : "0,",
           wakeUp(config.RemainPOOff, config.PowerOffPOTime, config.PowerOnMins), ")"},
          {"'Kill the logger"}, Pad::kGuarded);
  for (auto test = tests.rbegin(); test != tests.rend(); ++test) {
    indent -= 3;
    run.Put({slow.Indent(indent), "End If"}, {test->endComment}, Pad::kGuarded);
  }
  putHyphens(run, slow);
}

void batterySaver(ProgramRun& run, const SlowSequence& slow) {
  const Configuration& config = run.store.Config;
  run.PutBarTitle(slow.Indent(), 22, " Battery Saver ");
  run.Put({slow.Indent(6), "AvgRun(TripVolt,1,TripVolt,10)"},
          {"'Running average (10 mins) of TripVolt"});
  run.Put({slow.Indent(6), "CountAvg = CountAvg + 1"}, {"'Increment CountAvg"});
  run.Put({slow.Indent(6), "If CountAvg > 9 Then"}, {"'Test TripVolt after 10 AvgRun inputs"});
  run.Put({slow.Indent(9), "CountAvg = 0"}, {"'Reset AvgCount after it equals 10"});
  run.Put({slow.Indent(9), "If TripVolt < ", config.BattTripVolts, " Then"},
          {"'Test for less than ", config.BattTripVolts, " volts"});
  run.Put({slow.Indent(12), "PowerOff(0,", config.RetryInterval,
           config.BattRetryMins != 0 ? ",Min)" : ",Hr)"},
          {"'Kill the Logger"});
  run.Put({slow.Indent(9), "End If"}, {"'End of If TripVolt"});
  run.Put({slow.Indent(6), "End If"}, {"'End of If CountAvg"});
}

void statusMonitor(ProgramRun& run, const SlowSequence& slow) {
  run.PutBarTitle(slow.Indent(), 22, " Monitor Status ");
  for (int i = 1; i <= run.store.Config.StatusMonCount; ++i) {
    const auto& entry = run.store.Config.Status[i];
    const std::string_view target = entry[4];  // flag and state: "3T"
    const std::string_view flagNumber = target.substr(0, 1);
    const std::string_view state = target.ends_with('T')   ? "True"
                                   : target.ends_with('F') ? "False"
                                                           : "";
    run.Put({slow.Indent(6), "If ", entry[1], " ", entry[2], " ", Val(entry[3]), " Then"},
            {"'Status field being tested"}, Pad::kOver);
    run.Put({slow.Indent(9), "Flag(", flagNumber, ") = ", state},
            {"'Flag(", flagNumber, ") is set ", state});
    run.Put({slow.Indent(6), "End If"}, {"'End of If"});
  }
  run.Put({slow.Indent(6), "'", Fill{'-', 64}});
}

// The jobs done about once a minute, counted in scans.
void minuteJobs(ProgramRun& run, const SlowSequence& slow) {
  if (slow.Saver) {
    run.Put({slow.Indent(3), "Battery(TripVolt)"}, {"'Battery voltage measurement"});
  }
  const int scans = static_cast<int>(60 / RoundHalfEven(static_cast<double>(slow.SlowSecs())));
  run.Put({slow.Indent(3), "CountSlow = CountSlow + 1"}, {"'Increment counter"});
  run.Put({slow.Indent(3), "If CountSlow >= ", scans, " Then"}, {"'Test counter"});
  run.Put({slow.Indent(6), "CountSlow = 0"}, {"'Reset counter"});
  if (slow.Saver) batterySaver(run, slow);
  if (slow.Status) statusMonitor(run, slow);
  run.Put({"      End If"}, {"'End of If"});  // not indented further in a CAN loop
}

// Items that share a request and its reply are decoded in the loop of the first of them. That item
// gets the longest of their time-outs, in the project too.
CanGroups groupCanItems(ProgramRun& run) {
  constexpr int kNotGrouped = 65535;
  constexpr int kNotRequested = 65534;
  const int count = run.store.Can.CanCount;
  CanGroups firstItem;
  firstItem.Fill(kNotGrouped);
  for (int i = 1; i <= count; ++i) {
    CanItemData& leader = run.store.Can.Item[i];
    if (leader.ItemMessageType != 1) {
      firstItem[i] = kNotRequested;
      continue;
    }
    for (int j = 1; j <= count; ++j) {
      const CanItemData& item = run.store.Can.Item[j];
      if (firstItem[j] <= kNotRequested || !sameExchange(leader, item)) continue;
      firstItem[j] = i;
      if (item.RxTimeout > leader.RxTimeout) leader.RxTimeout = item.RxTimeout;
    }
  }
  return firstItem;
}

void canLoopHead(ProgramRun& run, const SlowSequence& slow, CanGroups& firstItem) {
  const int count = run.store.Can.CanCount;
  run.Put({"   Dim idx"}, {"'Index for looping through Rx Retries"});
  run.Put({"   Dim NumRxReads(", count, ")"}, {"'Number of Rx Reads to perform for each CAN item"});
  run.Put({"   Public ByteTx(8),ByteRx(8)"}, {"'Intermediate Transmit and Receive placeholders"});
  run.Put({"   Const CANDelay = 20"}, {"'Delay in mSec for each CAN TxRx Loop : 20"});
  firstItem = groupCanItems(run);
  for (int i = 1; i <= count; ++i) {
    const CanItemData& item = run.store.Can.Item[i];
    if (item.ItemMessageType != 1) continue;
    const int reads = static_cast<int>(std::floor(item.RxTimeout / 20.0));
    run.Put({"   NumRxReads(", i, ") = ", reads}, {"'Execute ", reads, " Rx reads for Tx #", i});
  }
  run.PutEmpty();
  run.Put({"   Do"}, {"'With CANBUS TxRx, we need multiple,repeating scans"});
  run.PutEmpty();
  run.Put({slow.Indent(), "'Classic Slow Sequence Scan"});
  putHyphens(run, slow);
}

// Sends the frame of an item and reads until the reply matches.
void canRequest(ProgramRun& run, const SlowSequence& slow, int i, const CanItemData& item) {
  run.PutEmpty();
  run.Put({slow.Indent(), "'TxRx CANBUS Loop #", i});
  putHyphens(run, slow);
  run.Put({slow.Indent(), "'TxDataFrame is ", item.TxDataFrame});
  run.Put({slow.Indent(), frameStatement(item.TxDataFrame)});
  run.Put({slow.Indent(), "Canbus(", CanArguments(run.store, "ByteTx", item.TxDataId),
           "19,1,8,8,1,0)"});
  run.Put({slow.Indent(), "For idx=0 to NumRxReads(", i, ")"},
          {"'Look for the Rx that matches the Tx multiple times"});
  run.Put({slow.Indent(3), "Delay(1,CANDelay,mSec)"}, {"'Wait for 20msec - timing issue"});
  run.Put(
      {slow.Indent(3), "Canbus(", CanArguments(run.store, "ByteRx", item.DataId), "1,1,8,8,1,0)"});
  run.Put({slow.Indent(3), "'Check the Rx value just obtained; if it matches, then decode it"});
  run.Put({slow.Indent(3), "'RxDataMatch is ", item.RxDataMatch});
  run.Put({slow.Indent(3), matchTest(item.RxDataMatch), " Then"});
}

void canDecoding(ProgramRun& run, const SlowSequence& slow, const BlockView& view) {
  const BlockNames& names = view.names;
  const std::string scaling = view.except->Any()
                                  ? Joined({names.mult, "(),", names.offset, "())"})
                                  : Joined({names.multConst, ",", names.offsetConst, ")"});
  run.Put({slow.Indent(6), "Canbus(",
           CanArguments(run.store, names.source, run.store.Can.Item[view.n].DataId),
           CanPlace(names.source), ",", scaling});
}

void canLoops(ProgramRun& run, const SlowSequence& slow, const CanGroups& firstItem) {
  run.PutEmpty();
  putHyphens(run, slow);
  run.Put({slow.Indent(), "'CANBUS TxRx Measurement Loops"});
  putHyphens(run, slow);
  const auto& views = run.Blocks(Family::kCan);
  for (const BlockView& view : views) {
    const int i = view.n;
    const CanItemData& item = run.store.Can.Item[i];
    if (item.ItemMessageType != 1 || !HasReps(view) || item.Enabled == 0) continue;
    canRequest(run, slow, i, item);
    canDecoding(run, slow, view);
    for (const BlockView& other : views) {
      if (other.n != i && firstItem[other.n] == i) canDecoding(run, slow, other);
    }
    run.Put({slow.Indent(6), "ExitFor"}, {""});
    run.Put({slow.Indent(3), "EndIf"}, {""});
    run.Put({slow.Indent(), "Next idx"}, {"'Return for next time through the loop"});
  }
  run.PutEmpty();
  run.Put({"   Loop"},
          {"'Loop back to the \"DO\" : With CANBUS TxRx, we need multiple,repeating scans"});
  run.PutEmpty();
}

}  // namespace

void SAVEDLD::LowPriority() {
  const Configuration& config = run_.store.Config;
  SlowSequence slow;
  slow.Power = config.MonitorPower[kMonitorPowerControl] != 0;
  slow.Saver = config.MonitorPower[kMonitorBatterySaver] != 0;
  slow.Status = config.StatusMonCount > 0 && config.MonitorPower[kMonitorStatus] != 0;
  slow.Period = ORVUS_COMMON::ScanIntervalMicros(run_.store);
  for (int i = 1; i <= run_.store.Can.CanCount; ++i) {
    if (run_.store.Can.Item[i].ItemMessageType == 1) slow.CanTxRx = true;
  }
  slow.CanLoop = slow.CanTxRx && CanInUse(run_.store);
  if (!slow.Classic() && !slow.CanTxRx) return;

  run_.PutEmpty();
  run_.PutSectionTitle(" LOW PRIORITY ", "   ");
  run_.PutEmpty();
  run_.Put({"   'BackgroundSequence"});
  run_.Put({"   SlowSequence"}, {"'Used for slow measurements"});
  run_.PutEmpty();
  slowDeclarations(run_, slow);
  CanGroups firstItem;
  if (slow.CanLoop) {
    slow.Ind = 6;
    canLoopHead(run_, slow, firstItem);
  }
  if (slow.Classic()) slowScanLine(run_, slow);
  if (slow.Power && config.EnablePowerOff != 0) conditionalPowerOff(run_, slow);
  if (slow.Power && config.EnableTime != 0) timedPowerOff(run_, slow);
  if (slow.Counts()) minuteJobs(run_, slow);
  if (slow.Classic()) {
    run_.Put({slow.Indent(), "Next Scan"}, {"'Loop up for the next scan"});
  } else {
    run_.Put({slow.Indent(), "'No classic slow sequence measurements"});
  }
  if (slow.CanLoop) canLoops(run_, slow, firstItem);
}

}  // namespace ostrand
