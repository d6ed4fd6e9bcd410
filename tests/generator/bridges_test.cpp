#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class BridgesTest : public Generated {
 protected:
  BridgeBlockData& Block(int n, int reps, int style, const char* type = "Diff") {
    store.BridgeBlock.BlockCount = static_cast<i16>(n);
    BridgeBlockData& block = store.BridgeBlock[n];
    block.Reps = static_cast<i16>(reps);
    block.Style = static_cast<i16>(style);
    block.MeasType = type;
    block.ReverseMes = kFalse;
    block.ExciteReps = 3;
    return block;
  }
};

TEST_F(BridgesTest, FormsOfTheStatement) {
  struct Case {
    int style, zeroFlag, calOnSite;
    const char *except, *destination, *scaling, *strain;
  };
  const Case cases[] = {
      {0, 0, 0, "0", "(),BREP1,BRNG1", "BMULT1,BOSET1)", ""},
      {0, 3, 0, "0", "(),BREP1,BRNG1", "BMULT1,OBBlk1())", ""},
      {0, 0, 1, "0", "(),BREP1,BRNG1", "MBBlk1(),OBBlk1())", ""},
      {1, 0, 0, "2", "(),BREP1,BRNG1_1,BRNG1_2", "MBBlk1(),OBBlk1())", ""},
      {3, 0, 0, "0", "(),BREP1,BRNG1", "BMULT1,BOSET1)", ""},
      {5, 0, 1, "0", "(),BREP1,BRNG1", "BMULT1,BOSET1)", "BBlk1(),0,BCODE1,BGF1"},
      {6, 0, 0, "4", "(),BREP1,BRNG1", "MBBlk1(),BOSET1)", "BBlk1(),0,BCODE1,GBBlk1()"},
      {6, 0, 0, "2", "(),BREP1,BRNG1", "MBBlk1(),BOSET1)", "BBlk1(),0,BCODE1,BGF1"},
      {7, 2, 0, "0", "mV_V(),BREP1,BRNG1", "1,BOSET1)",
       "BBlk1mV_V(),BBlk1ZeroMv(),BCODE1,GBBlk1()"},
      {7, 2, 0, "6", "mV_V(),BREP1,BRNG1", "1,BOSET1)",
       "BBlk1mV_V(),BBlk1ZeroMv(),BCODE1,GBBlk1()"},
  };
  for (const Case& c : cases) {
    BridgeBlockData& block = Block(1, 3, c.style);
    block.ZeroFlag = static_cast<i16>(c.zeroFlag);
    block.CalOnSite = static_cast<i16>(c.calOnSite);
    block.Alias[2].AliasExcept = c.except;
    Run();
    const std::string strain = c.strain;
    ExpectText(
        Bars("      ", 24, " Bridge Blocks ") + "|      BrFull(BBlk1" + c.destination +
        ",1,VX1,3,BEXCIT1,False" + (c.style == 3 ? "" : ",False") + ",BSETL1,BINT1," + c.scaling +
        (strain.empty()
             ? ""
             : " 'Strain|      StrainCalc(BBlk1(),BREP1," + strain + ",0) 'Strain calculation"));
  }
}

// Terminals used: 3 by block 1, one skipped, 10 by block 2, 4 by block 3, 4 by block 5. Block 4 has
// no repetitions, yet it is the block before block 5.
TEST_F(BridgesTest, ChannelsAndExcitations) {
  Block(1, 3, 2, "SE");
  Block(2, 5, 0).ExciteReps = 2;
  Block(3, 2, 0).CheckCAO = kTrue;
  Block(4, 0, 0, "SE");
  Block(5, 1, 1);
  Block(6, 1, 2, "SE");
  for (int n = 1; n <= 6; ++n) store.BridgeBlock[n].StartChan = static_cast<i16>(n + 10);
  const char* automatic[] = {",BRNG1,1,VX1,3,", ",BRNG2,3,VX2,2,", ",BRNG3,8,CAO1,3,",
                             ",BRNG5_2,10,VX5,3,", ",BRNG6,23,VX6,3,"};
  const char* byHand[] = {",BRNG1,11,VX1,3,", ",BRNG2,12,VX2,2,", ",BRNG3,13,CAO1,3,",
                          ",BRNG5_2,15,VX5,3,", ",BRNG6,16,VX6,3,"};
  Run();
  for (const char* place : automatic) EXPECT_TRUE(AnyHolds(place)) << place;
  store.Config.AutoChan = kFalse;
  Run();
  for (const char* place : byHand) EXPECT_TRUE(AnyHolds(place)) << place;
}

// Behind a block of unknown type the channel stays, also when channels follow the order.
TEST_F(BridgesTest, AnUnknownTypeBefore) {
  Block(1, 3, 2, "SE");
  Block(2, 2, 2, "SE");
  Block(3, 0, 0, "");
  Block(4, 1, 0).StartChan = 9;
  for (const flag automatic : {kTrue, kFalse}) {
    store.Config.AutoChan = automatic;
    store.BridgeBlock[2].StartChan = 4;
    Run();
    EXPECT_TRUE(AnyHolds("(BBlk4(),BREP4,BRNG4,4,VX3,"));
  }
}

TEST_F(BridgesTest, NoRepetitionsOnAnExcitationIsAFailureBehindTheStatement) {
  Block(1, 3, 0).ExciteReps = 0;
  Block(2, 3, 0);
  ExpectFault(11, "Division by zero", "Bridges");
  Run();
  ExpectText(
      "      BrFull(BBlk1(),BREP1,BRNG1,1,VX1,0,BEXCIT1,False,False,BSETL1,BINT1,BMULT1,"
      "BOSET1)||" +
      std::string(kNextScan));
}

}  // namespace
}  // namespace ostrand::testing
