// Names and scaling of single sensors, and the conditions that name them.
#include "conditions/frm_fld_name.h"

#include "model/new_store.h"
#include "support/table_screens_fixture.h"

namespace ostrand {
namespace {

class FieldNamesTest : public testing::TableScreens {
 protected:
  std::unique_ptr<frmFldName> open(OrvusDataObjTypes kind = ORVUS_DOBJ_BLK_VOLT,
                                   bool gaugeFactor = false) {
    FieldNamesRequest block{kind, 1, "VBlk1", {"Volts", 2.5F, 1}, gaugeFactor, rows};
    return std::make_unique<frmFldName>(context, block);
  }
  std::vector<RepAlias> rows = std::vector<RepAlias>(3, RepAlias{"", "", "", "", "0"});
};

// The last text of a row has a bit for each cell that was set by hand.
TEST_F(FieldNamesTest, OnlyDifferencesFromDefaultAreStored) {
  rows.insert(rows.end(), {{"Oil", "Bar", "0.1", "1e8", "7"}, {"A", "Bar", "3", "4", "7"}});
  const auto form = open();
  EXPECT_EQ(form->Caption, "FIELD NAMES (VBlk1)");
  EXPECT_EQ(shown(*form, "AliasOffset4"), "1e+08");
  EXPECT_EQ(form->Find("AliasOffset6"), nullptr);
  type(*form, "AliasUnits1", "Bar");
  type(*form, "AliasMult1", "0.50");
  type(*form, "AliasMult1", "2.500");  // the default value in another form
  type(*form, "AliasOffset2", "-3");
  type(*form, "AliasName3", "9Oil Temp_2");
  EXPECT_EQ(forms.beeps, 2) << "the digit and the blank";
  type(*form, "AliasUnits5", "Volts");
  press(*form, "Reset5");
  EXPECT_EQ(rows[0].AliasUnits, "") << "before Done";
  form->Done();
  const std::vector<RepAlias> kept = {{"", "Bar", "", "", "1"},
                                      {"", "", "", "-3", "4"},
                                      {"OilTemp_2", "", "", "", "0"},
                                      {"Oil", "Bar", "0.1", "1e8", "7"},  // as written
                                      {"", "", "", "", "0"}};
  EXPECT_EQ(rows, kept);
}

TEST_F(FieldNamesTest, StrainBlockNamesGaugeFactors) {
  EXPECT_EQ(open()->DefaultOffset.Group, "All offsets");
  const auto strain = open(ORVUS_DOBJ_BLK_BRIDGE, true);
  EXPECT_EQ(strain->DefaultOffset.Group, "All gauge factors");
  EXPECT_EQ(strain->Find("AliasGFactor3")->Caption, "GAUGE FACT");
  EXPECT_EQ(strain->Find("AliasGFactor3")->Row, 3);
}

TEST_F(FieldNamesTest, CalculatorAnswersForOneSensor) {
  EXPECT_EQ((*open(ORVUS_DOBJ_BLK_BRIDGE, true))[2].Solve.WhyDisabled,
            "No calculator finds a gauge factor.");
  EXPECT_EQ((*open(ORVUS_DOBJ_BLK_QBCAN))[2].Solve.WhyDisabled,
            "The values of a CAN item are scaled already.");
  const auto form = open();
  host.onShow = [](Screen& screen) {
    if (screen.Name() == "frmSolveList") return testing::Press(screen, "MultOff");
    EXPECT_EQ(testing::Shown(screen, "XAxis"), "Input mV");
    testing::Type(screen, "YMax", "689.476");
    testing::Type(screen, "XMax", "10");
    testing::Type(screen, "Units", "PSI");
    screen.Done();
  };
  EXPECT_TRUE(testing::Open(*form, "frmSolveList", "2"));
  form->Done();
  EXPECT_EQ(rows[1], (RepAlias{"", "PSI", "68.9476", "0", "7"}));
}

TEST(AliasRename, NamesMatchWholeWithTheirIndexAndAllAtOnce) {
  const AliasRenames swap = {{"VBlk1", 1, false, "Oil", "Fuel"},
                             {"VBlk1", 2, false, "Fuel", "Oil"}};
  const AliasRenames first = {{"VBlk1", 2, false, "", "Oil"}};
  const AliasRenames only = {{"VBlk1", 1, true, "", "Oil"}};
  const AliasRenames cleared = {{"VBlk1", 12, false, "Oil", ""}};
  struct Case {
    const AliasRenames& renames;
    std::string_view variable, variableAfter, expression, expressionAfter;
  };
  const Case cases[] = {
      {swap, "oil", "Fuel", "Oil <= Fuel", "Fuel <= Oil"},
      {swap, "Oil2", "Oil2", "Oil2>=Oil_1", "Oil2>=Oil_1"},
      {swap, "Oil(2)", "Oil(2)", "Oil>=1.5E+3", "Fuel>=1.5E+3"},
      {swap, "Flag(3)", "Flag(3)", "Flag(3) = True", "Flag(3) = True"},
      {first, "VBLK1( 2 )", "Oil", "VBlk1(2) >= 1", "VBlk1(2) >= 1"},
      {first, "VBlk1(21)", "VBlk1(21)", "", ""},
      {first, "VBlk11(2)", "VBlk11(2)", "", ""},
      {first, "VBlk1", "VBlk1", "(VBlk1(", "(VBlk1("},
      {only, "VBlk1", "Oil", "VBlk1 > 2", "VBlk1 > 2"},
      {only, "VBlk1(1)", "Oil", "", ""},
      {cleared, "OIL", "VBlk1(12)", "Oil = Oil", "VBlk1(12) = VBlk1(12)"},
      {cleared, "Oil$", "Oil$", "Oil$ > 1", "Oil$ > 1"},
      {first, "VBlk1(99999999999)", "VBlk1(99999999999)", "", ""},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.variable);
    const auto store = NewStore();
    TableSetup& tables = store->Tables;
    // Every place that names variables, and one that does not.
    const auto fillOrCheck = [&](bool check, std::string_view variable, std::string_view text) {
      const std::string name(variable);
      const TriggerCondition trigger = {name, 0, 0, 0, name, std::string(text)};
      const WriteCondition write = {name, 0, 0, 0, name, std::string(text)};
      for (int t : {1, 6}) {
        for (int n : {1, kConditions}) {
          for (int state : {0, 1}) {
            if (!check) tables[t].Trigger[state][n] = trigger;
            EXPECT_EQ(tables[t].Trigger[state][n], trigger);
          }
          if (!check) tables[t].Write[n] = write;
          EXPECT_EQ(tables[t].Write[n], write);
        }
      }
    };
    fillOrCheck(false, row.variable, row.expression);
    tables[1].TableName = "Oil";
    const bool changes = row.variable != row.variableAfter || row.expression != row.expressionAfter;
    EXPECT_EQ(ConditionsUse(tables, row.renames), changes);
    RenameVariables(*store, row.renames);
    fillOrCheck(true, row.variableAfter, row.expressionAfter);
    EXPECT_EQ(tables[1].TableName, "Oil");
  }
}

// A formula names existing elements; a single sensor goes by the name of its array.
TEST(AliasRename, FormulasFollowTheOnlySensorOfABlock) {
  const auto store = NewStore();
  std::string& formula = store->CalcFields.Field[50].CalcField[2];
  formula = "Abs(VBlk1) + VBlk1(1)\\VBlk11";
  RenameVariables(*store, {{"VBlk1", 1, true, "", "Oil"}});
  EXPECT_EQ(formula, "Abs(Oil) + VBlk1(1)\\VBlk11");
  RenameVariables(*store, {{"VBlk1", 1, true, "Oil", ""}});
  EXPECT_EQ(formula, "Abs(VBlk1) + VBlk1(1)\\VBlk11");
}

}  // namespace
}  // namespace ostrand
