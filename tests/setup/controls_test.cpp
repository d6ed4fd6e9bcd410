// The rules of the controls, key by key.
#include <gtest/gtest.h>

#include "model/options.h"
#include "setup/controls/choice.h"
#include "setup/controls/numeric_field.h"
#include "setup/controls/screen.h"
#include "support/scripted_forms.h"

namespace ostrand {
namespace {

class NoHost : public ScreenHost {
 public:
  void ShowModal(Screen&) override {}
};

class ControlTest : public ::testing::Test {
 protected:
  testing::ScriptedForms forms;
  NoHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
  Screen screen{{*store, forms, host, options, 0, kinds}, "frmTest"};
};

TEST_F(ControlTest, KeysThatMakeNoNumberAreDroppedWithABeep) {
  struct Case {
    NumberType type;
    std::string_view keys;
    std::string_view kept;
    int beeps;
  };
  constexpr Case cases[] = {
      {NumberType::kInteger, "-12", "-12", 0},      {NumberType::kInteger, "1-2", "12", 1},
      {NumberType::kInteger, "e5", "5", 1},         {NumberType::kInteger, "-e.5", "-.5", 1},
      {NumberType::kInteger, ".e5", ".5", 1},       {NumberType::kInteger, "1.2.3", "1.23", 1},
      {NumberType::kInteger, "1e12", "1e1", 1},     {NumberType::kSingle, "1E-123", "1E-12", 1},
      {NumberType::kSingle, "1e2e3", "1e23", 1},    {NumberType::kSingle, "1e2.5", "1e25", 1},
      {NumberType::kDouble, "1e+308", "1e+308", 0}, {NumberType::kByte, "-1.5e", "15", 3},
      {NumberType::kSingle, "12 a", "12", 2},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.keys);
    NumericField field(screen, "Field", row.type);
    forms.beeps = 0;
    screen.MoveFocus(&field);
    field.TypeText(row.keys);
    EXPECT_EQ(field.Text(), row.kept);
    EXPECT_EQ(forms.beeps, row.beeps);
    screen.MoveFocus(nullptr);
  }
}

TEST_F(ControlTest, NumbersTakeEffectWithinTheirLimitsAndInTheirForm) {
  struct Case {
    NumberType type;
    double least;
    double most;
    std::string_view keys;
    std::string_view taken;  // empty for one that is refused
  };
  constexpr Case cases[] = {
      {NumberType::kInteger, 1, 20, "21", "20"},
      {NumberType::kInteger, 1, 20, "-3", "1"},
      {NumberType::kInteger, 1, 20, "7.5", "8"},
      {NumberType::kInteger, 1, 20, "8.5", "8"},
      {NumberType::kInteger, -1e9, 1e9, "99999", "32767"},
      {NumberType::kLong, -1e19, 1e19, "3e9", "2147483647"},
      {NumberType::kSingle, -1e39, 1e39, "1e39", "3.402e+38"},
      {NumberType::kSingle, -1e39, 1e39, "1234.5678", "1234.568"},
      {NumberType::kSingle, -1e39, 1e39, "1e7", "1e+07"},
      {NumberType::kSingle, -1e39, 1e39, "9999999.6", "1e+07"},
      {NumberType::kSingle, -1e39, 1e39, "1234567", "1234567"},
      {NumberType::kSingle, -1e39, 1e39, ".000001", "0.000001"},
      {NumberType::kSingle, -1e39, 1e39, "-.0000001234567", "-1.23457e-07"},
      {NumberType::kSingle, -1e39, 1e39, "0.0000001234565", "1.23457e-07"},
      {NumberType::kDouble, -1e39, 1e39, "3.14159265358979", "3.141592654"},
      {NumberType::kSingle, -1e39, 1e39, "5.", "5"},
      {NumberType::kSingle, -1e39, 1e39, "+7", "7"},
      {NumberType::kSingle, -1e39, 1e39, "-", ""},
      {NumberType::kSingle, -1e39, 1e39, "1e", ""},
      {NumberType::kSingle, -1e39, 1e39, "", ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.keys);
    NumericField field(screen, "Field", row.type);
    field.Limits(row.least, row.most);
    field.Value(3);
    int taken = 0;
    field.OnTake = [&] { ++taken; };
    screen.MoveFocus(&field);
    field.TypeText(row.keys);
    const bool refused = row.taken.empty();
    EXPECT_EQ(screen.MoveFocus(nullptr), !refused);
    EXPECT_EQ(taken, refused ? 0 : 1);
    EXPECT_EQ(field.Text(), refused ? row.keys : row.taken);
    field.Escape();
    EXPECT_EQ(field.Text(), refused ? "3" : row.taken);
    EXPECT_TRUE(screen.MoveFocus(nullptr)) << "what Escape put back has not been typed";
  }
}

TEST_F(ControlTest, UnitNamesBeginWithALetterAndLoseTheirBlanks) {
  UnitField field(screen, "Units");
  screen.MoveFocus(&field);
  field.TypeText("9m V/o_l@t#$1");
  EXPECT_EQ(field.Text(), "mVo_l@t#$1");
  EXPECT_EQ(forms.beeps, 2);
  field.TypeText(" ");
  EXPECT_EQ(field.Text(), "");
  EXPECT_EQ(forms.beeps, 2);
}

TEST_F(ControlTest, APickAndACheckFireOnlyWhereThereIsSomethingToTake) {
  Choice choice(screen, "Range");
  choice.SetItems({"  50 mV", "Auto", "20 mV"});
  choice.Items[1].Enabled = false;
  choice.Items[2].Visible = false;
  int picks = 0;
  choice.OnPick = [&] { ++picks; };
  EXPECT_TRUE(choice.Pick("50 MV "));
  EXPECT_EQ(choice.Text(), "  50 mV");
  EXPECT_FALSE(choice.Pick("Auto"));
  EXPECT_FALSE(choice.Pick("20 mV"));
  EXPECT_EQ(picks, 1);

  CheckBox box(screen, "Public");
  int clicks = 0;
  box.OnClick = [&] {
    ++clicks;
    throw InvalidProcedureCall();
  };
  box.Check(false);
  forms.ExpectBoxWith("TROUBLE", "has occurred in frmTest.Public_Click.");
  box.Check(true);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(screen.Find("PUBLIC"), &box);
}

}  // namespace
}  // namespace ostrand
