// Names and scaling of single sensors, and the conditions that name them.
#include "setup/frm_fld_name.h"

#include "setup/table_screens_fixture.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr std::string_view kImpactTitle = "ALIAS CHANGE IMPACTS TRIGGER CONDITIONS";

class FieldNamesTest : public testing::TableScreens {
 protected:
  std::unique_ptr<frmFldName> open(frmFldName::Hooks hooks = {}) {
    FieldNamesRequest block{ORVUS_DOBJ_BLK_VOLT, 1, "VBlk1", {"Volts", 2.5F, 1}, gauges, rows};
    return std::make_unique<frmFldName>(context, block, std::move(hooks));
  }
  void expectImpact(Answer answer) {
    forms.ExpectBox(std::string(kImpactTitle),
                    "The Alias changes made here will also be applied to\r\n"
                    "the affected output table trigger conditions.\r\n"
                    "Do you wish to continue with this change?",
                    answer);
  }

  bool gauges = false;
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

  gauges = true;
  const auto strain = open();
  EXPECT_EQ(strain->Find("AliasGFactor3")->Caption, "GAUGE FACT");
  EXPECT_EQ(strain->Find("AliasOffset3"), nullptr);
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
  frmFldName::Hooks hooks;
  hooks.Solve = [](DefaultScaling& scaling) {
    EXPECT_EQ(scaling, (DefaultScaling{"Volts", 2.5F, 1}));
    scaling = {"PSI", 68.9476F, 1};
    return true;
  };
  EXPECT_FALSE(usable(*open(), "Solve2"));
  const auto form = open(hooks);
  press(*form, "Solve2");
  form->Done();
  EXPECT_EQ(rows[1], (RepAlias{"", "PSI", "68.9476", "", "3"}));
}

TEST_F(FieldNamesTest, CancelAsksOnlyAfterEdits) {
  const std::string question =
      "Edits were made one or more of the exception values.  Save changes before exiting screen?";
  open()->Cancel();
  struct Case {
    Answer answer;
    ModalResult result;
    std::string_view units;
  };
  for (const Case& row :
       {Case{Answer::kCancel, ModalResult::kNone, ""}, Case{Answer::kNo, ModalResult::kCancel, ""},
        Case{Answer::kYes, ModalResult::kDone, "Bar"}}) {
    const auto form = open();
    type(*form, "AliasUnits1", "Bar");
    forms.ExpectBox("FIELD NAME EXCEPTIONS", question, row.answer);
    form->Cancel();
    EXPECT_EQ(form->Result(), row.result);
    EXPECT_EQ(rows[0].AliasUnits, row.units);
  }
}

TEST_F(FieldNamesTest, ARenameGoesThroughConditionsOrIsNotDone) {
  rows[0].AliasName = "Oil";
  TriggerCondition& start = store->Tables[2].Trigger[0][1];
  start = {"OIL", 3, 0, 5, "", "OIL >= 5"};
  const auto form = open();
  type(*form, "AliasName1", "Fuel");
  expectImpact(Answer::kNo);
  form->Done();
  EXPECT_EQ(form->Result(), ModalResult::kNone);
  EXPECT_EQ(rows[0].AliasName, "Oil");
  EXPECT_EQ(start.StartMeasVar, "OIL");
  expectImpact(Answer::kYes);
  form->Done();
  EXPECT_EQ(form->Result(), ModalResult::kDone);
  EXPECT_EQ(rows[0].AliasName, "Fuel");
  EXPECT_EQ(start.StartMeasVar, "Fuel");
  EXPECT_EQ(start.StartTrigIndvExpress, "Fuel >= 5");
}

TEST_F(FieldNamesTest, WhatNoConditionNamesIsRenamedWithoutAQuestion) {
  rows[0].AliasName = "Oil";
  store->Tables[2].Write[1] = {"Oil2", 0, 0, 1, "Oil(1)", "VBlk1(1) > Oil2"};
  const auto form = open();
  type(*form, "AliasName1", "Fuel");
  form->Done();
  EXPECT_EQ(rows[0].AliasName, "Fuel");
  EXPECT_EQ(store->Tables[2].Write[1],
            (WriteCondition{"Oil2", 0, 0, 1, "Oil(1)", "VBlk1(1) > Oil2"}));
}

TEST_F(FieldNamesTest, LaterRenamesWaitForTheBlockAndCountAsDone) {
  rows[0].AliasName = "Oil";
  store->Tables[1].Trigger[1][3] = {"Oil", 2, 0, 0, "", "Oil > 0"};
  std::vector<AliasRenames> later;
  frmFldName::Hooks hooks;
  hooks.laterRenames = &later;
  for (const std::string_view name : {"Fuel", "Water"}) {
    const auto form = open(hooks);
    type(*form, "AliasName1", name);
    expectImpact(Answer::kYes);
    form->Done();
  }
  EXPECT_EQ(store->Tables[1].Trigger[1][3].StartMeasVar, "Oil");
  ASSERT_EQ(later.size(), 2U);
  for (const AliasRenames& renames : later) RenameInConditions(store->Tables, renames);
  EXPECT_EQ(store->Tables[1].Trigger[1][3].StartMeasVar, "Water");
  EXPECT_EQ(store->Tables[1].Trigger[1][3].StartTrigIndvExpress, "Water > 0");
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
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.variable);
    const auto store = NewStore();
    TableSetup& tables = store->Tables;
    // Every place that names variables, and one that does not.
    for (int t : {1, 6}) {
      for (int state : {0, 1}) {
        for (int n : {1, kConditions}) {
          tables[t].Trigger[state][n].StartMeasVar = row.variable;
          tables[t].Trigger[state][n].StartTrigVarb = row.variable;
          tables[t].Trigger[state][n].StartTrigIndvExpress = row.expression;
          tables[t].Write[n] = {std::string(row.variable),  0, 0, 0, std::string(row.variable),
                                std::string(row.expression)};
        }
      }
      tables[t].TableName = "Oil";
    }
    const bool changes = row.variable != row.variableAfter || row.expression != row.expressionAfter;
    EXPECT_EQ(ConditionsUse(tables, row.renames), changes);
    RenameInConditions(tables, row.renames);
    for (int t : {1, 6}) {
      for (int state : {0, 1}) {
        for (int n : {1, kConditions}) {
          EXPECT_EQ(tables[t].Trigger[state][n].StartMeasVar, row.variableAfter);
          EXPECT_EQ(tables[t].Trigger[state][n].StartTrigVarb, row.variableAfter);
          EXPECT_EQ(tables[t].Trigger[state][n].StartTrigIndvExpress, row.expressionAfter);
          EXPECT_EQ(tables[t].Write[n].MeasureVar, row.variableAfter);
          EXPECT_EQ(tables[t].Write[n].Varb, row.variableAfter);
          EXPECT_EQ(tables[t].Write[n].Expression, row.expressionAfter);
        }
      }
      EXPECT_EQ(tables[t].TableName, "Oil");
    }
  }
}

}  // namespace
}  // namespace ostrand
