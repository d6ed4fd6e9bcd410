// Zeroing on a flag, and the field calibration calls of the scan.
#include <array>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "generator/zero_blocks.h"
#include "model/names.h"

namespace ostrand {
namespace {

// Shunt calibration of quarter, half and full bridge strain.
constexpr std::array<std::string_view, 3> kShunts = {"Strain1_4Shunt", "Strain1_2Shunt",
                                                     "StrainFullShunt"};

constexpr std::string_view kAveraged = ",CalStartIdx,FieldCalAvgs";

std::string nameOf(const BlockView& view, std::string_view what) {
  return ConstantName(view.texts->kind, what, view.n);
}

void twoPointCall(ProgramRun& run, const BlockView& view) {
  const BlockNames& names = view.names;
  run.Put({"      FieldCal(TwoPointMultOffs,", names.source, "(),1,", names.mult, "(),",
           names.offset, "(),", nameOf(view, "CalMode"), ",", nameOf(view, "KnownVar"), "()",
           kAveraged, ")"});
}

void zeroingCall(ProgramRun& run, const BlockView& view) {
  run.Put({"      FieldCal(ZeroingCalib,", view.names.source, "(),", nameOf(view, "CalReps"), ",0,",
           view.names.offset, "(),FlagMode", view.data->ZeroFlag, ",0", kAveraged, ")"});
}

void strainZeroingCalls(ProgramRun& run, const BlockView& view, int style) {
  const int n = view.n;
  const auto shunt = static_cast<std::size_t>(style - kQuarterStrain);
  if (shunt < kShunts.size()) {
    run.Put({"      FieldCalStrain(", kShunts[shunt], ",BBlk", n, "(),1,GBBlk", n, "(),0,BCalMode",
             n, ",BKnownVar", n, "()", kAveraged, ",GBBlk", n, "Raw(),0)"});
  }
  run.Put({"      FieldCalStrain(CalStrainZero,BBlk", n, "mV_V(),BCalReps", n, ",0,BBlk", n,
           "ZeroMv(),FlagMode", view.data->ZeroFlag, ",0", kAveraged, ",0,BBlk", n, "())"});
}

}  // namespace

// The first scan with the flag on prepares the calibration; the flag is reset at its end.
void SAVEDLD::ZeroFlagLogic() {
  for (int n = 1; n <= kFlags; ++n) {
    const auto blocks = FlaggedBlocks(run_, n);
    if (blocks.empty()) continue;
    run_.Put({"      If Flag(", n, ") Then"});
    run_.Put({"         If ScanFlg1x(", n, ") Then"});
    run_.Put({"            CalStartIdx = 1"});
    for (const BlockView& view : blocks) {
      run_.Put({"            ", nameOf(view, "CalReps"), " = ", view.names.reps});
    }
    run_.Put({"            FlagMode", n, " = 1"});
    run_.Put({"            ScanFlg1x(", n, ") = False"});
    run_.Put({"         EndIf"});
    run_.Put(
        {"         If (FlagMode", n, " <= 0) or (FlagMode", n, " = 6) Then Flag(", n, ") = 0"});
    run_.Put({"      Else"});
    run_.Put({"         ScanFlg1x(", n, ") = True"});
    run_.Put({"      EndIf"});
  }
  run_.PutEmpty();
}

void SAVEDLD::FieldCalCalls() {
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M, Family::kPulse}) {
    for (const BlockView& view : run_.Blocks(family)) {
      if (run_.HostIsHarrier() && view.data->CalOnSite != 0) twoPointCall(run_, view);
      if (family == Family::kPulse || view.data->ZeroFlag == 0) continue;
      const int style = family == Family::kBridge ? run_.store.BridgeBlock[view.n].Style : 0;
      if (!IsStrainStyle(style)) {
        zeroingCall(run_, view);
      } else {
        strainZeroingCalls(run_, view, style);
      }
    }
  }
}

}  // namespace ostrand
