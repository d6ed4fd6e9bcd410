// Formulas of calculated fields, and the screen that edits them.
#include "calc/formula.h"
#include "calc/frm_calculated.h"
#include "calc/variable_uses.h"
#include "setup/screen_driver.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"

namespace ostrand {
namespace {

using namespace testing;

TEST(Formula, IsComposedFromWhatIsPicked) {
  const struct {
    FormulaParts parts;  // name, measure and function 1, operator, 2, outer, multiplier, offset
    const char* formula;
  } cases[] = {
      {{"F", "A", "", "+", "", "", "", "", ""}, "F = A"},
      {{"F", "A", "Abs", "+", "", "", "", "", ""}, "F = Abs(A)"},
      {{"F", "A", "Abs", "+", "", "", "Sqr", "", ""}, "F = Sqr(Abs(A))"},
      {{"F", "A", "", "x", "B", "", "", "", ""}, "F = (A * B)"},
      {{"F", "A", "Sin", "/", "B", "Cos", "", "2", "-5"}, "F = (Sin(A) / Cos(B)) * 2 + -5"},
      {{"F", "A", "", "-", "B", "Abs", "Sqr", "", "0.5"}, "F = Sqr((A - Abs(B))) + 0.5"},
      {{"F", "", "Sin", "-", "B", "Abs", "Sqr", "", ""}, "F = "},
  };
  for (const auto& c : cases) EXPECT_EQ(ComposeFormula(c.parts), c.formula);
}

TEST(Formula, IsTestedForParensEqualSignsAndFunctions) {
  const auto isNoFunction = [](const std::string& name) {
    return '"' + name + "\" is not a valid function name.\r\n\r\n";
  };
  const struct {
    std::string formula;
    std::string mistakes;  // behind the head; empty for none
  } cases[] = {
      {"x = a + b", ""},
      {"x = sin(y)", ""},
      {"x = SIN (y)", ""},
      {"x = foo", ""},  // no "(" behind it
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
      {"x = f(y)", isNoFunction("x=f")},  // too short to look for where the name begins
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
      all += field.CalcField[1] + "=" + field.CalcField[2] + "[" + field.CalcField[3] + "]" +
             field.CalcField[4] + field.DataResolution + (field.Public != 0 ? "P" : "") + ";";
    }
    return all;
  }
};

TEST_F(CalculatedScreen, ComposesAndAddsFields) {
  frmCalculated screen(context, place);
  Press(screen, "Save");
  EXPECT_EQ(forms.beeps, 1) << "a name without an expression";
  Type(screen, "Mult", "3");
  Press(screen, "Save");
  EXPECT_EQ(forms.beeps, 2) << "there is nothing to multiply";
  EXPECT_EQ(store->CalcFields.CalcFieldCount, 0);

  Pick(screen, "cboMeas1", "VBlk1(1)");
  Pick(screen, "cboFunct1", "Abs");
  Pick(screen, "cboMeas2", "Oil");
  Pick(screen, "cboCompare", "x");
  Pick(screen, "cboFunct3", "Sqr");
  Type(screen, "Mult", "2.50");
  Type(screen, "Offset", "-5");
  EXPECT_EQ(Shown(screen, "Formula"), "CalcVar1 = Sqr((Abs(VBlk1(1)) * Oil)) * 2.5 + -5");
  Type(screen, "Offset", "");
  EXPECT_EQ(Shown(screen, "Formula"), "CalcVar1 = Sqr((Abs(VBlk1(1)) * Oil)) * 2.5");
  Type(screen, "NewName", "1Po wer");
  EXPECT_EQ(Shown(screen, "Formula"), "Power = Sqr((Abs(VBlk1(1)) * Oil)) * 2.5");
  EXPECT_EQ(forms.beeps, 4);
  Type(screen, "Units", "kW");
  Check(screen, "Public", true);
  Pick(screen, "DataResolution", "IEEE4");
  Press(screen, "Save");

  EXPECT_EQ(Shown(screen, "NewName"), "CalcVar2");
  Pick(screen, "cboMeas1", "Power");
  Press(screen, "Save");
  screen.Done();
  EXPECT_EQ(fields(), "Power=Sqr((Abs(VBlk1(1)) * Oil)) * 2.5[kW]0IEEE4P;CalcVar2=Power[]0FP2;");
}

TEST_F(CalculatedScreen, ReplacesTheRowBeingEdited) {
  put("CalcVar1", "VBlk1(1) * 3", "V");
  put("Total", "CalcVar1 + Oil");
  frmCalculated screen(context, place);
  EXPECT_EQ(screen.Formulas.Items[0].Text, "CalcVar1 | VBlk1(1) * 3 | V");
  Pick(screen, "Formulas", "total");
  Press(screen, "Edit");
  // Nothing is picked in its place, so the expression stays.
  Type(screen, "Mult", "4");
  Type(screen, "NewName", "Sum");
  EXPECT_EQ(Shown(screen, "Formula"), "Sum = CalcVar1 + Oil");
  Press(screen, "Save");

  Pick(screen, "Formulas", "1");
  Press(screen, "Edit");
  Pick(screen, "cboMeas1", "Oil");
  EXPECT_EQ(Shown(screen, "Formula"), "CalcVar1 = Oil");
  Pick(screen, "cboMeas1", " None");
  EXPECT_EQ(Shown(screen, "Formula"), "CalcVar1 = VBlk1(1) * 3");
  Pick(screen, "cboMeas1", "Oil");
  Press(screen, "Save");  // its own name is no duplicate
  screen.Done();
  EXPECT_EQ(fields(), "CalcVar1=Oil[V]0FP2;Sum=CalcVar1 + Oil[]0FP2;");
}

TEST_F(CalculatedScreen, TypedFormulasAreTestedBeforeTheyAreAdded) {
  put("Total", "Oil");
  frmCalculated screen(context, place);
  EXPECT_FALSE(screen.Formula.Enabled);
  forms.ExpectBoxWith("EDIT CAUTION", "USE CAUTION!");
  Check(screen, "EditMode", true);
  EXPECT_FALSE(screen.cboMeas1.Enabled || screen.NewName.Enabled);

  Type(screen, "Formula", "x = (Oil");
  forms.ExpectBox("FORMULA PROBLEM",
                  "FORMULA REJECTED\r\n\r\nThere are 1 left parens and 0 right parens.\r\n\r\n");
  Press(screen, "Save");
  for (const std::string_view formula : {"2x = Oil", "x y = Oil", " = Oil", "x = "}) {
    forms.beeps = 0;
    Type(screen, "Formula", formula);
    Press(screen, "Save");
    EXPECT_EQ(forms.beeps, 1) << formula;
  }
  Type(screen, "Formula", "Log = Oil");
  forms.ExpectBoxWith("ILLEGAL KEYWORD USAGE", "\"LOG\" is used as New Field.");
  Press(screen, "Save");
  Type(screen, "Formula", "oil = 2");
  forms.ExpectBoxWith("DUPLICATION FOUND",
                      "\"OIL\" is used as [ New Field ] and [ VBlk1(2) alias name ].");
  Press(screen, "Save");
  EXPECT_EQ(store->CalcFields.CalcFieldCount, 1);

  Type(screen, "Formula", "  Slope=Oil^2 ");
  Check(screen, "EditMode", false);
  EXPECT_EQ(Shown(screen, "NewName"), "Slope");
  Press(screen, "Save");
  EXPECT_EQ(fields(), "Total=Oil[]0FP2;Slope=Oil^2[]0FP2;");
}

TEST_F(CalculatedScreen, NamesThatCollideElsewhereDoNotStopANewOne) {
  store->Tables[2].TableName = store->Tables[1].TableName;
  frmCalculated screen(context, place);
  Pick(screen, "cboMeas1", "Oil");
  Press(screen, "Save");
  EXPECT_EQ(fields(), "CalcVar1=Oil[]0FP2;");
}

TEST_F(CalculatedScreen, StopsAtFiftyFields) {
  for (int f = 1; f < kCalcFields; ++f) put("N" + std::to_string(f), "Oil");
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
  EXPECT_EQ(store->CalcFields.Field[50].CalcField[2], "N1") << "replacing needs no room";
}

TEST_F(CalculatedScreen, DeletingMovesTheRowsBehindWithTheirOutputs) {
  put("A", "Oil");
  put("B", "Oil + 1");
  put("C", "Sin(Oil)", "m");
  store->CalcFields.Field[3].Output.OutputSelect[4][kSample] = 1;
  store->CalcFields.Field[3].Output.Histo[4].LevelCode = "3,2,Calc34LC1(),Calc34LC2()";
  frmCalculated screen(context, place);
  Pick(screen, "Formulas", "B");
  Press(screen, "Delete");
  EXPECT_EQ(fields(), "A=Oil[]0FP2;C=Sin(Oil)[m]0FP2;");
  EXPECT_EQ(store->CalcFields.Field[2].Output.OutputSelect[4][kSample], 1);
  EXPECT_EQ(store->CalcFields.Field[2].Output.Histo[4].LevelCode, "3,2,Calc24LC1(),Calc24LC2()")
      << "the program calls the arrays by the place of their field";
  EXPECT_EQ(store->CalcFields.Field[3].Output.OutputSelect[4][kSample], 0);
  EXPECT_EQ(store->CalcFields.Field[3].CalcField[1], "");
  EXPECT_EQ(Shown(screen, "NewName"), "CalcVar3");
  screen.DeleteCalculation();
  EXPECT_EQ(forms.beeps, 1) << "nothing is selected";

  screen.Cancel();
  EXPECT_EQ(fields(), "A=Oil[]0FP2;B=Oil + 1[]0FP2;C=Sin(Oil)[m]0FP2;");
  EXPECT_EQ(store->CalcFields.Field[3].Output.OutputSelect[4][kSample], 1);
}

TEST_F(CalculatedScreen, DeletingAVariableInUseIsAsked) {
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
    Pick(screen, "Formulas", "1");
    forms.ExpectBox("DELETE VARIABLE WARNING",
                    "Other Place Uses This Variable, Do You Want to Delete?",
                    platform::Answer::kNo);
    Press(screen, "Delete");
    EXPECT_EQ(store->CalcFields.CalcFieldCount, 2);
    forms.ExpectBox("DELETE VARIABLE WARNING",
                    "Other Place Uses This Variable, Do You Want to Delete?",
                    platform::Answer::kYes);
    Press(screen, "Delete");
    EXPECT_EQ(store->CalcFields.CalcFieldCount, 1);
    EXPECT_EQ(store->CalcFields.Field[1].CalcField[1], "Powers");
  }
}

TEST_F(CalculatedScreen, AnotherNameForAVariableInUseIsAskedToo) {
  put("Power", "Oil");
  put("Twice", "Power * 2");
  frmCalculated screen(context, place);
  for (const std::string_view name : {"POWER", "Watts"}) {
    Pick(screen, "Formulas", "1");
    Press(screen, "Edit");
    Type(screen, "NewName", name);
    if (name == "Watts") {
      forms.ExpectBoxWith("DELETE VARIABLE WARNING", "Do You Want to Delete?",
                          platform::Answer::kNo);
    }
    Press(screen, "Save");
  }
  EXPECT_EQ(fields(), "POWER=Oil[]0FP2;Twice=Power * 2[]0FP2;");
  EXPECT_EQ(Shown(screen, "Save"), "&Replace") << "the row is still being edited";
  forms.ExpectBoxWith("DELETE VARIABLE WARNING", "Do You Want to Delete?", platform::Answer::kYes);
  Press(screen, "Save");
  EXPECT_EQ(fields(), "Watts=Oil[]0FP2;Twice=Power * 2[]0FP2;");
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

  // On a disk that fails the old list stands, and the user is told.
  FaultyFileSystem faulty(files, 1, true);
  frmCalculated another(context, {faulty, clock, "/work", "OTHER"});
  forms.ExpectBoxWith("TROUBLE", "has occurred in frmCalculated.ListToDisk.");
  Press(another, "ListFormulas");
  EXPECT_EQ(files.files["/work/CalcFile.Log"], list);
}

TEST_F(CalculatedScreen, OpensTheOutputsOfARow) {
  put("A", "Oil");
  put("B", "Oil");
  int opened = 0;
  frmCalculated screen(context, place, [&](int field) { opened = field; });
  EXPECT_FALSE(screen.Outputs.Enabled);
  Pick(screen, "Formulas", "b");
  Press(screen, "Outputs");
  EXPECT_EQ(opened, 2);
}

}  // namespace
}  // namespace ostrand
