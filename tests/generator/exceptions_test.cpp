#include "generator/generated.h"

namespace ostrand::testing {
namespace {

using ExceptionsTest = Generated;

template <class Block>
void Set(Block& block, int r, const char* code, const char* name) {
  block.Reps = 3;
  block.Alias[r] = {name, "", "1.50", "-2", code};
}

// Multipliers of a block before its offsets, values as typed; units alone and texts that are no
// number write nothing; strain has gauge factors alone.
TEST_F(ExceptionsTest, LinesOfTheFamilies) {
  store.TempBlock.BlockCount = store.VoltBlock.BlockCount = store.TK40MBlock.BlockCount = 1;
  store.BridgeBlock.BlockCount = store.PulseBlock[1].BlockCount = store.Can.CanCount = 1;
  store.Config.TK40MQty = store.Config.CanBusQty = store.Can.Module[1].CanBusEnabled = 1;
  store.BridgeBlock[1].Style = 5;
  store.Can.Item[1].Name = "Rpm";
  Set(store.TempBlock[1], 1, "7", "Oil");
  Set(store.TempBlock[1], 2, "1", "units");
  Set(store.TempBlock[1], 3, "2", "Air");
  Set(store.VoltBlock[1], 1, "many", "text");
  Set(store.VoltBlock[1], 2, "5", "P1");
  Set(store.BridgeBlock[1], 1, "6", "B1");
  Set(store.PulseBlock[1][1], 1, "3", "Wind");
  Set(store.Can.Item[1], 1, "4", "Eng");
  Set(store.TK40MBlock[1], 1, "2", "");
  Run();
  ExpectText("   '" + std::string(14, '\'') + " exception multipliers and offsets " +
             std::string(14, '\'') +
             "|   MTBlk1(1) = 1.50~'Exception multiplier for TBlk1(1) alias \"Oil\""
             "|   MTBlk1(3) = 1.50~'Exception multiplier for TBlk1(3) alias \"Air\""
             "|   OTBlk1(1) = -2~'Exception offset for TBlk1(1) alias \"Oil\""
             "|   OVBlk1(2) = -2~'Exception offset for VBlk1(2) alias \"P1\""
             "|   GBBlk1(1) = -2~'Exception gauge factor for BBlk1(1) alias \"B1\""
             "|   MPBlk1(1) = 1.50~'Exception multiplier for PBlk1(1) alias \"Wind\""
             "|   OCBlk1(1) = -2~'Exception offset for Rpm(1) alias \"Eng\""
             "|   MABlk1(1) = 1.50~'Exception multiplier for ABlk1(1) alias \"\""
             "|   " +
             std::string(64, '\''));
}

}  // namespace
}  // namespace ostrand::testing
