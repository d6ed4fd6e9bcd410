#include "session/settings.h"

#include <gtest/gtest.h>

#include "support/memory_settings.h"
#include "support/scripted_forms.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::RegistryFailure;

class SettingsTest : public ::testing::Test {
 protected:
  std::map<std::string, std::string>& stored() { return store.sections["QUILLON\\QUILLON"]; }

  testing::MemorySettingsStore store;
  testing::MemoryRegistry registry;
  Settings settings{store, registry, "/tmp"};
};

TEST_F(SettingsTest, EmptyStoreGivesAllDefaults) {
  settings.LoadSettings(true);
  std::string rows;
  for (int row = 0; row <= Settings::kLastSetting; ++row) {
    const SettingRow& there = settings.Rows()[row];
    EXPECT_EQ(there.Default, there.Value);
    if (!there.Name.empty()) rows += NumberText(row) + " " + there.Name + " " + there.Value + "; ";
  }
  // 0x8000000C as a signed number is -2^31 + 12.
  EXPECT_EQ(rows,
            "10 Form Background -2147483636; 11 Panel Background -2147483633; "
            "12 Panel Text -2147483630; 13 Summary Background -2147483643; "
            "14 Summary Text -2147483640; 15 Summary Highlight 192; "
            "20 GenPath C:\\Larkfield\\DLDFILES; 21 VKCompPath \\VKPComp.EXE; "
            "22 CurrentOptionsPage 1; 23 CurrentOptionsTop 600; 24 CurrentOptionsLeft 600; "
            "25 WarningMessageMask 8191; "
            "26 UserVarListTypes "
            "67108864,1,16777216,33554432,268435456,16,32,64,128,65536,131072,262144; "
            "27 DefaultScanInterval 10; 28 DefaultScanIntervalUnits 1; 29 DefaultNumFlags 8; "
            "30 DefaultDataType 0; 31 DefaultIntegrationCode 2; 32 DefaultInputType 0; "
            "33 DefaultTableAutoSize 0; 34 DefaultTableNumRecs 1000; ");
}

TEST_F(SettingsTest, InvalidRowsFallBackToDefaults) {
  constexpr std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
      {"Form Background", "", "-2147483636"},  {"Form Background", "blue", "-2147483636"},
      {"Summary Highlight", " 64 ", "64"},     {"GenPath", "  ", "C:\\Larkfield\\DLDFILES"},
      {"WarningMessageMask", "1E3", "1000"},   {"UserVarListTypes", "64,32", "64,32"},
      {"DefaultScanIntervalUnits", "7", "7"},  // no check of its range
      {"DefaultNumFlags", "2.5", "2"},         {"DefaultDataType", "5", "0"},
      {"DefaultDataType", "-1", "0"},          {"DefaultIntegrationCode", "0", "0"},
      {"DefaultIntegrationCode", "3", "2"},    {"DefaultInputType", "2", "0"},
      {"DefaultTableNumRecs", "\xFF", "1000"},
  };
  for (const auto& [name, kept, value] : cases) {
    stored() = {{std::string(name), std::string(kept)}};
    settings.LoadSettings(true);
    EXPECT_EQ(settings.Get(name).Value().Value, value) << name << " " << kept;
  }
}

TEST_F(SettingsTest, MachineFoldersGiveCompilerAndWorkDir) {
  const std::tuple<std::string, std::string, std::string_view, std::string_view> cases[] = {
      {"D:\\work", "C:\\Larkfield\\Lib", "D:\\work", "C:\\Larkfield\\Lib\\VKPComp.EXE"},
      {" ", "/opt/vk/", "/tmp", "/opt/vk/VKPComp.EXE"},
      {"", "", "/tmp", "\\VKPComp.EXE"},
  };
  const std::string maker = "HKLM\\SOFTWARE\\Fernhollow Instruments\\";
  for (const auto& [workDir, compilers, readWorkDir, compilerPath] : cases) {
    registry.values = {{maker + "ProgGen\\WorkDir", {workDir, {}}},
                       {maker + "Compilers", {compilers, {}}}};
    settings.BuildSettingsTable();
    settings.LoadSettings(true);
    EXPECT_EQ(settings.WorkDir(), readWorkDir);
    EXPECT_EQ(settings.CompilerPath(), compilerPath);
  }
}

TEST_F(SettingsTest, SavedSettingsLoadUnderTheirIdentity) {
  settings.RegistryApp("Larkfield");
  settings.LoadSettings(true);
  settings.GenFilePath("/home/marge/plans");
  settings.WarningMessageMask(16384 + 2);
  auto colors = settings.GetSelectedColors();
  colors[0][1] = "255";
  colors[4][1] = "red";
  EXPECT_THROW(settings.SetSelectedColors(colors), Fault);
  EXPECT_EQ(settings.ColorValue(0), -2147483636) << "no colour is changed";
  colors[4][1] = colors[5][1] = "128";
  settings.SetSelectedColors(colors);
  // The settings screen edits the table.
  settings.CopyToTable();
  settings.Rows()[26].Value = "1,16";
  settings.Rows()[31].Value = "1";
  settings.LoadSettings(false);
  ASSERT_TRUE(settings.SaveSettings());
  EXPECT_TRUE(stored().empty());

  Settings again(store, registry, "/tmp");
  again.LoadSettings(true);
  EXPECT_EQ(again.WarningMessageMask(), 8191) << "the other identity has no rows";
  again.RegistryApp("Larkfield");
  again.LoadSettings(true);
  EXPECT_EQ(again.GenFilePath(), "/home/marge/plans/");
  EXPECT_EQ(again.WarningMessageMask(), 16386);
  EXPECT_EQ(again.UserVarListTypes(), (std::vector<i32>{1, 16}));
  EXPECT_EQ(again.Options().Measurement.DefaultIntegrationCode, 1);
  EXPECT_EQ(again.HighlightColor(), 0x808080);
}

TEST_F(SettingsTest, SoftColorsSelectThePalette) {
  const auto summary = [&] {
    const SummaryPalette& now = settings.SummaryColors();
    return std::vector<i32>{now.Back, now.Text, now.DisabledBack, now.DisabledText};
  };
  EXPECT_EQ(settings.SoftColorValues(),
            (SoftPalette{16711680, 65280, 16776960, 255, 16711935, 65535}));
  EXPECT_EQ(settings.HighlightLevel(), 192);
  EXPECT_EQ(summary(), (std::vector<i32>{-2147483643, -2147483640, -2147483643, -2147483640}));
  settings.SoftColors(true);
  settings.SoftTextHighlight(true);
  settings.UseLegacy(true);
  EXPECT_EQ(settings.SoftColorValues(),
            (SoftPalette{16346220, 3651895, 12961106, 1973964, 14582750, 7138540}));
  EXPECT_EQ(settings.HighlightLevel(), 128);
  settings.SoftColors(false);  // the summary keeps its colour
  EXPECT_EQ(summary(), (std::vector<i32>{12961106, 16711680, 8421504, -2147483633}));
}

TEST_F(SettingsTest, SetChecksAndKeepsASingleValue) {
  // `kept` is empty for a refused value; `error` is a part of the message.
  constexpr std::tuple<std::string_view, std::string_view, std::string_view, std::string_view>
      cases[] = {
          {"defaultdatatype", " 1", "1", ""},
          {"DefaultDataType", "5", "", "DefaultDataType is a whole number from 0 to 1, not \"5\""},
          {"DefaultScanInterval", "2.5", "", "whole number from 1 to 2147483647, not \"2.5\""},
          {"Panel Text", "4294967295", "", "Panel Text is a whole number, not \"4294967295\""},
          {"GenPath", "/plans", "/plans", ""},
          {"GenPath", " ", "", "GenPath cannot be empty"},
          {"UserVarListTypes", "16, 1", "16,1", ""},
          {"UserVarListTypes", "16,16", "", "list of different variable kinds"},
          {"UserVarListTypes", "16,3", "", "list of different variable kinds"},
          {"Colour", "1", "", "unknown setting \"Colour\""},
      };
  for (const auto& [name, value, kept, error] : cases) {
    stored().clear();
    const Result<> set = settings.Set(name, value);
    EXPECT_EQ(static_cast<bool>(set), !kept.empty()) << name << " " << value;
    EXPECT_EQ(stored().size(), set ? 1U : 0U);
    EXPECT_TRUE(set ? stored().begin()->second == kept : Holds(set.ErrorText(), error));
  }
  EXPECT_EQ(settings.GenFilePath(), "/plans/");
  store.failure = "/home/settings: Permission denied";
  EXPECT_FALSE(settings.Set("DefaultNumFlags", "4"));
  EXPECT_EQ(settings.Options().DefaultNumFlags, 8);
}

TEST(RegistrySetting, ReturnsTextsAndNumbersAndReportsFailures) {
  const std::tuple<platform::RegistryReading, std::string, std::string> cases[] = {
      {{-7, {}}, "", "-7"},
      {{"Larkfield", {}}, "", "Larkfield"},
      {{"", RegistryFailure::kOpenKey}, "76, \"Error Opening Registry Key : A\\B\"", ""},
      {{"", RegistryFailure::kDataType},
       "13, \"Unsupported Data Type for Registry ValueA\\B\"",
       ""},
      {{"", RegistryFailure::kReadValue}, "53, \"Error Reading Registry Key Value : A\\B\"", ""},
      {{"x", RegistryFailure::kCloseKey}, "75, \"Error Closing Registry Key : A\\B\"", "x"},
  };
  for (const auto& [reading, error, text] : cases) {
    testing::ScriptedForms forms;
    testing::MemoryRegistry registry;
    registry.values["HKLM\\A\\B\\Name"] = reading;
    if (!error.empty()) {
      forms.ExpectBox("TROUBLE", "Unexpected error " + error +
                                     " has occurred in ORVUS_COMMON.GetRegistrySetting.\r\n"
                                     " Press \"OK\" and the program will continue.");
    }
    EXPECT_EQ(ORVUS_COMMON::GetRegistrySetting(registry, forms, "HKLM", "A\\B", "Name"), text);
    EXPECT_EQ(ORVUS_COMMON::QuietRegistrySetting(registry, "HKLM", "A\\B", "Name"), text);
  }
}

TEST(UserSetting, NumericTextIsANumber) {
  using ORVUS_COMMON::UserValue;
  testing::MemorySettingsStore store;
  auto& kept = store.sections["HKCU\\Software\\Fernhollow Instruments\\ProgGen\\ConditionFont"];
  const std::tuple<UserValue, std::string, UserValue> cases[] = {
      {"Courier", "Courier", "Courier"}, {9.75, "9.75", 9.75}, {"2", "2", 2.0}, {"", "", "None"}};
  for (const auto& [set, text, got] : cases) {
    EXPECT_TRUE(ORVUS_COMMON::SetUserSetting(store, "ProgGen", "ConditionFont", "Size", set));
    EXPECT_EQ(kept["Size"], text);
    EXPECT_EQ(ORVUS_COMMON::GetUserSetting(store, "ProgGen", "ConditionFont", "Size", "None"), got);
  }
}

}  // namespace
}  // namespace ostrand
