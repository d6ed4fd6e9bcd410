// The data tables of the program.
#include <algorithm>
#include <array>
#include <cmath>

#include "generator/savedld.h"
#include "model/intervals.h"
#include "model/names.h"
#include "model/units.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// How an instruction is written: its text, with the blank that two of them have, what closes the
// plain form, and what its comment tells behind the count.
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

constexpr i16 kPcCard = 2;  // TableLocation
constexpr std::string_view kRecords = "###0";

struct SizeUnit {
  double below;    // seconds
  double times;    // units of a second, for the short ones
  double seconds;  // of a unit, for the long ones; 1/60 would not be exact
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

// A start or stop argument that names no condition of its own gets the trigger's variable.
std::string_view eventArgument(std::string_view given, std::string_view variable) {
  const bool usable = Holds(given, variable) || Holds(given, "True") || Holds(given, "False");
  return usable ? given : variable;
}

// The DataEvent text with its two conditions settled; a part that no comma ends is left alone.
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

// The level code of an output with one dimension has 1 for its second size.
std::string levelArguments(const HistoSet& level) {
  if (level.NumDims == 1) return level.LevelCode;
  const std::string_view code = level.LevelCode;
  const std::string_view behind = After(code, ",");
  const std::size_t third = behind.find(',');
  const std::string_view rest =
      third == std::string_view::npos ? std::string_view{} : behind.substr(third);
  return Joined({Before(code, ","), ",1", rest});
}

}  // namespace

// The size of a table in time. A table that does not set it shows what the one before left.
struct SAVEDLD::SizeTime {
  double x = 0;
  std::string_view unit;
};

// One source of a table's outputs.
struct SAVEDLD::OutputItem {
  enum class Form {
    kSingle,   // one value, named without a subscript
    kEachRep,  // histogram and rainflow once for each repetition
    kPlain,    // all instructions in the plain form
  };
  static constexpr int kOnce = -1;

  std::string count;   // repetitions as the instruction names them: TREP1
  std::string source;  // TBlk1()
  std::string_view resolution;
  int reps = 1;
  std::string name;  // TBlk1
  const OutputSet* output = nullptr;
  Form form = Form::kSingle;
  int lastCode = kLevelCrossing;
  std::string levelSource = {};  // array that a level crossing reads
  int levelReps = kOnce;         // or once for each of so many, as `levelSource`_{t}_{i}
};

// The title of a family in a table, written before its first output.
class SAVEDLD::FamilyBanner {
 public:
  FamilyBanner(SAVEDLD& owner, std::string_view title) : owner_(owner), title_(title) {}
  void Need() {
    if (!written_) owner_.PutTitle("   ", title_, '_', 3);
    written_ = true;
  }

 private:
  SAVEDLD& owner_;
  std::string_view title_;
  bool written_ = false;
};

void SAVEDLD::OutputTables() {
  PutEmpty();
  PutSectionTitle(" OUTPUT SECTION ");
  PutEmpty();
  if (canInUse()) canCheckTable();
  SizeTime size;
  for (int t = 1; t <= kTables; ++t) {
    if (store_.Tables[t].TableOn == 0) continue;
    tableHead(t, size);
    tableBody(t);
    tableEnd(t);
  }
  for (int group = 1; group <= kFlags; ++group) zeroTable(group);
  if (needsFieldCal()) {
    Put({"DataTable(CalHist,NewFieldCal,50)"});
    Put({"   SampleFieldCal"});
    Put({"EndTable"});
    PutEmpty();
  }
}

void SAVEDLD::canCheckTable() {
  for (const std::string_view line : kCanCheckTable) Put({line});
  if (store_.Can.Module[1].CanGetOSVerSig != 0) {
    Put({"   Sample(1,QBCanSig,IEEE4)"});
    Put({"   Sample(1,QBCanVer,IEEE4)"});
  }
  Put({"EndTable"});
  PutEmpty();
}

void SAVEDLD::tableHead(int t, SizeTime& size) {
  OutputTable& table = store_.Tables[t];
  const bool card = table.TableLocation == kPcCard;
  const bool autoSize = table.AutoSize != 0;
  const bool synchronous = table.SyncTable != 0;
  const std::string records = FormatNumber(table.Buffer, kRecords);
  const int lapses = lapseCount(table);

  PutTitle("", Joined({" Table ", t}), '-');
  const bool openSize = card || autoSize;
  Put({"DataTable(", table.TableName, ",True,", openSize ? "-1" : records, ")"},
      {"'Trigger, ", openSize ? "auto size" : records + " records"}, Pad::kTouching);

  if (synchronous) {
    size.x = table.Buffer / 1e6 * ORVUS_COMMON::ScanIntervalMicros(store_);
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
  Put({"   DataInterval(0,", arguments, ",", lapses, ")"},
      {"'", interval, ", ", lapses, " lapses, ", sizeText}, Pad::kTouching);

  if (table.DisableTrigger == 0 && table.TrigTable != 0 &&
      Holds(table.DataEventCode, "DataEvent")) {
    Put({"   ", eventText(table.DataEventCode)});
  }
  const bool fillStop = table.FillStop != 0;
  if (fillStop && !card) Put({"   FillStop"}, {"'Fill the buffer and stop"}, Pad::kTouching);
  if (card) {
    Put({"   CardOut(", fillStop ? "1," : "0,", autoSize ? "-1" : records, ")"},
        {"'PC card , size ", autoSize ? "Auto" : records + ")"}, Pad::kTouching);
  }
}

void SAVEDLD::tableBody(int t) {
  using Form = OutputItem::Form;
  const Configuration& config = store_.Config;
  const auto single = [&](std::string_view title, const OutputItem& item) {
    FamilyBanner banner(*this, title);
    putOutput(banner, item, t);
  };
  if (config.MonitorPower[kMonitorBattery] != 0) {
    single(" Logger Power ", {.count = "1",
                              .source = std::string(kBattVolt),
                              .resolution = store_.PowerOut.DataResolution,
                              .name = std::string(kBattVolt),
                              .output = &store_.PowerOut.Output,
                              .levelSource = Joined({"LC", kBattVolt}),
                              .levelReps = 1});
  }
  if (config.MonitorPower[kMonitorPanel] != 0) {
    single(" Panel Ref Temp ", {.count = "1",
                                .source = std::string(kTRef),
                                .resolution = store_.TcRef.DataResolution,
                                .name = std::string(kTRef),
                                .output = &store_.TcRef.Output,
                                .form = Form::kPlain});
  }
  if (config.TK40MQty > 0 && store_.TK40MBlock.BlockCount > 0 && config.TcConfigOpts[1] != 0) {
    single(" TK40M Ref Temp ", {.count = NumberText(config.TK40MQty),
                                .source = Joined({kTK40Ref, "()"}),
                                .resolution = store_.TK40MRef.DataResolution,
                                .reps = config.TK40MQty,
                                .name = Joined({kTK40Ref, "()"}),
                                .output = &store_.TK40MRef.Output,
                                .levelSource = "LCABlk1",
                                .levelReps = store_.TK40MBlock[1].Reps});
  }
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse}) {
    blockOutputs(t, family);
  }
  if (config.TK40MQty > 0) blockOutputs(t, Family::kTK40M);
  if (canInUse()) blockOutputs(t, Family::kCan);

  portOutputs(t);
  calcFieldOutputs(t);
}

void SAVEDLD::portOutputs(int t) {
  FamilyBanner banner(*this, " Port Blocks ");
  for (const PortSlot& slot : store_.Ports.Slot) {
    const bool bytePort = slot.Ports[kPorts].Include != 0;
    if (!bytePort && slot.ReadMode == 0) continue;
    const std::string name(slot.ReadMode != 0 ? kReadPort : kWritPort);
    putOutput(banner,
              {.count = "1",
               .source = name,
               .resolution = slot.DataResolution,
               .name = name,
               .output = &slot.Output,
               .lastCode = bytePort ? kHistogram : kStdDev},
              t);
  }
}

void SAVEDLD::calcFieldOutputs(int t) {
  FamilyBanner banner(*this, " Calculated Fields ");
  for (int f = 1; f <= store_.CalcFields.CalcFieldCount; ++f) {
    const CalcFieldData& field = store_.CalcFields.Field[f];
    putOutput(banner,
              {.count = "1",
               .source = field.CalcField[1],
               .resolution = field.DataResolution,
               .name = field.CalcField[1],
               .output = &field.Output,
               .levelSource = Joined({"LCCalc", f, "_", t})},
              t);
  }
}

void SAVEDLD::blockOutputs(int t, Family family) {
  const bool item = family == Family::kCan;
  FamilyBanner banner(*this, TextsOf(family).outputTitle);
  for (const BlockView& view : blocksOf(family)) {
    if (!HasReps(view) || (item && store_.Can.Item[view.n].Enabled == 0)) continue;
    const std::string& source = view.names.source;
    putOutput(banner,
              {.count = view.names.reps,
               .source = source + "()",
               .resolution = view.data->DataResolution,
               .reps = view.data->Reps,
               .name = source,
               .output = &view.data->Output,
               .form = OutputItem::Form::kEachRep,
               .levelSource = item ? Joined({"LC", source, t}) : "LC" + source,
               .levelReps = item ? OutputItem::kOnce : view.data->Reps},
              t);
  }
}

void SAVEDLD::putOutput(FamilyBanner& banner, const OutputItem& item, int t) {
  for (int code = kSample; code <= item.lastCode; ++code) {
    if (!IsSelected(*item.output, t, code)) continue;
    banner.Need();
    putProcessing(item, t, code);
  }
}

void SAVEDLD::putProcessing(const OutputItem& item, int t, int code) {
  using Form = OutputItem::Form;
  const Processing& processing = processingOf(code);
  if (code < kHistogram || item.form == Form::kPlain) {
    Put({"   ", processing.instruction, "(", item.count, ",", item.source, ",", item.resolution,
         processing.ending},
        {"'", item.reps, processing.comment}, Pad::kTouching);
    return;
  }
  const HistoSet& histo = item.output->Histo[t];
  const auto putCall = [&](std::string_view source, std::string_view arguments) {
    Put({"   ", processing.instruction, "(", source, ",", item.resolution, ",False,", arguments,
         ")"});
  };
  if (code == kLevelCrossing) {
    const std::string arguments = levelArguments(histo);
    if (item.levelReps == OutputItem::kOnce) putCall(item.levelSource + "()", arguments);
    for (int i = 1; i <= item.levelReps; ++i) {
      putCall(Joined({item.levelSource, "_", t, "_", i, "()"}), arguments);
    }
    return;
  }
  const std::string& arguments = code == kHistogram ? histo.HistogramCode : histo.RainHistoCode;
  if (item.form == Form::kSingle) {
    putCall(item.name, arguments);
    return;
  }
  for (int i = 1; i <= item.reps; ++i) putCall(Joined({item.name, "(", i, ")"}), arguments);
}

void SAVEDLD::tableEnd(int t) {
  const std::string& name = store_.Tables[t].TableName;
  if (t + 1 == store_.Tables.HDU7) {
    Put({"   HDU7(Flag,200)"}, {"'HDU7 displays table ", name, " every 200 mSecs"}, Pad::kTouching);
  }
  Put({"EndTable"}, {"'End of table ", name}, Pad::kTouching);
  PutEmpty();
}

void SAVEDLD::zeroTable(int group) {
  const auto blocks = zeroedBlocks(group);
  if (blocks.empty()) return;
  const int scans = zeroScans();
  PutTitle("", Joined({" Store zero values from Sub Zero", group, " "}), '-');
  Put({"DataTable(ZERO_", group, ",Count>", scans - 1, ",100)"}, {"'Trigger on Count ", scans},
      Pad::kTouching);
  for (const BlockView& view : blocks) {
    const auto average = [&](std::string_view suffix) {
      Put({"   Average(", view.names.reps, ",", view.names.source, suffix, "(),IEEE4,False)"},
          {"'", view.data->Reps, processingOf(kAverage).comment}, Pad::kTouching);
    };
    if (view.Kind() == Family::kBridge) {
      average("ZeroMv");
      if (store_.BridgeBlock[view.n].Style > 4) average("ZeroUs");
    } else {
      average("Zero");
    }
  }
  Put({"EndTable"}, {"'End of table ZERO_", group}, Pad::kTouching);
  PutEmpty();
}

}  // namespace ostrand
