#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class TK40MsTest : public Generated {
 protected:
  TK40MsTest() { store.Config.TK40MQty = 4; }
  TK40MBlockData& Block(int n, int reps, int volts) {
    store.TK40MBlock.BlockCount = static_cast<i16>(n);
    store.TK40MBlock[n].Reps = static_cast<i16>(reps);
    store.TK40MBlock[n].TK40Volts = volts;
    return store.TK40MBlock[n];
  }
};

// Block 3 fills the third multiplexer, so that block 4 begins on the fourth.
TEST_F(TK40MsTest, ABlockGoesOnToTheNextMultiplexer) {
  Block(1, 10, 1).ReverseMes = kFalse;
  Block(2, 20, 0);
  Block(3, 45, 1).CalOnSite = 1;
  Block(4, 1, 0);
  Run();
  ExpectText(
      Bars("      ", 25, " TK40M Blocks ") +
      "|      TK40M(ABlk1(1),10,ARNG1,1,20,ATYPE1,TK40Ref(1),7,8,0,False,ASETL1,AINT1,AMULT1,"
      "AOSET1)|      TK40M(ABlk2(1),15,ARNG2,11,20,ATYPE2,TK40Ref(1),7,8,VX4,True,ASETL2,"
      "AINT2,AMULT2,AOSET2)|      TK40M(ABlk2(16),5,ARNG2,1,19,ATYPE2,TK40Ref(2),7,8,VX4,"
      "True,ASETL2,AINT2,AMULT2,AOSET2)|      TK40M(ABlk3(1),20,ARNG3,6,19,ATYPE3,TK40Ref(2),"
      "7,8,0,True,ASETL3,AINT3,MABlk3(1)(),OABlk3(1)())|      TK40M(ABlk3(21),25,ARNG3,1,18,"
      "ATYPE3,TK40Ref(3),7,8,0,True,ASETL3,AINT3,MABlk3(21)(),OABlk3(21)())|      TK40M("
      "ABlk4(1),1,ARNG4,1,17,ATYPE4,TK40Ref(4),7,8,VX4,True,ASETL4,AINT4,AMULT4,AOSET4)|");
}

// Positions of statements grow over runs. The file has a line for each statement of a zero routine,
// the buffer one for all.
TEST_F(TK40MsTest, ZeroLinesAndPositions) {
  Block(1, 30, 1).ZeroFlag = 4;
  Run();
  ExpectText(
      "      TK40M(ABlk1Zero(1),25,ARNG1,1,20,ATYPE1,TK40Ref(1),7,8,0,True,ASETL1,AINT1,"
      "AMULT1,0)|      TK40M(ABlk1Zero(26),5,ARNG1,1,19,ATYPE1,TK40Ref(2),7,8,0,True,ASETL1,"
      "AINT1,AMULT1,0)|      Count = Count + 1~'Increment Count");
  const std::string positions = generator.TK40MLines()[1];
  const int first = std::stoi(positions);
  EXPECT_EQ(positions, std::to_string(first) + " " + std::to_string(first + 1) + " ");
  EXPECT_TRUE(generator.Lines()[first].starts_with("      TK40M(ABlk1(1),25,"));
  Run();
  EXPECT_EQ(generator.TK40MLines()[1], positions + positions);
}

// Four statements for a block of 100: the fifteenth is the third of block 4.
TEST_F(TK40MsTest, MoreZeroStatementsThanAreKept) {
  for (int n = 1; n <= 5; ++n) Block(n, 100, 1).ZeroFlag = 1;
  ExpectFault(9, kSubscript, "TK40Ms");
  Run();
  ExpectText(
      "      TK40M(ABlk4(51),25,ARNG4,1,6,ATYPE4,TK40Ref(15),7,8,0,True,ASETL4,AINT4,AMULT4,"
      "OABlk4(51)())");
  EXPECT_FALSE(AnyHolds("TK40M(ABlk4(76)"));
}

}  // namespace
}  // namespace ostrand::testing
