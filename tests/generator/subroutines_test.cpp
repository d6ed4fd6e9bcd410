#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class SubroutinesTest : public Generated {
 protected:
  SubroutinesTest() {
    store.VoltBlock.BlockCount = 1;
    store.VoltBlock[1].Reps = 2;
    store.VoltBlock[1].ZeroFlag = 1;
  }
  const std::string banner = "'" + std::string(26, '\\') + " SUBROUTINES " + std::string(26, '/');
};

// A block without repetitions has its line reserved and left empty; thermocouples on a multiplexer
// (its block 1) can't be zeroed; strain, the second bridge, keeps the average as it is.
TEST_F(SubroutinesTest, AZeroGroup) {
  store.VoltBlock.BlockCount = store.BridgeBlock.BlockCount = store.TK40MBlock.BlockCount = 2;
  store.VoltBlock[2].ZeroFlag = store.Config.TK40MQty = 1;
  for (int n = 1; n <= 2; ++n) {
    store.BridgeBlock[n].Reps = store.TK40MBlock[n].Reps = 1;
    store.BridgeBlock[n].ZeroFlag = store.TK40MBlock[n].ZeroFlag = 1;
    store.TK40MBlock[n].TK40Volts = n - 1;
  }
  store.BridgeBlock[2].Style = 7;
  store.Scan.ScanMode = 0;
  Run();
  ExpectText(
      banner +
      "||Sub Zero1~'Begin zero measure routine|   Count = 0~'Set Count to zero"
      "|   Scan(PERIOD,P_UNITS,0,100)~'Scan 100 times. 1.00 Seconds."
      "|      VoltDiff(VBlk1Zero(),VREP1,VRNG1,1,True,VSETL1,VINT1,VMULT1,0)||"
      "      BrFull(BBlk1ZeroMv(),BREP1,BRNG1,3,VX1,1,BEXCIT1,False,True,BSETL1,BINT1,BMULT1,0)"
      "|      BrFull(BBlk2ZeroMvmV_V(),BREP2,BRNG2,4,VX2,1,BEXCIT2,False,True,BSETL2,BINT2,1,"
      "BOSET2) 'Strain|      StrainCalc(BBlk2ZeroUs(),BREP2,BBlk2ZeroMv(),0,BCODE2,GBBlk2(),0)"
      "|      TK40M(ABlk2Zero(1),1,ARNG2,2,20,ATYPE2,TK40Ref(1),7,8,0,True,ASETL2,AINT2,AMULT2,"
      "0)|      Count = Count + 1~'Increment Count|      CallTable ZERO_1~'Go up and run Table"
      " ZERO_1|" +
      std::string(kNextScan) +
      "|   For I = 1 To VREP1~'Do this 2 times"
      "|      OVBlk1(I) = -ZERO_1.VBlk1Zero_Avg(I,1)|   Next I~'Do it again"
      "|   For I = 1 To BREP1~'Do this 1 times|      OBBlk1(I) = -ZERO_1.BBlk1ZeroMv_Avg(I,1)"
      "|   Next I~'Do it again|   For I = 1 To BREP2~'Do this 1 times"
      "|      BBlk2ZeroMv(I) = ZERO_1.BBlk2ZeroMv_Avg(I,1)|   Next I~'Do it again"
      "|   For I = 1 To AREP2~'Do this 1 times|      OABlk2(I) = -ZERO_1.ABlk2Zero_Avg(I,1)"
      "|   Next I~'Do it again|   Flag(1) = False~'Reset Flag(1)"
      "|End Sub~'End gauge zero measure routine|");
}

// Ten seconds of scans, between 2 and 100.
TEST_F(SubroutinesTest, ScansOfTheBurst) {
  struct Case {
    float time;
    int units;
    const char* line;
  };
  for (const Case& c : {Case{50, 1, "100,100)~'Scan 100 times. 5.00 Seconds."},
                        Case{0.3F, 2, "33,33)~'Scan 33 times. 9.90 Seconds."},
                        Case{10, 2, "2,2)~'Scan 2 times. 20.00 Seconds."}}) {
    store.Scan.ExecutionTime = c.time;
    store.Scan.ExecTimeUnits = static_cast<i16>(c.units);
    Run();
    ExpectText("   Scan(PERIOD,P_UNITS," + std::string(c.line));
  }
}

// The groups go up to 8; a larger number asks for zeroing, but has no group.
TEST_F(SubroutinesTest, NoGroup) {
  store.VoltBlock[1].ZeroFlag = 9;
  Run();
  ExpectText(banner + "||'" + std::string(28, '\\') + " PROGRAM " + std::string(28, '/'));
}

// Volts on a multiplexer that is not there are not zeroed.
TEST_F(SubroutinesTest, NoMultiplexer) {
  store.VoltBlock[1].ZeroFlag = 0;
  store.TK40MBlock.BlockCount = store.TK40MBlock[1].Reps = 1;
  store.TK40MBlock[1].TK40Volts = store.TK40MBlock[1].ZeroFlag = 1;
  Run();
  EXPECT_FALSE(AnyHolds(" SUBROUTINES "));
  EXPECT_FALSE(AnyHolds("Sub Zero1"));
}

}  // namespace
}  // namespace ostrand::testing
