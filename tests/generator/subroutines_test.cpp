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
};

const std::string kBanner = "'" + std::string(26, '\\') + " SUBROUTINES " + std::string(26, '/');

TEST_F(SubroutinesTest, AZeroGroup) {
  store.VoltBlock.BlockCount = 2;
  store.VoltBlock[2].ZeroFlag = 1;  // no repetitions: a line is reserved and stays empty
  store.BridgeBlock.BlockCount = 2;
  for (int n = 1; n <= 2; ++n) {
    store.BridgeBlock[n].Reps = 1;
    store.BridgeBlock[n].ZeroFlag = 1;
  }
  store.BridgeBlock[2].Style = 7;
  store.TK40MBlock.BlockCount = 2;
  store.Config.TK40MQty = 1;
  for (int n = 1; n <= 2; ++n) {
    store.TK40MBlock[n].Reps = 3;
    store.TK40MBlock[n].ZeroFlag = 1;
    store.TK40MBlock[n].TK40Volts = n - 1;  // thermocouples can't be zeroed
  }
  store.Scan.ScanMode = 0;
  Run();
  ExpectRun({kBanner, "", At66("Sub Zero1", "'Begin zero measure routine"),
             At66("   Count = 0", "'Set Count to zero"),
             At66("   Scan(PERIOD,P_UNITS,0,100)", "'Scan 100 times. 1.00 Seconds."),
             "      VoltDiff(VBlk1Zero(),VREP1,VRNG1,1,True,VSETL1,VINT1,VMULT1,0)", ""});
  ExpectRun({At66("   Next Scan", "'Loop up for the next scan"),
             At66("   For I = 1 To VREP1", "'Do this 2 times"),
             "      OVBlk1(I) = -ZERO_1.VBlk1Zero_Avg(I,1)", At66("   Next I", "'Do it again"),
             At66("   For I = 1 To BREP1", "'Do this 1 times"),
             "      OBBlk1(I) = -ZERO_1.BBlk1ZeroMv_Avg(I,1)", At66("   Next I", "'Do it again"),
             At66("   For I = 1 To BREP2", "'Do this 1 times"),
             "      BBlk2ZeroMv(I) = ZERO_1.BBlk2ZeroMv_Avg(I,1)",
             At66("   Next I", "'Do it again"), At66("   For I = 1 To AREP2", "'Do this 3 times"),
             "      OABlk2(I) = -ZERO_1.ABlk2Zero_Avg(I,1)", At66("   Next I", "'Do it again"),
             At66("   Flag(1) = False", "'Reset Flag(1)"),
             At66("End Sub", "'End gauge zero measure routine"), ""});
  ExpectRun({At66("      Count = Count + 1", "'Increment Count"),
             At66("      CallTable ZERO_1", "'Go up and run Table ZERO_1"),
             At66("   Next Scan", "'Loop up for the next scan")});
}

// Ten seconds of scans, between 2 and 100.
TEST_F(SubroutinesTest, ScansOfTheBurst) {
  struct Case {
    float time;
    int units;
    std::string call, comment;
  };
  const Case cases[] = {
      {50, 1, "100,100)", "'Scan 100 times. 5.00 Seconds."},
      {200, 1, "50,50)", "'Scan 50 times. 10.00 Seconds."},
      {0.3F, 2, "33,33)", "'Scan 33 times. 9.90 Seconds."},
      {10, 2, "2,2)", "'Scan 2 times. 20.00 Seconds."},
      {1, 3, "2,2)", "'Scan 2 times. 120.00 Seconds."},
  };
  for (const Case& c : cases) {
    store.Scan.ExecutionTime = c.time;
    store.Scan.ExecTimeUnits = static_cast<i16>(c.units);
    Run();
    EXPECT_EQ(Count(At66("   Scan(PERIOD,P_UNITS," + c.call, c.comment)), 1) << c.comment;
  }
}

// The groups go up to 8; a larger number is a zero flag without a group.
TEST_F(SubroutinesTest, TheLastGroupAndNoGroup) {
  store.VoltBlock[1].ZeroFlag = 8;
  Run();
  EXPECT_EQ(Count(At66("Sub Zero8", "'Begin zero measure routine")), 1);
  store.VoltBlock[1].ZeroFlag = 9;
  Run();
  ExpectRun({kBanner, "", "'" + std::string(28, '\\') + " PROGRAM " + std::string(28, '/')});
  store.VoltBlock[1].Reps = 0;
  Run();
  EXPECT_EQ(Count(kBanner), 0);
}

}  // namespace
}  // namespace ostrand::testing
