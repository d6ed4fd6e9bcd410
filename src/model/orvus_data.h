// One measurement block, or other source of data, for a screen.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/analog_config.h"
#include "model/can_config.h"
#include "model/enums.h"
#include "model/store.h"

namespace ostrand {

// Values outside the limits are limited or ignored, never reported. Times are in microseconds.
class cOrvusData {
 public:
  explicit cOrvusData(const MeasurementOptions& options = {});
  cOrvusData(const cOrvusData&) = delete;
  cOrvusData& operator=(const cOrvusData&) = delete;

  std::optional<cCanConfig> Can;  // of CAN items only
  i16 Reps = 0;
  OrvusOutputDataTypes DataType;
  i16 IsPublic = 0;
  i16 StartChannel = 0;
  std::string Alias;
  std::string DefaultUnits;
  float DefaultMult = 0;
  float DefaultOffset = 0;

  // The analog part; nothing for kinds without one. This object listens to it: a new scale sets
  // multiplier, offset and units; a multiplexer switched to volts gets plain ones.
  [[nodiscard]] cAnalogConfig* Analog() { return analog_.get(); }
  [[nodiscard]] const cAnalogConfig* Analog() const { return analog_.get(); }
  void Analog(std::unique_ptr<cAnalogConfig> analog);

  // An independent object, its analog part bound to it.
  [[nodiscard]] std::unique_ptr<cOrvusData> Clone() const;

  // Gives the object the defaults of a kind of data on a logger (kLoggerType...). `block` counts
  // from 1; of ports, 1 is written and 2 read. `module` is the slot, from 0, of pulses and ports.
  void SetMode(i32 loggerType, OrvusDataObjTypes dataObjType, i16 block, i16 module);

  // Moves the value by the step to a multiple of it, with the decimals of the step. A step of 0
  // does nothing.
  void MultIncDec(float step);
  void OffsetIncDec(float step);

  [[nodiscard]] i16 Block() const { return block_; }
  void Block(i16 block) { block_ = block; }
  [[nodiscard]] i16 Module() const { return module_; }
  [[nodiscard]] OrvusDataObjTypes DataObjType() const { return dataObjType_; }

  // "FP2", "IEEE4", "??". Any other text is ignored.
  [[nodiscard]] std::string_view DataTypeString() const;
  void DataTypeString(std::string_view text);

  // The name given to the object, cut to 12 characters, or else its automatic name.
  [[nodiscard]] std::string DefaultName() const;
  void DefaultName(std::string_view name);

  // The first table in use that stores any of the object's values, or else the first table in use,
  // or else 1.
  [[nodiscard]] i16 FirstTableUsed(const ProjectStore& store) const;

  // Times of one measurement and of the whole block; 0 without an analog part.
  [[nodiscard]] i32 MeasTime() const;
  [[nodiscard]] i32 BlockTime() const;

 private:
  [[nodiscard]] const OutputSet* outputOf(const ProjectStore& store) const;
  void onTempScale(OrvusTemperatureScales scale);
  void onMeasureType(OrvusAnalogTypes type);

  MeasurementOptions options_;
  std::unique_ptr<cAnalogConfig> analog_;
  OrvusDataObjTypes dataObjType_ = ORVUS_DOBJ_SYS_BATT;
  i32 loggerType_ = kLoggerTypeLarge;
  i16 block_ = 0;
  i16 module_ = 0;
  std::string customName_;
};

}  // namespace ostrand
