#include "session/settings.h"

#include <gtest/gtest.h>

#include "model/options.h"
#include "support/cli_run.h"
#include "support/memory_settings.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
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
  EXPECT_EQ(settings.SoftColorValues(),
            (SoftPalette{16711680, 65280, 16776960, 255, 16711935, 65535}));
  EXPECT_EQ(settings.HighlightLevel(), 192);
  settings.SoftColors(true);
  settings.SoftTextHighlight(true);
  settings.UseLegacy(true);
  EXPECT_EQ(settings.SoftColorValues(),
            (SoftPalette{16346220, 3651895, 12961106, 1973964, 14582750, 7138540}));
  EXPECT_EQ(settings.HighlightLevel(), 128);
  settings.SoftColors(false);  // the summary keeps its colour
  const SummaryPalette& summary = settings.SummaryColors();
  EXPECT_EQ(
      (std::vector<i32>{summary.Back, summary.Text, summary.DisabledBack, summary.DisabledText}),
      (std::vector<i32>{12961106, 16711680, 8421504, -2147483633}));
}

// Values outside the table of settings are kept too.
TEST_F(SettingsTest, DisplayFormIsStoredWithSettings) {
  const auto section = [this](std::string_view name) -> std::map<std::string, std::string>& {
    return store.sections["HKCU\\Software\\Fernhollow Instruments\\ProgGen\\" + std::string(name)];
  };
  ASSERT_TRUE(settings.SaveSettings());
  EXPECT_TRUE(section("ConditionFont").empty()) << "nothing was chosen";
  const ViewOptions chosen = {{"Terminal", "Bold", 14}, {NumberForm::kNumber, 3}};
  settings.View() = chosen;
  ASSERT_TRUE(settings.SaveSettings());
  EXPECT_EQ(section("ConditionFont"),
            (std::map<std::string, std::string>{
                {"Name", "Terminal"}, {"Style", "Bold"}, {"Size", "14"}}));
  settings.View() = {};
  settings.LoadSettings(true);
  EXPECT_EQ(settings.View(), chosen);
  section("ConditionFont") = {{"Name", " "}, {"Size", "5"}};
  section("SummaryNumbers") = {{"Form", "4"}, {"Digits", "x"}};
  settings.LoadSettings(true);
  EXPECT_EQ(settings.View().SummaryNumbers, NumberFormat{});
  EXPECT_EQ(settings.View().ConditionFont.Size, 10);
  EXPECT_EQ(settings.View().ConditionFont.Style, "Regular");
  settings.View().ConditionFont.Size = 11;
  store.failure = "disk full";
  EXPECT_FALSE(settings.SaveSettings());
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

TEST(SettingsInCommands, ScriptChoicesAreStoredForAllProjects) {
  const testing::TempFolder folder;
  const std::string script = folder / "script.txt";
  const testing::Setting user = {.home = folder.Path()};
  testing::WriteDisk(script,
                     "open frmOptGen\n pick NumberForm Number\n type NumberDigits 3\n done\n"
                     "open frmVoltBlock\n spin BlockCount up\n open frmVoltSetup 1\n"
                     " type Reps 1\n type DefaultMult 1234.5\n done\ndone\n");
  ASSERT_EQ(testing::RunOstrand({"new", folder / "p.VKG"}, user).code, 0);
  ASSERT_EQ(testing::RunOstrand({"screen", folder / "p.VKG", script}, user).code, 0);
  const auto summary = [&](const testing::Setting& whose) {
    return testing::RunOstrand({"summary", folder / "p.VKG"}, whose).out;
  };
  EXPECT_NE(summary(user).find(" 1,234.500 0.000 "), std::string::npos) << summary(user);
  EXPECT_NE(summary({}).find(" 1.2e3   0.0e0 "), std::string::npos) << "another user";
}

}  // namespace
}  // namespace ostrand
