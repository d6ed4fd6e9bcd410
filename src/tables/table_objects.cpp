#include "tables/table_objects.h"

#include <algorithm>
#include <cmath>

#include "model/burst_buffer.h"
#include "model/record_layout.h"
#include "platform/box.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr double kInternalSpace = 1e6;
// Cards are sized in binary megabytes; the file system needs a share.
constexpr double kBytesOfCardMegabyte = 1.048576e6;
constexpr double kCardShare = 0.96;

flag flagOf(i16 value) { return value != 0 ? kTrue : kFalse; }
// A disabled condition is stored as 1, the value that the program's triggers compare with.
flag markOf(i16 value) { return value != 0 ? 1 : 0; }

}  // namespace

cOutputTable TableObject(const ProjectStore& store, int t) {
  const OutputTable& kept = store.Tables[t];
  cOutputTable table;
  table.Name = kept.TableName;
  table.Enabled = kept.TableOn != kFalse;
  table.Interval = kept.OutInt;
  table.IntervalUnits = kept.OutIntUnits;
  table.SyncToScan = kept.SyncTable;
  table.NumRecs = kept.Buffer;
  table.AutoSize = kept.AutoSize;
  table.FillStop = kept.FillStop;
  table.StoreEveryTS = kept.CalcTime;
  table.MemLoc = kept.TableLocation == kPcCard ? kPcCard : kInternalMemory;
  table.FlagWrite = kept.FlagTable;
  table.FlagMark = kept.FlagMark;
  table.FlagFull = kept.FlagFull;
  const ORVUS_COMMON::RecordSize size = ORVUS_COMMON::SizeOfRecord(store, t);
  table.NumFields = size.fields;
  table.FieldBytes = size.bytes;
  table.TriggerNumber = kept.TrigTable;
  table.TriggerStopNum = kept.TrigTabStop;
  table.TriggerSingle = kept.SingleTrigger;
  table.TriggerDisable = kept.DisableTrigger;
  table.TriggerScansPre = kept.PreTriggerScans;
  table.TriggerScansPost = kept.AftTriggerScans;
  table.TriggerExpression = kept.DataEventCode;
  table.TriggerStartExpress = kept.DataEventCodeStart;
  table.TriggerStopExpress = kept.DataEventCodeStop;
  table.WriteIfDisable = kept.DisableWriteIf;
  table.WriteIfNumber = kept.WriteIf;
  table.WriteIfGrpExpress = kept.GroupWriteIf;
  for (int n = 1; n <= kConditions; ++n) {
    for (int state = 0; state <= 1; ++state) {
      const TriggerCondition& condition = kept.Trigger[state][n];
      table.TriggerMeasVar(state, n, condition.StartMeasVar);
      table.TriggerCompare(state, n, condition.StartCompare);
      table.TriggerVarIdx(state, n, condition.StartTrigVarIdx);
      table.TriggerValue(state, n, condition.StartTrigValue);
      table.TriggerVarb(state, n, condition.StartTrigVarb);
      table.TriggerIndvExpress(state, n, condition.StartTrigIndvExpress);
    }
    const WriteCondition& condition = kept.Write[n];
    table.WriteIfMeasVar(n, condition.MeasureVar);
    table.WriteIfCompare(n, condition.Compare);
    table.WriteIfVarIdx(n, condition.VarIdx);
    table.WriteIfValue(n, condition.Value);
    table.WriteIfVarb(n, condition.Varb);
    table.WriteIfExpression(n, condition.Expression);
  }
  return table;
}

TableObjects TableObjectsOf(const ProjectStore& store) {
  TableObjects tables;
  for (int t = 1; t <= kTables; ++t) tables[t] = TableObject(store, t);
  return tables;
}

void KeepTable(const cOutputTable& table, OutputTable& kept) {
  kept.TableName = table.Name;
  kept.TableOn = flagOf(table.Enabled ? 1 : 0);
  kept.OutInt = table.Interval;
  kept.OutIntUnits = table.IntervalUnits;
  kept.SyncTable = flagOf(table.SyncToScan);
  kept.Buffer = table.NumRecs;
  kept.AutoSize = flagOf(table.AutoSize);
  kept.FillStop = flagOf(table.FillStop);
  kept.CalcTime = flagOf(table.StoreEveryTS);
  kept.TableLocation = table.MemLoc;
  kept.FlagTable = table.FlagWrite;
  kept.FlagMark = table.FlagMark;
  kept.FlagFull = table.FlagFull;
  kept.TrigTable = table.TriggerNumber;
  kept.TrigTabStop = table.TriggerStopNum;
  kept.SingleTrigger = flagOf(table.TriggerSingle);
  kept.DisableTrigger = markOf(table.TriggerDisable);
  kept.PreTriggerScans = table.TriggerScansPre;
  kept.AftTriggerScans = table.TriggerScansPost;
  kept.DataEventCode = table.TriggerExpression;
  kept.DataEventCodeStart = table.TriggerStartExpress;
  kept.DataEventCodeStop = table.TriggerStopExpress;
  kept.DisableWriteIf = markOf(table.WriteIfDisable);
  kept.WriteIf = table.WriteIfNumber;
  kept.GroupWriteIf = table.WriteIfGrpExpress;
  for (int n = 1; n <= kConditions; ++n) {
    for (int state = 0; state <= 1; ++state) {
      kept.Trigger[state][n] = {table.TriggerMeasVar(state, n), table.TriggerCompare(state, n),
                                table.TriggerVarIdx(state, n),  table.TriggerValue(state, n),
                                table.TriggerVarb(state, n),    table.TriggerIndvExpress(state, n)};
    }
    kept.Write[n] = {table.WriteIfMeasVar(n), table.WriteIfCompare(n), table.WriteIfVarIdx(n),
                     table.WriteIfValue(n),   table.WriteIfVarb(n),    table.WriteIfExpression(n)};
  }
}

Medium MediumOf(const ProjectStore& store, i16 location) {
  if (location == kPcCard) {
    const double megabytes = DecimalValue(store.Config.SizeCard);
    return {"PCCard Space", megabytes * kBytesOfCardMegabyte * kCardShare, 0};
  }
  const bool buffered = Val(store.Scan.ScanBuffer) == 1;
  const double burst = buffered ? PROGGEN::BufferBytes(store, store.Scan.BufferScans) : 0;
  return {"S-Ram Space", kInternalSpace - burst, burst};
}

double TableBytes(const cOutputTable& table) {
  return std::max<double>(table.NumRecs, 0) * table.RecordBytes();
}

double BytesInLocation(const TableObjects& tables, i16 location) {
  double bytes = 0;
  for (const cOutputTable& table : tables) {
    if (table.Enabled && table.MemLoc == location) bytes += TableBytes(table);
  }
  return bytes;
}

TimeParts TimeParts::Of(double micros) {
  constexpr double kMinute = 6e7;
  constexpr double kHour = 60 * kMinute;
  constexpr double kDay = 24 * kHour;
  TimeParts parts;
  parts.days = std::floor(micros / kDay);
  micros -= parts.days * kDay;
  parts.hours = std::floor(micros / kHour);
  micros -= parts.hours * kHour;
  parts.minutes = std::floor(micros / kMinute);
  parts.seconds = (micros - parts.minutes * kMinute) / 1e6;
  return parts;
}

double TimeParts::Seconds() const { return days * 86400 + hours * 3600 + minutes * 60 + seconds; }

double MicrosToFill(const ProjectStore& store, const cOutputTable& table) {
  return table.NumRecs * ORVUS_COMMON::TableIntervalMicros(store, table);
}

void ShowTableTimes(platform::Forms& forms, const ProjectStore& store, const TableObjects& tables) {
  std::string text;
  for (const cOutputTable& table : tables) {
    if (!table.Enabled) continue;
    if (!text.empty()) text += "\r\n";
    text += "Table " + table.Name + " Time To Fill:\r\n";
    if (table.AutoSize != 0) {
      text += "Buffer Size   = Auto Size";
      continue;
    }
    // Rounded to the shown precision, so that there are never 60 seconds.
    const double milliseconds = RoundHalfEven(MicrosToFill(store, table) / 1000);
    const TimeParts time = TimeParts::Of(milliseconds * 1000);
    text += NumberText(time.days) + " Days,  " + NumberText(time.hours) + " Hours,  " +
            NumberText(time.minutes) + " Mins,  " + FormatNumber(time.seconds, "#0.0##") + " Secs";
  }
  platform::MessageBox box;
  box.title = "TABLE TIME";
  box.text = std::move(text);
  box.icon = platform::Icon::kInformation;
  forms.ShowBox(box);
}

bool IsCardInUse(const ProjectStore& store) {
  const auto& tables = store.Tables.Table;
  return std::any_of(tables.begin(), tables.end(),
                     [](const OutputTable& table) { return table.TableLocation == kPcCard; });
}

void MoveTablesOffCard(ProjectStore& store) {
  for (OutputTable& table : store.Tables.Table) {
    table.TableLocation = kInternalMemory;
    table.FlagMark = 0;
  }
}

}  // namespace ostrand
