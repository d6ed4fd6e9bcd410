// The reader of the project file.
//
// By definition a key means the first of all keys of its section, with every index up to its limit,
// whose text it equals. Trying them all would be far too slow, so the key is parsed instead: its
// name is looked up in the tables, and its indices are compared with the current limits. Those are
// the counts read so far, since a count precedes what it counts.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

#include "model/stored_text.h"
#include "projectfile/genfile.h"
#include "projectfile/key.h"
#include "projectfile/tables.h"
#include "projectfile/upgrade.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

// Values

std::optional<i32> readTime(std::string_view text) {
  const double factor = text.ends_with("mSecs") ? 1000 : 1;
  return RoundToInt32(Val(text) * factor);
}

std::optional<flag> readTruth(std::string_view text) {
  if (SameText(Trim(text), "True")) return kTrue;
  if (SameText(Trim(text), "False")) return kFalse;
  const auto number = ToDouble(text);
  if (!number) return std::nullopt;
  return *number == 0 ? kFalse : kTrue;
}

template <class Value, class Number>
bool put(std::optional<Value> value, Number& number) {
  if (value) number = static_cast<Number>(*value);
  return value.has_value();
}

template <class Number>
bool readNumber(Form form, std::string_view text, Number& number) {
  if (form == Form::kTruth) return put(readTruth(text), number);
  if constexpr (std::is_same_v<Number, i16>) {
    if (form == Form::kLead) return put(RoundToInt16(Val(text)), number);
  } else if constexpr (std::is_same_v<Number, i32>) {
    if (form == Form::kTime) return put(readTime(text), number);
    if (form == Form::kLead) return put(RoundToInt32(Val(text)), number);
  }
  return ReadNumber(text, number);
}

// A value that can't be read leaves the member unchanged and returns false.
template <class Number>
bool takeValue(Number& member, Form form, i16 limit, std::string_view text) {
  Number number = 0;
  if (!readNumber(form, text, number)) return false;
  member = limit > 0 && number > static_cast<Number>(limit) ? static_cast<Number>(limit) : number;
  return true;
}

bool takeValue(std::string& member, Form form, i16, std::string_view text) {
  if (form == Form::kWrittenOnly) return true;
  if (form == Form::kResolution) {
    if (const auto code = ToDouble(text)) text = *code == 0 ? "FP2" : "IEEE4";
  }
  member.assign(text);
  return true;
}

// Parts of a section. Each has a table of keys and finds the record for a key's brackets: none if
// they have another form or an index is outside.

struct Part {
  static constexpr std::string_view kPrefix{};
  // Whether a key without a record is skipped on purpose.
  static bool Ignores(ProjectStore&, const Key&) { return false; }
};

bool between(int low, int value, int high) { return low <= value && value <= high; }

bool inUse(const ProjectStore& store, int table) {
  return between(1, table, kTables) && store.Tables[table].TableOn != 0;
}

template <const auto& Keys, auto Member>
struct Single : Part {
  static constexpr const auto& kKeys = Keys;
  static auto* Find(ProjectStore& store, const Key& key) {
    return key.Has(0) ? &(store.*Member) : nullptr;
  }
};

// The elements of a row: MonitorPower(3).
template <const auto& Keys, auto Group, auto Member>
struct Elements : Part {
  static constexpr const auto& kKeys = Keys;
  static auto* Find(ProjectStore& store, const Key& key) {
    auto& row = store.*Group.*Member;
    return key.Has(1) && row.Holds(key.index[0]) ? &row[key.index[0]] : nullptr;
  }
};

struct StatusRows : Part {
  static constexpr const auto& kKeys = kStatusKeys;
  static std::string* Find(ProjectStore& store, const Key& key) {
    Configuration& config = store.Config;
    const bool inside = key.Has(2) &&
                        between(1, key.index[0], CountOf(config.StatusMonCount, config.Status)) &&
                        between(1, key.index[1], 4);
    return inside ? &config.Status[key.index[0]][key.index[1]] : nullptr;
  }
};

struct TableSwitches : Part {
  static constexpr const auto& kKeys = kTableOnKeys;
  static OutputTable* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1) && between(1, key.index[0], kTables);
    return inside ? &store.Tables[key.index[0]] : nullptr;
  }
};

template <const auto& Keys, Brackets Kind = Brackets::kCommas>
struct TableMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static OutputTable* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1, Kind) && inUse(store, key.index[0]);
    return inside ? &store.Tables[key.index[0]] : nullptr;
  }
};

// All ten conditions can be read, whatever their count.
template <int State>
struct TriggerRows : Part {
  static constexpr const auto& kKeys = kTriggerKeys;
  static constexpr std::string_view kPrefix = kTriggerPrefix[State];
  static TriggerCondition* Find(ProjectStore& store, const Key& key) {
    if (!key.Has(1)) return nullptr;
    const int number = key.index[0];
    const int table = number < 10 ? number : number < 100 ? number / 10 : number / 100;
    const int condition = number < 10 ? 1 : number - table * (number < 100 ? 10 : 100);
    const bool inside = inUse(store, table) && between(1, condition, kConditions) &&
                        TriggerNumber(table, condition) == number;
    return inside ? &store.Tables[table].Trigger[State][condition] : nullptr;
  }
};

struct WriteRows : Part {
  static constexpr const auto& kKeys = kWriteKeys;
  static WriteCondition* Find(ProjectStore& store, const Key& key) {
    const bool single = key.Has(1);
    if (!single && !key.Has(2, Brackets::kSpaced)) return nullptr;
    const int condition = single ? 1 : key.index[1];
    const bool inside = inUse(store, key.index[0]) && between(1, condition, kConditions);
    return inside ? &store.Tables[key.index[0]].Write[condition] : nullptr;
  }
};

template <auto Member, int Codes>
struct ReferenceSelections : Part {
  static constexpr const auto& kKeys = kSelectionKeys;
  static i16* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(2) && inUse(store, key.index[0]) && between(1, key.index[1], Codes);
    return inside ? &(store.*Member).Output.OutputSelect[key.index[0]][key.index[1] - 1] : nullptr;
  }
};

template <const auto& Keys, auto Member>
struct ReferenceHisto : Part {
  static constexpr const auto& kKeys = Keys;
  static HistoSet* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1) && inUse(store, key.index[0]);
    return inside ? &(store.*Member).Output.Histo[key.index[0]] : nullptr;
  }
};

template <class Family, const auto& Keys = Family::kGroupKeys>
struct GroupMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static auto* Find(ProjectStore& store, const Key& key) {
    return key.Has(0) ? &Family::Group(store) : nullptr;
  }
};

template <class Family>
bool holdsItem(ProjectStore& store, int item) {
  return between(1, item, Family::Count(store));
}

template <class Family, const auto& Keys = Family::kItemKeys>
struct ItemMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static auto* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1) && holdsItem<Family>(store, key.index[0]);
    return inside ? &Family::Item(store, key.index[0]) : nullptr;
  }
};

// The output settings of item index[1] in table index[0].
template <class Family>
OutputSet* findOutput(ProjectStore& store, const Key& key) {
  const bool inside = inUse(store, key.index[0]) && holdsItem<Family>(store, key.index[1]);
  return inside ? &Family::Item(store, key.index[1]).Output : nullptr;
}

template <class Family>
HistoSet* findHisto(ProjectStore& store, const Key& key) {
  OutputSet* output = findOutput<Family>(store, key);
  return output != nullptr ? &output->Histo[key.index[0]] : nullptr;
}

template <class Family, const auto& Keys>
struct HistoMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static HistoSet* Find(ProjectStore& store, const Key& key) {
    return key.Has(2) ? findHisto<Family>(store, key) : nullptr;
  }
};

template <class Family, const auto& Keys>
struct LevelMembers : HistoMembers<Family, Keys> {
  static constexpr std::string_view kPrefix = Family::kLevelPrefix;
};

template <class Family, const auto& Keys, auto Values, auto Count>
struct LevelValues : Part {
  static constexpr const auto& kKeys = Keys;
  static constexpr std::string_view kPrefix = Family::kLevelPrefix;
  static float* Find(ProjectStore& store, const Key& key) {
    HistoSet* histo = key.Has(3) ? findHisto<Family>(store, key) : nullptr;
    if (histo == nullptr) return nullptr;
    const int count = std::min<int>(histo->*Count, kLevels);
    return key.index[2] < count ? &(histo->*Values)[key.index[2]] : nullptr;
  }
};

template <class Family>
struct Selections : Part {
  static constexpr const auto& kKeys = kSelectionKeys;
  static i16* Find(ProjectStore& store, const Key& key) {
    OutputSet* output = key.Has(3) ? findOutput<Family>(store, key) : nullptr;
    if (output == nullptr || !between(1, key.index[2], kOutputCodes)) return nullptr;
    return &output->OutputSelect[key.index[0]][key.index[2] - 1];
  }
};

template <class Family, const auto& Keys>
struct Aliases : Part {
  static constexpr const auto& kKeys = Keys;
  static RepAlias* Find(ProjectStore& store, const Key& key) {
    if (!key.Has(2) || !holdsItem<Family>(store, key.index[0])) return nullptr;
    auto& item = Family::Item(store, key.index[0]);
    const bool inside = between(1, key.index[1], CountOf(item.Reps, item.Alias));
    return inside ? &item.Alias[key.index[1]] : nullptr;
  }
};

// Old keys of multiplexer blocks that apply to one kind of them only.
template <const auto& Keys, i32 Volts>
struct OldTK40MMembers : ItemMembers<TK40MFamily, Keys> {
  static TK40MBlockData* Find(ProjectStore& store, const Key& key) {
    TK40MBlockData* block = ItemMembers<TK40MFamily, Keys>::Find(store, key);
    return block != nullptr && block->TK40Volts == Volts ? block : nullptr;
  }
  static bool Ignores(ProjectStore& store, const Key& key) {
    return ItemMembers<TK40MFamily, Keys>::Find(store, key) != nullptr;
  }
};

// Ports: slot 0, because of the literal 0 of the keys.

PortSlot& firstSlot(ProjectStore& store) { return store.Ports.Slot[0]; }

struct PortSlotMembers : Part {
  static constexpr const auto& kKeys = kPortSlotKeys;
  static PortSlot* Find(ProjectStore& store, const Key& key) {
    return key.Has(1) && key.index[0] == 0 ? &firstSlot(store) : nullptr;
  }
};

template <const auto& Keys, int Last>
struct PortMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static Port* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(2) && key.index[0] == 0 && between(1, key.index[1], Last);
    return inside ? &firstSlot(store).Ports[key.index[1]] : nullptr;
  }
};

struct PortStates : Part {
  static constexpr const auto& kKeys = kPortStateKeys;
  static PortState* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(3) && between(0, key.index[0], 1) && key.index[1] == 0 &&
                        between(1, key.index[2], kPorts);
    return inside ? &firstSlot(store).Ports[key.index[2]].State[key.index[0]] : nullptr;
  }
};

struct BinaryMasks : Part {
  static constexpr const auto& kKeys = kBinaryMaskKeys;
  static std::string* Find(ProjectStore& store, const Key& key) {
    const bool inside =
        key.Has(3) && between(0, key.index[0], 2) && key.index[1] == 0 && key.index[2] == 1;
    return inside ? &firstSlot(store).BinaryMask[key.index[0]] : nullptr;
  }
};

bool isPortTable(const ProjectStore& store, const Key& key) {
  return key.index[0] == 0 && inUse(store, key.index[1]) && key.index[2] == 1;
}

struct PortHistograms : Part {
  static constexpr const auto& kKeys = kHistogramKeys;
  static HistoSet* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(3) && isPortTable(store, key);
    return inside ? &firstSlot(store).Output.Histo[key.index[1]] : nullptr;
  }
};

struct PortSelections : Part {
  static constexpr const auto& kKeys = kSelectionKeys;
  static i16* Find(ProjectStore& store, const Key& key) {
    const bool inside =
        key.Has(4) && isPortTable(store, key) && between(1, key.index[3], kOutputCodes);
    if (!inside) return nullptr;
    return &firstSlot(store).Output.OutputSelect[key.index[1]][key.index[3] - 1];
  }
};

struct FlagMembers : Part {
  static constexpr const auto& kKeys = kFlagKeys;
  static FlagControl* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1) && store.Flags.Holds(key.index[0]);
    return inside ? &store.Flags[key.index[0]] : nullptr;
  }
};

template <int State>
struct FlagStates : Part {
  static constexpr const auto& kKeys = kFlagStateKeys;
  static constexpr std::string_view kPrefix = kFlagStatePrefix[State - 1];
  static FlagState* Find(ProjectStore& store, const Key& key) {
    FlagControl* control = FlagMembers::Find(store, key);
    return control != nullptr ? &control->State[State] : nullptr;
  }
};

struct ExciteChannels : Part {
  static constexpr const auto& kKeys = kExciteChannelKeys;
  static ExciteChannel* Find(ProjectStore& store, const Key& key) {
    const bool inside = key.Has(1) && between(1, key.index[0], 2);
    return inside ? &store.ExciteOut.Slot[0][key.index[0]] : nullptr;
  }
};

template <const auto& Keys>
struct CanModuleMembers : Part {
  static constexpr const auto& kKeys = Keys;
  static CanModuleData* Find(ProjectStore& store, const Key& key) {
    return key.Has(0) ? &store.Can.Module[kSavedCanModule] : nullptr;
  }
};

struct CalcColumns : Part {
  static constexpr const auto& kKeys = kCalcColumnKeys;
  static std::string* Find(ProjectStore& store, const Key& key) {
    const bool inside =
        key.Has(2) && holdsItem<CalcFamily>(store, key.index[0]) && between(1, key.index[1], 4);
    return inside ? &store.CalcFields.Field[key.index[0]].CalcField[key.index[1]] : nullptr;
  }
};

// The result of a line.
enum class Fate {
  kRead,
  kUnknownKey,  // the section has no such key
  kNoPlace,     // its indices are beyond the current counts
  kBadValue,
};

// The value that a field of a part means for a key; none without a record.
template <class P>
Value valueOf(std::size_t field, ProjectStore& store, const Key& key) {
  auto* record = P::Find(store, key);
  return record != nullptr ? P::kKeys[field].member.Of(*record) : Value();
}

struct PartRoutines {
  Value (*valueOf)(std::size_t field, ProjectStore& store, const Key& key);
  bool (*ignores)(ProjectStore& store, const Key& key);
};

// A key of a section.
struct Entry {
  KeyName name;  // with its prefix
  Form form = Form::kStr;
  i16 limit = 0;
  std::uint8_t part = 0;
  std::uint8_t field = 0;
};

constexpr std::size_t kPlaces = 512;
constexpr std::size_t kMaxEntries = 128;  // a place is one byte, and most places must stay free

constexpr std::size_t placeOf(std::string_view name) {
  if (name.empty()) return 0;
  const auto code = [&](std::size_t at) -> std::size_t {
    return static_cast<unsigned char>(name[at]);
  };
  return (name.size() * 67 + code(0) * 31 + code(name.size() / 2) * 13 +
          code(name.size() - 1) * 5) %
         kPlaces;
}

// The keys of one section.
struct SectionKeys {
  std::span<const PartRoutines> parts;
  std::span<const Entry> entries;
  // A hash table of the entries, numbered from 1; 0 is free.
  std::span<const std::uint8_t, kPlaces> places;
};

// Builds the tables of a section at compile time.
template <class... Parts>
class Keys {
 public:
  static constexpr SectionKeys Tables() { return {kParts, kEntries, kPlacing}; }

 private:
  static constexpr std::size_t kCount = (std::size(Parts::kKeys) + ...);
  static_assert(kCount < kMaxEntries);

  template <class P>
  static constexpr void list(Entry*& next, std::uint8_t part) {
    std::uint8_t field = 0;
    for (const auto& key : P::kKeys) {
      *next++ = {KeyName(P::kPrefix, key.key), key.form, key.limit, part, field++};
    }
  }
  static constexpr std::array<Entry, kCount> listAll() {
    std::array<Entry, kCount> entries{};
    Entry* next = entries.data();
    std::uint8_t part = 0;
    (list<Parts>(next, part++), ...);
    return entries;
  }
  static constexpr std::array<std::uint8_t, kPlaces> placeAll() {
    std::array<std::uint8_t, kPlaces> places{};
    std::uint8_t number = 0;
    for (const Entry& entry : kEntries) {
      std::size_t at = placeOf(entry.name.Text());
      while (places[at] != 0) at = (at + 1) % kPlaces;
      places[at] = ++number;
    }
    return places;
  }

  static constexpr PartRoutines kParts[] = {{valueOf<Parts>, Parts::Ignores}...};
  static constexpr std::array<Entry, kCount> kEntries = listAll();
  static constexpr std::array<std::uint8_t, kPlaces> kPlacing = placeAll();
};

Fate takeEntry(const PartRoutines& part, const Entry& entry, ProjectStore& store, const Key& key,
               std::string_view text) {
  const Value value = part.valueOf(entry.field, store, key);
  if (value.IsNone()) return part.ignores(store, key) ? Fate::kRead : Fate::kNoPlace;
  const bool taken =
      value.Visit([&](auto& member) { return takeValue(member, entry.form, entry.limit, text); });
  return taken ? Fate::kRead : Fate::kBadValue;
}

// Stores the text under the key; a key that is not of the section changes nothing.
Fate take(const SectionKeys& keys, ProjectStore& store, const Key& key, std::string_view text) {
  Fate fate = Fate::kUnknownKey;
  for (std::size_t at = placeOf(key.name); keys.places[at] != 0; at = (at + 1) % kPlaces) {
    const Entry& entry = keys.entries[keys.places[at] - 1U];
    if (entry.name.Text() != key.name) continue;
    fate = takeEntry(keys.parts[entry.part], entry, store, key, text);
    if (fate != Fate::kNoPlace) return fate;
  }
  return fate;
}

// The keys of every measured item, added to those of its kind.
template <class Family, class... More>
using OutputKeys =
    Keys<More..., HistoMembers<Family, kHistogramKeys>, HistoMembers<Family, kRainHistoKeys>,
         LevelMembers<Family, kLevelKeys>,
         LevelValues<Family, kLevelOneKeys, &HistoSet::LevelVarOne, &HistoSet::LevNumLevels>,
         LevelMembers<Family, kLevNumTestsKeys>,
         LevelValues<Family, kLevelTwoKeys, &HistoSet::LevelVarTwo, &HistoSet::LevNumTests>,
         LevelMembers<Family, kNumDimsKeys>, Selections<Family>>;

template <class Family, class... More>
using FamilyKeys =
    OutputKeys<Family, GroupMembers<Family>, ItemMembers<Family>, Aliases<Family, kAliasKeys>,
               Aliases<Family, Family::kOffsetKeys>, Aliases<Family, kAliasExceptKeys>, More...>;

using P = ProjectStore;

struct SectionRow {
  Section section;
  SectionKeys keys;
};
constexpr SectionRow kSectionRows[] = {
    {Section::kGenVersion, Keys<Single<kGenVersionKeys, &P::Gen>>::Tables()},
    {Section::kConfiguration,
     Keys<Single<kOperatorKeys, &P::Gen>, Single<kQuantityKeys, &P::Config>,
          Elements<kMonitorPowerKeys, &P::Config, &Configuration::MonitorPower>,
          Elements<kTcConfigOptsKeys, &P::Config, &Configuration::TcConfigOpts>,
          Single<kConfigurationKeys, &P::Config>, StatusRows>::Tables()},
    {Section::kScanSetup, Keys<Single<kScanKeys, &P::Scan>>::Tables()},
    {Section::kTableSetup,
     Keys<Single<kDisplayKeys, &P::Tables>, TableSwitches, TableMembers<kTableKeys>, TriggerRows<0>,
          TableMembers<kTrigTabStopKeys>, TriggerRows<1>,
          TableMembers<kEventStartKeys, Brackets::kStart>,
          TableMembers<kEventStopKeys, Brackets::kStop>, TableMembers<kEventKeys>,
          TableMembers<kTableControlKeys>, WriteRows, TableMembers<kWriteGroupKeys>>::Tables()},
    {Section::kPowerOut,
     Keys<Single<kReferenceKeys, &P::PowerOut>, ReferenceSelections<&P::PowerOut, kPowerOutCodes>,
          ReferenceHisto<kHistogramKeys, &P::PowerOut>,
          ReferenceHisto<kRainHistoKeys, &P::PowerOut>>::Tables()},
    {Section::kTK40MRef,
     Keys<Single<kReferenceKeys, &P::TK40MRef>, ReferenceSelections<&P::TK40MRef, kReferenceCodes>,
          ReferenceHisto<kHistogramKeys, &P::TK40MRef>,
          ReferenceHisto<kRainCodeKeys, &P::TK40MRef>>::Tables()},
    {Section::kTK40MBlocks, FamilyKeys<TK40MFamily, ItemMembers<TK40MFamily, kTK40MOldKeys>,
                                       OldTK40MMembers<kTK40MOldTempKeys, 0>,
                                       OldTK40MMembers<kTK40MOldVoltKeys, 1>>::Tables()},
    {Section::kTcRef, Keys<Single<kReferenceKeys, &P::TcRef>,
                           ReferenceSelections<&P::TcRef, kReferenceCodes>>::Tables()},
    {Section::kTempBlocks, FamilyKeys<TempFamily>::Tables()},
    {Section::kVoltBlocks, FamilyKeys<VoltFamily>::Tables()},
    {Section::kBridgeBlocks,
     FamilyKeys<BridgeFamily, HistoMembers<BridgeFamily, kBridgeOldKeys>>::Tables()},
    {Section::kPulseBlocks,
     FamilyKeys<PulseFamily<0>, GroupMembers<PulseFamily<0>, kPulseOldKeys>>::Tables()},
    {Section::kPortSetup,
     Keys<Single<kCodeTypeKeys, &P::Ports>, PortSlotMembers, PortMembers<kPortKeys, kPorts>,
          PortMembers<kPolarityKeys, kPorts - 1>, PortStates, BinaryMasks, PortHistograms,
          PortSelections>::Tables()},
    {Section::kFlagControl, Keys<FlagMembers, FlagStates<1>, FlagStates<2>>::Tables()},
    {Section::kExciteControl, Keys<Single<kExciteKeys, &P::ExciteOut>, ExciteChannels>::Tables()},
    {Section::kCanItems, FamilyKeys<CanFamily, CanModuleMembers<kCanModuleKeys>,
                                    CanModuleMembers<kCanEnabledKeys>>::Tables()},
    {Section::kSpeedCalc,
     Keys<Single<kSpeedCalcKeys, &P::SpeedCalc>,
          Elements<kGearRatioKeys, &P::SpeedCalc, &SpeedCalcRecord::GearRatio>>::Tables()},
    {Section::kMultOffCalc, Keys<Single<kLineCalcKeys, &P::MultOffCalc>>::Tables()},
    {Section::kMVPerVoltCalc, Keys<Single<kMVPerVoltCalcKeys, &P::MVPerVoltCalc>>::Tables()},
    {Section::kPotCalc, Keys<Single<kLineCalcKeys, &P::PotCalc>>::Tables()},
    {Section::kRsCalc, Keys<Single<kRsCalcKeys, &P::RsCalc>>::Tables()},
    {Section::kRpmCalc, Keys<Single<kRpmCalcKeys, &P::RpmCalc>>::Tables()},
    {Section::kMoreSpeedCalc, Keys<Single<kMoreSpeedCalcKeys, &P::MoreSpeedCalc>>::Tables()},
    {Section::kFlowCalc, Keys<Single<kFlowCalcKeys, &P::FlowCalc>>::Tables()},
    {Section::kCalcFields, OutputKeys<CalcFamily, GroupMembers<CalcFamily>, ItemMembers<CalcFamily>,
                                      CalcColumns>::Tables()},
};

constexpr bool inOrder() {
  for (std::size_t at = 0; at < std::size(kSectionRows); ++at) {
    if (static_cast<std::size_t>(kSectionRows[at].section) != at) return false;
  }
  return std::size(kSectionRows) == std::size(kSections);
}
static_assert(inOrder(), "a row for each section, in their order");

Fate takeKey(ProjectStore& store, Section section, const Key& key, std::string_view value) {
  return take(kSectionRows[static_cast<std::size_t>(section)].keys, store, key, value);
}

// Lines

// Whether a line is the header, or the header spelled without its blanks.
bool isHeader(std::string_view line, std::string_view header) {
  if (line == header) return true;
  for (const char c : header) {
    if (c == ' ') continue;
    if (line.empty() || line.front() != c) return false;
    line.remove_prefix(1);
  }
  return line.empty();
}

std::optional<Section> findSection(std::string_view line) {
  for (const SectionName& row : kSections) {
    if (isHeader(line, row.header)) return row.section;
  }
  return std::nullopt;
}

bool isBlank(std::string_view line) { return Trim(line).empty(); }

// Why a line was skipped.
constexpr std::string_view kNoSection = "no section of a project";
constexpr std::string_view kMarkInText = "\"[\" in a text, which begins a section";
constexpr std::string_view kAfterTheEnd = "after the line where reading ends";
constexpr std::string_view kOutsideSections = "in no section of a project";
constexpr std::string_view kNoEquals = "no \"=\" in it";

// By Fate.
constexpr std::string_view kReasons[] = {"", "unknown key", "beyond the counts above it",
                                         "not a value of this key"};

// Reads a file line by line.
class LineReader {
 public:
  explicit LineReader(ProjectStore& store) : store_(store) {}

  void Read(std::string_view rest) {
    mark_ = nextMark(rest);
    report_.noSection = true;
    while (!rest.empty()) {
      const std::string_view line = TakeLine(rest);
      ++number_;
      if (ended_) {
        if (!isBlank(line)) skip(line, kAfterTheEnd);
      } else {
        take(line);
      }
    }
  }
  // Whether the section of the panel reference was met.
  [[nodiscard]] bool SawTcRef() const { return sawTcRef_; }
  [[nodiscard]] const ReadReport& Report() const { return report_; }

 private:
  void take(std::string_view line) {
    const bool version = number_ == 1 && Holds(line, ".");
    if (version) store_.Gen.Version.assign(line);
    const std::size_t equals = line.find('=');
    if (holdsMark(line)) {
      section_ = findSection(line);
      if (section_) report_.noSection = false;
      if (section_ == Section::kTcRef) sawTcRef_ = true;
      if (!section_ && !version) {
        skip(line, equals < line.find(kSectionMark) ? kMarkInText : kNoSection);
      }
    } else if (equals == std::string_view::npos) {
      if (!isBlank(line) && !version) skip(line, section_ ? kNoEquals : kOutsideSections);
    } else if (!section_) {
      ended_ = true;
      if (!version) skip(line, kOutsideSections);
    } else {
      takeSetting(line, line.substr(0, equals), line.substr(equals + 1));
    }
  }

  // From the first section mark on.
  static std::string_view nextMark(std::string_view text) {
    return text.substr(std::min(text.find(kSectionMark), text.size()));
  }

  // Lines are checked in order: few have a mark, so the next one is remembered.
  bool holdsMark(std::string_view line) {
    const char* const end = line.data() + line.size();
    if (mark_.empty() || mark_.data() >= end) return false;
    mark_ = nextMark({end, mark_.data() + mark_.size()});
    return true;
  }

  void takeSetting(std::string_view line, std::string_view key, std::string_view value) {
    const Fate fate = takeKey(store_, *section_, ParseKey(key), value);
    if (fate == Fate::kRead || (fate == Fate::kBadValue && isBlank(value))) return;
    skip(line, kReasons[static_cast<std::size_t>(fate)]);
  }

  void skip(std::string_view line, std::string_view why) {
    if (++report_.skipped <= ReadReport::kMaxShown) {
      report_.first.push_back({number_, std::string(line), why});
    }
  }

  ProjectStore& store_;
  ReadReport report_;
  std::string_view mark_;  // the rest of the file from its next section mark on
  std::optional<Section> section_;
  int number_ = 0;  // of the line
  bool sawTcRef_ = false;
  bool ended_ = false;
};

}  // namespace

ReadReport ReadProjectText(ProjectStore& store, std::string_view bytes) {
  // A file cut between CR and LF has lost nothing else.
  if (bytes.ends_with('\r')) bytes.remove_suffix(1);
  LineReader reader(store);
  reader.Read(bytes);
  UpgradeConditions(store);
  if (!reader.SawTcRef()) RecountAliasExcept(store);
  return reader.Report();
}

}  // namespace ostrand::ORVUS_GENFILE
