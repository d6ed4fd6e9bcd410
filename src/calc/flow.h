// The flow calculator: gallons or liters in a time from pulses per second of a flow meter.
#pragma once

#include <optional>
#include <string_view>

#include "calc/answers.h"
#include "model/store.h"

namespace ostrand {

enum class CalFactor : i16 { kPerGallon = 1, kPerLiter = 2 };
enum class FlowSystem : i16 { kEnglish = 1, kMetric = 2 };  // `OutSystem`

// The time base, `OutUnits`; any other value is per second.
enum class FlowTime : i16 { kSecond = 1, kMinute = 2, kHour = 3 };

// Nothing while `Pulses` is 0. An unknown calibration or system converts nothing.
std::optional<RateAnswers> SolveFlow(const FlowCalcRecord& record);

// Units of the multiplier: "Gal/Min". An unknown system counts as that of the calibration.
std::string_view FlowUnits(const FlowCalcRecord& record);

}  // namespace ostrand
