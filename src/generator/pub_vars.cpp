// Aliases, units of repetitions and the general variables of the program.
#include <algorithm>
#include <array>

#include "generator/bridge_style.h"
#include "generator/savedld.h"
#include "text/strings.h"

namespace ostrand {
namespace {

std::string_view publicOrDim(flag isPublic) { return isPublic != 0 ? "Public " : "Dim "; }

// What the program calls a repetition that may have an alias.
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

}  // namespace

void SAVEDLD::PubVars() {
  PutEmpty();
  PutSectionTitle(" ALIASES & OTHER VARIABLES ");
  PutEmpty();
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse}) {
    aliasLines(family);
  }
  if (store_.Config.TK40MQty > 0) aliasLines(Family::kTK40M);
  if (canInUse()) aliasLines(Family::kCan);
  generalVariables();
  portVariables();
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store_.Tables[t];
    if (table.TableOn == 0 || table.FlagMark <= 0) continue;
    Put({"Public Flag", t, "Mark", table.FlagMark}, {"'Declare mark table counter variable"});
  }
  exciteVariables();
  if (needsFieldCal()) fieldCalVariables();
}

void SAVEDLD::aliasLines(Family family) {
  for (const BlockView& view : blocksOf(family)) {
    if (family == Family::kCan && store_.Can.Item[view.n].Enabled == 0) continue;
    const bool calibrated = view.data->CalOnSite != 0 &&
                            !(family == Family::kBridge && IsStrain(store_.BridgeBlock[view.n]));
    const std::string& source = view.names.source;
    for (int r = 1; r <= view.data->Reps; ++r) {
      const RepAlias& alias = view.Alias(r);
      if (!alias.AliasName.empty()) {
        const auto put = [&](const auto&... statement) {
          Put({statement...},
              {"'Assign alias name \"", alias.AliasName, "\" to ", source, "(", r, ")"});
        };
        AliasStatement(put, source, r, alias.AliasName);
      }
      const std::string name = effectiveName(view, r);
      if (!alias.AliasUnits.empty() && !SameText(alias.AliasUnits, view.data->Units)) {
        const auto put = [&](const auto&... statement) {
          Put({statement...}, {"'Assign units \"", alias.AliasUnits, "\" to ", name});
        };
        UnitsStatement(put, name, alias.AliasUnits);
      }
      if (!calibrated) continue;
      if (family != Family::kBridge) needs_.AnySiteCal = true;
      const auto scalingAlias = [&](std::string_view prefix, const std::string& array) {
        const auto put = [&](const auto&... statement) {
          Put({statement...}, {"'Assign alias name \"", prefix, name, "\" to ", array, "_", r});
        };
        ScalingAliasStatement(put, array, r, prefix, name);
      };
      scalingAlias("M$", view.names.mult);
      scalingAlias("O$", view.names.offset);
    }
  }
}

void SAVEDLD::generalVariables() {
  const auto blocksHaveReps = [this](Family family) {
    const auto blocks = blocksOf(family);
    return std::any_of(blocks.begin(), blocks.end(), HasReps);
  };
  const Configuration& config = store_.Config;
  Put({"Public Flag(8)"}, {"'General Purpose Flags"});
  for (int group = 1; group <= kFlags; ++group) {
    if (!zeroGroupUsed(group)) continue;
    if (!needs_.ZeroFlagUsed) Put({"Public ScanFlg1x(8) As Boolean"});
    needs_.ZeroFlagUsed = true;
    Put({"Public FlagMode", group});
  }
  if (config.MonitorPower[kMonitorBattery] != 0) {
    Put({publicOrDim(store_.PowerOut.Public), "BattVolt"}, {"'Battery voltage"});
    Put({"Units BattVolt = Volts"}, {"'Battery voltage units"});
  }
  if (needs_.NeedLoopIndex) Put({"Dim I"}, {"'Declare I as a variable"});
  if (needs_.NeedCount && !hostIsHarrier()) Put({"Dim Count"}, {"'Declare Count as a variable"});
  if (config.MonitorPower[kMonitorPanel] != 0 || blocksHaveReps(Family::kTemp)) {
    Put({publicOrDim(store_.TcRef.Public), "TRef"}, {"'Declare Reference Temp variable"});
  }
  if (config.TK40MQty > 0 && blocksHaveReps(Family::kTK40M)) {
    Put({publicOrDim(store_.TK40MRef.Public), "TK40Ref(", config.TK40MQty, ")"},
        {"'Declare TK40M Reference Temp variable"});
    Put({"Units TK40Ref = Deg_C"}, {"'TK40M Reference units"});
  }
}

void SAVEDLD::portVariables() {
  for (const PortSlot& slot : store_.Ports.Slot) {
    const bool bytePort = slot.Ports[kPorts].Include != 0;
    if (slot.ReadMode != 0) {
      if (bytePort || hasPortOutput(slot.Output)) {
        Put({"Public ReadPort"}, {"'Declare ReadPort (1-8) variable"});
      }
    } else if (slot.ByteMode != 0 && bytePort) {
      Put({"Public WritPort"}, {"'Declare WritPort variable"});
    }
  }
  for (const PortSlot& slot : store_.Ports.Slot) {
    if (slot.ByteMode != 0) continue;
    const auto included = [](const Port& port) { return port.Include != 0; };
    if (std::none_of(slot.Ports.begin(), slot.Ports.end() - 1, included)) continue;
    Put({"Public Port(", store_.Config.TK40MQty < 1 ? 8 : 6, ")"}, {"'Declare Port variable"});
  }
}

void SAVEDLD::exciteVariables() {
  for (const auto& slot : store_.ExciteOut.Slot) {
    for (int k = 1; k <= 2; ++k) {
      if (slot[k].Include == 0 || slot[k].DynamicStatic != 0) continue;
      Put({publicOrDim(store_.ExciteOut.ExcitePublic), "Excite", k},
          {"'Declare Excitation variable"});
    }
  }
}

void SAVEDLD::fieldCalVariables() {
  PutSectionTitle(" FIELD CALIBRATION GLOBAL VARIABLES ");
  Put({"Public CalFileLoaded As Boolean"});
  Put({"Public CalStartIdx"});
  if (needs_.AnySiteCal) Put({"Const TwoPointMultOffs = 2"});
  if (needs_.AnyZeroCal) Put({"Const ZeroingCalib = 0"});
  if (needs_.StrainCalMask != 0) Put({"Const CalStrainZero = 10"});
  for (const StrainConstant& constant : kStrainConstants) {
    if ((needs_.StrainCalMask & constant.bit) != 0) Put({constant.line});
  }
  Put({"Public FieldCalAvgs"});
}

}  // namespace ostrand
