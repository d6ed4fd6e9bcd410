// The styles of bridge blocks, with the numbers of `Style`.
#pragma once

namespace ostrand {

enum BridgeStyle : int {
  kFullBridge,       // of four wires
  kSixWireBridge,    // a full bridge, with two ranges
  kHalfBridge,       // on one single-ended channel
  kThreeWireBridge,  // a half bridge
  kResistanceBridge,
  kQuarterStrain,
  kHalfStrain,
  kFullStrain
};

inline bool IsStrainStyle(int style) { return style >= kQuarterStrain; }

}  // namespace ostrand
