#include "verify/names_check.h"

#include "verify/check_fixture.h"

namespace ostrand {
namespace {

class NamesCheck : public testing::CheckTest {
 protected:
  bool namesAreBad(std::string_view newName = "") {
    bool bad = true;
    ORVUS_COMMON::CheckNames(context, bad, newName);
    return bad;
  }
  void calcField(int c, const std::string& name) {
    store.CalcFields.CalcFieldCount = static_cast<i16>(c);
    store.CalcFields.Field[c].CalcField[1] = name;
  }
};

TEST_F(NamesCheck, LeavesANewProjectAlone) { EXPECT_FALSE(namesAreBad()); }

// Tables count whether in use or not; blocks only up to their counts.
TEST_F(NamesCheck, TellsPairsInTheOrderOfTheProject) {
  store.Tables[3].TableName = "oil";
  use(store.TempBlock, 2, 3);
  store.TempBlock[2].Alias[3].AliasName = "Oil";
  store.TempBlock[2].Alias[4].AliasName = "OIL";  // past its repetitions
  store.TempBlock[3].Alias[1].AliasName = "OIL";  // past the blocks
  use(store.VoltBlock, 1, 1);
  store.VoltBlock[1].Alias[1].AliasName = "Load";
  use(store.BridgeBlock, 1, 2);
  store.BridgeBlock[1].Alias[2].AliasName = "LOAD";
  use(store.PulseBlock[1], 1, 1);
  store.PulseBlock[1][1].Alias[1].AliasName = "OIL";
  calcField(1, "load");
  forms.ExpectBox("DUPLICATION FOUND",
                  "The following duplicate names were found:\r\n\r\n"
                  "\"OIL\" is used as [ Table3  name ] and [ TBlk2(3) alias name ].\r\n"
                  "\"OIL\" is used as [ Table3  name ] and [ PBlk1(1) alias name ].\r\n"
                  "\"OIL\" is used as [ TBlk2(3) alias name ] and [ PBlk1(1) alias name ].\r\n"
                  "\"LOAD\" is used as [ VBlk1(1) alias name ] and [ BBlk1(2) alias name ].\r\n"
                  "\"LOAD\" is used as [ VBlk1(1) alias name ] and [ CalcField 1 ].\r\n"
                  "\"LOAD\" is used as [ BBlk1(2) alias name ] and [ CalcField 1 ].\r\n\r\n"
                  "THIS MUST BE CORRECTED BEFORE SAVING.");
  EXPECT_TRUE(namesAreBad());
}

TEST_F(NamesCheck, NewFieldMeetsTheOthers) {
  calcField(1, "Power");
  EXPECT_FALSE(namesAreBad("Pow"));
  forms.ExpectBoxWith("DUPLICATION FOUND",
                      "\"POWER\" is used as [ New Field ] and [ CalcField 1 ].\r\n\r\nTHIS");
  EXPECT_TRUE(namesAreBad("power"));
}

TEST_F(NamesCheck, MultiplexersAndCanItemsAreNotLookedAt) {
  use(store.TK40MBlock, 1, 1);
  store.TK40MBlock[1].Alias[1].AliasName = "Table1";
  store.Can.CanCount = 1;
  store.Can.Item[1].Name = "Scan";
  EXPECT_FALSE(namesAreBad());
}

TEST_F(NamesCheck, KeyWordsHaveABoxOfTheirOwn) {
  store.Tables[2].TableName = "scan";
  use(store.TempBlock, 1, 3);
  store.TempBlock[1].Alias[1].AliasName = "TYPEK";
  store.TempBlock[1].Alias[2].AliasName = "TypeN";  // no key word here
  store.TempBlock[1].Alias[3].AliasName = "Scanner";
  calcField(1, "Scan");
  forms.ExpectBoxWith("DUPLICATION FOUND", "\"SCAN\" is used as [ Table2  name ]");
  forms.ExpectBox("ILLEGAL KEYWORD USAGE",
                  "The following key words were used:\r\n\r\n"
                  "\"SCAN\" is used as Table2  name.\r\n"
                  "\"TYPEK\" is used as TBlk1(1) alias name.\r\n"
                  "\"SCAN\" is used as CalcField 1.\r\n\r\n"
                  "THIS MUST BE CORRECTED BEFORE SAVING.");
  EXPECT_TRUE(namesAreBad());
}

TEST_F(NamesCheck, KeyWordsAloneAreBad) {
  forms.ExpectBoxWith("ILLEGAL KEYWORD USAGE", "\"XOR\" is used as New Field.");
  EXPECT_TRUE(namesAreBad("xor"));
}

TEST_F(NamesCheck, FindingPointsAtTheSecondName) {
  use(store.VoltBlock, 2, 5);
  store.VoltBlock[2].Alias[5].AliasName = "TABLE1";
  const Findings findings = DuplicateNames(store, "");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].section, "[VOLTAGE BLOCKS]");
  EXPECT_EQ(findings[0].key, "AliasName(2,5)");
  EXPECT_TRUE(findings[0].againstSaving);
}

// 700 equal names are 244,650 pairs; no box can show them.
TEST_F(NamesCheck, CountsWhatIsTooMuchToTell) {
  use(store.VoltBlock, 7, 100);
  for (int b = 1; b <= kBlocks; ++b) {
    for (int r = 1; r <= kReps; ++r) store.VoltBlock[b].Alias[r].AliasName = "Same";
  }
  const Findings findings = DuplicateNames(store, "");
  ASSERT_EQ(findings.size(), 10001U);
  EXPECT_EQ(findings.back().text, "... and 234650 more.");
}

}  // namespace
}  // namespace ostrand
