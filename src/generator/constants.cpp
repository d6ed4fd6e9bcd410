// Constants of the program: every number that a measurement statement names.
#include "generator/bridge_style.h"
#include "generator/level_arrays.h"
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
// The first is also used for any other text.
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
  return "Freq over " + NumberText(option) + " mSecs)";  // with an unmatched parenthesis
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

void timingConstants(ProgramRun& run) {
  bool startTrigger = false;
  bool stopTrigger = false;
  bool writeIfCall = false;
  run.PutSectionTitle(" TIMING CONSTANTS ");
  run.PutEmpty();
  run.Put({"Const PERIOD = ", run.store.Scan.ExecutionTime}, {"'Scan interval number"});
  run.Put({"Const P_UNITS = ", run.store.Scan.ExecTimeUnits},
          {"'Scan interval units (", UnitAbbreviation(run.store.Scan.ExecTimeUnits), "s)"});
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = run.store.Tables[t];
    if (table.TableOn == 0) continue;
    startTrigger |= table.DisableTrigger == 0 && table.TrigTable != 0;
    stopTrigger |= table.TrigTabStop != 0 && table.SingleTrigger == 0;
    writeIfCall |= table.DisableWriteIf == 0 && table.WriteIf != 0;
    if (table.SyncTable != 0) continue;
    run.PutEmpty();
    run.Put({"Const INTERVAL", t, " = ", table.OutInt}, {"'Table ", t, " interval number"});
    run.Put({"Const UNITS", t, " = ", table.OutIntUnits},
            {"'Table ", t, " interval units (", UnitAbbreviation(table.OutIntUnits), "s)"});
  }
  if (startTrigger) run.Put({"Dim bStartTrigger As Boolean"});
  if (stopTrigger) run.Put({"Dim bStopTrigger As Boolean"});
  if (writeIfCall) run.Put({"Dim bWriteIfCall As Boolean"});
}

void putConstant(ProgramRun& run, const BlockView& view, std::string_view name, Piece value,
                 std::string_view comment) {
  run.Put({"Const ", ConstantName(view.texts->kind, name, view.n), " = ", value},
          {"'Block", view.n, comment});
}

void putRange(ProgramRun& run, const BlockView& view, const AnalogBlock& block) {
  putConstant(run, view, "RNG", block.RangeNo, Joined({" measurement range (", block.Range, ")"}));
}

void putTypeNo(ProgramRun& run, const BlockView& view, int typeNo) {
  putConstant(run, view, "TYPE", typeNo,
              Joined({" thermocouple type (", ThermocoupleLetter(typeNo), ")"}));
}

void putTimes(ProgramRun& run, const BlockView& view, const AnalogBlock& block) {
  putConstant(run, view, "SETL", block.SettleTime, " settling time (usecs)");
  putConstant(run, view, "INT", block.Integration, " integration time (usecs)");
}

void putScaling(ProgramRun& run, const BlockView& view) {
  putConstant(run, view, "MULT", view.data->DefaultMult, " default multiplier");
  putConstant(run, view, "OSET", view.data->DefaultOffset, " default offset");
}

void putArray(ProgramRun& run, const BlockView& view, std::string_view keyword,
              std::string_view name, std::string_view what) {
  run.Put({keyword, " ", name, "(", view.names.reps, ")"}, {"'Block", view.n, what});
}

void putSource(ProgramRun& run, const BlockView& view) {
  putArray(run, view, publicOrDim(view.data->Public), view.names.source, " dimensioned source");
}

void putUnits(ProgramRun& run, const BlockView& view) {
  const std::string& units = view.data->Units;
  const auto put = [&](const auto&... statement) {
    run.Put({statement...}, {"'Block", view.n, " default units (", units, ")"});
  };
  UnitsStatement(put, view.names.source, units);
}

void tempConstants(ProgramRun& run, const BlockView& view, const TempBlockData& block) {
  putRange(run, view, block);
  putTypeNo(run, view, block.TypeNo);
  putConstant(run, view, "REP", block.Reps, " repetitions");
  putTimes(run, view, block);
  putScaling(run, view);
  putSource(run, view);
  if (view.except->Any()) {
    putArray(run, view, "Dim", view.names.mult, " dimensioned multiplier");
    putArray(run, view, "Dim", view.names.offset, " dimensioned offset");
    run.needs.NeedLoopIndex = true;
  }
  putUnits(run, view);
}

void putPublicScaling(ProgramRun& run, const BlockView& view) {
  putSource(run, view);
  putArray(run, view, "Public", view.names.mult, " dimensioned multiplier");
  putArray(run, view, "Public", view.names.offset, " dimensioned offset");
  run.needs.NeedLoopIndex = true;
}

void putTwoPointVariables(ProgramRun& run, const BlockView& view) {
  run.Put({"Public ", ConstantName(view.texts->kind, "CalMode", view.n)});
  run.Put(
      {"Public ", ConstantName(view.texts->kind, "KnownVar", view.n), "(", view.names.reps, ")"});
}

void voltConstants(ProgramRun& run, const BlockView& view, const VoltBlockData& block) {
  const bool zeroed = block.ZeroFlag > 0;
  if (zeroed) run.needs.NeedLoopIndex = run.needs.NeedCount = run.needs.AnyZeroCal = true;
  putRange(run, view, block);
  putConstant(run, view, "REP", block.Reps, " repetitions");
  putTimes(run, view, block);
  putScaling(run, view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(run, view);
  } else if (!zeroed) {
    putSource(run, view);
  } else {
    putArray(run, view, "Public", view.names.source, " dimensioned source");
    putArray(run, view, "Public", view.names.offset, " dimensioned offset");
  }
  if (run.HostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(run, view);
  if (!block.Units.empty()) putUnits(run, view);
  if (zeroed) run.Put({"Public VCalReps", view.n});
}

void bridgeArrays(ProgramRun& run, const BlockView& view, const BridgeBlockData& block) {
  const int n = view.n;
  const bool strain = IsStrain(block);
  const bool zeroed = block.ZeroFlag >= 1;
  const std::string gauge = GaugeName(n);
  const auto offsetOrGauge = [&](std::string_view offsetKeyword) {
    if (strain) {
      putArray(run, view, "Public", gauge, " dimensioned gauge factor");
    } else {
      putArray(run, view, offsetKeyword, view.names.offset, " dimensioned offset");
    }
  };
  const auto rawArrays = [&] {
    run.Put({"Public BBlk", n, "mV_V(BREP", n, ")"});
    run.Put({"Public GBBlk", n, "Raw(BREP", n, ")"});
  };
  if (block.CalOnSite != 0) {
    run.needs.AnySiteCal = run.needs.NeedLoopIndex = true;
    putSource(run, view);
    putArray(run, view, "Public", view.names.mult, " dimensioned multiplier");
    offsetOrGauge("Public");
  } else if (view.except->Any()) {
    run.needs.NeedLoopIndex = true;
    putArray(run, view, "Public", view.names.source, " dimensioned source");
    putArray(run, view, "Dim", view.names.mult, " dimensioned multiplier");
    offsetOrGauge("Dim");
    if (strain && zeroed) rawArrays();
  } else if (!zeroed) {
    putSource(run, view);
  } else {
    putArray(run, view, "Public", view.names.source, " dimensioned source");
    if (strain) rawArrays();
    offsetOrGauge("Public");
  }
}

void bridgeConstants(ProgramRun& run, const BlockView& view, const BridgeBlockData& block) {
  const int n = view.n;
  const bool strain = IsStrain(block);
  const bool zeroed = block.ZeroFlag > 0;
  if (SameText(block.Type, "BRFULL6W")) {
    run.Put({"Const BRNG", n, "_1 = 0"}, {"'Block", n, " input measurement range 5000 mV"});
    run.Put({"Const BRNG", n, "_2 = ", block.RangeNo},
            {"'Block", n, " output measurement range (", block.Range, ")"});
  } else {
    putRange(run, view, block);
  }
  putConstant(run, view, "REP", block.Reps, " repetitions");
  putConstant(run, view, "EXCIT", block.Excite, " excitation mVolts");
  putTimes(run, view, block);
  if (strain) {
    putConstant(run, view, "GF", block.GageFactor, " gauge factor");
    putConstant(run, view, "CODE", block.RevOutput != 0 ? block.GageCode : -block.GageCode,
                gaugeCodeComment(block.GageCode));
  }
  if (zeroed) {
    run.needs.NeedLoopIndex = run.needs.NeedCount = true;
    if (!strain) run.needs.AnyZeroCal = true;
    run.needs.StrainCalMask |= strainCalBit(block.Style);
  }
  putConstant(run, view, "MULT", block.DefaultMult, " default multiplier");
  putConstant(run, view, "OSET", strain ? Piece(0) : Piece(block.DefaultOffset), " default offset");
  bridgeArrays(run, view, block);
  if (zeroed) {
    run.Put({"Public BBlk", n, "ZeroMv(BREP", n, ")"}, {"'Block", n, " zero mV variable"});
  }
  if ((run.HostIsHarrier() && block.CalOnSite != 0 && !strain) || (zeroed && strain)) {
    putTwoPointVariables(run, view);
  }
  if (zeroed) run.Put({"Public BCalReps", n});
  if (zeroed && (strain || !block.Units.empty())) {
    run.Put({"Units BBlk", n, "ZeroMv = mVperV"}, {"'Block", n, " default units (mVperV)"});
  }
  if (!block.Units.empty()) putUnits(run, view);
}

void pulseConstants(ProgramRun& run, const BlockView& view, const PulseBlockData& block) {
  const PulseInput& input = pulseInput(block.Meas);
  putConstant(run, view, "CONF", input.code, Joined({" config (", input.name, ")"}));
  putConstant(run, view, "OPT", block.Opt, Joined({" option (", pulseOption(block.Opt), ")"}));
  putConstant(run, view, "REP", block.Reps, " repetitions");
  putScaling(run, view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(run, view);
  } else {
    putSource(run, view);
  }
  if (run.HostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(run, view);
  if (!block.Units.empty()) putUnits(run, view);
}

void tk40mConstants(ProgramRun& run, const BlockView& view, const TK40MBlockData& block) {
  const bool zeroed = block.TK40Volts == 1 && block.ZeroFlag > 0;
  putRange(run, view, block);
  if (block.TK40Volts == 1) {
    putConstant(run, view, "TYPE", -1, " volt measurement");
  } else {
    putTypeNo(run, view, block.TypeNo);
  }
  putConstant(run, view, "REP", block.Reps, " repetitions");
  putTimes(run, view, block);
  putScaling(run, view);
  if (block.CalOnSite != 0 || view.except->Any()) {
    putPublicScaling(run, view);
  } else if (zeroed) {
    putArray(run, view, "Public", view.names.source, " dimensioned source");
    putArray(run, view, "Public", view.names.offset, " dimensioned offset");
  } else {
    putSource(run, view);
  }
  if (run.HostIsHarrier() && block.CalOnSite != 0) putTwoPointVariables(run, view);
  putUnits(run, view);
  if (zeroed) run.Put({"Public ACalReps", view.n});
}

void blockConstants(ProgramRun& run, const BlockView& view) {
  if (view.Kind() == Family::kTK40M && view.data->ZeroFlag > 0) {  // also without repetitions
    run.needs.NeedLoopIndex = run.needs.NeedCount = run.needs.AnyZeroCal = true;
  }
  if (!HasReps(view)) return;
  run.PutTitle("", Joined({view.texts->blockTitle, view.n, " "}));
  switch (view.Kind()) {
    case Family::kTemp:
      return tempConstants(run, view, run.store.TempBlock[view.n]);
    case Family::kVolt:
      return voltConstants(run, view, run.store.VoltBlock[view.n]);
    case Family::kBridge:
      return bridgeConstants(run, view, run.store.BridgeBlock[view.n]);
    case Family::kPulse:
      return pulseConstants(run, view, static_cast<const PulseBlockData&>(*view.data));
    case Family::kTK40M:
      return tk40mConstants(run, view, run.store.TK40MBlock[view.n]);
    case Family::kCan:  // see CanDeclarations
      return;
  }
}

void putLevelLines(ProgramRun& run, const BlockView& view) {
  const OutputSet& output = view.data->Output;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const std::string label = Joined({"'Block", view.n, " Table", t});
    PutLevelArrays(run, output, t, Joined({view.names.source, t}), label,
                   label + " data for array 2");
  }
  for (int r = 1; r <= view.data->Reps; ++r) {
    for (int t = 1; t <= kTables; ++t) {
      if (!IsSelected(output, t, kLevelCrossing)) continue;
      run.Put({"Dim LC", view.names.source, "_", t, "_", r, "(2)"},
              {"'Block", view.n, " Table", t, " source for level crossing"});
    }
  }
}

}  // namespace

void SAVEDLD::Constants() {
  timingConstants(run_);
  for (const Family family :
       {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse, Family::kTK40M}) {
    if (family == Family::kTK40M && run_.store.Config.TK40MQty <= 0) continue;
    const auto& blocks = run_.Blocks(family);
    CollectExceptFlags(blocks);
    if (AnyReps(blocks)) {
      run_.PutEmpty();
      run_.PutSectionTitle(TextsOf(family).constantsTitle);
      run_.PutEmpty();
    }
    for (const BlockView& view : blocks) {
      blockConstants(run_, view);
      putLevelLines(run_, view);
    }
  }
  CanDeclarations();
  section("SAVEDLD.CalcVarConstants", &SAVEDLD::CalcVarConstants);
}

}  // namespace ostrand
