#include "model/analog_config.h"

#include <algorithm>
#include <array>

namespace ostrand {
namespace {

constexpr std::array<std::string_view, 4> kScaleUnits = {"Deg_C", "Deg_F", "Kelvin", "Rankine"};

// Modules of the larger family.
constexpr i32 kAnalogModule = 1;
constexpr i32 kHighVoltModule = 2;
constexpr i32 kCurrentModule = 4;

constexpr i32 kLongestInteg = 16000;
constexpr i32 kLongestSettle = 50000;

// Kinds measured on the analog inputs or through a multiplexer.
bool isAnalogBlock(OrvusDataObjTypes type) {
  return type == ORVUS_DOBJ_BLK_TEMP || type == ORVUS_DOBJ_BLK_VOLT ||
         type == ORVUS_DOBJ_BLK_BRIDGE || type == ORVUS_DOBJ_BLK_TK40M;
}

i32 moduleOf(OrvusDataObjTypes type, i32 otherwise) {
  if (isAnalogBlock(type)) return kAnalogModule;
  if (type == ORVUS_DOBJ_BLK_HV) return kHighVoltModule;
  if (type == ORVUS_DOBJ_BLK_HCM) return kCurrentModule;
  return otherwise;
}

// A typed time is rounded down to a step of the VK7300; 300 is rounded up to 750, 800 down to 500.
i32 roundedInteg(i32 micros) {
  if (micros >= kLongestInteg) return kLongestInteg;
  if (micros > 750) return micros / 500 * 500;
  if (micros > 250) return 750;
  if (micros > 200) return 250;
  if (micros > 100) return 200;
  return 100;
}

// The next step of a time in 100, 200, 250, 500, 1000 and so on.
i32 steppedInteg(i32 micros, bool increase) {
  if (increase) {
    if (micros < 100) return 100;
    if (micros < 200) return 200;
    if (micros < 250) return 250;
    return (micros / 500 + 1) * 500;
  }
  if (micros < 200) return 100;
  if (micros < 500) return 200;
  return (micros / 500 - 1) * 500;
}

}  // namespace

i32 ForcedIntegration(i32 integrationCode) {
  if (integrationCode == ORVUS_MEAS_INTEG_50HZ) return 20000;
  return integrationCode == ORVUS_MEAS_INTEG_60HZ ? 16670 : 0;
}

cAnalogConfig::cAnalogConfig(const MeasurementOptions& options)
    : InputType(options.DefaultInputType) {
  IntegCode(options.DefaultIntegrationCode);
}

std::unique_ptr<cAnalogConfig> cAnalogConfig::Clone() const {
  std::unique_ptr<cAnalogConfig> copy(new cAnalogConfig(*this));
  copy->TempScaleChange = nullptr;
  copy->MeasureTypeChange = nullptr;
  return copy;
}

void cAnalogConfig::SetMode(i32 loggerType, OrvusDataObjTypes dataObjType) {
  loggerType_ = loggerType;
  dataObjType_ = dataObjType;
  Bridge.reset();
  if (dataObjType == ORVUS_DOBJ_BLK_BRIDGE) Bridge.emplace();
  if (dataObjType == ORVUS_DOBJ_BLK_TEMP || dataObjType == ORVUS_DOBJ_BLK_TK40M) {
    MeasureType(ORVUS_MEASURE_TC);
    TCType = ORVUS_TCTYPE_T;
    TempScale(ORVUS_TEMPSCALE_F);
  }
  if (dataObjType == ORVUS_DOBJ_BLK_BRIDGE || dataObjType == ORVUS_DOBJ_BLK_TK40M) {
    InputType = ORVUS_INPUT_DIFF;
  }
  if (loggerType == kLoggerTypeLarge) {
    device_ = moduleOf(dataObjType, device_);
    IntegTime(dataObjType == ORVUS_DOBJ_BLK_TK40M ? 70 : 40);
    SettleTime(30);
  } else if (loggerType == kLoggerTypeVK7300) {
    device_ = ORVUS_MEASDEV_VK7300;
    IntegTime(250);
    SettleTime(200);
  }
  if (isAnalogBlock(dataObjType)) OpenSens = true;
  setDefaultRange();
}

void cAnalogConfig::setDefaultRange() {
  switch (dataObjType_) {
    case ORVUS_DOBJ_BLK_TEMP:
    case ORVUS_DOBJ_BLK_VOLT:
    case ORVUS_DOBJ_BLK_TK40M:
      InputRange = "50 mV";
      break;
    case ORVUS_DOBJ_BLK_BRIDGE:
      InputRange = "200 mV";
      break;
    case ORVUS_DOBJ_BLK_HV:
      InputRange = "500 mV";
      break;
    case ORVUS_DOBJ_BLK_HCM:
      InputRange = "2 Volts";
      break;
    default:
      break;
  }
}

i32 cAnalogConfig::IntegIncDec(bool increase) {
  if (device_ == kCurrentModule) return integTime_;
  i32 next = std::clamp(integTime_, 0, 2 * kLongestInteg);  // wider than the limits, safe to step
  if (loggerType_ == kLoggerTypeLarge) {
    next += increase ? 10 : -10;
  } else {
    next = steppedInteg(next, increase);
  }
  integTime_ = std::clamp(next, 100, kLongestInteg);
  return integTime_;
}

void cAnalogConfig::SettleIncDec(bool increase) {
  const i32 now = std::clamp(settleTime_, 0, 2 * kLongestSettle) / 10 * 10;
  SettleTime(now + (increase ? 10 : -10));
}

std::string_view cAnalogConfig::InputTypeString() const {
  if (InputType == ORVUS_INPUT_DIFF) return "Diff";
  return InputType == ORVUS_INPUT_SE ? "SE" : "??";
}

void cAnalogConfig::InputTypeString(std::string_view text) {
  InputType = text == "SE" ? ORVUS_INPUT_SE : ORVUS_INPUT_DIFF;
}

void cAnalogConfig::IntegCode(i32 code) {
  integCode_ = code == ORVUS_MEAS_INTEG_50HZ || code == ORVUS_MEAS_INTEG_60HZ
                   ? static_cast<OrvusMeasIntegrationCodes>(code)
                   : ORVUS_MEAS_INTEG_USECS;
}

void cAnalogConfig::IntegTime(i32 micros) {
  if (const i32 forced = ForcedIntegration(integCode_); forced > 0) {
    micros = forced;
  } else if (device_ == kAnalogModule || device_ == kHighVoltModule) {
    micros = micros / 10 * 10;
  } else if (device_ == ORVUS_MEASDEV_VK7300) {
    micros = roundedInteg(micros);
  }
  if (micros < 0 && device_ != kCurrentModule) return;
  integTime_ = micros;
}

void cAnalogConfig::RestoreTimes(i32 integMicros, i32 settleMicros) {
  integTime_ = integMicros;
  settleTime_ = settleMicros;
}

void cAnalogConfig::MeasureType(OrvusAnalogTypes type) {
  if (type == measureType_) return;
  measureType_ = type;
  if (type == ORVUS_MEASURE_TC) {
    ZeroFlag = 0;
    SiteCal = 0;
    if (tempScale_ == ORVUS_TEMPSCALE_NONE) TempScale(ORVUS_TEMPSCALE_F);
  } else if (type == ORVUS_MEASURE_VOLT) {
    TempScale(ORVUS_TEMPSCALE_NONE);
  }
  setDefaultRange();
  if (MeasureTypeChange) MeasureTypeChange(type);
}

i32 cAnalogConfig::RangeIndex() const {
  if (device_ != ORVUS_MEASDEV_VK7300) return -1;
  const auto found = std::find_if(kAnalogRanges.begin(), kAnalogRanges.end(),
                                  [&](const auto& range) { return range.text == InputRange; });
  return found == kAnalogRanges.end() ? -1 : static_cast<i32>(found - kAnalogRanges.begin());
}

void cAnalogConfig::RangeIndex(i32 index) {
  if (device_ != ORVUS_MEASDEV_VK7300 || index < 0 ||
      index >= static_cast<i32>(kAnalogRanges.size())) {
    return;
  }
  InputRange = kAnalogRanges[static_cast<std::size_t>(index)].text;
}

bool cAnalogConfig::OpenSensIsValid() const {
  const i32 index = RangeIndex();
  return index >= 0 && kAnalogRanges[static_cast<std::size_t>(index)].openSensor;
}

i32 cAnalogConfig::RangeCode() const {
  const i32 index = RangeIndex();
  if (index < 0) return -1;
  return AnalogRangeCode(kAnalogRanges[static_cast<std::size_t>(index)], OpenSens);
}

i32 cAnalogConfig::leastSettleTime() const {
  switch (device_) {
    case ORVUS_MEASDEV_VK7300:
      return integTime_ < 250 && InputRange != "20 mV" ? 100 : 200;
    case kAnalogModule:
      return InputRange == "200 mV" || InputRange == "50 mV" ? 20 : 10;
    case kHighVoltModule:
      return InputRange == "2 Volts" || InputRange == "500 mV" ? 30 : 20;
    default:
      return 0;
  }
}

void cAnalogConfig::SettleTime(i32 micros) {
  if (device_ == ORVUS_MEASDEV_NONE) {
    settleTime_ = micros;
    return;
  }
  settleTime_ = std::clamp(micros / 10 * 10, leastSettleTime(), kLongestSettle);
}

void cAnalogConfig::TempScale(OrvusTemperatureScales scale) {
  const bool changed = scale != tempScale_;
  tempScale_ = scale;
  if (changed && measureType_ == ORVUS_MEASURE_TC && TempScaleChange) TempScaleChange(scale);
}

std::string_view cAnalogConfig::TempScaleUnits() const {
  const bool known = tempScale_ >= 0 && tempScale_ < static_cast<i32>(kScaleUnits.size());
  return known ? kScaleUnits[static_cast<std::size_t>(tempScale_)] : std::string_view{};
}

void cAnalogConfig::TempScaleUnits(std::string_view units) {
  const auto found = std::find(kScaleUnits.begin(), kScaleUnits.end(), units);
  TempScale(found == kScaleUnits.end()
                ? ORVUS_TEMPSCALE_NONE
                : static_cast<OrvusTemperatureScales>(found - kScaleUnits.begin()));
}

}  // namespace ostrand
