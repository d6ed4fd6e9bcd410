#include "programcheck/outline.h"

#include <gtest/gtest.h>

#include <set>

#include "support/temp_folder.h"

namespace ostrand {
namespace {

TEST(Outline, FindsTheBlockOfAName) {
  struct Case {
    std::string_view name;
    ProgramBlock block;
  };
  constexpr Case kCases[] = {
      {"TBLK1", {'T', 1}},
      {"MVBLK2", {'V', 2}},
      {"OVBLK7", {'V', 7}},
      {"GBBLK3", {'B', 3}},
      {"VBLK23LC1", {'V', 2}},
      {"LCVBLK2_3_1", {'V', 2}},
      {"ABLK4ZERO", {'A', 4}},
      {"MCBLK128", {'C', 128}},
      {"BEXCIT3", {'B', 3}},
      {"PCONF2", {'P', 2}},
      {"VREP1", {'V', 1}},
      {"TREP", {}},
      {"XVBLK1", {}},
      {"VREPORT1", {}},
      {"BLK1", {}},
      {"INT", {}},
      {"PULSECOUNT", {}},
      {"VBLK", {}},
  };
  for (const Case& row : kCases) EXPECT_EQ(BlockOfName(row.name), row.block) << row.name;
}

TEST(Outline, ListsSectionsAndLinesOfAnExample) {
  const std::string program =
      testing::ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/engine-test-cell.VKP");
  const ProgramOutline outline(program, {});
  std::string titles;
  for (const ProgramSection& section : outline.Sections()) {
    titles +=
        std::to_string(section.line) + (section.level == 0 ? " " : "   ") + section.title + "\n";
  }
  EXPECT_TRUE(
      titles.starts_with("12 TIMING CONSTANTS\n"
                         "23 THERMOCOUPLE CONSTANTS\n"
                         "25   Temp Block 1\n"
                         "37   Temp Block 2\n"
                         "48 VOLTAGE CONSTANTS\n"
                         "50   Volt Block 1\n"))
      << titles;
  EXPECT_NE(titles.find("130   Table EngFast\n"), std::string::npos) << titles;
  EXPECT_NE(titles.find("183 PROGRAM\n"), std::string::npos) << titles;

  // The constants and the source of a block, its aliases and their units, nothing of other blocks.
  const std::vector<int> lines = outline.LinesOfBlock({'V', 2});
  const std::set<int> all(lines.begin(), lines.end());
  for (int line = 62; line <= 76; ++line) {
    const bool isData = line == 71 || line == 73;  // values without a name
    EXPECT_EQ(all.contains(line), !isData) << line;
  }
  EXPECT_FALSE(all.contains(51));
  EXPECT_EQ(outline.BlockOfLine(98 + 1), (ProgramBlock{'T', 1})) << "Units of an alias";
  for (const int line : lines) EXPECT_NE(outline.BlockOfLine(line).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(1).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(0).kind, 0);
  EXPECT_EQ(outline.BlockOfLine(99999).kind, 0);
}

TEST(Outline, KnowsItemsByTheNamesOfTheUser) {
  const NamedBlock items[] = {{"Speed", {'C', 2}}, {"Power", {'F', 1}}};
  const ProgramOutline outline(
      "Const SpeedStartBit = 3\r\nPublic speed(4)\r\nPower = speed * 2\r\nPowerDataType = 1\r\n",
      items);
  EXPECT_EQ(outline.LinesOfBlock({'C', 2}), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(outline.LinesOfBlock({'F', 1}), (std::vector<int>{3}));
}

}  // namespace
}  // namespace ostrand
