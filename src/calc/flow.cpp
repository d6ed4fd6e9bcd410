#include "calc/flow.h"

#include <array>
#include <cmath>

namespace ostrand {
namespace {

constexpr double kLitersPerGallon = 3.785411784;  // US gallon, by definition

struct TimeBase {
  FlowTime time;
  double seconds;
  std::string_view english;
  std::string_view metric;
};
constexpr std::array<TimeBase, 3> kTimeBases = {{
    {FlowTime::kSecond, 1, "Gal/Sec", "L/Sec"},
    {FlowTime::kMinute, 60, "Gal/Min", "L/Min"},
    {FlowTime::kHour, 3600, "Gal/Hour", "L/Hour"},
}};

const TimeBase& timeBaseOf(const FlowCalcRecord& record) {
  for (const auto& base : kTimeBases) {
    if (static_cast<FlowTime>(record.OutUnits) == base.time) return base;
  }
  return kTimeBases[0];
}

bool isMetric(const FlowCalcRecord& record) {
  switch (static_cast<FlowSystem>(record.OutSystem)) {
    case FlowSystem::kEnglish:
      return false;
    case FlowSystem::kMetric:
      return true;
  }
  return static_cast<CalFactor>(record.CalFactor) == CalFactor::kPerLiter;
}

}  // namespace

std::optional<RateAnswers> SolveFlow(const FlowCalcRecord& record) {
  if (!std::isfinite(record.Pulses)) return std::nullopt;
  const auto factor = static_cast<CalFactor>(record.CalFactor);
  double multiplier = 1 / record.Pulses * timeBaseOf(record).seconds;
  if (factor == CalFactor::kPerGallon && isMetric(record)) multiplier *= kLitersPerGallon;
  if (factor == CalFactor::kPerLiter && !isMetric(record)) multiplier /= kLitersPerGallon;
  return RateAnswersOf(multiplier, "#,##0.0#####", record.WhatIf, "#,##0.0##");
}

std::string_view FlowUnits(const FlowCalcRecord& record) {
  const TimeBase& base = timeBaseOf(record);
  return isMetric(record) ? base.metric : base.english;
}

}  // namespace ostrand
