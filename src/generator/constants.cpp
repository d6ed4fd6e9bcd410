// Constants of the program: every number that a measurement statement names.
#include <algorithm>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "model/names.h"
#include "model/units.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

std::string_view publicOrDim(flag isPublic) { return isPublic != 0 ? "Public" : "Dim"; }

struct PulseInput {
  std::string_view meas;
  int code;
  std::string_view name;
};
// The first serves for any other text as well.
constexpr PulseInput kPulseInputs[] = {
    {"HILEV", 0, "Hi Level"}, {"LOLEV", 1, "Lo Level"}, {"SWTCH", 2, "Switch Closure"}};

const PulseInput& pulseInput(std::string_view meas) {
  for (const PulseInput& input : kPulseInputs) {
    if (SameText(input.meas, meas)) return input;
  }
  return kPulseInputs[0];
}

std::string pulseOption(int option) {
  if (option == 0) return "Totalize";
  if (option == 1) return "Frequency";
  return "Freq over " + NumberText(option) + " mSecs)";  // with a parenthesis of its own
}

std::string_view gaugeCodeComment(int code) {
  switch (code) {
    case 1:
      return " gauge code for 1/4 bridge strain";
    case 3:
      return " gauge code for 1/2 bridge strain";
    case 4:
      return " gauge code for full bridge strain";
    default:
      return " gauge code";
  }
}

// Bits of StrainCalMask for the styles 5, 6 and 7.
int strainCalBit(int style) {
  switch (style) {
    case 5:
      return 4;
    case 6:
      return 2;
    case 7:
      return 1;
    default:
      return 0;
  }
}

}  // namespace

void SAVEDLD::Constants() {
  timingConstants();
  for (const Family family :
       {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse, Family::kTK40M}) {
    if (family == Family::kTK40M && store_.Config.TK40MQty <= 0) continue;
    collectExceptFlags(family);
    const auto blocks = blocksOf(family);
    if (std::any_of(blocks.begin(), blocks.end(), HasReps)) {
      PutEmpty();
      PutSectionTitle(TextsOf(family).constantsTitle);
      PutEmpty();
    }
    for (const BlockView& view : blocks) {
      blockConstants(view);
      putLevelLines(view);
    }
  }
  CanDeclarations();
  section("SAVEDLD.CalcVarConstants", &SAVEDLD::CalcVarConstants);
}

void SAVEDLD::timingConstants() {
  bool startTrigger = false;
  bool stopTrigger = false;
  bool writeIfCall = false;
  PutSectionTitle(" TIMING CONSTANTS ");
  PutEmpty();
  Put({"Const PERIOD = ", store_.Scan.ExecutionTime}, {"'Scan interval number"});
  Put({"Const P_UNITS = ", store_.Scan.ExecTimeUnits},
      {"'Scan interval units (", UnitAbbreviation(store_.Scan.ExecTimeUnits), "s)"});
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store_.Tables[t];
    if (table.TableOn == 0) continue;
    startTrigger |= table.DisableTrigger == 0 && table.TrigTable != 0;
    stopTrigger |= table.TrigTabStop != 0 && table.SingleTrigger == 0;
    writeIfCall |= table.DisableWriteIf == 0 && table.WriteIf != 0;
    if (table.SyncTable != 0) continue;
    PutEmpty();
    Put({"Const INTERVAL", t, " = ", table.OutInt}, {"'Table ", t, " interval number"});
    Put({"Const UNITS", t, " = ", table.OutIntUnits},
        {"'Table ", t, " interval units (", UnitAbbreviation(table.OutIntUnits), "s)"});
  }
  if (startTrigger) Put({"Dim bStartTrigger As Boolean"});
  if (stopTrigger) Put({"Dim bStopTrigger As Boolean"});
  if (writeIfCall) Put({"Dim bWriteIfCall As Boolean"});
}

void SAVEDLD::blockConstants(const BlockView& view) {
  if (view.Kind() == Family::kTK40M && view.data->ZeroFlag > 0) {  // also without repetitions
    needs_.NeedLoopIndex = needs_.NeedCount = needs_.AnyZeroCal = true;
  }
  if (!HasReps(view)) return;
  PutTitle("", Joined({view.texts->blockTitle, view.n, " "}));
  switch (view.Kind()) {
    case Family::kTemp:
      return tempConstants(view, store_.TempBlock[view.n]);
    case Family::kVolt:
      return voltConstants(view, store_.VoltBlock[view.n]);
    case Family::kBridge:
      return bridgeConstants(view, store_.BridgeBlock[view.n]);
    case Family::kPulse:
      return pulseConstants(view, static_cast<const PulseBlockData&>(*view.data));
    case Family::kTK40M:
      return tk40mConstants(view, store_.TK40MBlock[view.n]);
    case Family::kCan:  // has declarations of its own
      return;
  }
}

void SAVEDLD::tempConstants(const BlockView& view, const TempBlockData& block) {
  putRange(view, block);
  putTypeNo(view, block.TypeNo);
  putConstant(view, "REP", block.Reps, " repetitions");
  putTimes(view, block);
  putScaling(view);
  putSource(view);
  if (view.except->Any()) {
    putArray(view, "Dim", view.names.mult, " dimensioned multiplier");
    putArray(view, "Dim", view.names.offset, " dimensioned offset");
    needs_.NeedLoopIndex = true;
  }
  putUnits(view);
}

void SAVEDLD::voltConstants(const BlockView& view, const VoltBlockData& block) {
  const bool zeroed = block.ZeroFlag > 0;
  if (zeroed) needs_.NeedLoopIndex = needs_.NeedCount = needs_.AnyZeroCal = true;
  putRange(view, block);
  putConstant(view, "REP", block.Reps, " repetitions");
  putTimes(view, block);
  putScaling(view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(view);
  } else if (!zeroed) {
    putSource(view);
  } else {
    putArray(view, "Public", view.names.source, " dimensioned source");
    putArray(view, "Public", view.names.offset, " dimensioned offset");
  }
  if (hostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(view);
  if (!block.Units.empty()) putUnits(view);
  if (zeroed) Put({"Public VCalReps", view.n});
}

void SAVEDLD::bridgeConstants(const BlockView& view, const BridgeBlockData& block) {
  const int n = view.n;
  const bool strain = IsStrain(block);
  const bool zeroed = block.ZeroFlag > 0;
  if (SameText(block.Type, "BRFULL6W")) {
    Put({"Const BRNG", n, "_1 = 0"}, {"'Block", n, " input measurement range 5000 mV"});
    Put({"Const BRNG", n, "_2 = ", block.RangeNo},
        {"'Block", n, " output measurement range (", block.Range, ")"});
  } else {
    putRange(view, block);
  }
  putConstant(view, "REP", block.Reps, " repetitions");
  putConstant(view, "EXCIT", block.Excite, " excitation mVolts");
  putTimes(view, block);
  if (strain) {
    putConstant(view, "GF", block.GageFactor, " gauge factor");
    putConstant(view, "CODE", block.RevOutput != 0 ? block.GageCode : -block.GageCode,
                gaugeCodeComment(block.GageCode));
  }
  if (zeroed) {
    needs_.NeedLoopIndex = needs_.NeedCount = true;
    if (!strain) needs_.AnyZeroCal = true;
    needs_.StrainCalMask |= strainCalBit(block.Style);
  }
  putConstant(view, "MULT", block.DefaultMult, " default multiplier");
  putConstant(view, "OSET", strain ? Piece(0) : Piece(block.DefaultOffset), " default offset");
  bridgeArrays(view, block);
  if (zeroed) {
    Put({"Public BBlk", n, "ZeroMv(BREP", n, ")"}, {"'Block", n, " zero mV variable"});
  }
  if ((hostIsHarrier() && block.CalOnSite != 0 && !strain) || (zeroed && strain)) {
    putTwoPointVariables(view);
  }
  if (zeroed) Put({"Public BCalReps", n});
  if (zeroed && (strain || !block.Units.empty())) {
    Put({"Units BBlk", n, "ZeroMv = mVperV"}, {"'Block", n, " default units (mVperV)"});
  }
  if (!block.Units.empty()) putUnits(view);
}

void SAVEDLD::bridgeArrays(const BlockView& view, const BridgeBlockData& block) {
  const int n = view.n;
  const bool strain = IsStrain(block);
  const bool zeroed = block.ZeroFlag >= 1;
  const std::string gauge = GaugeName(n);
  const auto offsetOrGauge = [&](std::string_view offsetKeyword) {
    if (strain) {
      putArray(view, "Public", gauge, " dimensioned gauge factor");
    } else {
      putArray(view, offsetKeyword, view.names.offset, " dimensioned offset");
    }
  };
  const auto rawArrays = [&] {
    Put({"Public BBlk", n, "mV_V(BREP", n, ")"});
    Put({"Public GBBlk", n, "Raw(BREP", n, ")"});
  };
  if (block.CalOnSite != 0) {
    needs_.AnySiteCal = needs_.NeedLoopIndex = true;
    putSource(view);
    putArray(view, "Public", view.names.mult, " dimensioned multiplier");
    offsetOrGauge("Public");
  } else if (view.except->Any()) {
    needs_.NeedLoopIndex = true;
    putArray(view, "Public", view.names.source, " dimensioned source");
    putArray(view, "Dim", view.names.mult, " dimensioned multiplier");
    offsetOrGauge("Dim");
    if (strain && zeroed) rawArrays();
  } else if (!zeroed) {
    putSource(view);
  } else {
    putArray(view, "Public", view.names.source, " dimensioned source");
    if (strain) rawArrays();
    offsetOrGauge("Public");
  }
}

void SAVEDLD::pulseConstants(const BlockView& view, const PulseBlockData& block) {
  const PulseInput& input = pulseInput(block.Meas);
  putConstant(view, "CONF", input.code, Joined({" config (", input.name, ")"}));
  putConstant(view, "OPT", block.Opt, Joined({" option (", pulseOption(block.Opt), ")"}));
  putConstant(view, "REP", block.Reps, " repetitions");
  putScaling(view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(view);
  } else {
    putSource(view);
  }
  if (hostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(view);
  if (!block.Units.empty()) putUnits(view);
}

void SAVEDLD::tk40mConstants(const BlockView& view, const TK40MBlockData& block) {
  const bool zeroed = block.TK40Volts == 1 && block.ZeroFlag > 0;
  putRange(view, block);
  if (block.TK40Volts == 1) {
    putConstant(view, "TYPE", -1, " volt measurement");
  } else {
    putTypeNo(view, block.TypeNo);
  }
  putConstant(view, "REP", block.Reps, " repetitions");
  putTimes(view, block);
  putScaling(view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(view);
  } else if (zeroed) {
    putArray(view, "Public", view.names.source, " dimensioned source");
    putArray(view, "Public", view.names.offset, " dimensioned offset");
  } else {
    putSource(view);
  }
  if (hostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(view);
  putUnits(view);
  if (zeroed) Put({"Public ACalReps", view.n});
}

void SAVEDLD::putConstant(const BlockView& view, std::string_view name, Piece value,
                          std::string_view comment) {
  Put({"Const ", ConstantName(view.texts->kind, name, view.n), " = ", value},
      {"'Block", view.n, comment});
}

void SAVEDLD::putRange(const BlockView& view, const AnalogBlock& block) {
  putConstant(view, "RNG", block.RangeNo, Joined({" measurement range (", block.Range, ")"}));
}

void SAVEDLD::putTypeNo(const BlockView& view, int typeNo) {
  putConstant(view, "TYPE", typeNo,
              Joined({" thermocouple type (", ThermocoupleLetter(typeNo), ")"}));
}

void SAVEDLD::putTimes(const BlockView& view, const AnalogBlock& block) {
  putConstant(view, "SETL", block.SettleTime, " settling time (usecs)");
  putConstant(view, "INT", block.Integration, " integration time (usecs)");
}

void SAVEDLD::putScaling(const BlockView& view) {
  putConstant(view, "MULT", view.data->DefaultMult, " default multiplier");
  putConstant(view, "OSET", view.data->DefaultOffset, " default offset");
}

void SAVEDLD::putArray(const BlockView& view, std::string_view keyword, std::string_view name,
                       std::string_view what) {
  Put({keyword, " ", name, "(", view.names.reps, ")"}, {"'Block", view.n, what});
}

void SAVEDLD::putSource(const BlockView& view) {
  putArray(view, publicOrDim(view.data->Public), view.names.source, " dimensioned source");
}

void SAVEDLD::putPublicScaling(const BlockView& view) {
  putSource(view);
  putArray(view, "Public", view.names.mult, " dimensioned multiplier");
  putArray(view, "Public", view.names.offset, " dimensioned offset");
  needs_.NeedLoopIndex = true;
}

void SAVEDLD::putUnits(const BlockView& view) {
  const std::string& units = view.data->Units;
  const auto put = [&](const auto&... statement) {
    Put({statement...}, {"'Block", view.n, " default units (", units, ")"});
  };
  UnitsStatement(put, view.names.source, units);
}

void SAVEDLD::putTwoPointVariables(const BlockView& view) {
  Put({"Public ", ConstantName(view.texts->kind, "CalMode", view.n)});
  Put({"Public ", ConstantName(view.texts->kind, "KnownVar", view.n), "(", view.names.reps, ")"});
}

void SAVEDLD::putLevelLines(const BlockView& view) {
  const OutputSet& output = view.data->Output;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const std::string label = Joined({"'Block", view.n, " Table", t});
    putLevelArrays(output, t, Joined({view.names.source, t}), label, label + " data for array 2");
  }
  for (int r = 1; r <= view.data->Reps; ++r) {
    for (int t = 1; t <= kTables; ++t) {
      if (!IsSelected(output, t, kLevelCrossing)) continue;
      Put({"Dim LC", view.names.source, "_", t, "_", r, "(2)"},
          {"'Block", view.n, " Table", t, " source for level crossing"});
    }
  }
}

}  // namespace ostrand
