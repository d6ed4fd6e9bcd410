// The styles of bridge blocks that the program treats apart.
#pragma once

#include "model/store.h"

namespace ostrand {

inline constexpr int kSixWireStyle = 1;        // full bridge of six wires, two ranges
inline constexpr int kSingleEndedStyle = 2;    // one terminal for each repetition
inline constexpr int kQuarterStrainStyle = 5;  // strain; half and full bridge follow

inline bool IsStrain(const BridgeBlockData& block) { return block.Style >= kQuarterStrainStyle; }

}  // namespace ostrand
