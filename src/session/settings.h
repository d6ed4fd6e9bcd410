// Settings of a user for all projects: colours, folders, warnings, and the initial values of new
// items.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "model/options.h"
#include "model/store.h"
#include "model/warnings.h"
#include "platform/forms.h"
#include "platform/machine_registry.h"
#include "platform/settings_store.h"
#include "session/colors.h"
#include "text/result.h"
#include "text/row.h"

namespace ostrand {

// Colours have the format of Appearance.
using SoftPalette = std::array<i32, 6>;  // blue, green, cyan, red, magenta, yellow

struct SummaryPalette {
  i32 Back;
  i32 Text;
  i32 DisabledBack;
  i32 DisabledText;
};

// One row of the table of settings.
struct SettingRow {
  std::string Name;  // empty for an unused row
  std::string Value;
  std::string Default;
};

// The table of settings and the values of the session that are read from it.
//
// At start: BuildSettingsTable. To load the user's values: LoadSettings(true). A screen that edits
// the table: CopyToTable, the screen, LoadSettings(false). At the end: SaveSettings.
class Settings {
 public:
  static constexpr int kFirstColor = 10;  // row of the first colour
  static constexpr int kLastSetting = 34;
  using Table = Row<SettingRow, 0, kLastSetting>;

  // Store and registry must outlive the settings. `temporaryFolder` is the default WorkDir of a
  // machine. Builds the table without reading the user's values.
  Settings(platform::SettingsStore& store, platform::MachineRegistry& registry,
           std::string temporaryFolder);

  // Resets palettes and table and reads the machine's folders, without a report when the machine
  // has no such keys.
  void BuildSettingsTable();
  // With `readStore` all rows take the user's value, or their default when there is none or it
  // should be a number and is not. In both cases the values below are then read from the table.
  void LoadSettings(bool readStore);
  // Copies the values below into the table.
  void CopyToTable();
  // CopyToTable, then writes all rows to the store, all or none. The error names the file.
  Result<> SaveSettings();
  // Notices for the user about store and registry, each once; empty for none.
  std::string TakeNotice();

  // The identity under which the store keeps the settings; an empty name means "QUILLON". Setting
  // it reads nothing.
  [[nodiscard]] const std::string& RegistryApp() const { return registryApp_; }
  void RegistryApp(std::string_view name);

  // For the settings screen.
  [[nodiscard]] Table& Rows() { return table_; }
  [[nodiscard]] const Table& Rows() const { return table_; }

  // Folders of the machine: for temporary files, never empty, and of the compiler, empty when not
  // set. As in the registry, with or without a trailing separator.
  [[nodiscard]] const std::string& WorkDir() const { return workDir_; }
  // Reads WorkDir again, in case it has changed since the start.
  void ReadWorkDir();
  [[nodiscard]] const std::string& Compilers() const { return compilers_; }

  // Folder of the project, with a trailing separator.
  [[nodiscard]] const std::string& GenFilePath() const { return genFilePath_; }
  void GenFilePath(std::string_view folder);
  [[nodiscard]] const std::string& CompilerPath() const { return compilerPath_; }
  void CompilerPath(std::string_view path) { compilerPath_ = path; }
  // WarningBit.
  [[nodiscard]] i32 WarningMessageMask() const { return warningMessageMask_; }
  void WarningMessageMask(i32 mask) { warningMessageMask_ = mask; }
  // Bits of the variable kinds, in the order in which lists of variables show them.
  [[nodiscard]] const std::vector<i32>& UserVarListTypes() const { return userVarListTypes_; }
  [[nodiscard]] const OptionValues& Options() const { return options_; }
  // Display settings, edited in place. LoadSettings(true) loads the user's, and SaveSettings stores
  // what has changed since, together with the rows of the table.
  [[nodiscard]] ViewOptions& View() { return view_; }
  [[nodiscard]] const ViewOptions& View() const { return view_; }
  [[nodiscard]] bool ViewChanged() const { return !(view_ == storedView_); }

  // The colours that the user can choose, from 0.
  [[nodiscard]] static std::string_view ColorName(int color);
  [[nodiscard]] i32 ColorValue(int color) const { return colorValues_[color]; }
  // The same as a table of texts; values are signed decimals. A value that is not a number raises
  // Fault 13 and changes nothing.
  [[nodiscard]] ColorTable GetSelectedColors() const;
  void SetSelectedColors(const ColorTable& colors);
  // The colour of the summary's highlight; values 0 to 255 are levels of grey.
  [[nodiscard]] i32 HighlightColor() const;

  // Palettes, one of two each.
  [[nodiscard]] bool SoftColors() const { return softColors_; }
  void SoftColors(bool soft);
  [[nodiscard]] const SoftPalette& SoftColorValues() const { return softPalette_; }
  [[nodiscard]] bool SoftTextHighlight() const { return softTextHighlight_; }
  void SoftTextHighlight(bool soft);
  [[nodiscard]] i32 HighlightLevel() const { return highlightLevel_; }  // of grey
  // Copies the third soft colour as it is at this moment.
  [[nodiscard]] bool UseLegacy() const { return useLegacy_; }
  void UseLegacy(bool legacy);
  [[nodiscard]] const SummaryPalette& SummaryColors() const { return summaryPalette_; }

  // For the command line. All rows in use, in the order of the table.
  [[nodiscard]] std::vector<SettingRow> List() const;
  // The row of that name, in any case; an error when there is none.
  [[nodiscard]] Result<SettingRow> Get(std::string_view name) const;
  // Checks the value and stores it before it takes effect. Other rows of the store are not changed.
  // The error gives the valid values, or why it could not be stored.
  Result<> Set(std::string_view name, std::string_view value);

 private:
  void readFolders();
  void readStore();
  void readView();
  Result<> saveView();
  void takeColors();
  void takeFolders();
  void takeVariableKinds();
  void takeOptions();
  i32 takeNumber(int row);
  i32 takeWithin(int row);

  platform::SettingsStore& store_;
  platform::MachineRegistry& registry_;
  std::string temporaryFolder_;
  std::string registryApp_;
  Table table_;

  std::string workDir_;
  std::string compilers_;
  std::string genFilePath_;
  std::string compilerPath_;
  i32 warningMessageMask_ = 0;
  std::vector<i32> userVarListTypes_;
  OptionValues options_;
  ViewOptions view_;
  ViewOptions storedView_;
  Row<i32, 0, kColors - 1> colorValues_;

  bool softColors_ = false;
  bool softTextHighlight_ = false;
  bool useLegacy_ = false;
  SoftPalette softPalette_{};
  i32 highlightLevel_ = 0;
  SummaryPalette summaryPalette_{};
};

namespace ORVUS_COMMON {

// A value of the registry as text, numbers in decimal. A failure is reported under
// "ORVUS_COMMON.GetRegistrySetting" and gives an empty text.
std::string GetRegistrySetting(platform::MachineRegistry& registry, platform::Forms& forms,
                               std::string_view hive, std::string_view key, std::string_view value);
// The same without a report.
std::string QuietRegistrySetting(platform::MachineRegistry& registry, std::string_view hive,
                                 std::string_view key, std::string_view value);

// A value that looks like a number is stored as one.
using UserValue = std::variant<std::string, double>;

// Values of the user for all products of the maker ("ProgGen", "ConditionFont", "Size"), in
// the hive "HKCU". An empty or missing one gives `defaultValue`.
UserValue GetUserSetting(platform::SettingsStore& store, std::string_view product,
                         std::string_view section, std::string_view name,
                         const UserValue& defaultValue);
Result<> SetUserSetting(platform::SettingsStore& store, std::string_view product,
                        std::string_view section, std::string_view name, const UserValue& value);

}  // namespace ORVUS_COMMON

}  // namespace ostrand
