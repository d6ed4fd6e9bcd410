// The data tables of the program.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "generator/bridge_style.h"
#include "generator/can_bus.h"
#include "generator/savedld.h"
#include "generator/zero_blocks.h"
#include "model/intervals.h"
#include "model/names.h"
#include "model/record_layout.h"
#include "model/units.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// How an instruction is written: its text (two have a trailing blank), the end of the plain form,
// and its comment after the count.
struct Processing {
  std::string_view instruction;
  std::string_view ending;
  std::string_view comment;
};
constexpr std::array<Processing, kOutputCodes> kProcessing = {{
    {"Sample ", ")", " Reps,Source,Res"},
    {"Maximum", ",False,False)", " Reps,Source,Res,Enabled,Time of Max"},
    {"Minimum", ",False,False)", " Reps,Source,Res,Enabled,Time of Min"},
    {"Average", ",False)", " Reps,Source,Res,Enabled"},
    {"StdDev ", ",False)", " Reps,Source,Res,Enabled"},
    {"Histogram", ")", " Reps,Source,Res"},
    {"RainFlow", ")", " Reps,Source,Res"},
    {"LevelCrossing", ")", " Reps,Source,Res"},
}};

const Processing& processingOf(int code) { return kProcessing[static_cast<std::size_t>(code)]; }

constexpr std::string_view kCanCheckTable[] = {
    "'-------------------------- CANChk Table ------------------------",
    "DataTable(CANChk,True,5)",
    "   Sample(1,CanAddress,FP2) : FieldNames(\"Can_Address\")",
    "   Sample(1,CanQuanta,FP2) : FieldNames(\"Can_Quanta\")",
    "   Sample(1,CanSeg1,FP2) : FieldNames(\"Can_Seg1\")",
    "   Sample(1,CanSeg2,FP2) : FieldNames(\"Can_Seg2\")",
    "   Sample(1,CanSwitchTx,IEEE4)",
    "   Sample(1,CanSwitchRx,IEEE4)",
};

constexpr std::string_view kRecords = "###0";

struct SizeUnit {
  double below;    // seconds
  double times;    // units per second, for short units
  double seconds;  // per unit, for long units; 1/60 would not be exact
  std::string_view text;
};
constexpr std::array<SizeUnit, 6> kSizeUnits = {{
    {0.001, 1e6, 1, " uSecs"},
    {1, 1000, 1, " mSecs"},
    {60, 1, 1, " Secs"},
    {3600, 1, 60, " Mins"},
    {86400, 1, 3600, " Hours"},
    {INFINITY, 1, 86400, " Days"},
}};

// Records between two timestamps.
int lapseCount(const OutputTable& table) {
  if (table.CalcTime != 0) return 0;
  return static_cast<int>(std::clamp(std::floor(table.Buffer * 0.1), 1.0, 1000.0));
}

// A start or stop argument that is not a condition itself is replaced by the trigger's variable.
std::string_view eventArgument(std::string_view given, std::string_view variable) {
  const bool usable = Holds(given, variable) || Holds(given, "True") || Holds(given, "False");
  return usable ? given : variable;
}

// The DataEvent text with both conditions in place; a part without a comma after it is unchanged.
std::string eventText(std::string_view code) {
  std::string result;
  const auto takeThroughComma = [&](std::string_view variable) {
    const std::size_t comma = code.find(',');
    if (comma == std::string_view::npos) return;
    const std::string_view part = code.substr(0, comma);
    result += variable.empty() ? part : eventArgument(part, variable);
    result += ',';
    code.remove_prefix(comma + 1);
  };
  takeThroughComma("");
  takeThroughComma("bStartTrigger");
  takeThroughComma("bStopTrigger");
  result += code;
  return result;
}

// How a family is written.
struct FamilyForm {
  enum class Form {
    kSingle,   // one value, named without a subscript
    kEachRep,  // histogram and rainflow once for each repetition
    kPlain,    // all instructions in the plain form
  };
  OutputFamily family;
  std::string_view title;
  Form form;
  std::string_view parentheses;  // after the name in an instruction
};
using Form = FamilyForm::Form;
constexpr std::array<FamilyForm, kOutputFamilies> kForms = {{
    {OutputFamily::kBattery, " Logger Power ", Form::kSingle, ""},
    {OutputFamily::kPanel, " Panel Ref Temp ", Form::kPlain, ""},
    {OutputFamily::kTK40MRef, " TK40M Ref Temp ", Form::kSingle, "()"},
    {OutputFamily::kTemp, " Thermocouple Blocks ", Form::kEachRep, "()"},
    {OutputFamily::kVolt, " Voltage Blocks ", Form::kEachRep, "()"},
    {OutputFamily::kBridge, " Bridge Blocks ", Form::kEachRep, "()"},
    {OutputFamily::kPulse, " Pulse/Freq Blocks ", Form::kEachRep, "()"},
    {OutputFamily::kTK40M, " TK40M Blocks ", Form::kEachRep, "()"},
    {OutputFamily::kCan, " Canbus items ", Form::kEachRep, "()"},
    {OutputFamily::kPort, " Port Blocks ", Form::kSingle, ""},
    {OutputFamily::kCalcField, " Calculated Fields ", Form::kSingle, ""},
}};

const FamilyForm& formOf(const OutputSource& source) {
  return kForms[static_cast<std::size_t>(source.family)];
}

// The number of values of a source, as instructions write it.
std::string countOf(const OutputSource& source) {
  if (source.family == OutputFamily::kCan) return source.name + "NumVals";
  const std::string constant = ConstantName(source.kind, "REP", source.n);
  return constant.empty() ? NumberText(source.reps) : constant;
}

// The array that the level crossing of value `i`, from 1, reads in table `t`.
std::string levelArrayOf(const OutputSource& source, int t, int i) {
  switch (source.family) {
    case OutputFamily::kCan:
      return Joined({"LC", source.name, t});
    case OutputFamily::kCalcField:
      return CalcFieldLevelName(source.n, t);
    case OutputFamily::kTK40MRef:
      return Joined({"LCABlk1_", t, "_", i});
    default:
      return Joined({"LC", source.name, "_", t, "_", i});
  }
}

// The size of a table in time. A table that does not set it shows that of the previous one.
struct SizeTime {
  double x = 0;
  std::string_view unit;
};

void canCheckTable(ProgramRun& run) {
  for (const std::string_view line : kCanCheckTable) run.Put({line});
  if (run.store.Can.Module[1].CanGetOSVerSig != 0) {
    run.Put({"   Sample(1,QBCanSig,IEEE4)"});
    run.Put({"   Sample(1,QBCanVer,IEEE4)"});
  }
  run.Put({"EndTable"});
  run.PutEmpty();
}

void tableHead(ProgramRun& run, int t, SizeTime& size) {
  OutputTable& table = run.store.Tables[t];
  const bool card = table.TableLocation == kPcCard;
  const bool autoSize = table.AutoSize != 0;
  const bool synchronous = table.SyncTable != 0;
  const std::string records = FormatNumber(table.Buffer, kRecords);
  const int lapses = lapseCount(table);

  run.PutTitle("", Joined({" Table ", t}), '-');
  const bool openSize = card || autoSize;
  run.Put({"DataTable(", table.TableName, ",True,", openSize ? "-1" : records, ")"},
          {"'Trigger, ", openSize ? "auto size" : records + " records"}, Pad::kTouching);

  if (synchronous) {
    size.x = table.Buffer / 1e6 * ORVUS_COMMON::ScanIntervalMicros(run.store);
    table.OutIntUnits = 2;
  } else if (table.OutIntUnits == 1) {
    size.x = table.Buffer / 1000.0 * table.OutInt;
  }
  const std::string_view unit = UnitAbbreviation(table.OutIntUnits);
  if (table.OutIntUnits < 2) {
    const auto* fit = std::find_if(kSizeUnits.begin(), kSizeUnits.end() - 1,
                                   [&](const SizeUnit& entry) { return size.x < entry.below; });
    size.x = size.x * fit->times / fit->seconds;
    size.unit = fit->text;
  }
  const std::string interval =
      synchronous ? "Synchronous" : Joined({table.OutInt, " ", unit, " interval"});
  const std::string sizeText =
      autoSize ? "autosize" : Joined({FormatNumber(size.x, "0.00"), size.unit});
  const std::string arguments = synchronous ? "0,0" : Joined({"INTERVAL", t, ",UNITS", t});
  run.Put({"   DataInterval(0,", arguments, ",", lapses, ")"},
          {"'", interval, ", ", lapses, " lapses, ", sizeText}, Pad::kTouching);

  if (table.DisableTrigger == 0 && table.TrigTable != 0 &&
      Holds(table.DataEventCode, "DataEvent")) {
    run.Put({"   ", eventText(table.DataEventCode)});
  }
  const bool fillStop = table.FillStop != 0;
  if (fillStop && !card) run.Put({"   FillStop"}, {"'Fill the buffer and stop"}, Pad::kTouching);
  if (card) {
    run.Put({"   CardOut(", fillStop ? "1," : "0,", autoSize ? "-1" : records, ")"},
            {"'PC card , size ", autoSize ? "Auto" : records + ")"}, Pad::kTouching);
  }
}

void putOutput(ProgramRun& run, const OutputSource& source, int t, int code) {
  const Processing& processing = processingOf(code);
  const FamilyForm& family = formOf(source);
  if (code < kHistogram || family.form == Form::kPlain) {
    run.Put({"   ", processing.instruction, "(", countOf(source), ",", source.name,
             family.parentheses, ",", source.resolution, processing.ending},
            {"'", source.reps, processing.comment}, Pad::kTouching);
    return;
  }
  const HistoSet& histo = source.output->Histo[t];
  const std::string arguments = code == kLevelCrossing ? LevelArguments(histo)
                                : code == kHistogram   ? histo.HistogramCode
                                                       : histo.RainHistoCode;
  for (int i = 1; i <= OutputValues(source, code); ++i) {
    const std::string value = code == kLevelCrossing ? levelArrayOf(source, t, i) + "()"
                              : family.form == Form::kSingle
                                  ? Joined({source.name, family.parentheses})
                                  : Joined({source.name, "(", i, ")"});
    run.Put({"   ", processing.instruction, "(", value, ",", source.resolution, ",False,",
             arguments, ")"});
  }
}

void tableBody(ProgramRun& run, int t) {
  std::optional<OutputFamily> titled;
  for (const OutputSource& source : OutputSourcesOf(run.store)) {
    for (int code = kSample; code <= source.lastCode; ++code) {
      if (!IsSelected(*source.output, t, code)) continue;
      if (titled != source.family) run.PutTitle("   ", formOf(source).title, '_', 3);
      titled = source.family;
      putOutput(run, source, t, code);
    }
  }
}

void tableEnd(ProgramRun& run, int t) {
  const std::string& name = run.store.Tables[t].TableName;
  if (t + 1 == run.store.Tables.HDU7) {
    run.Put({"   HDU7(Flag,200)"}, {"'HDU7 displays table ", name, " every 200 mSecs"},
            Pad::kTouching);
  }
  run.Put({"EndTable"}, {"'End of table ", name}, Pad::kTouching);
  run.PutEmpty();
}

void zeroTable(ProgramRun& run, int group) {
  const auto blocks = ZeroedBlocks(run, group);
  if (blocks.empty()) return;
  run.PutTitle("", Joined({" Store zero values from Sub Zero", group, " "}), '-');
  const int scans = ZeroScans(run.store);
  run.Put({"DataTable(ZERO_", group, ",Count>", scans - 1, ",100)"}, {"'Trigger on Count ", scans},
          Pad::kTouching);
  for (const BlockView& view : blocks) {
    const auto average = [&](std::string_view suffix) {
      run.Put({"   Average(", view.names.reps, ",", view.names.source, suffix, "(),IEEE4,False)"},
              {"'", view.data->Reps, processingOf(kAverage).comment}, Pad::kTouching);
    };
    if (view.Kind() == Family::kBridge) {
      average("ZeroMv");
      if (IsStrain(view)) average("ZeroUs");
    } else {
      average("Zero");
    }
  }
  run.Put({"EndTable"}, {"'End of table ZERO_", group}, Pad::kTouching);
  run.PutEmpty();
}

}  // namespace

void SAVEDLD::OutputTables() {
  run_.PutEmpty();
  run_.PutSectionTitle(" OUTPUT SECTION ");
  run_.PutEmpty();
  if (CanInUse(run_.store)) canCheckTable(run_);
  SizeTime size;
  for (int t = 1; t <= kTables; ++t) {
    if (run_.store.Tables[t].TableOn == 0) continue;
    tableHead(run_, t, size);
    tableBody(run_, t);
    tableEnd(run_, t);
  }
  for (int group = 1; group <= kFlags; ++group) zeroTable(run_, group);
  if (run_.NeedsFieldCal()) {
    run_.Put({"DataTable(CalHist,NewFieldCal,50)"});
    run_.Put({"   SampleFieldCal"});
    run_.Put({"EndTable"});
    run_.PutEmpty();
  }
}

}  // namespace ostrand
