// The styles of bridge blocks that the program treats differently.
#pragma once

#include "generator/families.h"
#include "model/channels.h"
#include "model/store.h"

namespace ostrand {

inline constexpr int kSixWireStyle = 1;      // full bridge of six wires, two ranges
inline constexpr int kSingleEndedStyle = 2;  // one terminal for each repetition

inline bool IsStrain(const BridgeBlockData& block) { return IsStrainStyle(block.Style); }

// Whether a block of any family is a bridge block of strain gauges.
inline bool IsStrain(const BlockView& view) {
  return view.Kind() == Family::kBridge &&
         IsStrain(static_cast<const BridgeBlockData&>(*view.data));
}

}  // namespace ostrand
