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

// Multiplexer blocks count without a multiplexer, and thermocouples on one as well.
TEST_F(ZeroFlagsTest, LogicOfAFlag) {
  Block(store.VoltBlock, 1, 0, 3);
  Block(store.VoltBlock, 2, 2, 3);
  Block(store.BridgeBlock, 1, 1, 3);
  Block(store.TK40MBlock, 1, 1, 3);
  Run();
  ExpectText(
      "      If Flag(3) Then|         If ScanFlg1x(3) Then|            CalStartIdx = 1"
      "|            VCalReps2 = VREP2|            BCalReps1 = BREP1"
      "|            ACalReps1 = AREP1|            FlagMode3 = 1"
      "|            ScanFlg1x(3) = False|         EndIf"
      "|         If (FlagMode3 <= 0) or (FlagMode3 = 6) Then Flag(3) = 0"
      "|      Else|         ScanFlg1x(3) = True|      EndIf|");
}

// Repetitions are not asked for. Only the host Harrier, in any case, calibrates by two points.
TEST_F(ZeroFlagsTest, CalibrationCalls) {
  Block(store.VoltBlock, 1, 0, 1).CalOnSite = 1;
  Block(store.BridgeBlock, 1, 2, 2);
  Block(store.BridgeBlock, 2, 1, 4).Style = 6;
  Block(store.BridgeBlock, 3, 1, 4).Style = 8;
  Block(store.TK40MBlock, 1, 0, 6);
  store.PulseBlock[0].BlockCount = store.PulseBlock[1].BlockCount = 1;
  store.PulseBlock[1][1].CalOnSite = 1;
  const std::string zeroing =
      "      "
      "FieldCal(ZeroingCalib,VBlk1(),VCalReps1,0,OVBlk1(),FlagMode1,0,CalStartIdx,FieldCalAvgs)"
      "|      FieldCal(ZeroingCalib,BBlk1(),BCalReps1,0,OBBlk1(),FlagMode2,0,CalStartIdx,"
      "FieldCalAvgs)|      FieldCalStrain(Strain1_2Shunt,BBlk2(),1,GBBlk2(),0,BCalMode2,"
      "BKnownVar2(),CalStartIdx,FieldCalAvgs,GBBlk2Raw(),0)|      FieldCalStrain(CalStrainZero,"
      "BBlk2mV_V(),BCalReps2,0,BBlk2ZeroMv(),FlagMode4,0,CalStartIdx,FieldCalAvgs,0,BBlk2())"
      "|      FieldCalStrain(CalStrainZero,BBlk3mV_V(),BCalReps3,0,BBlk3ZeroMv(),FlagMode4,0,"
      "CalStartIdx,FieldCalAvgs,0,BBlk3())|      FieldCal(ZeroingCalib,ABlk1(),ACalReps1,0,"
      "OABlk1(),FlagMode6,0,CalStartIdx,FieldCalAvgs)|";
  Run();
  ExpectText(zeroing + "      CallTable(CalHist)");
  generator.HostApp("hARRIER");
  Run();
  ExpectText(
      "      FieldCal(TwoPointMultOffs,VBlk1(),1,MVBlk1(),OVBlk1(),VCalMode1,VKnownVar1(),"
      "CalStartIdx,FieldCalAvgs)|" +
      zeroing +
      "      FieldCal(TwoPointMultOffs,PBlk1(),1,"
      "MPBlk1(),OPBlk1(),PCalMode1,PKnownVar1(),CalStartIdx,FieldCalAvgs)|"
      "      CallTable(CalHist)");
}

}  // namespace
}  // namespace ostrand::testing
