#include "blocks/bridge_rules.h"

#include <algorithm>
#include <limits>

#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHalfStrainInfo =
    "For use with strain gages only. Requires L.K.B. bridge completion module. One differential "
    "measurement, where the output is converted to micro-strain. Also provides for zero offset "
    "correction.";

constexpr i32 kMicros = 2;             // `IntegrationRange` of microseconds
constexpr i32 kOpenInputTime = 50;     // of the test for an open input
constexpr i32 kLongIntegration = 250;  // from here on a signal takes longer to settle

bool doubledByKind(int style) {
  return style == kSixWireBridge || style == kThreeWireBridge || style == kResistanceBridge;
}

i32 limited(std::int64_t micros) {
  return static_cast<i32>(std::min<std::int64_t>(micros, std::numeric_limits<i32>::max()));
}

std::int64_t measTime(const BridgeBlockData& block) {
  const i32 forced = ForcedIntegration(block.IntegrationRange);
  std::int64_t time = block.SettleTime;
  time += forced > 0 ? forced : block.Integration;
  if (block.ReverseMes != 0) time *= 2;
  if (doubledByKind(block.Style)) time *= 2;
  if (block.RevExcite != 0) time *= 2;
  const bool tested = forced > 0 || (block.IntegrationRange == kMicros && block.RangeNo > 1);
  if (tested && block.OpenSensDetect != 0) time += kOpenInputTime;
  return time;
}

}  // namespace

const std::array<BridgeKind, kBridgeStyles.size()> kBridgeKinds = {{
    {"  4 Wire Full Bridge (Vx)", "BrFull", "mVoltPVolt", 0,
     "One differential voltage measurement. The measurement result (X) is the measured voltage in "
     "mV divided by the excitation voltage in volts (mV/V).",
     "4 wire full bridge with voltage excitation"},
    {"  6 Wire Full Bridge (Vx)", "BrFull6W", "mVoltPVolt", 0,
     "Two differential voltage measurements. The measurement result (X) is the measured voltage in "
     "mV divided by the measured excitation voltage in volts (mV/V). V1 and V2 are made on "
     "sequential channels where the first channel measures the excitation voltage at the bridge.",
     "6 wire full bridge with voltage excitation"},
    {"  Half Bridge (Vx)", "BrHalf", "VoltsPVolt", 0,
     "One single-ended voltage measurement. The measurement result (X) is the measured voltage in "
     "mV divided by the excitation voltage in mV (V1 /Vx ).",
     "Half bridge with voltage excitation"},
    {"  3 Wire Half Bridge (Vx)", "BrHalf3W", "VoltsPVolt", 0,
     "Two single-ended measurements. Compensates for lead wire resistance, assuming resistance is "
     "the same in both leadwires. The measurement result (X) is the ratio Rs/Rf",
     "3 wire half bridge with voltage excitation"},
    {"  Resistance Bridge (Vx)", "BrHalf3W", "Ohms", 0,
     "Two single-ended voltage measurements. Compensates for lead wire resistance assuming "
     "resistance is the same in both wires. Requires model LKB310 L.K.B. bridge completion module. "
     "The measurement result (X) is converted to resistance.",
     "Resistance bridge with voltage excitation"},
    {"  1/4 Bridge Strain (Vx)", "BrFull", "uStrain", 1, kHalfStrainInfo,
     "Quarter strain bridge with voltage excitation"},
    {"  1/2 Bridge Strain (Vx)", "BrFull", "uStrain", 3, kHalfStrainInfo,
     "Half strain bridge with voltage excitation"},
    {"  Full Bridge Strain (Vx)", "BrFull", "uStrain", 4,
     "For use with strain gages only. One differential measurement, where the output is converted "
     "to micro-strain. Also provides for zero offset correction.",
     "Full strain bridge with voltage excitation"},
}};

bool CanReverseBridge(int style) {
  return IsDifferential(kBridgeStyles[static_cast<std::size_t>(style)].measType);
}

int ExcitePortsOfOthers(ChannelBlocks bridges, int block) {
  const auto own = static_cast<std::size_t>(block - 1);
  return ExciteSwitched(bridges.first(own)) + ExciteSwitched(bridges.subspan(own + 1));
}

ExciteFit FitExciteReps(int reps, int wanted, int portsOfOthers) {
  const int free = PanelExcitePorts - portsOfOthers;
  if (free <= 0) return {0, wanted};
  if (reps > wanted * free) return {reps, (reps + free - 1) / free};
  return {reps, wanted};
}

int BridgeSensorsTooMany(int missingChannels, const ChannelBlock& block) {
  const int channels = LiveBridgeCount(std::array{ChannelBlock{1, block.MeasType, block.Style}});
  const int perSensor = std::max(channels, 1);
  return std::max((missingChannels + perSensor - 1) / perSensor, 1);
}

int LastBridgeStart(bool differential, int reps) {
  return std::max(ChannelsFrom(differential, std::max(reps, 1)), 1);
}

i32 RoundedBridgeIntegration(i32 micros) {
  if (micros >= kMaxBridgeIntegration) return kMaxBridgeIntegration;
  if (micros > 750) return (micros / 500 + 1) * 500 + 250;  // may exceed the maximum by a step
  if (micros > 250) return 750;
  if (micros > 200) return 250;
  if (micros > 100) return 200;
  return 100;
}

i32 BridgeIntegrationUp(i32 micros) {
  if (micros >= kMaxBridgeIntegration) return kMaxBridgeIntegration;
  if (micros >= 250) return (micros / 500 + 1) * 500 + 250;
  if (micros >= 200) return 250;
  if (micros >= 100) return 200;
  return 100;
}

i32 BridgeIntegrationDown(i32 micros) {
  if (micros >= 16000) return kMaxBridgeIntegration;
  if (micros > 750) return micros - 500;
  if (micros > 250) return 250;
  if (micros > 200) return 200;
  return micros > 0 ? 100 : micros;
}

i32 MinBridgeSettling(i32 integration) { return integration < kLongIntegration ? 100 : 200; }

i32 TakenBridgeSettling(i32 settling, i32 integration) {
  return std::clamp(settling / 10 * 10, MinBridgeSettling(integration), kMaxBridgeSettling);
}

int BridgeRangeIndex(std::string_view range) {
  for (std::size_t at = 0; at < kAnalogRanges.size(); ++at) {
    if (SameText(kAnalogRanges[at].text, Trim(range))) return static_cast<int>(at);
  }
  return -1;
}

i32 BridgeMeasTime(const BridgeBlockData& block) {
  return block.Reps > 0 ? limited(measTime(block)) : 0;
}

i32 BridgeBlockTime(const BridgeBlockData& block) {
  return block.Reps > 0 ? limited(measTime(block) * block.Reps) : 0;
}

}  // namespace ostrand
