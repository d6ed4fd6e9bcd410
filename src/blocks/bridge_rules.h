// Tables and arithmetic for the screen of a bridge block. Times are in microseconds.
//
// Bridges have separate time and range rules, which differ in places from those of the other analog
// blocks.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "model/analog_config.h"
#include "model/channels.h"
#include "model/store.h"

namespace ostrand {

// A kind of bridge; its index in the list is the `Style` of a block.
struct BridgeKind {
  std::string_view caption;      // in the list
  std::string_view instruction;  // `Type`
  std::string_view units;
  i16 gageCode;  // 0 keeps the block's code
  std::string_view info;
  std::string_view status;  // for the status line
};
extern const std::array<BridgeKind, kBridgeStyles.size()> kBridgeKinds;

inline constexpr float kResistanceMult = 10000;

// Kinds whose result is in volts per volt, not a resistance.
inline bool IsHalfBridge(int style) { return style == kHalfBridge || style == kThreeWireBridge; }
// Whether a kind can be measured a second time with reversed inputs, which takes differential
// inputs.
bool CanReverseBridge(int style);

// Excitation ports used by all blocks except `block`, from 1.
int ExcitePortsOfOthers(ChannelBlocks bridges, int block);

// A block's sensors, and the number of sensors on one excitation.
struct ExciteFit {
  int reps;
  int exciteReps;
};
// Fits both into the ports that the other blocks leave: no sensors when there is no port left,
// otherwise as many per port as necessary. `wanted` is at least 1.
ExciteFit FitExciteReps(int reps, int wanted, int portsOfOthers);

// Sensors to remove from a block of that kind when this many single-ended channels are missing; at
// least 1.
int BridgeSensorsTooMany(int missingChannels, const ChannelBlock& block);

// The last channel on which a block can start; at least 1.
int LastBridgeStart(bool differential, int reps);

inline constexpr int kMinExcite = 30;  // millivolts
inline constexpr int kMaxExcite = 5000;

inline constexpr int kMaxBridgeIntegration = 15750;
i32 RoundedBridgeIntegration(i32 micros);
// One click up or down along 100, 200, 250, 750, 1250 and on in steps of 500. From less than a step
// below the maximum, a click up exceeds it and the next click returns below. A time below 1 does
// not change on the way down.
i32 BridgeIntegrationUp(i32 micros);
i32 BridgeIntegrationDown(i32 micros);

inline constexpr i32 kMaxBridgeSettling = 50000;
i32 MinBridgeSettling(i32 integration);
// Rounds down to a multiple of 10 and clamps to the limits for an integration time.
i32 TakenBridgeSettling(i32 settling, i32 integration);

// The index of a range among the inputs' ranges; -1 for any other text.
int BridgeRangeIndex(std::string_view range);

// The time of one sensor, and of all sensors; 0 without sensors.
i32 BridgeMeasTime(const BridgeBlockData& block);
i32 BridgeBlockTime(const BridgeBlockData& block);

}  // namespace ostrand
