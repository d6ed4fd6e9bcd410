// Aliases, units of repetitions and the general variables of the program.
#include <algorithm>
#include <array>

#include "generator/bridge_style.h"
#include "generator/can_bus.h"
#include "generator/savedld.h"
#include "generator/zero_blocks.h"
#include "text/strings.h"

namespace ostrand {
namespace {

std::string_view publicOrDim(flag isPublic) { return isPublic != 0 ? "Public " : "Dim "; }

// The program's name for a repetition: its alias if it has one.
std::string effectiveName(const BlockView& view, int r) {
  const RepAlias& alias = view.Alias(r);
  if (!alias.AliasName.empty()) return alias.AliasName;
  if (view.data->Reps == 1) return view.names.source;
  return Joined({view.names.source, "(", r, ")"});
}

// Whether any instruction up to RainFlow is selected in any table.
bool hasPortOutput(const OutputSet& output) {
  for (int t = 1; t <= kTables; ++t) {
    for (int code = kSample; code <= kRainFlow; ++code) {
      if (IsSelected(output, t, code)) return true;
    }
  }
  return false;
}

struct StrainConstant {
  int bit;
  std::string_view line;
};
constexpr std::array<StrainConstant, 3> kStrainConstants = {{
    {1, "Const StrainFullShunt = 43"},
    {2, "Const Strain1_2Shunt = 33"},
    {4, "Const Strain1_4Shunt = 13"},
}};

void aliasLines(ProgramRun& run, Family family) {
  for (const BlockView& view : run.Blocks(family)) {
    if (family == Family::kCan && run.store.Can.Item[view.n].Enabled == 0) continue;
    const bool calibrated = view.data->CalOnSite != 0 && !IsStrain(view);
    const std::string& source = view.names.source;
    for (int r = 1; r <= view.data->Reps; ++r) {
      const RepAlias& alias = view.Alias(r);
      if (!alias.AliasName.empty()) {
        const auto put = [&](const auto&... statement) {
          run.Put({statement...},
                  {"'Assign alias name \"", alias.AliasName, "\" to ", source, "(", r, ")"});
        };
        AliasStatement(put, source, r, alias.AliasName);
      }
      const std::string name = effectiveName(view, r);
      if (!alias.AliasUnits.empty() && !SameText(alias.AliasUnits, view.data->Units)) {
        const auto put = [&](const auto&... statement) {
          run.Put({statement...}, {"'Assign units \"", alias.AliasUnits, "\" to ", name});
        };
        UnitsStatement(put, name, alias.AliasUnits);
      }
      if (!calibrated) continue;
      if (family != Family::kBridge) run.needs.AnySiteCal = true;
      const auto scalingAlias = [&](std::string_view prefix, const std::string& array) {
        const auto put = [&](const auto&... statement) {
          run.Put({statement...}, {"'Assign alias name \"", prefix, name, "\" to ", array, "_", r});
        };
        ScalingAliasStatement(put, array, r, prefix, name);
      };
      scalingAlias("M$", view.names.mult);
      scalingAlias("O$", view.names.offset);
    }
  }
}

void generalVariables(ProgramRun& run) {
  const Configuration& config = run.store.Config;
  run.Put({"Public Flag(8)"}, {"'General Purpose Flags"});
  for (int group = 1; group <= kFlags; ++group) {
    if (FlaggedBlocks(run, group).empty()) continue;
    if (!run.needs.ZeroFlagUsed) run.Put({"Public ScanFlg1x(8) As Boolean"});
    run.needs.ZeroFlagUsed = true;
    run.Put({"Public FlagMode", group});
  }
  if (config.MonitorPower[kMonitorBattery] != 0) {
    run.Put({publicOrDim(run.store.PowerOut.Public), "BattVolt"}, {"'Battery voltage"});
    run.Put({"Units BattVolt = Volts"}, {"'Battery voltage units"});
  }
  if (run.needs.NeedLoopIndex) run.Put({"Dim I"}, {"'Declare I as a variable"});
  if (run.needs.NeedCount && !run.HostIsHarrier())
    run.Put({"Dim Count"}, {"'Declare Count as a variable"});
  if (config.MonitorPower[kMonitorPanel] != 0 || AnyReps(run.Blocks(Family::kTemp))) {
    run.Put({publicOrDim(run.store.TcRef.Public), "TRef"}, {"'Declare Reference Temp variable"});
  }
  if (config.TK40MQty > 0 && AnyReps(run.Blocks(Family::kTK40M))) {
    run.Put({publicOrDim(run.store.TK40MRef.Public), "TK40Ref(", config.TK40MQty, ")"},
            {"'Declare TK40M Reference Temp variable"});
    run.Put({"Units TK40Ref = Deg_C"}, {"'TK40M Reference units"});
  }
}

void portVariables(ProgramRun& run) {
  for (const PortSlot& slot : run.store.Ports.Slot) {
    const bool bytePort = slot.Ports[kPorts].Include != 0;
    if (slot.ReadMode != 0) {
      if (bytePort || hasPortOutput(slot.Output)) {
        run.Put({"Public ReadPort"}, {"'Declare ReadPort (1-8) variable"});
      }
    } else if (slot.ByteMode != 0 && bytePort) {
      run.Put({"Public WritPort"}, {"'Declare WritPort variable"});
    }
  }
  for (const PortSlot& slot : run.store.Ports.Slot) {
    if (slot.ByteMode != 0) continue;
    const auto included = [](const Port& port) { return port.Include != 0; };
    if (std::none_of(slot.Ports.begin(), slot.Ports.end() - 1, included)) continue;
    run.Put({"Public Port(", run.store.Config.TK40MQty < 1 ? 8 : 6, ")"},
            {"'Declare Port variable"});
  }
}

void exciteVariables(ProgramRun& run) {
  for (const auto& slot : run.store.ExciteOut.Slot) {
    for (int k = 1; k <= 2; ++k) {
      if (slot[k].Include == 0 || slot[k].DynamicStatic != 0) continue;
      run.Put({publicOrDim(run.store.ExciteOut.ExcitePublic), "Excite", k},
              {"'Declare Excitation variable"});
    }
  }
}

void fieldCalVariables(ProgramRun& run) {
  run.PutSectionTitle(" FIELD CALIBRATION GLOBAL VARIABLES ");
  run.Put({"Public CalFileLoaded As Boolean"});
  run.Put({"Public CalStartIdx"});
  if (run.needs.AnySiteCal) run.Put({"Const TwoPointMultOffs = 2"});
  if (run.needs.AnyZeroCal) run.Put({"Const ZeroingCalib = 0"});
  if (run.needs.StrainCalMask != 0) run.Put({"Const CalStrainZero = 10"});
  for (const StrainConstant& constant : kStrainConstants) {
    if ((run.needs.StrainCalMask & constant.bit) != 0) run.Put({constant.line});
  }
  run.Put({"Public FieldCalAvgs"});
}

}  // namespace

void SAVEDLD::PubVars() {
  run_.PutEmpty();
  run_.PutSectionTitle(" ALIASES & OTHER VARIABLES ");
  run_.PutEmpty();
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse}) {
    aliasLines(run_, family);
  }
  if (run_.store.Config.TK40MQty > 0) aliasLines(run_, Family::kTK40M);
  if (CanInUse(run_.store)) aliasLines(run_, Family::kCan);
  generalVariables(run_);
  portVariables(run_);
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = run_.store.Tables[t];
    if (table.TableOn == 0 || table.FlagMark <= 0) continue;
    run_.Put({"Public Flag", t, "Mark", table.FlagMark}, {"'Declare mark table counter variable"});
  }
  exciteVariables(run_);
  if (run_.NeedsFieldCal()) fieldCalVariables(run_);
}

}  // namespace ostrand
