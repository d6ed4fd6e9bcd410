#include "calc/more_speed.h"

#include <array>

namespace ostrand {
namespace {

// Lengths are in tenths of a millimeter, which are whole numbers: an inch is 25.4 mm, a mile 63360
// inches.
struct InUnit {
  SpeedSystem system;
  SpeedLength length;
  double size;
  std::string_view name;
};
constexpr std::array<InUnit, 6> kInUnits = {{
    {SpeedSystem::kMetric, SpeedLength::kLong, 10000000, "Pulses/kM"},
    {SpeedSystem::kMetric, SpeedLength::kMiddle, 10000, "Pulses/Meter"},
    {SpeedSystem::kMetric, SpeedLength::kShort, 100, "Pulses/cM"},
    {SpeedSystem::kEnglish, SpeedLength::kLong, 16093440, "Pulses/Mile"},
    {SpeedSystem::kEnglish, SpeedLength::kMiddle, 3048, "Pulses/Foot"},
    {SpeedSystem::kEnglish, SpeedLength::kShort, 254, "Pulses/Inch"},
}};

struct OutUnit {
  SpeedSystem system;
  SpeedLength length;
  double seconds;  // of the time base
  std::string_view name;
  std::string_view shortName;
  std::string_view units;  // returned to the setup
};
constexpr std::array<OutUnit, 10> kOutUnits = {{
    {SpeedSystem::kMetric, SpeedLength::kLong, 3600, "KM/Hour", "kM/Hour", "KM/Hour"},
    {SpeedSystem::kMetric, SpeedLength::kMiddle, 60, "Meter/Minute", "Meters/Min", "M/Min"},
    {SpeedSystem::kMetric, SpeedLength::kShort, 60, "CM/Minute", "cM/Min", "KM/Hour"},
    {SpeedSystem::kMetric, SpeedLength::kMiddle, 1, "Meter/Second", "Meters/Sec", "M/Sec"},
    {SpeedSystem::kMetric, SpeedLength::kShort, 1, "CM/Second", "cM/Sec", "KM/Hour"},
    {SpeedSystem::kEnglish, SpeedLength::kLong, 3600, "Miles/Hour", "Miles/Hour", "Mi/Hour"},
    {SpeedSystem::kEnglish, SpeedLength::kMiddle, 60, "Feet/Minute", "Feet/Min", "Ft/Min"},
    {SpeedSystem::kEnglish, SpeedLength::kShort, 60, "Inches/Minute", "Inches/Min", "Mi/Hour"},
    {SpeedSystem::kEnglish, SpeedLength::kMiddle, 1, "Feet/Second", "Feet/Sec", "Ft/Sec"},
    {SpeedSystem::kEnglish, SpeedLength::kShort, 1, "Inches/Second", "Inches/Sec", "Mi/Hour"},
}};

const InUnit* inUnitOf(i16 system, i16 length) {
  for (const auto& unit : kInUnits) {
    if (static_cast<i16>(unit.system) == system && static_cast<i16>(unit.length) == length) {
      return &unit;
    }
  }
  return nullptr;
}

const InUnit* inUnitOf(const MoreSpeedCalcRecord& record) {
  return inUnitOf(record.InSystem, record.InUnits);
}

const OutUnit* outUnitOf(const MoreSpeedCalcRecord& record) {
  const double seconds = record.UseMins != 0 ? 60 : 1;
  for (const auto& unit : kOutUnits) {
    if (static_cast<i16>(unit.system) == record.OutSystem &&
        static_cast<i16>(unit.length) == record.OutUnits &&
        (unit.length == SpeedLength::kLong || unit.seconds == seconds)) {
      return &unit;
    }
  }
  return nullptr;
}

}  // namespace

std::optional<RateAnswers> SolveMoreSpeed(const MoreSpeedCalcRecord& record) {
  const InUnit* in = inUnitOf(record);
  const OutUnit* out = outUnitOf(record);
  if (in == nullptr || out == nullptr) return std::nullopt;
  const double outSize = inUnitOf(record.OutSystem, record.OutUnits)->size;
  const double multiplier = in->size * out->seconds / (outSize * TypedNumber(record.InPulses));
  return RateAnswersOf(multiplier, "#,##0.0#####", record.WhatIf, "#,##0.0##");
}

std::string_view MoreSpeedInName(const MoreSpeedCalcRecord& record) {
  const InUnit* unit = inUnitOf(record);
  return unit == nullptr ? "" : unit->name;
}

std::string_view MoreSpeedOutName(const MoreSpeedCalcRecord& record) {
  const OutUnit* unit = outUnitOf(record);
  return unit == nullptr ? "" : unit->name;
}

std::string_view MoreSpeedOutShortName(const MoreSpeedCalcRecord& record) {
  const OutUnit* unit = outUnitOf(record);
  return unit == nullptr ? "" : unit->shortName;
}

std::string_view MoreSpeedUnits(const MoreSpeedCalcRecord& record) {
  const OutUnit* unit = outUnitOf(record);
  return unit == nullptr ? "" : unit->units;
}

}  // namespace ostrand
