#include "model/orvus_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "model/names.h"
#include "model/record_layout.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::size_t kLongestName = 12;

struct Scaling {
  float mult;
  float offset;
};

// Degrees Celsius to each of OrvusTemperatureScales.
constexpr std::array<Scaling, 4> kScalings = {{
    {1, 0},
    {1.8F, 32},
    {1, 273.16F},
    {1.8F, 491.72F},
}};

bool hasAnalog(OrvusDataObjTypes type) {
  switch (type) {
    case ORVUS_DOBJ_BLK_TEMP:
    case ORVUS_DOBJ_BLK_VOLT:
    case ORVUS_DOBJ_BLK_BRIDGE:
    case ORVUS_DOBJ_BLK_HV:
    case ORVUS_DOBJ_BLK_HCM:
    case ORVUS_DOBJ_BLK_TK40M:
      return true;
    default:
      return false;
  }
}

std::string_view unitsOf(OrvusDataObjTypes type) {
  switch (type) {
    case ORVUS_DOBJ_BLK_VOLT:
    case ORVUS_DOBJ_BLK_HV:
    case ORVUS_DOBJ_BLK_FILT:
    case ORVUS_DOBJ_BLK_HCM:
    case ORVUS_DOBJ_BLK_TK40M:
      return "mVolts";
    case ORVUS_DOBJ_BLK_BRIDGE:
      return "Volts";
    case ORVUS_DOBJ_BLK_PULSE:
      return "Hz";
    default:
      return "";
  }
}

// Calculated as decimals, so that steps of 0.1 stay on tenths.
float stepped(float value, float step) {
  const double by = DecimalValue(step);
  if (by == 0 || !std::isfinite(by)) return value;
  const double size = std::fabs(by);
  const double next = std::floor((DecimalValue(value) + by) / size + 0.5) * size;
  std::string mask = "0";
  const std::string fraction = FormatNumber(size, "0." + std::string(50, '#'));
  const std::size_t decimals = fraction.size() - fraction.find('.') - 1;
  if (decimals > 0) mask += "." + std::string(decimals, '0');
  return ToSingle(FormatNumber(next, mask)).value_or(value);
}

i32 limitedMicros(std::int64_t micros) {
  return static_cast<i32>(std::clamp<std::int64_t>(micros, std::numeric_limits<i32>::min(),
                                                   std::numeric_limits<i32>::max()));
}

// The selections of an item of a row; nothing if the row doesn't contain it.
template <class Items>
const OutputSet* outputIn(const Items& items, int at) {
  return Items::Holds(at) ? &items[at].Output : nullptr;
}

}  // namespace

cOrvusData::cOrvusData(const MeasurementOptions& options)
    : DataType(options.DefaultDataType), options_(options) {}

void cOrvusData::Analog(std::unique_ptr<cAnalogConfig> analog) {
  analog_ = std::move(analog);
  if (!analog_) return;
  analog_->TempScaleChange = [this](OrvusTemperatureScales scale) { onTempScale(scale); };
  analog_->MeasureTypeChange = [this](OrvusAnalogTypes type) { onMeasureType(type); };
}

std::unique_ptr<cOrvusData> cOrvusData::Clone() const {
  auto copy = std::make_unique<cOrvusData>(options_);
  copy->Can = Can;
  copy->Reps = Reps;
  copy->DataType = DataType;
  copy->IsPublic = IsPublic;
  copy->StartChannel = StartChannel;
  copy->Alias = Alias;
  copy->DefaultUnits = DefaultUnits;
  copy->DefaultMult = DefaultMult;
  copy->DefaultOffset = DefaultOffset;
  if (analog_) copy->Analog(analog_->Clone());
  copy->dataObjType_ = dataObjType_;
  copy->loggerType_ = loggerType_;
  copy->block_ = block_;
  copy->module_ = module_;
  copy->customName_ = customName_;
  return copy;
}

void cOrvusData::SetMode(i32 loggerType, OrvusDataObjTypes dataObjType, i16 block, i16 module) {
  loggerType_ = loggerType;
  dataObjType_ = dataObjType;
  block_ = block;
  module_ = module;
  Reps = 0;
  DefaultMult = 1;
  StartChannel = 1;
  DefaultUnits = unitsOf(dataObjType);
  analog_.reset();
  if (hasAnalog(dataObjType)) {
    Analog(std::make_unique<cAnalogConfig>(options_));
    analog_->SetMode(loggerType, dataObjType);  // thermocouples set the units of their scale
  }
  // The kind determines the resolution, whatever the option for new objects.
  Can.reset();
  if (dataObjType == ORVUS_DOBJ_BLK_QBCAN) Can.emplace();
  DataType = Can ? ORVUS_OUTDATA_IEEE4 : ORVUS_OUTDATA_FP2;
}

void cOrvusData::onTempScale(OrvusTemperatureScales scale) {
  if (scale >= 0 && scale < static_cast<int>(kScalings.size())) {
    const Scaling& scaling = kScalings[static_cast<std::size_t>(scale)];
    DefaultMult = scaling.mult;
    DefaultOffset = scaling.offset;
  }
  DefaultUnits = analog_->TempScaleUnits();
}

void cOrvusData::onMeasureType(OrvusAnalogTypes type) {
  if (type != ORVUS_MEASURE_VOLT) return;
  if (dataObjType_ != ORVUS_DOBJ_BLK_HCM && dataObjType_ != ORVUS_DOBJ_BLK_TK40M) return;
  DefaultMult = 1;
  DefaultOffset = 0;
  DefaultUnits = "mVolts";
}

void cOrvusData::MultIncDec(float step) { DefaultMult = stepped(DefaultMult, step); }

void cOrvusData::OffsetIncDec(float step) { DefaultOffset = stepped(DefaultOffset, step); }

std::string_view cOrvusData::DataTypeString() const {
  if (DataType == ORVUS_OUTDATA_FP2) return "FP2";
  return DataType == ORVUS_OUTDATA_IEEE4 ? "IEEE4" : "??";
}

void cOrvusData::DataTypeString(std::string_view text) {
  DataType = text == "FP2"     ? ORVUS_OUTDATA_FP2
             : text == "IEEE4" ? ORVUS_OUTDATA_IEEE4
                               : ORVUS_OUTDATA_NONE;
}

std::string cOrvusData::DefaultName() const {
  return customName_.empty() ? AutomaticName(dataObjType_, block_) : customName_;
}

void cOrvusData::DefaultName(std::string_view name) {
  if (name != DefaultName()) customName_ = name.substr(0, kLongestName);
}

const OutputSet* cOrvusData::outputOf(const ProjectStore& store) const {
  switch (dataObjType_) {
    case ORVUS_DOBJ_SYS_BATT:
      return &store.PowerOut.Output;
    case ORVUS_DOBJ_BLK_TEMP:
      return outputIn(store.TempBlock.Blocks, block_);
    case ORVUS_DOBJ_BLK_VOLT:
      return outputIn(store.VoltBlock.Blocks, block_);
    case ORVUS_DOBJ_BLK_BRIDGE:
      return outputIn(store.BridgeBlock.Blocks, block_);
    case ORVUS_DOBJ_BLK_PULSE:
      if (!store.PulseBlock.Holds(module_)) return nullptr;
      return outputIn(store.PulseBlock[module_].Blocks, block_);
    case ORVUS_DOBJ_BLK_TK40M:
      return outputIn(store.TK40MBlock.Blocks, block_);
    case ORVUS_DOBJ_BLK_TK40REF:
      return &store.TK40MRef.Output;
    case ORVUS_DOBJ_BLK_QBCAN:
      return outputIn(store.Can.Item, block_);
    case ORVUS_DOBJ_PORT:
      return outputIn(store.Ports.Slot, module_);
    case ORVUS_DOBJ_CALC:
      return outputIn(store.CalcFields.Field, block_);
    default:
      return nullptr;
  }
}

i16 cOrvusData::FirstTableUsed(const ProjectStore& store) const {
  return ostrand::FirstTableUsed(store, outputOf(store));
}

i32 cOrvusData::MeasTime() const {
  if (!analog_) return 0;
  std::int64_t time = std::int64_t{analog_->SettleTime()} + analog_->IntegTime();
  if (analog_->InputType == ORVUS_INPUT_DIFF && analog_->RevMeas) time *= 2;
  if (analog_->OpenSens) time += 50;  // on any range
  return limitedMicros(time);
}

i32 cOrvusData::BlockTime() const {
  if (!analog_) return 0;
  std::int64_t time = std::int64_t{Reps} * MeasTime();
  if (analog_->InputType == ORVUS_INPUT_SE && analog_->RevMeas) {  // offset measured once a block
    const i32 integ = analog_->IntegTime();
    time += analog_->SettleTime() + std::int64_t{integ < 250 ? 400 : integ == 250 ? 500 : integ};
  }
  return limitedMicros(time);
}

}  // namespace ostrand
