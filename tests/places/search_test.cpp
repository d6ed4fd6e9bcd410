#include "places/search.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace ostrand {
namespace {

class Search : public ::testing::Test {
 protected:
  // "text | detail | screen control" of the first results.
  std::string found(std::string_view query, std::size_t count = 1) const {
    std::string text;
    for (const SearchEntry& entry : index_.Find(query, count)) {
      const ScreenPlace place = PlaceOf(entry);
      text += entry.text + " | " + entry.detail + " | " + std::string(place.steps.back().screen) +
              " " + place.control + "\n";
    }
    return text;
  }

  const ProjectIndex index_{testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG"),
                            {{"frmVoltBlock", "Voltages"}, {"frmOptGen", "Colors"}}};
};

TEST_F(Search, LeadsToSensorsNamesTablesFlagsKeysAndScreens) {
  EXPECT_EQ(found("oiltemp"),
            "OilTemp | Thermocouple block 1, sensor 1: alias | frmFldName AliasName1\n");
  EXPECT_EQ(found("EngHist"), "EngHist | Table 3: name | frmOutInt TableName\n");
  EXPECT_EQ(found("flag 5 included"), "Flag 5: included | on | frmFlags FlagInclude5\n");
  EXPECT_EQ(found("voltages"), "Voltages | Screen | frmVoltBlock \n");
  EXPECT_EQ(found("voltage block 2: range"),
            "Voltage block 2: range | 1000 mV | frmVoltSetup Range\n");
  EXPECT_EQ(found("BurstMode"), "Scan: burst mode | off | frmExecute BurstMode\n");
  EXPECT_EQ(found("2 settling volt"),
            "Voltage block 2: settling time (\xB5s) | 200 | frmVoltSetup SettleTime\n");
}

TEST_F(Search, FindsASensorWithoutAnAlias) {
  EXPECT_EQ(found("tblk1(8)"),
            "TBlk1(8) | Thermocouple block 1, sensor 8 | frmFldName AliasName8\n");
  EXPECT_EQ(found("tblk1(9)"), "") << "the block has eight sensors";
  EXPECT_EQ(found("tblk5(1)"), "");
}

TEST_F(Search, OrdersByHowWellTheTextMatches) {
  const std::string all = found("oil", 20);
  EXPECT_TRUE(all.starts_with("OilTemp |")) << all;
  EXPECT_LT(all.find("OilPress |"), all.find("condition")) << all;
  EXPECT_EQ(index_.Find("a", 7).size(), 7U);
  EXPECT_EQ(index_.Find("  ", 7).size(), 0U);
  EXPECT_EQ(index_.Find("no such thing", 7).size(), 0U);
}

}  // namespace
}  // namespace ostrand
