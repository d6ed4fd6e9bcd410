#include "calc/speed.h"

#include <array>
#include <cmath>

#include "calc/answers.h"
#include "text/mask.h"

namespace ostrand {
namespace {

constexpr double kPi = 3.14159265358979323846;

struct Measure {
  WheelMeasure measure;
  double circumference;  // of a wheel with a dimension of 1
};
constexpr std::array<Measure, 3> kMeasures = {{
    {WheelMeasure::kCircumference, 1},
    {WheelMeasure::kDiameter, kPi},
    {WheelMeasure::kRadius, 2 * kPi},
}};

struct Speed {
  WheelSpeed length;
  double size;  // of the length, in centimeters or inches
  std::string_view perHour, perMinute, perSecond;
};

struct System {
  double longLength;  // kilometer or mile, in centimeters or inches
  std::string_view lengthPerPulse;
  std::string_view pulsesPerLength;
  std::string_view pulsesMask;
  std::array<Speed, 3> speeds;
};
constexpr System kEnglish = {63360,
                             "inches/pulse",
                             "pulses/mile",
                             "#,###0.0#",
                             {{
                                 {WheelSpeed::kLong, 63360, "Mi/Hour", "", ""},
                                 {WheelSpeed::kMiddle, 12, "", "Ft/Min", "Ft/Sec"},
                                 {WheelSpeed::kShort, 1, "", "In/Min", "In/Sec"},
                             }}};
constexpr System kMetric = {100000,
                            "cm/pulse",
                            "pulses/km",
                            "#,##0.0#",
                            {{
                                {WheelSpeed::kLong, 100000, "KM/Hour", "", ""},
                                {WheelSpeed::kMiddle, 100, "", "M/Min", "M/Sec"},
                                {WheelSpeed::kShort, 1, "", "CM/Min", "CM/Sec"},
                            }}};

const System& systemOf(const SpeedCalcRecord& record) {
  return record.MKSSpd != 0 ? kMetric : kEnglish;
}

const Measure* measureOf(const SpeedCalcRecord& record) {
  for (const auto& row : kMeasures) {
    if (static_cast<i16>(row.measure) == record.SizeOption) return &row;
  }
  return nullptr;
}

const Speed* speedOf(const SpeedCalcRecord& record) {
  for (const auto& row : systemOf(record).speeds) {
    if (static_cast<i16>(row.length) == record.LengthOption) return &row;
  }
  return nullptr;
}

double secondsOf(const SpeedCalcRecord& record, const Speed& speed) {
  if (speed.length == WheelSpeed::kLong) return 3600;
  return record.UseMins != 0 ? 60 : 1;
}

}  // namespace

std::optional<SpeedAnswers> SolveSpeed(const SpeedCalcRecord& record) {
  const Measure* measure = measureOf(record);
  const Speed* speed = speedOf(record);
  if (measure == nullptr || speed == nullptr) return std::nullopt;
  const double pulsesPerTurn = TypedNumber(record.PulsesSec) * 60 / TypedNumber(record.RevSpeed);
  const double circumference = TypedNumber(record.WheelSize) * measure->circumference;
  const double length = circumference * TypedNumber(record.GearRatio[2]) /
                        (TypedNumber(record.GearRatio[1]) * pulsesPerTurn);
  const double multiplier = length * secondsOf(record, *speed) / speed->size;
  // At 0 turns a minute every pulse would have a length of 0.
  if (!std::isfinite(pulsesPerTurn) || !std::isfinite(length) || !std::isfinite(multiplier)) {
    return std::nullopt;
  }
  const System& system = systemOf(record);
  SpeedAnswers answers;
  answers.lengthPerPulse = FormatNumber(length, "0.0####");
  answers.multiplier = FormatNumber(multiplier, "#,##0.0#####");
  const double pulses = 1 / length * system.longLength;
  if (length > 0 && std::isfinite(pulses)) {
    answers.pulsesPerLength = FormatNumber(pulses, system.pulsesMask);
  }
  return answers;
}

SpeedUnits SpeedUnitsOf(const SpeedCalcRecord& record) {
  const System& system = systemOf(record);
  SpeedUnits units{system.lengthPerPulse, system.pulsesPerLength, ""};
  if (const Speed* speed = speedOf(record)) {
    units.multiplier = speed->length == WheelSpeed::kLong ? speed->perHour
                       : record.UseMins != 0              ? speed->perMinute
                                                          : speed->perSecond;
  }
  return units;
}

}  // namespace ostrand
