// How the controls of the block screens are shown.
#pragma once

#include <span>
#include <string_view>

#include "controls/faces.h"

namespace ostrand {

// Why openers of a block's setup, and related controls, are disabled.
inline constexpr std::string_view kNoSensors = "The block has no sensors.";
inline constexpr std::string_view kCalibratedOnSite =
    "A calibration on site finds multiplier and offset.";
// Why a start channel is disabled.
inline constexpr std::string_view kAutomaticStart =
    "Channels are selected automatically (Configuration).";

extern const std::span<const Face> kBlockListFaces;
extern const std::span<const Face> kFreeChannelFaces;  // beside a list of blocks
extern const std::span<const Face> kAnalogSetupFaces;  // shared by the analog setups
extern const std::span<const Face> kBrdgSetupFaces;
extern const std::span<const Face> kPulseSetupFaces;

}  // namespace ostrand
