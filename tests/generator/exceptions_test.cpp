#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ExceptionsTest : public Generated {
 protected:
  template <class Block>
  static void Set(Block& block, int r, const char* code, const char* name) {
    block.Reps = 3;
    block.Alias[r].AliasExcept = code;
    block.Alias[r].AliasName = name;
    block.Alias[r].AliasMult = "1.50";
    block.Alias[r].AliasOffset = "-2";
  }
};

// The families in their order, multipliers of a block before its offsets, values as typed.
TEST_F(ExceptionsTest, LinesOfAllFamilies) {
  store.Config.TK40MQty = 1;
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.TempBlock.BlockCount = store.VoltBlock.BlockCount = store.TK40MBlock.BlockCount = 1;
  store.BridgeBlock.BlockCount = 2;
  store.PulseBlock[1].BlockCount = 1;
  store.Can.CanCount = 1;
  Set(store.TempBlock[1], 1, "7", "Oil");
  Set(store.TempBlock[1], 3, "2", "Air");
  Set(store.VoltBlock[1], 2, "5", "P1");
  Set(store.VoltBlock[1], 3, "1", "units only");
  Set(store.BridgeBlock[1], 1, "6", "B1");
  Set(store.BridgeBlock[2], 1, "6", "B2");
  store.BridgeBlock[2].Style = 5;
  Set(store.PulseBlock[1][1], 1, "3", "Wind");
  store.Can.Item[1].Name = "Rpm";
  Set(store.Can.Item[1], 1, "4", "Eng");
  Set(store.TK40MBlock[1], 1, "2", "");
  const auto multiplier = [](const std::string& array, const std::string& place,
                             const std::string& alias) {
    return At66("   " + array + " = 1.50",
                "'Exception multiplier for " + place + " alias \"" + alias + "\"");
  };
  const auto offset = [](const std::string& array, const std::string& what,
                         const std::string& place, const std::string& alias) {
    return At66("   " + array + " = -2",
                "'Exception " + what + " for " + place + " alias \"" + alias + "\"");
  };
  const Lines common = {"   '" + std::string(14, '\'') + " exception multipliers and offsets " +
                            std::string(14, '\''),
                        multiplier("MTBlk1(1)", "TBlk1(1)", "Oil"),
                        multiplier("MTBlk1(3)", "TBlk1(3)", "Air"),
                        offset("OTBlk1(1)", "offset", "TBlk1(1)", "Oil"),
                        offset("OVBlk1(2)", "offset", "VBlk1(2)", "P1"),
                        multiplier("MBBlk1(1)", "BBlk1(1)", "B1"),
                        offset("OBBlk1(1)", "offset", "BBlk1(1)", "B1"),
                        offset("GBBlk2(1)", "gauge factor", "BBlk2(1)", "B2"),
                        multiplier("MPBlk1(1)", "PBlk1(1)", "Wind"),
                        offset("OCBlk1(1)", "offset", "Rpm(1)", "Eng")};
  Lines expected = common;
  expected.push_back(multiplier("MABlk1(1)", "ABlk1(1)", ""));
  expected.push_back("   " + std::string(64, '\''));
  Run();
  ExpectRun(expected);
  store.Config.TK40MQty = 0;  // no multiplexer, no lines of its blocks
  expected = common;
  expected.push_back("   " + std::string(64, '\''));
  Run();
  ExpectRun(expected);
}

TEST_F(ExceptionsTest, UnitsAloneAndTextsThatAreNoNumberWriteNothing) {
  store.VoltBlock.BlockCount = 1;
  Set(store.VoltBlock[1], 1, "1", "");
  Set(store.VoltBlock[1], 2, "", "");
  Set(store.VoltBlock[1], 3, "many", "");
  Run();
  for (const std::string& line : program) {
    EXPECT_EQ(line.find("xception"), std::string::npos) << line;
  }
}

TEST_F(ExceptionsTest, ALongValueEndsTheSection) {
  store.VoltBlock.BlockCount = 1;
  Set(store.VoltBlock[1], 1, "2", "kept");
  Set(store.VoltBlock[1], 2, "2", "long");
  Set(store.VoltBlock[1], 3, "2", "lost");
  store.VoltBlock[1].Alias[2].AliasMult = std::string(60, '1');
  ExpectFault(5, "Invalid procedure call or argument", "Exceptions");
  Run();
  const std::string kept =
      At66("   MVBlk1(1) = 1.50", "'Exception multiplier for VBlk1(1) alias \"kept\"");
  const auto at = std::find(program.begin(), program.end(), kept);
  ASSERT_NE(at, program.end());
  EXPECT_EQ(std::count(program.begin(), program.end(), "   " + std::string(64, '\'')), 0);
  EXPECT_TRUE((at + 1)->starts_with("   Scan(PERIOD,P_UNITS,")) << *(at + 1);
}

}  // namespace
}  // namespace ostrand::testing
