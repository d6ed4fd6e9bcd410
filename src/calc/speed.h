// The speed calculator for a wheel that drives its pulse sensor through gears.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// The dimension given as `WheelSize`, in centimeters or inches (`SizeOption`).
enum class WheelMeasure : i16 { kCircumference = 1, kDiameter = 2, kRadius = 3 };

// The length of the speed (`LengthOption`): per hour for the long one; for the others per minute
// with `UseMins`, else per second.
enum class WheelSpeed : i16 {
  kLong = 1,    // kilometer, mile
  kMiddle = 2,  // meter, foot
  kShort = 3    // centimeter, inch
};

struct SpeedAnswers {
  std::string lengthPerPulse;
  std::optional<std::string> pulsesPerLength;  // nothing when the length is not above 0
  std::string multiplier;
};

// The sensor gives `PulsesSec` at `RevSpeed` turns a minute; its shaft turns GearRatio(1) times
// while the wheel turns GearRatio(2) times. Nothing while a divisor is 0 or an option is not one of
// those above.
std::optional<SpeedAnswers> SolveSpeed(const SpeedCalcRecord& record);

struct SpeedUnits {
  std::string_view lengthPerPulse;   // "cm/pulse"
  std::string_view pulsesPerLength;  // "pulses/km"
  std::string_view multiplier;       // "KM/Hour"; empty for an unknown option
};
SpeedUnits SpeedUnitsOf(const SpeedCalcRecord& record);

}  // namespace ostrand
