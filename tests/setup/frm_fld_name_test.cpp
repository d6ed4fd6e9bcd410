// Names and scaling of single sensors, and the conditions that name them.
#include "setup/frm_fld_name.h"

#include "setup/table_screens_fixture.h"

namespace ostrand {
namespace {

class FieldNamesTest : public testing::TableScreens {
 protected:
  std::unique_ptr<frmFldName> open(frmFldName::Calculator calculator = {}) {
    FieldNamesRequest block{ORVUS_DOBJ_BLK_VOLT, 1, "VBlk1", {"Volts", 2.5F, 1}, false, rows};
    return std::make_unique<frmFldName>(context, block, std::move(calculator));
  }
  std::vector<RepAlias> rows = std::vector<RepAlias>(3, RepAlias{"", "", "", "", "0"});
};

TEST_F(FieldNamesTest, RowsShowTheirOwnOrTheDefault) {
  rows[1] = {"Oil", "Bar", "0.1", "1e8", "7"};
  const auto form = open();
  EXPECT_EQ(form->Caption, "FIELD NAMES (VBlk1)");
  EXPECT_EQ(shown(*form, "AliasName1"), "VBlk1(1)");
  EXPECT_EQ(shown(*form, "AliasUnits1"), "Volts");
  EXPECT_EQ(shown(*form, "AliasMult1"), "2.5");
  EXPECT_EQ(shown(*form, "AliasOffset1"), "1");
  EXPECT_EQ(shown(*form, "FieldName2"), "VBlk1(2)");
  EXPECT_EQ(shown(*form, "AliasName2"), "Oil");
  EXPECT_EQ(shown(*form, "AliasUnits2"), "Bar");
  EXPECT_EQ(shown(*form, "AliasMult2"), "0.1");
  EXPECT_EQ(shown(*form, "AliasOffset2"), "1e+08");
  EXPECT_EQ(form->Find("AliasOffset4"), nullptr);
  form->Done();
  EXPECT_EQ(rows[1], (RepAlias{"Oil", "Bar", "0.1", "1e8", "7"})) << "untouched texts stay";
}

TEST_F(FieldNamesTest, ACellSetByHandIsMarkedUntilItEqualsTheDefaultAgain) {
  const auto form = open();
  EXPECT_EQ(shown(*form, "UnitsLight"), "gray");
  type(*form, "AliasUnits1", "Bar");
  type(*form, "AliasMult1", "0.50");
  type(*form, "AliasOffset2", "-3");
  EXPECT_EQ(shown(*form, "UnitsLight"), "green");
  EXPECT_EQ(shown(*form, "ScalingLight"), "green");
  EXPECT_EQ(shown(*form, "AliasLight"), "gray");
  type(*form, "AliasMult1", "2.500");  // the default by its value
  type(*form, "AliasName3", "9Oil Temp_2");
  EXPECT_EQ(forms.beeps, 2) << "the digit and the blank";
  EXPECT_EQ(rows[0].AliasUnits, "") << "before Done";
  form->Done();
  EXPECT_EQ(rows[0], (RepAlias{"", "Bar", "", "", "1"}));
  EXPECT_EQ(rows[1], (RepAlias{"", "", "", "-3", "4"}));
  EXPECT_EQ(rows[2], (RepAlias{"OilTemp_2", "", "", "", "0"}));
}

TEST_F(FieldNamesTest, ResetPutsARowAndDefaultAColumnBack) {
  rows[0] = {"A", "Bar", "3", "4", "7"};
  rows[2] = {"C", "Bar", "3", "4", "7"};
  const auto form = open();
  press(*form, "DefaultUnits");
  press(*form, "DefaultMult");
  press(*form, "Reset3");
  form->Done();
  EXPECT_EQ(rows[0], (RepAlias{"A", "", "", "4", "4"}));
  EXPECT_EQ(rows[2], (RepAlias{"", "", "", "", "0"}));
}

TEST_F(FieldNamesTest, ACalculatorAnswersForOneSensor) {
  EXPECT_FALSE(usable(*open(), "Solve2"));
  const auto form = open([](DefaultScaling& scaling) {
    EXPECT_EQ(scaling, (DefaultScaling{"Volts", 2.5F, 1}));
    scaling = {"PSI", 68.9476F, 1};
    return true;
  });
  press(*form, "Solve2");
  form->Done();
  EXPECT_EQ(rows[1], (RepAlias{"", "PSI", "68.9476", "", "3"}));
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
    const TriggerCondition trigger = {
        std::string(row.variable), 0, 0, 0, std::string(row.variable), std::string(row.expression)};
    const WriteCondition write = {trigger.StartMeasVar,        0, 0, 0, trigger.StartTrigVarb,
                                  trigger.StartTrigIndvExpress};
    const TriggerCondition triggerAfter = {
        std::string(row.variableAfter),  0, 0, 0, std::string(row.variableAfter),
        std::string(row.expressionAfter)};
    const WriteCondition writeAfter = {
        triggerAfter.StartMeasVar,        0, 0, 0, triggerAfter.StartTrigVarb,
        triggerAfter.StartTrigIndvExpress};
    const auto forEach = [&](auto&& visit) {
      for (int t : {1, 6}) {
        for (int n : {1, kConditions}) {
          visit(tables[t].Trigger[0][n], tables[t].Trigger[1][n], tables[t].Write[n]);
        }
      }
    };
    forEach([&](auto& start, auto& stop, auto& condition) {
      start = stop = trigger;
      condition = write;
    });
    tables[1].TableName = "Oil";
    const bool changes = row.variable != row.variableAfter || row.expression != row.expressionAfter;
    EXPECT_EQ(ConditionsUse(tables, row.renames), changes);
    RenameInConditions(tables, row.renames);
    forEach([&](const auto& start, const auto& stop, const auto& condition) {
      EXPECT_EQ(start, triggerAfter);
      EXPECT_EQ(stop, triggerAfter);
      EXPECT_EQ(condition, writeAfter);
    });
    EXPECT_EQ(tables[1].TableName, "Oil");
  }
}

}  // namespace
}  // namespace ostrand
