#include "script/detours.h"

#include "model/bridge_style.h"

namespace ostrand {
namespace {

void burst(ProjectStore& on) { on.Scan.BurstMode = kTrue; }

void bytes(ProjectStore& on) {
  for (PortSlot& slot : on.Ports.Slot) slot.ByteMode = slot.ReadMode = 1;
}

// One block more, with the calculators of its kind.
template <class Group>
void addBlock(Group& group) {
  if (group.BlockCount < Group::kLast) ++group.BlockCount;
}

void addPulses(ProjectStore& on) { addBlock(on.PulseBlock[0]); }
void addVoltages(ProjectStore& on) { addBlock(on.VoltBlock); }
void addBridge(ProjectStore& on) { addBlock(on.BridgeBlock); }

void addResistances(ProjectStore& on) {
  addBridge(on);
  on.BridgeBlock[on.BridgeBlock.BlockCount].Style = kResistanceBridge;
}

// The field shows the first time base for one without an item, too.
void otherTimeBase(ProjectStore& on) { on.FlowCalc.OutUnits = on.FlowCalc.OutUnits == 2 ? 3 : 2; }

// Sensors that are there before the style follow its multiplier.
void fullBridges(ProjectStore& on) {
  for (BridgeBlockData& block : on.BridgeBlock.Blocks.Made()) {
    if (block.Style != kResistanceBridge) continue;
    block.Style = kFullBridge;
    block.Alias = {};
  }
}

// Calibration on site disables the calculators, from which some units come, and the scaling.
void notCalibrated(ProjectStore& on) {
  for (PulseBlockData& block : on.PulseBlock[0].Blocks.Made()) block.CalOnSite = 0;
  for (VoltBlockData& block : on.VoltBlock.Blocks.Made()) block.CalOnSite = 0;
}

// Multiplexers hide the ports that they use.
void noMultiplexers(ProjectStore& on) { on.Config.TK40MQty = 0; }

void batterySaver(ProjectStore& on) { on.Config.MonitorPower[kMonitorBatterySaver] = kTrue; }

constexpr Detour kDetours[] = {
    {"[SCAN SETUP] Burst", burst},
    {"[SCAN SETUP] FlagScan", burst},
    {"[PORT SETUP] Public", bytes},
    {"[PORT SETUP] DataResolution", bytes},
    {"[SPEED CALCULATOR]", addPulses},
    {"[MORESPEED CALCULATOR]", addPulses},
    {"[RPM CALCULATOR]", addPulses},
    {"[FLOW CALCULATOR]", addPulses},
    {"[FLOW CALCULATOR] OutUnits", otherTimeBase},
    {"[MULTOFF CALCULATOR]", addPulses},
    {"[MULTOFF CALCULATOR]", addVoltages},
    {"[MVPERVOLT CALCULATOR]", addBridge},
    {"[POT CALCULATOR]", addBridge},
    {"[RS CALCULATOR]", addResistances},
    {"[BRIDGE BLOCKS] AliasExcept", fullBridges, {}, true},
    {"[PULSE BLOCKS] Units", notCalibrated, {}, true},
    {"[VOLTAGE BLOCKS] Alias", notCalibrated, {}, true},
    {"[PORT SETUP] Include", noMultiplexers, {}, true},
    {"[CONFIGURATION] BattRetryMins", batterySaver},
    {"[TABLE SETUP] GroupWriteIf", nullptr, "frmWriteIf"},
};

}  // namespace

std::span<const Detour> Detours() { return kDetours; }

}  // namespace ostrand
