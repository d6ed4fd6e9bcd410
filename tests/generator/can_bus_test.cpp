#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class CanBusTest : public Generated {
 protected:
  CanBusTest() {
    store.Config.CanBusQty = 1;
    CanModuleData& module = store.Can.Module[1];
    module.CanBusEnabled = 1;
    module.CanAddress = 173;
    module.CanBaud = 3;
    module.CanGetOSVerSig = kTrue;
  }
  CanItemData& Item(int i, const char* name, int values) {
    store.Can.CanCount = static_cast<i16>(i);
    CanItemData& item = store.Can.Item[i];
    item.Name = name;
    item.Reps = static_cast<i16>(values);
    item.DataId = "&H7E8";
    return item;
  }
};

const std::string kStatement = "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,";

TEST_F(CanBusTest, DeclarationsAndStatements) {
  CanItemData& rpm = Item(1, "Rpm", 2);
  rpm.DefaultMult = 0.25F;
  rpm.Units = "rpm";
  rpm.Alias[2].AliasExcept = "4";
  CanItemData& torque = Item(2, "Torque", 0);
  torque.Output.OutputSelect[3][kLevelCrossing] = 1;
  torque.Output.Histo[3].LevNumLevels = 2;
  torque.Output.Histo[3].LevelVarOne[0] = 1.5F;
  Item(3, "Off", 1).Enabled = 0;
  Item(4, "Undeclared", 1).Enabled = -1;
  Run();
  ExpectRun({"",
             "'" + std::string(22, '\\') + " CANBUS DECLARATIONS " + std::string(22, '/'),
             "",
             At66("Const CanAddress = 173", "'Decimal number for address AD"),
             At66("Const CanQuanta = 1", "'Quanta for baud 3"),
             At66("Const CanSeg1 = 5", "'Seg1 for baud 3"),
             At66("Const CanSeg2 = 2", "'Seg2 for baud 3"),
             At66("Public CanSwitchTx, CanSwitchRx",
                  "'Config values to send (Tx) and confirm (Rx) on QB-CAN"),
             At66("Public QBCANInfo(2)", "'Version and Signature values from QB-CAN"),
             "Alias  QBCANInfo(1)=QBCanSig",
             "Alias  QBCANInfo(2)=QBCanVer",
             "'" + std::string(26, '_') + " Can Item 1 " + std::string(26, '_'),
             At66("Const RpmDataType = 0", "'Rpm data type"),
             At66("Const RpmStartBit = 1", "'Rpm start bit"),
             At66("Const RpmNumBits = 1", "'Rpm number of bits"),
             At66("Const RpmNumVals = 2", "'Rpm number of values"),
             At66("Const RpmMult = 0.25", "'Rpm multiplier"),
             At66("Const RpmOSet = 0", "'Rpm offset"),
             At66("Dim Rpm(RpmNumVals)", "'Rpm dimensioned source"),
             At66("Dim MCBlk1(RpmNumVals)", "'Item1 dimensioned multiplier"),
             At66("Dim OCBlk1(RpmNumVals)", "'Item1 dimensioned offset"),
             At66("Units Rpm = rpm", "'Rpm units (rpm)"),
             At66("Dim Torque3LC1(2)", "'Torque Table3 level crossing array 1"),
             At66("Data 1.5,0", "'Torque Table3 data for array 1"),
             At66("Dim Torque3LC2(1)", "'Torque Table3 level crossing array 2"),
             At66("Dim LCTorque3(2)", "'Torque Table3 source for level crossing")});
  EXPECT_EQ(Count(At66("Dim I", "'Dimension I as an index")) + Count("Dim I"), 1)
      << "the loop index is declared";
  ExpectRun({"      '" + std::string(25, '_') + " Canbus Items " + std::string(25, '_'),
             "      Canbus(Rpm" + kStatement +
                 "&H7E8,RpmDataType,RpmStartBit,RpmNumBits,RpmNumVals,MCBlk1,OCBlk1)",
             "      Canbus(Undeclared" + kStatement +
                 "&H7E8,UndeclaredDataType,UndeclaredStartBit,UndeclaredNumBits,"
                 "UndeclaredNumVals,UndeclaredMult,UndeclaredOSet)",
             ""});
}

TEST_F(CanBusTest, ShortIdentifiersAreNegative) {
  store.Can.Module[1].CanDataIDType = 0;
  Item(1, "Rpm", 1);
  Run();
  EXPECT_EQ(Count("      Canbus(Rpm" + kStatement +
                  "-&H7E8,RpmDataType,RpmStartBit,RpmNumBits,RpmNumVals,RpmMult,RpmOSet)"),
            1);
}

// A transmitted item has its statements elsewhere; the note comes for one that is switched off too.
TEST_F(CanBusTest, NoteOnTheSlowSequence) {
  CanItemData& item = Item(1, "Rpm", 1);
  item.ItemMessageType = 1;
  item.Enabled = 0;
  Run();
  EXPECT_EQ(Count("      'Canbus items are (also) found in the SlowSequence Section"), 1);
}

// The module has no lines without the interface; and no blank line before it without items.
TEST_F(CanBusTest, WithoutItemsOrInterface) {
  Run();
  const std::string title =
      "'" + std::string(22, '\\') + " CANBUS DECLARATIONS " + std::string(22, '/');
  const auto at = std::find(program.begin(), program.end(), title);
  ASSERT_NE(at, program.end());
  EXPECT_NE(*(at - 1), "");
  store.Can.Module[1].CanBusEnabled = 0;
  Item(1, "Rpm", 1);
  Run();
  EXPECT_EQ(Count(title), 0);
  for (const std::string& line : program) EXPECT_EQ(line.find("Rpm"), std::string::npos) << line;
}

}  // namespace
}  // namespace ostrand::testing
