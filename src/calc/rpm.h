// The RPM calculator: revolutions per minute from pulses per second of a shaft's sensor.
#pragma once

#include <optional>
#include <string_view>

#include "calc/answers.h"
#include "model/store.h"

namespace ostrand {

inline constexpr std::string_view kRpmUnits = "RPM";

// Nothing while `Pulses`, the pulses of a revolution, is 0.
std::optional<RateAnswers> SolveRpm(const RpmCalcRecord& record);

}  // namespace ostrand
