#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ZeroFlagsTest : public Generated {
 protected:
  template <class Group>
  auto& Block(Group& group, int n, int reps, int zeroFlag) {
    group.BlockCount = static_cast<i16>(n);
    group[n].Reps = static_cast<i16>(reps);
    group[n].ZeroFlag = static_cast<i16>(zeroFlag);
    return group[n];
  }
};

// Multiplexer blocks count here without a multiplexer, and thermocouples on one as well.
TEST_F(ZeroFlagsTest, LogicOfTheFlags) {
  Block(store.VoltBlock, 1, 2, 8);
  Block(store.VoltBlock, 2, 2, 3);
  Block(store.BridgeBlock, 1, 1, 3);
  Block(store.BridgeBlock, 2, 0, 5);
  Block(store.TK40MBlock, 1, 1, 3);
  Run();
  const auto logic = [](const std::string& n, const Lines& reps) {
    Lines lines = {"      If Flag(" + n + ") Then", "         If ScanFlg1x(" + n + ") Then",
                   "            CalStartIdx = 1"};
    lines.insert(lines.end(), reps.begin(), reps.end());
    const Lines tail = {
        "            FlagMode" + n + " = 1",
        "            ScanFlg1x(" + n + ") = False",
        "         EndIf",
        "         If (FlagMode" + n + " <= 0) or (FlagMode" + n + " = 6) Then Flag(" + n + ") = 0",
        "      Else",
        "         ScanFlg1x(" + n + ") = True",
        "      EndIf"};
    lines.insert(lines.end(), tail.begin(), tail.end());
    return lines;
  };
  Lines expected = logic("3", {"            VCalReps2 = VREP2", "            BCalReps1 = BREP1",
                               "            ACalReps1 = AREP1"});
  const Lines eighth = logic("8", {"            VCalReps1 = VREP1"});
  expected.insert(expected.end(), eighth.begin(), eighth.end());
  expected.push_back("");
  ExpectRun(expected);
  EXPECT_EQ(Count("      If Flag(5) Then"), 0);
}

TEST_F(ZeroFlagsTest, CalibrationCalls) {
  Block(store.VoltBlock, 1, 2, 1).CalOnSite = 1;
  Block(store.VoltBlock, 2, 2, 0).CalOnSite = 1;
  Block(store.BridgeBlock, 1, 2, 2);
  for (int style = 5; style <= 8; ++style) {
    Block(store.BridgeBlock, style - 3, 1, 4).Style = static_cast<i16>(style);
  }
  Block(store.TK40MBlock, 1, 0, 6);
  store.PulseBlock[0].BlockCount = store.PulseBlock[1].BlockCount = 1;
  store.PulseBlock[1][1].CalOnSite = 1;
  const std::string tail = ",0,CalStartIdx,FieldCalAvgs)";
  const auto twoPoint = [](const std::string& stem, const std::string& letter) {
    return "      FieldCal(TwoPointMultOffs," + letter + stem + "(),1,M" + letter + stem + "(),O" +
           letter + stem + "()," + letter + "CalMode" + stem.substr(3) + "," + letter + "KnownVar" +
           stem.substr(3) + "(),CalStartIdx,FieldCalAvgs)";
  };
  const auto strain = [](const std::string& n, const std::string& shunt) {
    return Lines{"      FieldCalStrain(" + shunt + ",BBlk" + n + "(),1,GBBlk" + n +
                     "(),0,BCalMode" + n + ",BKnownVar" + n + "(),CalStartIdx,FieldCalAvgs,GBBlk" +
                     n + "Raw(),0)",
                 "      FieldCalStrain(CalStrainZero,BBlk" + n + "mV_V(),BCalReps" + n + ",0,BBlk" +
                     n + "ZeroMv(),FlagMode4,0,CalStartIdx,FieldCalAvgs,0,BBlk" + n + "())"};
  };
  Lines zeroing = {"      FieldCal(ZeroingCalib,VBlk1(),VCalReps1,0,OVBlk1(),FlagMode1" + tail,
                   "      FieldCal(ZeroingCalib,BBlk1(),BCalReps1,0,OBBlk1(),FlagMode2" + tail};
  for (const auto& [n, shunt] :
       {std::pair{"2", "Strain1_4Shunt"}, {"3", "Strain1_2Shunt"}, {"4", "StrainFullShunt"}}) {
    for (const std::string& line : strain(n, shunt)) zeroing.push_back(line);
  }
  zeroing.push_back(strain("5", "")[1]);
  zeroing.push_back("      FieldCal(ZeroingCalib,ABlk1(),ACalReps1,0,OABlk1(),FlagMode6" + tail);
  zeroing.push_back("      CallTable(CalHist)");
  Run();
  ExpectRun(zeroing);

  generator.HostApp("harrier");
  Lines all = {twoPoint("Blk1", "V"), zeroing[0], twoPoint("Blk2", "V")};
  all.insert(all.end(), zeroing.begin() + 1, zeroing.end() - 1);
  all.push_back(twoPoint("Blk1", "P"));
  all.push_back(zeroing.back());
  Run();
  ExpectRun(all);
}

}  // namespace
}  // namespace ostrand::testing
