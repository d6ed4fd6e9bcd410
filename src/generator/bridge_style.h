// Strain gauges among the blocks.
#pragma once

#include "generator/families.h"
#include "model/bridge_style.h"
#include "model/store.h"

namespace ostrand {

inline bool IsStrain(const BridgeBlockData& block) { return IsStrainStyle(block.Style); }

// Whether a block of any family is a bridge block of strain gauges.
inline bool IsStrain(const BlockView& view) {
  return view.Kind() == Family::kBridge &&
         IsStrain(static_cast<const BridgeBlockData&>(*view.data));
}

}  // namespace ostrand
