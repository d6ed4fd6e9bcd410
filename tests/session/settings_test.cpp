#include "session/settings.h"

#include <gtest/gtest.h>

#include "model/orvus_data.h"
#include "support/memory_settings.h"
#include "support/scripted_forms.h"

namespace ostrand {
namespace {

using platform::RegistryFailure;
using testing::MemoryRegistry;
using testing::MemorySettingsStore;
using testing::ScriptedForms;

constexpr std::string_view kWorkDirKey = "HKLM\\SOFTWARE\\Fernhollow Instruments\\ProgGen\\WorkDir";
constexpr std::string_view kCompilersKey = "HKLM\\SOFTWARE\\Fernhollow Instruments\\Compilers";
constexpr std::string_view kPlace = "QUILLON\\QUILLON";

class SettingsTest : public ::testing::Test {
 protected:
  std::map<std::string, std::string>& stored() { return store.sections[std::string(kPlace)]; }
  std::string valueOf(std::string_view name) {
    const auto row = settings.Get(name);
    return row ? row.Value().Value : "none: " + row.ErrorText();
  }

  MemorySettingsStore store;
  MemoryRegistry registry;
  Settings settings{store, registry, "/tmp"};
};

struct Named {
  int row;
  std::string_view name;
  std::string_view value;
};

// 0x8000000C as a signed number is -2^31 + 12.
constexpr Named kDefaults[] = {
    {10, "Form Background", "-2147483636"},
    {11, "Panel Background", "-2147483633"},
    {12, "Panel Text", "-2147483630"},
    {13, "Summary Background", "-2147483643"},
    {14, "Summary Text", "-2147483640"},
    {15, "Summary Highlight", "192"},
    {20, "GenPath", "C:\\Larkfield\\DLDFILES"},
    {21, "VKCompPath", "\\VKPComp.EXE"},
    {22, "CurrentOptionsPage", "1"},
    {23, "CurrentOptionsTop", "600"},
    {24, "CurrentOptionsLeft", "600"},
    {25, "WarningMessageMask", "8191"},
    {26, "UserVarListTypes",
     "67108864,1,16777216,33554432,268435456,16,32,64,128,65536,131072,262144"},
    {27, "DefaultScanInterval", "10"},
    {28, "DefaultScanIntervalUnits", "1"},
    {29, "DefaultNumFlags", "8"},
    {30, "DefaultDataType", "0"},
    {31, "DefaultIntegrationCode", "2"},
    {32, "DefaultInputType", "0"},
    {33, "DefaultTableAutoSize", "0"},
    {34, "DefaultTableNumRecs", "1000"},
};

TEST_F(SettingsTest, AStoreWithoutRowsGivesAllDefaults) {
  settings.LoadSettings(true);
  std::vector<SettingRow> rows = settings.List();
  ASSERT_EQ(rows.size(), std::size(kDefaults));
  for (const Named& row : kDefaults) {
    const SettingRow& there = settings.Rows()[row.row];
    EXPECT_EQ(there.Name, row.name);
    EXPECT_EQ(there.Value, row.value) << row.name;
    EXPECT_EQ(there.Default, row.value) << row.name;
  }
  for (const int unused : {0, 9, 16, 19}) EXPECT_EQ(settings.Rows()[unused].Name, "");
  EXPECT_EQ(settings.GenFilePath(), "C:\\Larkfield\\DLDFILES\\");
  EXPECT_EQ(settings.CompilerPath(), "\\VKPComp.EXE");
  EXPECT_EQ(settings.WarningMessageMask(), 8191);
  EXPECT_EQ(settings.UserVarListTypes(),
            (std::vector<i32>{67108864, 1, 16777216, 33554432, 268435456, 16, 32, 64, 128, 65536,
                              131072, 262144}));
  EXPECT_EQ(settings.Options().DefaultScanInterval, 10);
  EXPECT_EQ(settings.Options().DefaultTableNumRecs, 1000);
  EXPECT_EQ(settings.ColorValue(5), 192);
}

TEST_F(SettingsTest, RowsOfTheStoreAreTakenOrFallBack) {
  struct Case {
    std::string_view name;
    std::string_view stored;
    std::string_view value;
  };
  constexpr Case kCases[] = {
      {"Form Background", "255", "255"},
      {"Form Background", "", "-2147483636"},
      {"Form Background", "blue", "-2147483636"},
      {"Summary Highlight", " 64 ", "64"},
      {"GenPath", "D:\\plans", "D:\\plans"},
      {"GenPath", "  ", "C:\\Larkfield\\DLDFILES"},
      {"GenPath", "12", "12"},
      {"VKCompPath", "", "\\VKPComp.EXE"},
      {"CurrentOptionsTop", "top", "600"},
      {"CurrentOptionsLeft", "-40", "-40"},
      {"WarningMessageMask", "-1", "-1"},
      {"WarningMessageMask", "99999999999", "8191"},
      {"WarningMessageMask", "1E3", "1000"},
      {"UserVarListTypes", "64,32", "64,32"},
      {"UserVarListTypes", "",
       "67108864,1,16777216,33554432,268435456,16,32,64,128,65536,131072,"
       "262144"},
      {"DefaultScanInterval", "0", "0"},
      {"DefaultScanInterval", "fast", "10"},
      {"DefaultScanIntervalUnits", "7", "7"},  // no check of its range
      {"DefaultNumFlags", "2.5", "2"},
      {"DefaultDataType", "1", "1"},
      {"DefaultDataType", "5", "0"},
      {"DefaultDataType", "-1", "0"},
      {"DefaultIntegrationCode", "0", "0"},
      {"DefaultIntegrationCode", "3", "2"},
      {"DefaultIntegrationCode", "", "2"},
      {"DefaultInputType", "1", "1"},
      {"DefaultInputType", "2", "0"},
      {"DefaultTableAutoSize", "-1", "-1"},
      {"DefaultTableNumRecs", "\xFF", "1000"},
  };
  for (const Case& row : kCases) {
    stored() = {{std::string(row.name), std::string(row.stored)}};
    settings.LoadSettings(true);
    EXPECT_EQ(valueOf(row.name), row.value) << row.name << " " << row.stored;
  }
}

TEST_F(SettingsTest, FoldersOfTheMachineGiveCompilerAndWorkDir) {
  struct Case {
    std::string_view workDir;
    std::string_view compilers;
    std::string_view readWorkDir;
    std::string_view compilerPath;
  };
  constexpr Case kCases[] = {
      {"D:\\work", "C:\\Larkfield\\Lib", "D:\\work", "C:\\Larkfield\\Lib\\VKPComp.EXE"},
      {"/var/work/", "/opt/vk", "/var/work/", "/opt/vk/VKPComp.EXE"},
      {" ", "/opt/vk/", "/tmp", "/opt/vk/VKPComp.EXE"},
      {"", "", "/tmp", "\\VKPComp.EXE"},
  };
  for (const Case& row : kCases) {
    registry.values[std::string(kWorkDirKey)] = {std::string(row.workDir), {}};
    registry.values[std::string(kCompilersKey)] = {std::string(row.compilers), {}};
    settings.BuildSettingsTable();
    settings.LoadSettings(true);
    EXPECT_EQ(settings.WorkDir(), row.readWorkDir);
    EXPECT_EQ(settings.Compilers(), row.compilers);
    EXPECT_EQ(settings.CompilerPath(), row.compilerPath);
  }
  registry.values.clear();
  settings.BuildSettingsTable();
  EXPECT_EQ(settings.WorkDir(), "/tmp");
}

TEST_F(SettingsTest, WhatIsSavedComesBackUnderItsIdentity) {
  settings.RegistryApp("Larkfield");
  settings.LoadSettings(true);
  settings.GenFilePath("/home/marge/plans");
  settings.CompilerPath("/opt/my vk/VKPComp.EXE");
  settings.WarningMessageMask(16384 + 2);
  auto colors = settings.GetSelectedColors();
  colors[2][1] = "-2147483630";
  colors[5][1] = "128";
  settings.SetSelectedColors(colors);
  // The settings screen works on the table.
  settings.CopyToTable();
  EXPECT_EQ(settings.Rows()[20].Value, "/home/marge/plans/");
  settings.Rows()[22].Value = "3";
  settings.Rows()[26].Value = "1,16";
  settings.Rows()[31].Value = "1";
  settings.LoadSettings(false);
  ASSERT_TRUE(settings.SaveSettings());
  EXPECT_EQ(store.writes, 1);
  EXPECT_TRUE(stored().empty());
  EXPECT_EQ(store.sections["Larkfield\\QUILLON"].size(), std::size(kDefaults));

  Settings again(store, registry, "/tmp");
  again.LoadSettings(true);
  EXPECT_EQ(again.WarningMessageMask(), 8191);  // the other identity has nothing
  again.RegistryApp("Larkfield");
  again.LoadSettings(true);
  EXPECT_EQ(again.GenFilePath(), "/home/marge/plans/");
  EXPECT_EQ(again.CompilerPath(), "/opt/my vk/VKPComp.EXE");
  EXPECT_EQ(again.WarningMessageMask(), 16386);
  EXPECT_EQ(again.Rows()[22].Value, "3");
  EXPECT_EQ(again.UserVarListTypes(), (std::vector<i32>{1, 16}));
  EXPECT_EQ(again.Options().Measurement.DefaultIntegrationCode, 1);
  EXPECT_EQ(again.ColorValue(2), -2147483630);
  EXPECT_EQ(again.HighlightColor(), 0x808080);
  again.RegistryApp(" ");
  EXPECT_EQ(again.RegistryApp(), "QUILLON");
}

TEST_F(SettingsTest, NewMeasurementsStartWithTheOptions) {
  stored() = {{"DefaultDataType", "1"}, {"DefaultIntegrationCode", "0"}, {"DefaultInputType", "1"}};
  settings.LoadSettings(true);
  const cOrvusData data(settings.Options().Measurement);
  EXPECT_EQ(data.DataType, ORVUS_OUTDATA_IEEE4);
  const cAnalogConfig analog(settings.Options().Measurement);
  EXPECT_EQ(analog.InputType, ORVUS_INPUT_SE);
  EXPECT_EQ(analog.IntegCode(), 0);
}

TEST_F(SettingsTest, PalettesAreOneOfTwo) {
  EXPECT_FALSE(settings.SoftColors() || settings.SoftTextHighlight() || settings.UseLegacy());
  EXPECT_EQ(settings.SoftColorValues(),
            (SoftPalette{16711680, 65280, 16776960, 255, 16711935, 65535}));
  EXPECT_EQ(settings.HighlightLevel(), 192);
  EXPECT_EQ(settings.SummaryColors().Back, -2147483643);
  EXPECT_EQ(settings.SummaryColors().DisabledText, -2147483640);

  settings.SoftColors(true);
  settings.SoftTextHighlight(true);
  settings.UseLegacy(true);
  settings.SoftColors(false);  // the summary keeps the colour it was given
  EXPECT_EQ(settings.HighlightLevel(), 128);
  EXPECT_EQ(settings.SummaryColors().Back, 12961106);
  EXPECT_EQ(settings.SummaryColors().Text, 16711680);
  EXPECT_EQ(settings.SummaryColors().DisabledBack, 8421504);
  EXPECT_EQ(settings.SummaryColors().DisabledText, -2147483633);
  EXPECT_EQ(settings.Rows()[15].Value, "192");
}

TEST_F(SettingsTest, AColorThatIsNoNumberChangesNone) {
  auto colors = settings.GetSelectedColors();
  EXPECT_EQ(colors[0],
            (std::array<std::string, 3>{"Form Background", "-2147483636", "-2147483636"}));
  colors[0][1] = "255";
  colors[4][1] = "red";
  EXPECT_THROW(settings.SetSelectedColors(colors), Fault);
  EXPECT_EQ(settings.ColorValue(0), -2147483636);
  colors[4][1] = "256";
  colors[5][1] = "256";
  settings.SetSelectedColors(colors);
  EXPECT_EQ(settings.ColorValue(0), 255);
  EXPECT_EQ(settings.HighlightColor(), 256);  // no level of grey any more
}

TEST_F(SettingsTest, AValueSetByHandIsCheckedAndKeptAlone) {
  struct Case {
    std::string_view name;
    std::string_view value;
    std::string_view kept;   // empty when it is refused
    std::string_view error;  // a part of it
  };
  constexpr Case kCases[] = {
      {"defaultdatatype", " 1", "1", ""},
      {"DefaultDataType", "5", "", "DefaultDataType is a whole number from 0 to 1, not \"5\""},
      {"DefaultScanInterval", "2.5", "", "whole number from 1 to 2147483647, not \"2.5\""},
      {"DefaultScanInterval", "", "", "not \"\""},
      {"summary highlight", "64", "64", ""},
      {"Panel Text", "4294967295", "", "Panel Text is a whole number, not \"4294967295\""},
      {"GenPath", "/plans", "/plans", ""},
      {"GenPath", " ", "", "GenPath cannot be empty"},
      {"UserVarListTypes", "16, 1", "16,1", ""},
      {"UserVarListTypes", "16,16", "", "list of different variable kinds"},
      {"UserVarListTypes", "16,3", "", "list of different variable kinds"},
      {"UserVarListTypes", "16,,1", "", "list of different variable kinds"},
      {"UserVarListTypes", "16,x", "", "list of different variable kinds"},
      {"Colour", "1", "", "there is no setting \"Colour\""},
      {"", "1", "", "there is no setting \"\""},
  };
  for (const Case& row : kCases) {
    stored().clear();
    const Result<> set = settings.Set(row.name, row.value);
    EXPECT_EQ(static_cast<bool>(set), !row.kept.empty()) << row.name << " " << row.value;
    if (!set) {
      EXPECT_NE(set.ErrorText().find(row.error), std::string::npos) << set.ErrorText();
      EXPECT_TRUE(stored().empty());
      continue;
    }
    ASSERT_EQ(stored().size(), 1U);
    EXPECT_EQ(stored().begin()->second, row.kept);
    EXPECT_EQ(valueOf(row.name), row.kept);
  }
  EXPECT_EQ(settings.GenFilePath(), "/plans/");
  store.failure = "/home/settings: Permission denied";
  const Result<> set = settings.Set("DefaultNumFlags", "4");
  ASSERT_FALSE(set);
  EXPECT_EQ(set.ErrorText(), store.failure);
  EXPECT_EQ(settings.Options().DefaultNumFlags, 8);
}

TEST_F(SettingsTest, NoticesOfTheStoreArePassedOnOnce) {
  store.notice = "The settings cannot be read";
  EXPECT_EQ(settings.TakeNotice(), "The settings cannot be read");
  EXPECT_EQ(settings.TakeNotice(), "");
}

TEST(RegistrySetting, FailuresGetTheCommonReportAndNoText) {
  struct Case {
    RegistryFailure failure;
    std::string_view text;
    std::string_view result;
  };
  constexpr Case kCases[] = {
      {RegistryFailure::kOpenKey, "Unexpected error 76, \"Error Opening Registry Key : A\\B\"", ""},
      {RegistryFailure::kDataType,
       "Unexpected error 13, \"Unsupported Data Type for Registry Value : A\\B\"", ""},
      {RegistryFailure::kReadValue,
       "Unexpected error 53, \"Error Reading Registry Key Value : A\\B\"", ""},
      {RegistryFailure::kCloseKey, "Unexpected error 75, \"Error Closing Registry Key : A\\B\"",
       "text"},
  };
  for (const Case& row : kCases) {
    ScriptedForms forms;
    MemoryRegistry registry;
    registry.values["HKLM\\A\\B\\Name"] = {std::string(row.result), row.failure};
    forms.ExpectBox("TROUBLE", std::string(row.text) +
                                   " has occurred in ORVUS_COMMON.GetRegistrySetting.\r\n"
                                   " Press \"OK\" and the program will continue.");
    EXPECT_EQ(ORVUS_COMMON::GetRegistrySetting(registry, forms, "HKLM", "A\\B", "Name"),
              row.result);
    EXPECT_EQ(ORVUS_COMMON::QuietRegistrySetting(registry, "HKLM", "A\\B", "Name"), row.result);
    EXPECT_EQ(forms.beeps, 1);
  }
  ScriptedForms forms;
  MemoryRegistry registry;
  registry.values["HKCU\\A\\Count"] = {-7, {}};
  registry.values["HKCU\\A\\Name"] = {std::string("Larkfield"), {}};
  EXPECT_EQ(ORVUS_COMMON::GetRegistrySetting(registry, forms, "HKCU", "A", "Count"), "-7");
  EXPECT_EQ(ORVUS_COMMON::GetRegistrySetting(registry, forms, "HKCU", "A", "Name"), "Larkfield");
}

TEST(UserSetting, IsANumberWhenItLooksLikeOne) {
  using ORVUS_COMMON::UserValue;
  MemorySettingsStore store;
  const auto get = [&](std::string_view name) {
    return ORVUS_COMMON::GetUserSetting(store, "ProgGen", "ConditionFont", name, "Terminal");
  };
  const auto set = [&](std::string_view name, const UserValue& value) {
    return static_cast<bool>(
        ORVUS_COMMON::SetUserSetting(store, "ProgGen", "ConditionFont", name, value));
  };
  EXPECT_EQ(get("Name"), UserValue("Terminal"));
  ASSERT_TRUE(set("Name", "Courier New"));
  ASSERT_TRUE(set("Size", 9.75));
  ASSERT_TRUE(set("Style", "2"));
  ASSERT_TRUE(set("Empty", ""));
  EXPECT_EQ(get("Name"), UserValue("Courier New"));
  EXPECT_EQ(get("Size"), UserValue(9.75));
  EXPECT_EQ(get("Style"), UserValue(2.0));
  EXPECT_EQ(get("Empty"), UserValue("Terminal"));
  EXPECT_EQ(
      store.sections["HKCU\\Software\\Fernhollow Instruments\\ProgGen\\ConditionFont"]["Size"],
      "9.75");
}

}  // namespace
}  // namespace ostrand
