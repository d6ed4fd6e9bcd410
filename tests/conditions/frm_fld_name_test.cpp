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

TEST_F(FieldNamesTest, StrainBlockNamesGaugeFactors) {
  EXPECT_EQ(open()->DefaultOffset.Group, "All offsets");
  const auto strain = open(ORVUS_DOBJ_BLK_BRIDGE, true);
  EXPECT_EQ(strain->DefaultOffset.Group, "All gauge factors");
  EXPECT_EQ(strain->Find("AliasGFactor3")->Caption, "GAUGE FACT");
  EXPECT_EQ(strain->Find("AliasGFactor3")->Row, 3);
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
