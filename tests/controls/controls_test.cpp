// The rules of the controls, key by key.
#include "conditions/field_keys.h"
#include "controls/choice.h"
#include "controls/faces.h"
#include "controls/numeric_field.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

class ControlTest : public testing::ScreenTest {
 protected:
  Screen screen{context, "frmTest"};
};

using enum NumberType;

TEST_F(ControlTest, KeysOutsideNumbersBeep) {
  struct Case {
    NumberType type;
    std::string_view keys;
    std::string_view kept;
    int beeps;
  };
  constexpr Case cases[] = {
      {kInteger, "-12", "-12", 0},      {kInteger, "1-2", "12", 1},
      {kInteger, "e5", "5", 1},         {kInteger, "-e.5", "-.5", 1},
      {kInteger, ".e5", ".5", 1},       {kInteger, "1.2.3", "1.23", 1},
      {kInteger, "1e12", "1e1", 1},     {kSingle, "1E-123", "1E-12", 1},
      {kSingle, "1e2e3", "1e23", 1},    {kSingle, "1e2.5", "1e25", 1},
      {kDouble, "1e+308", "1e+308", 0}, {kByte, "-1.5e", "15", 3},
      {kSingle, "12 a", "12", 2},
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

TEST_F(ControlTest, NumbersAreClampedAndFormatted) {
  struct Case {
    NumberType type;
    std::string_view keys;
    std::string_view taken;  // empty for a refused one
    double least = -1e39;
    double most = 1e39;
  };
  constexpr Case cases[] = {
      {kInteger, "21", "20", 1, 20},
      {kInteger, "-3", "1", 1, 20},
      {kInteger, "7.5", "8"},
      {kInteger, "8.5", "8"},
      {kInteger, "99999", "32767"},
      {kLong, "3e9", "2147483647"},
      {kSingle, "9999999.6", "1e+07"},
      {kSingle, "1234567", "1234567"},
      {kSingle, ".000001", "0.000001"},
      {kSingle, "-.0000001234567", "-1.23457e-07"},
      {kSingle, "0.0000001234565", "1.23457e-07"},
      {kDouble, "3.14159265358979", "3.141592654"},
      {kSingle, "+7", "7"},
      {kSingle, "-", ""},
      {kSingle, "", ""},
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

TEST_F(ControlTest, EscapeAfterEnterRestoresTextAtFocus) {
  NumericField field(screen, "Field", kSingle);
  field.Value(3);
  std::vector<std::string> taken;
  field.OnTake = [&] { taken.push_back(field.Text()); };
  screen.MoveFocus(&field);
  field.TypeText("5");
  EXPECT_TRUE(field.Take());
  field.Escape();
  EXPECT_EQ(field.Text(), "3");
  EXPECT_TRUE(screen.MoveFocus(nullptr));
  EXPECT_EQ(taken, (std::vector<std::string>{"5", "3"}));
}

TEST_F(ControlTest, EscapeRestoresWhatTypingWouldCorrect) {
  NumericField field(screen, "Excite", kSingle);
  field.Value(0.1);
  field.OnChange = [&] { DropLeadingZeros(field); };
  field.OnTake = [] { FAIL() << "nothing was typed"; };
  screen.MoveFocus(&field);
  field.TypeText("-");
  field.Escape();
  EXPECT_EQ(field.Text(), "0.1");
  EXPECT_TRUE(screen.MoveFocus(nullptr));
}

// A whole text, from an editor with a cursor, under the same rules as single keys.
TEST_F(ControlTest, EditAppliesRulesOfKeysToWholeText) {
  TextField name(screen, "AliasName", NameText);
  name.MaxLetters = 8;
  name.WhyNot = [](std::string_view text) { return text == "Taken" ? "It is in use." : ""; };
  UnitField unit(screen, "Units");
  NumericField number(screen, "Mult", kSingle);
  TextField text(screen, "Expression");
  text.Text("a[1");
  struct Case {
    TextField& field;
    std::string_view edited;
    std::string_view now;  // afterwards
    std::string_view help = {};
  };
  const Case cases[] = {
      {name, "Flow_2", "Flow_2"},
      {name, "1Flow", "Flow_2"},      // after deleting the letter before it
      {name, "Flow_2345", "Flow_2"},  // too long
      {name, "Taken", "Flow_2", "It is in use."},
      {name, "", ""},
      {unit, "m / s", ""},
      {unit, " deg C", "degC"},
      {number, "1.5e-3", "1.5e-3"},
      {number, "1.5e-3V", "1.5e-3"},
      {text, "ab[1", "ab[1"},  // an existing mark may stay
      {text, "a[b[1", "ab[1", "A text can't hold \"[\": it begins a section of the project file."},
      {text, "two\r\nlines", "ab[1", "A text has one line, without tabs."},
      {text, "ab1", "ab1"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.edited);
    screen.MoveFocus(&row.field);
    int changes = 0;
    row.field.OnChange = [&] { ++changes; };
    forms.beeps = 0;
    forms.helpLines.clear();
    const std::string before = row.field.Text();
    const bool edited = row.field.Edit(row.edited);
    EXPECT_EQ(row.field.Text(), row.now);
    EXPECT_EQ(forms.beeps, edited ? 0 : 1);
    EXPECT_EQ(changes, row.field.Text() == before ? 0 : 1);
    EXPECT_EQ(forms.helpLines,
              row.help.empty() ? std::vector<std::string>() : std::vector{std::string(row.help)});
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

TEST_F(ControlTest, OnlyVerbsFireAndOnlyOnChange) {
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
  choice.Index(1);
  EXPECT_EQ(choice.Text(), "Auto");
  choice.PickAt(3);
  EXPECT_EQ(choice.Index(), -1);
  EXPECT_EQ(picks, 1);
  choice.PickAt(2);
  EXPECT_EQ(picks, 2);

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
  box.Checked(false);
  EXPECT_EQ(box.Text(), "off");
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(screen.Find("PUBLIC"), &box);
}

}  // namespace
}  // namespace ostrand
