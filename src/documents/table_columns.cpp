#include "documents/table_columns.h"

#include <array>
#include <cmath>

#include "model/intervals.h"
#include "model/names.h"
#include "model/output_table.h"
#include "model/units.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

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
    {OutputFamily::kBattery, "Logger Volts", false},
    {OutputFamily::kPanel, "Panel Ref Temp", false},
    {OutputFamily::kTK40MRef, "TK40M Reference", false},
    {OutputFamily::kTemp, "Thermocouple Block", true},
    {OutputFamily::kVolt, "Voltage Block", true},
    {OutputFamily::kBridge, "Bridge Block", true},
    {OutputFamily::kPulse, "Pulse Block", true},
    {OutputFamily::kTK40M, "TK40M Block", true},
    {OutputFamily::kCan, "CANBus Item", false},
    {OutputFamily::kPort, "Ports", false},
    {OutputFamily::kCalcField, "Calculated Field", false},
}};

const GroupTitle& groupOf(const OutputSource& source) {
  return kGroups[static_cast<std::size_t>(source.family)];
}

std::string titleOf(const OutputSource& source) {
  const GroupTitle& group = groupOf(source);
  const std::string title(group.title);
  return group.eachBlock ? title + " " + NumberText(source.n) : title;
}

// Blocks of the two pulse slots have the same numbers but separate groups.
bool sameGroup(const OutputSource& left, const OutputSource& right) {
  if (groupOf(left).eachBlock) return &left == &right;
  return left.family == right.family;
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
void addTexts(TableColumn& column, const OutputSource& source, int i) {
  column.units = source.units;
  if (i > static_cast<int>(source.aliases.size())) return;
  const RepAlias& own = source.aliases[static_cast<std::size_t>(i - 1)];
  column.alias = own.AliasName;
  if (!own.AliasUnits.empty()) column.units = own.AliasUnits;
}

TableColumn columnOf(const OutputSource& source, int t, int code, int i) {
  const Processing& processing = kProcessing[static_cast<std::size_t>(code)];
  TableColumn column;
  column.count = OutputColumns(*source.output, t, code);
  column.bytes = column.count * ORVUS_COMMON::BytesPerValue(source.resolution);
  column.groupTitle = titleOf(source);
  column.kind = source.kind;
  column.block = source.n;
  column.resolution = source.resolution;
  column.processing = processing.meas;
  column.field = valueName(source, t, code, i);
  column.field += processing.suffix;
  column.field += shapeOf(source.output->Histo[t], code);
  addTexts(column, source, i);
  return column;
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

}  // namespace

std::vector<TableColumn> ColumnsOf(const ProjectStore& store, int t) {
  std::vector<TableColumn> columns;
  std::int64_t number = 1;
  int groups = 0;
  const OutputSource* group = nullptr;
  const std::vector<OutputSource> sources = OutputSourcesOf(store);
  for (const OutputSource& source : sources) {
    for (int code = kSample; code <= source.lastCode; ++code) {
      if (!IsSelected(*source.output, t, code)) continue;
      if (group == nullptr || !sameGroup(*group, source)) ++groups;
      group = &source;
      for (int i = 1; i <= OutputValues(source, code); ++i) {
        TableColumn& column = columns.emplace_back(columnOf(source, t, code, i));
        column.number = number;
        column.group = groups;
        number += column.count;
      }
    }
  }
  return columns;
}

std::string TableIntervalText(const ProjectStore& store, int t) {
  const OutputTable& table = store.Tables[t];
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

std::string TimeToFillText(const ProjectStore& store, int t) {
  const double micros = ORVUS_COMMON::TableIntervalMicros(store, t);
  return fillTime(store.Tables[t].Buffer * micros / 1e6);
}

}  // namespace ostrand
