// Formulas of calculated fields, and the screen that edits them.
#include "calc/formula.h"
#include "calc/frm_calculated.h"
#include "calc/variable_uses.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

using namespace testing;

TEST(Formula, IsTestedForParensEqualSignsAndFunctions) {
  const auto isNoFunction = [](const std::string& name) {
    return '"' + name + "\" is not a valid function name.\r\n\r\n";
  };
  const struct {
    std::string formula;
    std::string mistakes;  // after the header; empty for none
  } cases[] = {
      {"x = a + b", ""},
      {"x = sin(y)", ""},
      {"x = SIN (y)", ""},
      {"x = foo", ""},  // no "(" after it
      {"x = CANtemp(1)", ""},
      {"x = cantemp(1)", ""},
      {"x = cannotReallyBeAFunction(1)", ""},
      {"x = TK40RefA(1)", ""},  // compared by its first seven letters
      {"x = VBlk7(1) + TBlk1(2) - BBlk3(1) * PBlk2(1) / ABlk5(1)", ""},
      {"x = VBlk8(1)", isNoFunction("VBlk8")},
      {"x = SinHyper(1)", isNoFunction("SinHyper")},
      {"x = ((a + b) * (c - (d)))", ""},
      {"x = Iif(a, b, Atn2(c, d))", isNoFunction("a,b,Atn2")},
      {"x = IIF(Mod(a) + Log10(b))", ""},
      {"x = 3\\(a)", ""},
      {"x = f(y)", isNoFunction("x=f")},  // too short to find where the name begins
      {"xy = f(y)", isNoFunction("f")},
      {"x = 2^(a)", isNoFunction("2^")},
      {"x = foo(y) + foo(z)", isNoFunction("foo") + isNoFunction("foo")},
      {"x = a)(b", isNoFunction("a)")},
      {"x = (a+b", "There are 1 left parens and 0 right parens.\r\n\r\n"},
      {"x = a+b))", "There are 2 right parens and 0 left parens.\r\n\r\n"},
      {"a + b", "There is no equal sign in the formula.\r\n\r\n"},
      {"", "There is no equal sign in the formula.\r\n\r\n"},
      {"x = a = b", "There are 2 equal signs in the formula.\r\n\r\n"},
      {"== foo(((",
       "There are 3 left parens and 0 right parens.\r\n\r\n"
       "There are 2 equal signs in the formula.\r\n\r\n" +
           isNoFunction("foo")},
  };
  for (const auto& c : cases) {
    ScriptedForms forms;
    bool ok = false;
    const std::string message = "FORMULA REJECTED\r\n\r\n" + c.mistakes;
    if (!c.mistakes.empty()) forms.ExpectBox("FORMULA PROBLEM", message);
    TestFormula(forms, c.formula, ok);
    EXPECT_EQ(ok, c.mistakes.empty()) << c.formula;
  }
}

TEST(Formula, NamesAreFoundAsWholeWords) {
  EXPECT_TRUE(NamesVariable("Sqr(oil) * 2", "Oil"));
  EXPECT_TRUE(NamesVariable("Oil2 + OIL", "Oil"));
  EXPECT_FALSE(NamesVariable("Oil2 + My_Oil + Oil_", "Oil"));
  EXPECT_FALSE(NamesVariable("Oil", ""));
}

// ---- The screen ---------------------------------------------------------------------------------

class CalculatedScreen : public ScreenTest {
 protected:
  MemoryFileSystem files;
  FixedClock clock;
  FormulaListPlace place{files, clock, "/work", "BRIDGE"};

  CalculatedScreen() {
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 2;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
  }

  void put(const std::string& name, const std::string& expression, const std::string& units = "") {
    auto& field = store->CalcFields.Field[++store->CalcFields.CalcFieldCount];
    field.CalcField[1] = name;
    field.CalcField[2] = expression;
    field.CalcField[3] = units;
  }

  [[nodiscard]] std::string fields() const {
    std::string all;
    for (int f = 1; f <= store->CalcFields.CalcFieldCount; ++f) {
      const CalcFieldData& field = store->CalcFields.Field[f];
      all += field.CalcField[1] + "=" + field.CalcField[2] + field.CalcField[3] + ";";
    }
    return all;
  }
};

// Variables whose formula would be rejected are not offered: a flag, and an element whose array
// does not have the name of a function.
TEST_F(CalculatedScreen, OffersTheVariablesThatAFormulaTakes) {
  store->Config.CanBusQty = 1;
  store->Can.Module[1].CanBusEnabled = 1;
  store->Can.CanCount = 3;
  const auto setItem = [this](int number, const std::string& name, i16 values) {
    CanItemData& item = store->Can.Item[number];
    item.Name = name;
    item.Enabled = 1;
    item.Reps = values;
  };
  setItem(1, "Speed", 2);
  store->Can.Item[1].Alias[2].AliasName = "Wheel";
  setItem(2, "CanTemp", 2);
  setItem(3, "Torque", 1);
  const frmCalculated screen(context, place);
  for (const Choice* list : {&screen.cboMeas1, &screen.cboMeas2}) {
    for (const std::string_view name :
         {"VBlk1(1)", "Oil", "Wheel", "CanTemp(1)", "CanTemp(2)", "Torque"}) {
      EXPECT_NE(list->Find(name), nullptr) << name;
    }
    for (const std::string_view name : {"Flag(1)", "Speed(1)", "Speed(2)"}) {
      EXPECT_EQ(list->Find(name), nullptr) << name;
    }
  }
}

TEST_F(CalculatedScreen, StopsAtFiftyFields) {
  for (int f = 1; f < kCalcFields; ++f) put("N" + std::to_string(f), "Oil");
  // Names that collide elsewhere do not prevent a new one.
  store->Tables[2].TableName = store->Tables[1].TableName;
  frmCalculated screen(context, place);
  for (int beeps = 0; beeps <= 1; ++beeps) {
    Pick(screen, "cboMeas1", "Oil");
    Press(screen, "Save");
    EXPECT_EQ(forms.beeps, beeps);
    EXPECT_EQ(store->CalcFields.CalcFieldCount, kCalcFields);
  }
  Pick(screen, "Formulas", "50");
  Press(screen, "Edit");
  Pick(screen, "cboMeas1", "N1");
  Press(screen, "Save");
  EXPECT_EQ(store->CalcFields.Field[50].CalcField[2], "N1") << "replacing needs no free row";
}

TEST_F(CalculatedScreen, DeletingMovesLaterRowsWithTheirOutputs) {
  put("A", "Oil");
  put("B", "Oil + 1");
  put("C", "Sin(Oil)", "m");
  store->CalcFields.Field[3].Output.OutputSelect[4][kSample] = 1;
  store->CalcFields.Field[3].Output.Histo[4].LevelCode = "3,2,Calc34LC1(),Calc34LC2()";
  frmCalculated screen(context, place);
  Pick(screen, "Formulas", "B");
  Press(screen, "Delete");
  EXPECT_EQ(fields(), "A=Oil;C=Sin(Oil)m;");
  EXPECT_EQ(store->CalcFields.Field[2].Output.OutputSelect[4][kSample], 1);
  EXPECT_EQ(store->CalcFields.Field[2].Output.Histo[4].LevelCode, "3,2,Calc24LC1(),Calc24LC2()")
      << "the program calls the arrays by the place of their field";
  EXPECT_EQ(store->CalcFields.Field[3].Output.OutputSelect[4][kSample], 0);
  EXPECT_EQ(store->CalcFields.Field[3].CalcField[1], "");
  EXPECT_EQ(Shown(screen, "NewName"), "CalcVar3");
  screen.DeleteCalculation();
  EXPECT_EQ(forms.beeps, 1) << "nothing is selected";

  screen.Cancel();
  EXPECT_EQ(fields(), "A=Oil;B=Oil + 1;C=Sin(Oil)m;");
  EXPECT_EQ(store->CalcFields.Field[3].Output.OutputSelect[4][kSample], 1);
}

TEST_F(CalculatedScreen, DeletingUsedVariableAsks) {
  using Use = std::function<void(ProjectStore&)>;
  const std::pair<const char*, Use> uses[] = {
      {"formula", [](ProjectStore& s) { s.CalcFields.Field[2].CalcField[2] = "Abs(POWER)"; }},
      {"power off", [](ProjectStore& s) { s.Config.PowerOffMeasVar = "Power"; }},
      {"start trigger",
       [](ProjectStore& s) { s.Tables[3].Trigger[0][2].StartTrigIndvExpress = "Power > 2"; }},
      {"stop trigger", [](ProjectStore& s) { s.Tables[1].Trigger[1][1].StartMeasVar = "power"; }},
      {"write condition", [](ProjectStore& s) { s.Tables[6].Write[1].MeasureVar = "Power"; }},
      {"port", [](ProjectStore& s) { s.Ports.Slot[0].Ports[8].State[1].MeasureVar = "Power"; }},
      {"flag", [](ProjectStore& s) { s.Flags[8].State[2].FlagExpression = "Power < 0"; }},
      {"analog output", [](ProjectStore& s) { s.ExciteOut.Slot[0][2].Excite2MeasVar = "Power"; }},
      {"level crossing",
       [](ProjectStore& s) {
         OutputSet& output = s.VoltBlock[1].Output;
         output.OutputSelect[5][kLevelCrossing] = 1;
         output.Histo[5].LevelMeasName = "Power";
       }},
  };
  for (const auto& [where, use] : uses) {
    SCOPED_TRACE(where);
    ORVUS_COMMON::SetAllDefaults(*store);
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 1;
    put("Power", "VBlk1 + Power");  // its own formula does not count
    put("Powers", "2");
    EXPECT_FALSE(IsVariableUsed(*store, 1));
    use(*store);
    frmCalculated screen(context, place);
    for (const auto answer : {platform::Answer::kNo, platform::Answer::kYes}) {
      Pick(screen, "Formulas", "1");
      forms.ExpectBoxWith("DELETE VARIABLE WARNING", "", answer);
      Press(screen, "Delete");
      EXPECT_EQ(fields().starts_with("Powers="), answer == platform::Answer::kYes);
    }
  }
}

TEST_F(CalculatedScreen, ListsItsFormulasToAFile) {
  put("A", "Oil * 2", "V");
  put("B", "Sin(A)");
  frmCalculated screen(context, place);
  forms.ExpectBoxWith("CALCULATED FIELDS", "File list has been saved as /work/CalcFile.Log");
  Press(screen, "ListFormulas");
  const std::string list =
      "CALCULATED FIELDS FORMULA LIST\r\n"
      "Time Printed: 3/10/2003 2:05:00 PM\r\n"
      "Program Name: BRIDGE\r\n"
      "A = Oil * 2\r\n"
      "B = Sin(A)\r\n";
  EXPECT_EQ(files.files["/work/CalcFile.Log"], list);

  // On a failing disk the old list stays, and the failure is reported.
  FaultyFileSystem faulty(files, 1, true);
  frmCalculated another(context, {faulty, clock, "/work", "OTHER"});
  forms.ExpectBoxWith("TROUBLE", "has occurred in frmCalculated.ListToDisk.");
  Press(another, "ListFormulas");
  EXPECT_EQ(files.files["/work/CalcFile.Log"], list);
}

}  // namespace
}  // namespace ostrand
