#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class CanBusTest : public Generated {
 protected:
  CanBusTest() {
    store.Config.CanBusQty = 1;
    store.Can.Module[1].CanBusEnabled = 1;
    store.Can.Module[1].CanAddress = 173;
  }
  CanItemData& Item(int i, const char* name, int values) {
    store.Can.CanCount = static_cast<i16>(i);
    store.Can.Item[i].Name = name;
    store.Can.Item[i].Reps = static_cast<i16>(values);
    return store.Can.Item[i];
  }
};

// Without values an item keeps its level crossing; one switched on by any other number than 1 has
// statements, yet no declarations; one switched off only leads to the closing note.
TEST_F(CanBusTest, DeclarationsAndStatements) {
  CanItemData& rpm = Item(1, "Rpm", 2);
  rpm.DefaultMult = 0.25F;
  rpm.Units = "rpm";
  rpm.Alias[2].AliasExcept = "4";
  OutputSet& output = Item(2, "Torque", 0).Output;
  output.OutputSelect[3][kLevelCrossing] = 1;
  output.Histo[3].LevNumLevels = 2;
  Item(3, "Off", 1).Enabled = 0;
  store.Can.Item[3].ItemMessageType = 1;
  Item(4, "Bare", 1).Enabled = -1;
  Run();
  ExpectText("|'" + std::string(22, '\\') + " CANBUS DECLARATIONS " + std::string(22, '/') +
             "||Const CanAddress = 173~'Decimal number for address AD");
  ExpectText(
      "Const RpmMult = 0.25~'Rpm multiplier|Const RpmOSet = 0~'Rpm offset"
      "|Dim Rpm(RpmNumVals)~'Rpm dimensioned source"
      "|Dim MCBlk1(RpmNumVals)~'Item1 dimensioned multiplier"
      "|Dim OCBlk1(RpmNumVals)~'Item1 dimensioned offset|Units Rpm = rpm~'Rpm units (rpm)"
      "|Dim Torque3LC1(2)~'Torque Table3 level crossing array 1"
      "|Data 0,0~'Torque Table3 data for array 1"
      "|Dim Torque3LC2(1)~'Torque Table3 level crossing array 2"
      "|Dim LCTorque3(2)~'Torque Table3 source for level crossing|");
  const std::string bus = "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,";
  ExpectText(Bars("      ", 25, " Canbus Items ") + "|      Canbus(Rpm" + bus +
             "0,RpmDataType,RpmStartBit,RpmNumBits,RpmNumVals,MCBlk1,OCBlk1)|      Canbus(Bare" +
             bus +
             "0,BareDataType,BareStartBit,BareNumBits,BareNumVals,BareMult,BareOSet)|"
             "      'Canbus items are (also) found in the SlowSequence Section|");
  EXPECT_FALSE(AnyHolds("Const BareMult"));
}

TEST_F(CanBusTest, ItsOwnScalingNeedsTheLoopIndex) {
  Item(1, "Rpm", 1);
  Run();
  EXPECT_FALSE(AnyHolds("Dim I "));
  Item(1, "Rpm", 1).Alias[1].AliasExcept = "2";
  Run();
  ExpectText("Dim I~'Declare I as a variable");
}

TEST_F(CanBusTest, ShortIdentifiersAreNegative) {
  store.Can.Module[1].CanDataIDType = 0;
  Item(1, "Rpm", 1).DataId = "&H7E8";
  Run();
  ExpectText(
      "      Canbus(Rpm(),CanAddress,CanQuanta,CanSeg1,CanSeg2,-&H7E8,RpmDataType,"
      "RpmStartBit,RpmNumBits,RpmNumVals,RpmMult,RpmOSet)");
}

}  // namespace
}  // namespace ostrand::testing
