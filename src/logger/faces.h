// How the controls of the logger's screens are shown.
#pragma once

#include <span>
#include <string_view>

#include "controls/faces.h"

namespace ostrand {

extern const std::span<const Face> kConfigFaces;  // its panels included
extern const std::span<const Face> kExecuteFaces;
extern const std::span<const Face> kFlagsFaces;
extern const std::span<const Face> kPortsFaces;
extern const std::span<const Face> kPortTablesFaces;
extern const std::span<const Face> kExciteFaces;

// Groups with conditions.
inline constexpr std::string_view kConditionalPowerOff = "Conditional power off";
inline constexpr std::string_view kFlagsTable = "Flags";
inline constexpr std::string_view kPortsTable = "Ports";
inline constexpr std::string_view kPortByte = "Ports 1-8 as a byte";

// Why conditions are disabled.
inline constexpr std::string_view kNeedsPowerOff = "Needs Conditional Power Off.";
inline constexpr std::string_view kNeedsBits = "Needs the port mode Bit-Write.";
inline constexpr std::string_view kNeedsByte = "Needs the port mode Byte.";
inline constexpr std::string_view kNeedsDynamic = "Needs the mode Dynamic.";

}  // namespace ostrand
