#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class BridgesTest : public Generated {
 protected:
  BridgesTest() {
    store.BridgeBlock.BlockCount = 1;
    Block(1, 3, "Diff");
  }
  BridgeBlockData& Block(int n, int reps, const char* type) {
    BridgeBlockData& block = store.BridgeBlock[n];
    block.Reps = static_cast<i16>(reps);
    block.MeasType = type;
    block.ReverseMes = kFalse;
    block.ExciteReps = 3;
    return block;
  }
};

const std::string kTitle =
    "      '" + std::string(24, '_') + " Bridge Blocks " + std::string(24, '_');

TEST_F(BridgesTest, FormsOfTheStatement) {
  struct Case {
    int style, zeroFlag, calOnSite, cao;
    const char* except;
    std::string measured, strain;
  };
  const std::string head =
      "      BrFull(BBlk1(),BREP1,BRNG1,1,VX1,3,BEXCIT1,False,False,BSETL1,BINT1";
  const std::string half = "      BrFull(BBlk1(),BREP1,BRNG1,1,VX1,3,BEXCIT1,False,BSETL1,BINT1";
  const std::string raw =
      "      BrFull(BBlk1mV_V(),BREP1,BRNG1,1,VX1,3,BEXCIT1,False,False,BSETL1,BINT1";
  const std::string plainStrain =
      "      StrainCalc(BBlk1(),BREP1,BBlk1(),0,BCODE1,BGF1,0) 'Strain calculation";
  const std::string gaugeStrain =
      "      StrainCalc(BBlk1(),BREP1,BBlk1(),0,BCODE1,GBBlk1(),0) 'Strain calculation";
  const std::string zeroStrain =
      "      StrainCalc(BBlk1(),BREP1,BBlk1mV_V(),BBlk1ZeroMv(),BCODE1,GBBlk1(),0) "
      "'Strain calculation";
  const Case cases[] = {
      {0, 0, 0, 0, "0", head + ",BMULT1,BOSET1)", ""},
      {0, 3, 0, 0, "0", head + ",BMULT1,OBBlk1())", ""},
      {0, 0, 1, 0, "0", head + ",MBBlk1(),OBBlk1())", ""},
      {0, 0, 0, 0, "2", head + ",MBBlk1(),OBBlk1())", ""},
      {1, 0, 0, 0, "0",
       "      BrFull(BBlk1(),BREP1,BRNG1_1,BRNG1_2,1,VX1,3,BEXCIT1,False,False,BSETL1,BINT1,"
       "BMULT1,BOSET1)",
       ""},
      {2, 0, 0, 0, "0", half + ",BMULT1,BOSET1)", ""},
      {4, 0, 0, 1, "0",
       "      BrFull(BBlk1(),BREP1,BRNG1,1,CAO1,3,BEXCIT1,False,BSETL1,BINT1,BMULT1,BOSET1)", ""},
      {5, 0, 0, 0, "0", head + ",BMULT1,BOSET1) 'Strain", plainStrain},
      {5, 0, 1, 0, "0", head + ",BMULT1,BOSET1) 'Strain", plainStrain},
      {6, 0, 0, 0, "4", head + ",MBBlk1(),BOSET1) 'Strain", gaugeStrain},
      {6, 0, 0, 0, "2", head + ",MBBlk1(),BOSET1) 'Strain", plainStrain},
      {7, 2, 0, 0, "0", raw + ",1,BOSET1) 'Strain", zeroStrain},
      {7, 2, 0, 0, "4", raw + ",1,BOSET1) 'Strain", zeroStrain},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.measured);
    BridgeBlockData& block = Block(1, 3, "Diff");
    block.Style = static_cast<i16>(c.style);
    block.ZeroFlag = static_cast<i16>(c.zeroFlag);
    block.CalOnSite = static_cast<i16>(c.calOnSite);
    block.CheckCAO = c.cao != 0 ? kTrue : kFalse;
    block.Alias[2].AliasExcept = c.except;
    Run();
    Lines expected = {kTitle, c.measured};
    if (!c.strain.empty()) expected.push_back(c.strain);
    ExpectRun(expected);
  }
}

// Terminals used: 3 by block 1, one skipped, 10 by block 2, 4 by block 3, 4 by block 5. Block 4 has
// no repetitions, yet it is the block before block 5.
TEST_F(BridgesTest, ChannelsAndExcitations) {
  store.BridgeBlock.BlockCount = 6;
  Block(1, 3, "SE").Style = 2;
  Block(2, 5, "Diff").ExciteReps = 2;
  Block(3, 2, "Diff").CheckCAO = kTrue;
  Block(4, 0, "SE");
  Block(5, 1, "Diff").Style = 1;
  Block(6, 1, "SE").Style = 2;
  const auto place = [](int n, const std::string& at) {
    const std::string b = std::to_string(n);
    return "      BrFull(BBlk" + b + "(),BREP" + b + ",BRNG" + b + at;
  };
  const auto placed = [&](const Lines& heads) {
    Lines found;
    for (const std::string& line : program) {
      if (line.starts_with("      BrFull(")) found.push_back(line);
    }
    ASSERT_EQ(found.size(), heads.size());
    for (std::size_t i = 0; i < heads.size(); ++i) {
      EXPECT_EQ(found[i].substr(0, heads[i].size()), heads[i]);
    }
  };
  Run();
  placed({place(1, ",1,VX1,3,"), place(2, ",3,VX2,2,"), place(3, ",8,CAO1,3,"),
          place(5, "_1,BRNG5_2,10,VX5,3,"), place(6, ",23,VX6,3,")});
  store.Config.AutoChan = kFalse;
  for (int n = 1; n <= 6; ++n) store.BridgeBlock[n].StartChan = static_cast<i16>(n + 10);
  Run();
  placed({place(1, ",11,VX1,3,"), place(2, ",12,VX2,2,"), place(3, ",13,CAO1,3,"),
          place(5, "_1,BRNG5_2,15,VX5,3,"), place(6, ",16,VX6,3,")});
}

TEST_F(BridgesTest, TheZeroSubroutineRepeatsTheStatements) {
  store.BridgeBlock.BlockCount = 2;
  Block(1, 3, "Diff").ZeroFlag = 1;
  BridgeBlockData& strain = Block(2, 1, "Diff");
  strain.ZeroFlag = 1;
  strain.Style = 5;
  Run();
  ExpectRun(
      {"      BrFull(BBlk1ZeroMv(),BREP1,BRNG1,1,VX1,3,BEXCIT1,False,False,BSETL1,BINT1,"
       "BMULT1,0)",
       "      BrFull(BBlk2ZeroMvmV_V(),BREP2,BRNG2,4,VX2,3,BEXCIT2,False,False,BSETL2,BINT2,"
       "1,BOSET2) 'Strain",
       "      StrainCalc(BBlk2ZeroUs(),BREP2,BBlk2ZeroMv(),0,BCODE2,GBBlk2(),0)",
       At66("      Count = Count + 1", "'Increment Count")});
}

TEST_F(BridgesTest, NoRepetitionsOnAnExcitationIsAFailureBehindTheStatement) {
  store.BridgeBlock.BlockCount = 2;
  Block(1, 3, "Diff").ExciteReps = 0;
  Block(2, 3, "Diff");
  ExpectFault(11, "Division by zero", "Bridges");
  Run();
  ExpectRun(
      {"      BrFull(BBlk1(),BREP1,BRNG1,1,VX1,0,BEXCIT1,False,False,BSETL1,BINT1,BMULT1,"
       "BOSET1)",
       "", At66("   Next Scan", "'Loop up for the next scan")});
}

}  // namespace
}  // namespace ostrand::testing
