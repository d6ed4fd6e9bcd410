// How the controls of the table screens are shown.
#pragma once

#include <span>
#include <string_view>

#include "controls/faces.h"

namespace ostrand {

extern const std::span<const Face> kOutIntFaces;
extern const std::span<const Face> kTableTimesFaces;
extern const std::span<const Face> kTrigTableFaces;
extern const std::span<const Face> kWriteIfFaces;
extern const std::span<const Face> kHistoFaces;  // shared by histogram, rainflow and level
extern const std::span<const Face> kHistogramFaces;
extern const std::span<const Face> kRainHistoFaces;
extern const std::span<const Face> kLevelFaces;

// Why the stop conditions of a trigger are disabled.
inline constexpr std::string_view kNeedsDualTrigger = "Needs Single Trigger off.";

}  // namespace ostrand
