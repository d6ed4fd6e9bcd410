// The table of all keys of the project file with their words.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "projectfile/tables.h"

namespace ostrand::key_table {

using Section = ORVUS_GENFILE::Section;

// What the brackets of a key hold.
enum class Shape : std::uint8_t {
  kNone,        // nothing
  kNumbered,    // (i), a number without an item
  kItem,        // (block), also a table, flag or analog output
  kItemColumn,  // (item, column)
  kSensor,      // (block, repetition)
  kTableItem,   // (table, block)
  kSelection,   // (table, block, instruction)
  kLevel,       // (table, block, level from 0)
  kTable,       // (table), of a single value
  kTableValue,  // (table, instruction), of a single value
  kTriggerRow,  // table and condition as one number
  kEvent,       // (table), (table Start), (table Stop)
  kWriteRow,    // (table) or (table, condition)
  kSlot,        // (0)
  kPortItem,    // (0, port)
  kPortState,   // (state, 0, port)
  kMask,        // (state, 0, 1)
  kPortTable,   // (0, table, 1)
  kPortValue,   // (0, table, 1, instruction)
};

// The screen that has the control, from the screens of the key's section.
enum class Where : std::uint8_t {
  kNowhere,
  kMain,       // the one that the main button opens
  kSetup,      // that of the block or item
  kZeroPanel,  // the part of it that a bridge opens by a button
  kNames,      // its field names
  kOutputs,    // its output boxes
  kHistogram,
  kRainflow,
  kLevels,
  kTrigger,
  kWriteIf,
  kAdvanced,
};

// How a value is shown.
enum class Values : std::uint8_t {
  kPlain,
  kSwitch,
  kFlag,  // 0 is none
  kNames,
  kThermocouple,
};

// Names of the values from `first` on.
struct Names {
  int first = 0;
  std::array<std::string_view, 12> names = {};
};
inline constexpr Names kNoNames;
inline constexpr Names kTimeUnits = {0, {"\xB5s", "ms", "s", "min", "h", "days"}};
inline constexpr Names kLongUnits = {0, {"days", "h", "min", "s"}};
inline constexpr Names kRetryUnits = {-1, {"minutes", "hours"}};
inline constexpr Names kSelections = {-1, {"automatic", "manual"}};
inline constexpr Names kModes = {-1, {"buffer", "no buffer"}};
inline constexpr Names kIntegrations = {0, {"50 Hz", "60 Hz", "\xB5s", "ms"}};
inline constexpr Names kLocations = {1, {"internal memory", "PC card"}};
inline constexpr Names kDisplays = {0,
                                    {"none", "public", "table 1", "table 2", "table 3", "table 4",
                                     "table 5", "table 6", "table 7", "table 8"}};
inline constexpr Names kMuxKinds = {0, {"thermocouples", "millivolts"}};
inline constexpr Names kBauds = {0, {"1 M", "800 K", "500 K", "250 K", "125 K", "50 K", "20 K"}};
inline constexpr Names kIdTypes = {0, {"11 bit", "29 bit"}};
inline constexpr Names kMessages = {0, {"receive only", "transmit and receive", "transmit only"}};
inline constexpr Names kPortModes = {0, {"bits", "byte"}};
inline constexpr Names kDirections = {0, {"write", "read"}};
inline constexpr Names kOutputModes = {0, {"dynamic", "static"}};
inline constexpr Names kCurrents = {0, {"15 mA", "5 mA"}};
inline constexpr Names kMonths = {
    1, {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}};
inline constexpr Names kWeekDays = {1, {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}};
inline constexpr Names kSystems = {0, {"English", "metric"}};
inline constexpr Names kMetricFirst = {1, {"metric", "English"}};
inline constexpr Names kEnglishFirst = {1, {"English", "metric"}};
inline constexpr Names kDimensions = {0, {"one", "two"}};
// Words of numbered keys and of columns.
inline constexpr Names kMonitors = {
    1,
    {"battery voltage measured", "conditional power off in use", "battery saver",
     "panel temperature measured", "status monitor in use"}};
inline constexpr Names kReferenceOutputs = {1, {"reference output", "second reference output"}};
inline constexpr Names kStatusColumns = {1, {"field", "comparison", "value", "flag"}};
inline constexpr Names kFieldColumns = {1, {"name", "expression", "units", "parts"}};
inline constexpr Names kMasks = {0, {"byte of state 1", "byte of state 2", "ports in use"}};
inline constexpr Names kGears = {1, {"gear ratio: shaft turns", "gear ratio: wheel turns"}};
inline constexpr Names kInstructions = {
    1,
    {"sample", "maximum", "minimum", "average", "standard deviation", "histogram",
     "rainflow histogram", "level crossing"}};
inline constexpr Names kSizes = {1, {"circumference", "diameter", "radius"}};

constexpr std::uint32_t In(Section section) { return 1U << static_cast<unsigned>(section); }
template <class... More>
constexpr std::uint32_t In(Section first, More... more) {
  return In(first) | In(more...);
}

inline constexpr std::uint32_t kTemp = In(Section::kTempBlocks);
inline constexpr std::uint32_t kVolt = In(Section::kVoltBlocks);
inline constexpr std::uint32_t kBridge = In(Section::kBridgeBlocks);
inline constexpr std::uint32_t kPulse = In(Section::kPulseBlocks);
inline constexpr std::uint32_t kMux = In(Section::kTK40MBlocks);
inline constexpr std::uint32_t kCan = In(Section::kCanItems);
inline constexpr std::uint32_t kCalc = In(Section::kCalcFields);
inline constexpr std::uint32_t kAnalog = kTemp | kVolt | kBridge | kMux;
inline constexpr std::uint32_t kBlockSections = kAnalog | kPulse;
inline constexpr std::uint32_t kItemSections = kBlockSections | kCan | kCalc;
inline constexpr std::uint32_t kReferences =
    In(Section::kPowerOut, Section::kTK40MRef, Section::kTcRef);
inline constexpr std::uint32_t kConfig = In(Section::kConfiguration);
inline constexpr std::uint32_t kScan = In(Section::kScanSetup);
inline constexpr std::uint32_t kTables = In(Section::kTableSetup);
inline constexpr std::uint32_t kPort = In(Section::kPortSetup);
inline constexpr std::uint32_t kFlag = In(Section::kFlagControl);
inline constexpr std::uint32_t kExcite = In(Section::kExciteControl);
inline constexpr std::uint32_t kSpeed = In(Section::kSpeedCalc);
inline constexpr std::uint32_t kMore = In(Section::kMoreSpeedCalc);
inline constexpr std::uint32_t kFlow = In(Section::kFlowCalc);
inline constexpr std::uint32_t kLines = In(Section::kMultOffCalc, Section::kPotCalc);

// In `control`, "#" is the number of the item, "@" the other number. `names` are the names of the
// values, or the words by number of a key that has none for all.
struct KeyRow {
  std::uint32_t sections;
  std::string_view key;  // of level crossings without the prefix of the kind
  Shape shape;
  std::string_view words;
  Where where = Where::kNowhere;
  std::string_view control = {};
  Values values = Values::kPlain;
  const Names& names = kNoNames;
  bool derived = false;
};

extern const std::span<const KeyRow> kRows;

// The screens of a section, and how its items are called.
struct SectionRow {
  Section section;
  std::string_view group;      // "Voltage blocks"
  std::string_view item = {};  // "Voltage block"
  std::string_view screen = {};
  std::string_view setup = {};  // of a block; empty where the main screen shows the items
};
const SectionRow* RowOfSection(std::string_view header);

}  // namespace ostrand::key_table
