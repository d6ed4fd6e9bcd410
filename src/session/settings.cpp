#include "session/settings.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "platform/guarded.h"
#include "platform/paths.h"
#include "text/nearest.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Default identity; the section always has this name.
constexpr std::string_view kIdentity = "QUILLON";
constexpr std::string_view kMachine = "HKLM";
constexpr std::string_view kMakerKey = "SOFTWARE\\Fernhollow Instruments";
constexpr std::string_view kProductKey = "SOFTWARE\\Fernhollow Instruments\\ProgGen";
constexpr std::string_view kUserKey = "HKCU\\Software\\Fernhollow Instruments\\";
constexpr std::string_view kViewProduct = "ProgGen";
constexpr std::string_view kFontSection = "ConditionFont";
constexpr std::string_view kNumbersSection = "SummaryNumbers";
constexpr std::string_view kCompilerName = "VKPComp.EXE";

constexpr i32 systemColor(std::uint32_t index) { return static_cast<i32>(0x80000000U | index); }

constexpr SoftPalette kSoftColors = {16346220, 3651895, 12961106, 1973964, 14582750, 7138540};
constexpr SoftPalette kPlainColors = {16711680, 65280, 16776960, 255, 16711935, 65535};
constexpr int kThirdColor = 2;
constexpr i32 kSoftHighlight = 128;
constexpr i32 kPlainHighlight = 192;
constexpr SummaryPalette kSystemSummary = {systemColor(5), systemColor(8), systemColor(5),
                                           systemColor(8)};

enum SettingRowNumber {
  kSummaryHighlight = 15,
  kGenPath = 20,
  kVKCompPath,
  kCurrentOptionsPage,
  kCurrentOptionsTop,
  kCurrentOptionsLeft,
  kWarningMessageMask,
  kUserVarListTypes,
  kDefaultScanInterval,
  kDefaultScanIntervalUnits,
  kDefaultNumFlags,
  kDefaultDataType,
  kDefaultIntegrationCode,
  kDefaultInputType,
  kDefaultTableAutoSize,
  kDefaultTableNumRecs
};

enum class Kind { kText, kNumber, kKinds };

constexpr i32 kMin = std::numeric_limits<i32>::min();
constexpr i32 kMax = std::numeric_limits<i32>::max();

// The values of a row. The limits apply to values set by hand; a stored value outside them becomes
// the default only for codes (takeWithin).
struct RowRule {
  int row;
  std::string_view name;
  std::string_view text;  // default of a text
  i32 number;             // default of a number
  Kind kind;
  i32 min;
  i32 max;
};

constexpr RowRule number(int row, std::string_view name, i32 standard, i32 min = kMin,
                         i32 max = kMax) {
  return {row, name, {}, standard, Kind::kNumber, min, max};
}

constexpr RowRule kRules[] = {
    number(10, "Form Background", systemColor(0x0C)),
    number(11, "Panel Background", systemColor(0x0F)),
    number(12, "Panel Text", systemColor(0x12)),
    number(13, "Summary Background", kSystemSummary.Back),
    number(14, "Summary Text", kSystemSummary.Text),
    number(kSummaryHighlight, "Summary Highlight", kPlainHighlight),
    {kGenPath, "GenPath", "C:\\Larkfield\\DLDFILES", 0, Kind::kText, 0, 0},
    {kVKCompPath, "VKCompPath", {}, 0, Kind::kText, 0, 0},  // default from the machine's keys
    number(kCurrentOptionsPage, "CurrentOptionsPage", 1),
    number(kCurrentOptionsTop, "CurrentOptionsTop", 600),
    number(kCurrentOptionsLeft, "CurrentOptionsLeft", 600),
    number(kWarningMessageMask, "WarningMessageMask", 8191),
    {kUserVarListTypes, "UserVarListTypes",
     "67108864,1,16777216,33554432,268435456,16,32,64,128,65536,131072,262144", 0, Kind::kKinds, 0,
     0},
    number(kDefaultScanInterval, "DefaultScanInterval", 10, 1),
    number(kDefaultScanIntervalUnits, "DefaultScanIntervalUnits", 1, 0, 3),
    number(kDefaultNumFlags, "DefaultNumFlags", 8, 0, kFlags),
    number(kDefaultDataType, "DefaultDataType", ORVUS_OUTDATA_FP2, 0, 1),
    number(kDefaultIntegrationCode, "DefaultIntegrationCode", 2, 0, 2),
    number(kDefaultInputType, "DefaultInputType", ORVUS_INPUT_DIFF, 0, 1),
    number(kDefaultTableAutoSize, "DefaultTableAutoSize", 0, 0, 1),
    number(kDefaultTableNumRecs, "DefaultTableNumRecs", 1000, 1),
};

const RowRule& ruleOf(int row) {
  const auto* rule = std::find_if(std::begin(kRules), std::end(kRules),
                                  [row](const RowRule& there) { return there.row == row; });
  if (rule == std::end(kRules)) throw SubscriptOutOfRange();
  return *rule;
}

Error unknownSetting(std::string_view name) {
  std::vector<std::string_view> names;
  for (const RowRule& rule : kRules) names.push_back(rule.name);
  return Error{"unknown setting \"" + std::string(name) + "\"" + DidYouMean(name, names)};
}

const RowRule* ruleNamed(std::string_view name) {
  const auto* rule =
      std::find_if(std::begin(kRules), std::end(kRules),
                   [name](const RowRule& there) { return SameText(there.name, name); });
  return rule == std::end(kRules) ? nullptr : rule;
}

bool isWithin(const RowRule& rule, i32 value) { return value >= rule.min && value <= rule.max; }

std::string defaultText(const RowRule& rule) {
  return rule.kind == Kind::kNumber ? NumberText(rule.number) : std::string(rule.text);
}

// The kinds in a list; anything but numbers is ignored.
std::vector<i32> kindsIn(std::string_view list) {
  std::vector<i32> kinds;
  for (const std::string_view part : Split(list, ',')) {
    if (const auto kind = ToInt32(part)) kinds.push_back(*kind);
  }
  return kinds;
}

std::string kindsText(const std::vector<i32>& kinds) {
  std::string text;
  for (const i32 kind : kinds) {
    if (!text.empty()) text += ',';
    text += NumberText(kind);
  }
  return text;
}

// Whether a list set by hand contains only kinds (single bits), each once.
bool isListOfKinds(std::string_view list) {
  std::vector<i32> kinds = kindsIn(list);
  if (kinds.size() != Split(list, ',').size()) return false;
  std::sort(kinds.begin(), kinds.end());
  return std::adjacent_find(kinds.begin(), kinds.end()) == kinds.end() &&
         std::all_of(kinds.begin(), kinds.end(),
                     [](i32 kind) { return kind > 0 && (kind & (kind - 1)) == 0; });
}

// A value set by hand, in the form of the row.
Result<std::string> checkedValue(const RowRule& rule, std::string_view value) {
  const std::string refused = ", not \"" + std::string(value) + "\"";
  const std::string name(rule.name);
  switch (rule.kind) {
    case Kind::kText:
      if (!Trim(value).empty()) return std::string(value);
      return Error{name + " cannot be empty"};
    case Kind::kKinds:
      if (isListOfKinds(value)) return kindsText(kindsIn(value));
      return Error{name + " is a list of different variable kinds (" + std::string(rule.text) +
                   ")" + refused};
    case Kind::kNumber:
      break;
  }
  const auto number = ToDouble(value);
  const auto whole = ToInt32(value);
  if (whole && *number == *whole && isWithin(rule, *whole)) return NumberText(*whole);
  std::string wanted = " is a whole number";
  if (rule.min > kMin || rule.max < kMax) {
    wanted += " from " + NumberText(rule.min) + " to " + NumberText(rule.max);
  }
  return Error{name + wanted + refused};
}

// The stored value of a row; empty when there is none.
std::string_view storedValue(const std::vector<platform::Setting>& stored, std::string_view name) {
  const auto found =
      std::find_if(stored.begin(), stored.end(),
                   [name](const platform::Setting& row) { return SameText(row.name, name); });
  return found == stored.end() ? std::string_view{} : std::string_view(found->value);
}

// The number in a text, if it is one.
ORVUS_COMMON::UserValue userValue(const std::vector<platform::Setting>& stored,
                                  std::string_view name,
                                  const ORVUS_COMMON::UserValue& defaultValue) {
  const std::string text(storedValue(stored, name));
  if (text.empty()) return defaultValue;
  if (const auto number = ToDouble(text)) return *number;
  return text;
}

// The compiler in the folder that the machine sets for it.
std::string compilerIn(std::string_view folder) {
  const std::string inFolder = folder.empty() ? "\\" : platform::WithSeparator(folder);
  return inFolder + std::string(kCompilerName);
}

}  // namespace

Settings::Settings(platform::SettingsStore& store, platform::MachineRegistry& registry,
                   std::string temporaryFolder)
    : store_(store),
      registry_(registry),
      temporaryFolder_(std::move(temporaryFolder)),
      registryApp_(kIdentity) {
  BuildSettingsTable();
  LoadSettings(false);
}

void Settings::RegistryApp(std::string_view name) {
  registryApp_ = Trim(name).empty() ? kIdentity : name;
}

void Settings::GenFilePath(std::string_view folder) {
  genFilePath_ = platform::WithSeparator(folder);
}

void Settings::BuildSettingsTable() {
  SoftColors(false);
  SoftTextHighlight(false);
  UseLegacy(true);
  readFolders();
  table_.Fill({});
  for (const RowRule& rule : kRules) {
    table_[rule.row] = {std::string(rule.name), defaultText(rule), defaultText(rule)};
  }
  const std::string highlight = NumberText(highlightLevel_);
  table_[kSummaryHighlight] = {table_[kSummaryHighlight].Name, highlight, highlight};
  const std::string compiler = compilerIn(compilers_);
  table_[kVKCompPath] = {table_[kVKCompPath].Name, compiler, compiler};
  UseLegacy(false);
}

void Settings::ReadWorkDir() {
  workDir_ = ORVUS_COMMON::QuietRegistrySetting(registry_, kMachine, kProductKey, "WorkDir");
  if (Trim(workDir_).empty()) workDir_ = temporaryFolder_;
}

void Settings::readFolders() {
  ReadWorkDir();
  compilers_ = ORVUS_COMMON::QuietRegistrySetting(registry_, kMachine, kMakerKey, "Compilers");
}

void Settings::LoadSettings(bool readStore) {
  if (readStore) {
    this->readStore();
    readView();
  }
  takeColors();
  takeFolders();
  takeVariableKinds();
  takeOptions();
}

void Settings::readStore() {
  const std::vector<platform::Setting> stored = store_.Read(registryApp_, kIdentity);
  for (const RowRule& rule : kRules) {
    const std::string_view value = storedValue(stored, rule.name);
    SettingRow& row = table_[rule.row];
    row.Value = Trim(value).empty() ? row.Default : std::string(value);
  }
}

// A number outside its limits is replaced by the default.
void Settings::readView() {
  using Rows = std::vector<platform::Setting>;
  const std::string place = std::string(kUserKey).append(kViewProduct);
  const Rows fontRows = store_.Read(place, kFontSection);
  const Rows numberRows = store_.Read(place, kNumbersSection);
  const auto text = [](const Rows& rows, std::string_view name, const std::string& standard) {
    const ORVUS_COMMON::UserValue value = userValue(rows, name, standard);
    const auto* kept = std::get_if<std::string>(&value);
    return kept != nullptr ? *kept : NumberText(std::get<double>(value));
  };
  const auto number = [&](const Rows& rows, std::string_view name, i32 standard, i32 min, i32 max) {
    const i32 value = ToInt32(text(rows, name, NumberText(standard))).value_or(standard);
    return value >= min && value <= max ? value : standard;
  };
  const ViewOptions standard;
  const TextFont& font = standard.ConditionFont;
  const NumberFormat& numbers = standard.SummaryNumbers;
  constexpr auto kMaxForm = static_cast<i32>(NumberForm::kCustom);
  view_ = {{text(fontRows, "Name", font.Name), text(fontRows, "Style", font.Style),
            number(fontRows, "Size", font.Size, kMinFontSize, kMaxFontSize)},
           {static_cast<NumberForm>(
                number(numberRows, "Form", static_cast<i32>(numbers.form), 0, kMaxForm)),
            number(numberRows, "Digits", numbers.digits, 0, kMaxFormDigits)}};
  storedView_ = view_;
}

Result<> Settings::saveView() {
  if (!ViewChanged()) return Done{};
  struct ViewRow {
    std::string_view section;
    std::string_view name;
    std::string value;
  };
  const TextFont& font = view_.ConditionFont;
  const NumberFormat& numbers = view_.SummaryNumbers;
  const ViewRow rows[] = {{kFontSection, "Name", font.Name},
                          {kFontSection, "Style", font.Style},
                          {kFontSection, "Size", NumberText(font.Size)},
                          {kNumbersSection, "Form", NumberText(static_cast<i32>(numbers.form))},
                          {kNumbersSection, "Digits", NumberText(numbers.digits)}};
  for (const ViewRow& row : rows) {
    auto kept =
        ORVUS_COMMON::SetUserSetting(store_, kViewProduct, row.section, row.name, row.value);
    if (!kept) return kept;
  }
  storedView_ = view_;
  return Done{};
}

// The number of a row, or its default if it has none. The row then shows the number.
i32 Settings::takeNumber(int row) {
  SettingRow& there = table_[row];
  const i32 value = ToInt32(there.Value).value_or(ToInt32(there.Default).value_or(0));
  there.Value = NumberText(value);
  return value;
}

// Like takeNumber, for codes: an invalid code is replaced by the default.
i32 Settings::takeWithin(int row) {
  const i32 value = takeNumber(row);
  if (isWithin(ruleOf(row), value)) return value;
  table_[row].Value = table_[row].Default;
  return takeNumber(row);
}

void Settings::takeColors() {
  for (int color = 0; color < kColors; ++color) {
    colorValues_[color] = takeNumber(kFirstColor + color);
  }
}

void Settings::takeFolders() {
  for (const int row : {kGenPath, kVKCompPath}) {
    if (Trim(table_[row].Value).empty()) table_[row].Value = table_[row].Default;
  }
  GenFilePath(table_[kGenPath].Value);
  CompilerPath(table_[kVKCompPath].Value);
}

void Settings::takeVariableKinds() {
  userVarListTypes_ = kindsIn(table_[kUserVarListTypes].Value);
  if (userVarListTypes_.empty()) {
    table_[kUserVarListTypes].Value = table_[kUserVarListTypes].Default;
    userVarListTypes_ = kindsIn(table_[kUserVarListTypes].Value);
  }
}

void Settings::takeOptions() {
  for (const int row : {kCurrentOptionsPage, kCurrentOptionsTop, kCurrentOptionsLeft}) {
    static_cast<void>(takeNumber(row));  // kept only in the table
  }
  warningMessageMask_ = takeNumber(kWarningMessageMask);
  options_.DefaultScanInterval = takeNumber(kDefaultScanInterval);
  options_.DefaultScanIntervalUnits = takeNumber(kDefaultScanIntervalUnits);
  options_.DefaultNumFlags = takeNumber(kDefaultNumFlags);
  options_.Measurement = {
      .DefaultDataType = static_cast<OrvusOutputDataTypes>(takeWithin(kDefaultDataType)),
      .DefaultIntegrationCode =
          static_cast<OrvusMeasIntegrationCodes>(takeWithin(kDefaultIntegrationCode)),
      .DefaultInputType = static_cast<OrvusAnalogInputTypes>(takeWithin(kDefaultInputType))};
  options_.DefaultTableAutoSize = takeNumber(kDefaultTableAutoSize);
  options_.DefaultTableNumRecs = takeNumber(kDefaultTableNumRecs);
}

void Settings::CopyToTable() {
  for (int color = 0; color < kColors; ++color) {
    table_[kFirstColor + color].Value = NumberText(colorValues_[color]);
  }
  table_[kGenPath].Value = genFilePath_;
  table_[kVKCompPath].Value = compilerPath_;
  table_[kUserVarListTypes].Value = kindsText(userVarListTypes_);
  const std::pair<int, i32> numbers[] = {
      {kWarningMessageMask, warningMessageMask_},
      {kDefaultScanInterval, options_.DefaultScanInterval},
      {kDefaultScanIntervalUnits, options_.DefaultScanIntervalUnits},
      {kDefaultNumFlags, options_.DefaultNumFlags},
      {kDefaultDataType, options_.Measurement.DefaultDataType},
      {kDefaultIntegrationCode, options_.Measurement.DefaultIntegrationCode},
      {kDefaultInputType, options_.Measurement.DefaultInputType},
      {kDefaultTableAutoSize, options_.DefaultTableAutoSize},
      {kDefaultTableNumRecs, options_.DefaultTableNumRecs},
  };
  for (const auto& [row, value] : numbers) table_[row].Value = NumberText(value);
}

Result<> Settings::SaveSettings() {
  CopyToTable();
  std::vector<platform::Setting> rows;
  for (const SettingRow& row : List()) rows.push_back({row.Name, row.Value});
  if (auto kept = store_.Write(registryApp_, kIdentity, rows); !kept) return kept;
  return saveView();
}

std::string Settings::TakeNotice() {
  const std::string ofStore = store_.TakeNotice();
  const std::string ofMachine = registry_.TakeNotice();
  return ofStore.empty() || ofMachine.empty() ? ofStore + ofMachine : ofStore + "\r\n" + ofMachine;
}

std::string_view Settings::ColorName(int color) { return ruleOf(kFirstColor + color).name; }

ColorTable Settings::GetSelectedColors() const {
  ColorTable colors;
  int color = 0;
  for (auto& row : colors) {
    row = {std::string(ColorName(color)), NumberText(colorValues_[color]),
           table_[kFirstColor + color].Default};
    ++color;
  }
  return colors;
}

void Settings::SetSelectedColors(const ColorTable& colors) {
  auto values = colorValues_;
  int color = 0;
  for (const auto& row : colors) {
    const auto value = ToInt32(row[1]);
    if (!value) throw Fault{13, "Type mismatch"};
    values[color++] = *value;
  }
  colorValues_ = values;
}

i32 Settings::HighlightColor() const {
  const i32 value = colorValues_[kSummaryHighlight - kFirstColor];
  return value >= 0 && value <= 255 ? value * 0x010101 : value;
}

void Settings::SoftColors(bool soft) {
  softColors_ = soft;
  softPalette_ = soft ? kSoftColors : kPlainColors;
}

void Settings::SoftTextHighlight(bool soft) {
  softTextHighlight_ = soft;
  highlightLevel_ = soft ? kSoftHighlight : kPlainHighlight;
}

void Settings::UseLegacy(bool legacy) {
  useLegacy_ = legacy;
  summaryPalette_ =
      legacy ? SummaryPalette{softPalette_[kThirdColor], 16711680, 8421504, systemColor(0x0F)}
             : kSystemSummary;
}

std::vector<SettingRow> Settings::List() const {
  std::vector<SettingRow> rows;
  for (const RowRule& rule : kRules) rows.push_back(table_[rule.row]);
  return rows;
}

Result<SettingRow> Settings::Get(std::string_view name) const {
  const RowRule* rule = ruleNamed(name);
  if (rule == nullptr) return unknownSetting(name);
  return table_[rule->row];
}

Result<> Settings::Set(std::string_view name, std::string_view value) {
  const RowRule* rule = ruleNamed(name);
  if (rule == nullptr) return unknownSetting(name);
  const Result<std::string> checked = checkedValue(*rule, value);
  if (!checked) return Error{checked.ErrorText()};
  const platform::Setting row = {std::string(rule->name), checked.Value()};
  if (auto kept = store_.Write(registryApp_, kIdentity, {&row, 1}); !kept) return kept;
  CopyToTable();
  table_[rule->row].Value = row.value;
  LoadSettings(false);
  return Done{};
}

namespace ORVUS_COMMON {
namespace {

std::string textOf(const std::variant<std::string, std::int32_t>& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : NumberText(std::get<std::int32_t>(value));
}

// Uses the error numbers of the same failures elsewhere in the system.
Fault registryFault(platform::RegistryFailure failure, std::string_view key) {
  const std::string name(key);
  switch (failure) {
    case platform::RegistryFailure::kOpenKey:
      return {76, "Error Opening Registry Key : " + name};
    case platform::RegistryFailure::kDataType:
      // No separator between the two.
      return {13, "Unsupported Data Type for Registry Value" + name};
    case platform::RegistryFailure::kReadValue:
      return {53, "Error Reading Registry Key Value : " + name};
    case platform::RegistryFailure::kCloseKey:
      break;
  }
  return {75, "Error Closing Registry Key : " + name};
}

}  // namespace

std::string GetRegistrySetting(platform::MachineRegistry& registry, platform::Forms& forms,
                               std::string_view hive, std::string_view key,
                               std::string_view value) {
  const platform::RegistryReading reading = registry.Read(hive, key, value);
  if (reading.failure) {
    ReportFault(forms, "ORVUS_COMMON.GetRegistrySetting", registryFault(*reading.failure, key));
  }
  return textOf(reading.value);
}

std::string QuietRegistrySetting(platform::MachineRegistry& registry, std::string_view hive,
                                 std::string_view key, std::string_view value) {
  return textOf(registry.Read(hive, key, value).value);
}

UserValue GetUserSetting(platform::SettingsStore& store, std::string_view product,
                         std::string_view section, std::string_view name,
                         const UserValue& defaultValue) {
  return userValue(store.Read(std::string(kUserKey).append(product), section), name, defaultValue);
}

Result<> SetUserSetting(platform::SettingsStore& store, std::string_view product,
                        std::string_view section, std::string_view name, const UserValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  const platform::Setting row = {std::string(name),
                                 text != nullptr ? *text : NumberText(std::get<double>(value))};
  return store.Write(std::string(kUserKey).append(product), section, {&row, 1});
}

}  // namespace ORVUS_COMMON

}  // namespace ostrand
