// The speed calculator for a sensor whose pulses in a known length are known.
#pragma once

#include <optional>
#include <string_view>

#include "calc/answers.h"
#include "model/store.h"

namespace ostrand {

// `InSystem` and `OutSystem`.
enum class SpeedSystem : i16 { kMetric = 1, kEnglish = 2 };

// `InUnits` and `OutUnits`. Speeds are per hour for the long unit; for the others per minute with
// `UseMins`, else per second.
enum class SpeedLength : i16 {
  kLong = 1,    // kilometer, mile
  kMiddle = 2,  // meter, foot
  kShort = 3    // centimeter, inch
};

// Nothing while `InPulses` is 0 or a system or unit is not one of those above.
std::optional<RateAnswers> SolveMoreSpeed(const MoreSpeedCalcRecord& record);

// The names of the units chosen; empty for a choice that is not one of those above.
std::string_view MoreSpeedInName(const MoreSpeedCalcRecord& record);        // "Pulses/kM"
std::string_view MoreSpeedOutName(const MoreSpeedCalcRecord& record);       // "Meter/Minute"
std::string_view MoreSpeedOutShortName(const MoreSpeedCalcRecord& record);  // "Meters/Min"

// The units returned to the setup. Those of the short length have the name of the long one.
std::string_view MoreSpeedUnits(const MoreSpeedCalcRecord& record);

}  // namespace ostrand
