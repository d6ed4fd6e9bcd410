#include "documents/table_description.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

#include "documents/document_file.h"
#include "model/intervals.h"
#include "model/names.h"
#include "model/output_table.h"
#include "model/record_layout.h"
#include "model/units.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kColumnHeading =
    "FIELD NO--------RES----MEAS------FIELD------------ALIAS---------------UNITS-------";
constexpr std::string_view kNoAlias = "-----------";
constexpr std::string_view kNoUnits = "--------";

// Print positions of a field line.
constexpr int kResolutionColumn = 17;
constexpr int kMeasColumn = 24;
constexpr int kAliasColumn = 51;
constexpr int kUnitsColumn = 71;

struct Processing {
  std::string_view meas;
  std::string_view suffix;
};
constexpr std::array<Processing, kOutputCodes> kProcessing = {{
    {"Sample ", ""},
    {"Maximum", "_Max"},
    {"Minimum", "_Min"},
    {"Average", "_Avg"},
    {"Std Dev", "_Std"},
    {"Histgrm", "_Hst"},
    {"Rainflo", "_RFH"},
    {"LevelCr", "_LCr"},
}};

// The title of a family's group, and whether each of its blocks begins a separate group.
struct GroupTitle {
  OutputFamily family;
  std::string_view title;
  bool eachBlock;
};
constexpr std::array<GroupTitle, kOutputFamilies> kGroups = {{
    {OutputFamily::kBattery, " Logger Volts ", false},
    {OutputFamily::kPanel, " Panel Ref Temp ", false},
    {OutputFamily::kTK40MRef, " TK40M Reference ", false},
    {OutputFamily::kTemp, " Thermocouple Block ", true},
    {OutputFamily::kVolt, " Voltage Block ", true},
    {OutputFamily::kBridge, " Bridge Block ", true},
    {OutputFamily::kPulse, " Pulse Block ", true},
    {OutputFamily::kTK40M, " TK40M Block ", true},
    {OutputFamily::kCan, " CANBus Item ", false},
    {OutputFamily::kPort, " Ports ", false},
    {OutputFamily::kCalcField, " Calculated Field ", false},
}};

const GroupTitle& groupOf(const OutputSource& source) {
  return kGroups[static_cast<std::size_t>(source.family)];
}

std::string withCommas(double value) { return FormatNumber(value, "#,##0"); }
std::string_view trueOrFalse(flag value) { return value != 0 ? "True" : "False"; }
std::string flagName(i16 number) {
  return number == 0 ? "None" : "Flag(" + NumberText(number) + ")";
}

// A title padded with hyphens to the width of the heading, and cut to it.
std::string ruled(std::string line) {
  line.resize(kColumnHeading.size(), '-');
  return line;
}

std::string intervalText(const ProjectStore& store, const OutputTable& table) {
  const bool synchronous = table.SyncTable != 0;
  const std::string_view unit =
      UnitAbbreviation(synchronous ? store.Scan.ExecTimeUnits : table.OutIntUnits);
  std::string text = synchronous ? NumberText(store.Scan.ExecutionTime) : NumberText(table.OutInt);
  if (!unit.empty()) {
    text += synchronous ? " (" : " ";
    text += unit;
    if (synchronous) text += ")";
  }
  if (synchronous) text += " Synchronous";
  return text;
}

// Days, hours, minutes and seconds. The seconds are rounded before they are split, so that they
// never round up to a full minute.
std::string fillTime(double seconds) {
  constexpr double kShown = 1e5;
  double rest = std::trunc(seconds);
  double fraction = std::round((seconds - rest) * kShown) / kShown;
  if (std::abs(fraction) == 1) {
    rest += fraction;
    fraction = 0;
  }
  const auto take = [&rest](double unit) {
    const double whole = std::trunc(rest / unit);
    rest = std::fmod(rest, unit);
    return FormatNumber(whole, "0");
  };
  std::string text = take(86400) + " Days, ";
  text += take(3600) + " Hours, ";
  text += take(60) + " Mins, ";
  return text + FormatNumber(rest + fraction, "#0.0###0") + " Secs";
}

// The two sizes at the start of a text of arguments: "2,20".
std::string twoSizes(std::string_view arguments) {
  return NumberText(std::trunc(Val(Before(arguments, ",")))) + "," +
         NumberText(std::trunc(Val(After(arguments, ","))));
}

// The dimensions of a stored value, shown after the suffix.
std::string shapeOf(const HistoSet& histo, int code) {
  switch (code) {
    case kHistogram:
      return "(" + NumberText(std::trunc(Val(histo.HistogramCode))) + ")";
    case kRainFlow:
      return "(" + twoSizes(histo.RainHistoCode) + ")";
    case kLevelCrossing:
      return "(" + twoSizes(LevelArguments(histo)) + ")";
    default:
      return {};
  }
}

// The name of value `i`, from 1, in the data.
std::string valueName(const OutputSource& source, int t, int code, int i) {
  const auto numbered = [i](std::string_view name) {
    return std::string(name) + "(" + NumberText(i) + ")";
  };
  switch (source.family) {
    case OutputFamily::kTK40MRef:
      return OutputValues(source, code) > 1 ? numbered("TK40MRef") : "TK40MRef";
    case OutputFamily::kCalcField:
      return code == kLevelCrossing ? CalcFieldLevelName(source.n, t) : source.name;
    default:
      return source.numbered ? numbered(source.name) : source.name;
  }
}

// The user's name for value `i`, and its units.
struct ValueTexts {
  std::string_view alias;
  std::string_view units;
};
ValueTexts textsOf(const OutputSource& source, int i) {
  ValueTexts texts = {{}, source.units};
  if (i <= static_cast<int>(source.aliases.size())) {
    const RepAlias& own = source.aliases[static_cast<std::size_t>(i - 1)];
    texts.alias = own.AliasName;
    if (!own.AliasUnits.empty()) texts.units = own.AliasUnits;
  }
  if (texts.alias.empty()) texts.alias = kNoAlias;
  if (texts.units.empty()) texts.units = kNoUnits;
  return texts;
}

class Description {
 public:
  explicit Description(const ProjectStore& store)
      : store_(store), sources_(OutputSourcesOf(store)) {}

  void Table(int t) {
    heading(t);
    std::int64_t column = 1;
    const OutputSource* group = nullptr;  // the group of the last separator
    for (const OutputSource& source : sources_) {
      for (int code = kSample; code <= source.lastCode; ++code) {
        if (!IsSelected(*source.output, t, code)) continue;
        if (group == nullptr || !sameGroup(*group, source)) separator(source);
        group = &source;
        for (int i = 1; i <= OutputValues(source, code); ++i) {
          field(source, t, code, i, column);
          column += OutputColumns(*source.output, t, code);
        }
      }
    }
    put(ruled("- End Table " + NumberText(t) + " -"));
  }

  std::string Take() { return std::move(text_); }

 private:
  void put(std::string_view line) {
    text_ += line;
    text_ += "\r\n";
  }
  void put(std::string_view label, std::string_view value) {
    put(std::string(label) + std::string(value));
  }

  void heading(int t) {
    const OutputTable& table = store_.Tables[t];
    put("");
    put(std::string(kColumnHeading.size(), '='));
    put("TABLE #" + NumberText(t) + "      = ", table.TableName);
    put("Location      = ", table.TableLocation == kPcCard ? "PC Card " : "SRAM in CPU");
    put("Interval      = ", intervalText(store_, table));
    if (table.AutoSize != 0) {
      put("Buffer Size   = Auto Size");
    } else {
      put("Buffer Size   = ", withCommas(table.Buffer) + " Records");
      const double micros = ORVUS_COMMON::TableIntervalMicros(store_, t);
      put("Time to Fill  = ", fillTime(table.Buffer * micros / 1e6));
    }
    put("Record Size   = ", withCommas(ORVUS_COMMON::SizeOfRecord(store_, t).bytes) + " Bytes");
    put("Fill and Stop = ", trueOrFalse(table.FillStop));
    put("Sync Table    = ", trueOrFalse(table.SyncTable));
    put("Control Flag  = ", flagName(table.FlagTable));
    put("Mark Flag     = ", flagName(table.FlagMark));
    put("Full Flag     = ", flagName(table.FlagFull));
    put("");
    put(kColumnHeading);
  }

  // Blocks of the two pulse slots have the same numbers but separate groups.
  static bool sameGroup(const OutputSource& left, const OutputSource& right) {
    if (groupOf(left).eachBlock) return &left == &right;
    return left.family == right.family;
  }

  void separator(const OutputSource& source) {
    const GroupTitle& group = groupOf(source);
    std::string line = "--" + std::string(group.title);
    if (group.eachBlock) line += NumberText(source.n) + " ";
    put(ruled(std::move(line)));
  }

  void field(const OutputSource& source, int t, int code, int i, std::int64_t column) {
    const Processing& processing = kProcessing[static_cast<std::size_t>(code)];
    const ValueTexts texts = textsOf(source, i);
    std::string line = FormatNumber(static_cast<double>(column), "000") + ".";
    TabTo(line, kResolutionColumn);
    line += source.resolution;
    TabTo(line, kMeasColumn);
    line += processing.meas;
    line += " - ";
    line += valueName(source, t, code, i);
    line += processing.suffix;
    line += shapeOf(source.output->Histo[t], code);
    TabTo(line, kAliasColumn);
    line += texts.alias;
    TabTo(line, kUnitsColumn);
    line += texts.units;
    put(line);
  }

  const ProjectStore& store_;
  std::vector<OutputSource> sources_;
  std::string text_;
};

}  // namespace

std::string TableDescriptionText(const ProjectStore& store, const DocumentHead& head) {
  Description description(store);
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn != 0) description.Table(t);
  }
  return HeadLines(head, store.Gen, kTableDescriptionHead) + description.Take();
}

bool WriteTableDescription(platform::FileSystem& files, platform::Forms& forms,
                           const std::string& base, const ProjectStore& store,
                           const DocumentHead& head) {
  return WriteDocument(files, forms, base + std::string(kTableDescriptionHead.extension),
                       TableDescriptionText(store, head));
}

}  // namespace ostrand
