// The screens of the user's settings and colours, and the table that they edit.
#include <gtest/gtest.h>

#include "model/new_store.h"
#include "model/options.h"
#include "screens/all_screens.h"
#include "session/frm_opt_gen.h"
#include "session/frm_opt_orvus.h"
#include "support/cli_run.h"
#include "support/memory_settings.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

class NoHost : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override { screen.Done(); }
};

class OptionScreens : public ::testing::Test {
 protected:
  template <class Field>
  static void type(Screen& screen, Field& field, std::string_view keys) {
    screen.MoveFocus(&field);
    field.TypeText(keys);
    screen.MoveFocus(nullptr);
  }

  testing::MemorySettingsStore stored;
  testing::MemoryRegistry registry;
  Settings settings{stored, registry, "/tmp"};
  testing::ScriptedForms forms;
  NoHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store, forms, host, AllScreens(), options, 0, kinds};
};

TEST_F(OptionScreens, ViewedSettingsStayUnchanged) {
  settings.CopyToTable();
  const auto before = settings.List();
  frmOptOrvus screen(context, settings);
  EXPECT_TRUE(screen.ShowForm());
  const auto after = settings.List();
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t row = 0; row < before.size(); ++row) {
    EXPECT_EQ(after[row].Value, before[row].Value) << before[row].Name;
  }
}

TEST_F(OptionScreens, ColorsTakeEffectAtOnceAndCancelRestoresThem) {
  int changes = 0;
  frmOptGen screen(context, settings, [&] { ++changes; });
  EXPECT_EQ(screen.SystemColor.Text(), "Application Workspace");
  screen.ColorRow.Pick("Summary Text");
  EXPECT_EQ(screen.ColorValue.Text(), "-2147483640");
  EXPECT_EQ(changes, 0);
  screen.StandardColor.Pick("Blue");
  EXPECT_EQ(settings.ColorValue(4), 0xFF0000);
  EXPECT_EQ(screen.SystemColor.Text(), "") << "no longer one of the system";
  screen.SystemColor.Pick("Window");
  EXPECT_EQ(settings.ColorValue(4), -2147483643);
  EXPECT_EQ(changes, 2);
  screen.Cancel();
  EXPECT_EQ(settings.ColorValue(4), -2147483640);
  EXPECT_EQ(changes, 3);
}

TEST_F(OptionScreens, SummaryNumbersHaveTheChosenForm) {
  struct Case {
    std::string_view form, digits, example;
  };
  constexpr Case cases[] = {
      {"Scientific", "1", "1.2e3"},      {"Scientific", "0", "1e3"},   {"Number", "2", "1,234.57"},
      {"Number", "0", "1,235"},          {"Custom", "8", "1234.5677"}, {"Custom", "0", "1235"},
      {"Number", "9", "1,234.56770000"}, {"General", "", "1234.5677"},
  };
  frmOptGen screen(context, settings, [] {});
  EXPECT_EQ(screen.NumberExample.Text(), "1.2e3") << "the current form, before any choice";
  for (const Case& row : cases) {
    screen.NumberForm.Pick(row.form);
    EXPECT_EQ(screen.NumberDigits.Usable(), !row.digits.empty());
    if (!row.digits.empty()) type(screen, screen.NumberDigits, row.digits);
    EXPECT_EQ(screen.NumberExample.Text(), row.example) << row.form << row.digits;
  }
  screen.Cancel();
  EXPECT_EQ(settings.View().SummaryNumbers, NumberFormat{});
}

// Values outside the table of settings are kept too.
TEST_F(OptionScreens, DisplayFormIsStoredWithSettings) {
  const auto section = [this](std::string_view name) -> std::map<std::string, std::string>& {
    return stored.sections["HKCU\\Software\\Fernhollow Instruments\\ProgGen\\" + std::string(name)];
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
  stored.failure = "disk full";
  EXPECT_FALSE(settings.SaveSettings());
}

TEST(OptionScreensCli, ScriptChoicesAreStoredForAllProjects) {
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
