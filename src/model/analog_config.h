// The analog and the bridge part of a data object, with the limits of the logger's inputs.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/enums.h"
#include "model/measurement_options.h"
#include "model/store.h"

namespace ostrand {

// An input range of the logger.
struct AnalogRange {
  std::string_view text;  // as shown
  i16 code;               // in the program
  bool openSensor;        // allows the test for an open sensor
};
// In the order of the screens' lists.
inline constexpr std::array<AnalogRange, 6> kAnalogRanges = {{{"Auto", 5, false},
                                                              {"5000 mV", 0, false},
                                                              {"1000 mV", 1, false},
                                                              {"200 mV", 2, true},
                                                              {"50 mV", 3, true},
                                                              {"20 mV", 4, true}}};
// The code, ten times that with the test for an open sensor.
inline i16 AnalogRangeCode(const AnalogRange& range, bool openSensor) {
  return static_cast<i16>(openSensor && range.openSensor ? range.code * 10 : range.code);
}

// The integration time, in microseconds, of the choices 50 Hz and 60 Hz; 0 for the others.
i32 ForcedIntegration(i32 integrationCode);

// The bridge part of a measurement.
struct cBridgeConfig {
  std::string BrType = "BrFull";  // instruction
  i16 ExciteReps = 1;             // sensors on one excitation channel
  float Excit = 5000;             // millivolts
  i16 Style = 0;                  // 0 to 7; from 5 on strain
  i16 CheckCAO = 0;               // excited by a continuous analog output
  i16 RevEx = 0;
  i16 RevOut = 0;
  float GageFactor = 2;
  i16 GageCode = 1;

  [[nodiscard]] cBridgeConfig Clone() const { return *this; }
};

// The analog part of a measurement. Values outside the logger's limits are limited or ignored,
// never reported. Times are in microseconds.
class cAnalogConfig {
 public:
  explicit cAnalogConfig(const MeasurementOptions& options = {});

  OrvusAnalogInputTypes InputType;
  OrvusTCTypes TCType = ORVUS_TCTYPE_NONE;
  std::string InputRange;  // as shown: "50 mV"
  bool OpenSens = false;
  bool RevMeas = true;
  i16 ZeroFlag = 0;
  i16 SiteCal = 0;
  std::optional<cBridgeConfig> Bridge;  // of bridge blocks only

  // Called after a change of the scale; may be empty.
  std::function<void(OrvusTemperatureScales)> TempScaleChange;
  std::function<void(OrvusAnalogTypes)> MeasureTypeChange;

  // An independent copy of all values without the listener; the owner binds a new one.
  [[nodiscard]] std::unique_ptr<cAnalogConfig> Clone() const;

  // Gives the object the defaults of a kind of data on a logger (kLoggerType...).
  void SetMode(i32 loggerType, OrvusDataObjTypes dataObjType);

  // One click up or down. The integration time steps past the rounding of its setter; returns its
  // new value.
  i32 IntegIncDec(bool increase);
  void SettleIncDec(bool increase);

  // "Diff", "SE", "??". Anything but "SE" sets differential.
  [[nodiscard]] std::string_view InputTypeString() const;
  void InputTypeString(std::string_view text);

  // A number that is not a code sets microseconds.
  [[nodiscard]] OrvusMeasIntegrationCodes IntegCode() const { return integCode_; }
  void IntegCode(i32 code);

  // Rounded to a time of the logger; forced by the codes of 50 and 60 Hz.
  [[nodiscard]] i32 IntegTime() const { return integTime_; }
  void IntegTime(i32 micros);

  // Sets the times of a project without rounding or limits.
  void RestoreTimes(i32 integMicros, i32 settleMicros);

  // A change sets the default range of the kind and calls the listener. Thermocouples have no
  // zeroing and always a scale; volts have no scale.
  [[nodiscard]] OrvusAnalogTypes MeasureType() const { return measureType_; }
  void MeasureType(OrvusAnalogTypes type);

  // Whether the input range allows the test for an open sensor.
  [[nodiscard]] bool OpenSensIsValid() const;

  // Code of the range in the program, ten times that with the test for an open sensor; -1 if the
  // device or the range is unknown.
  [[nodiscard]] i32 RangeCode() const;

  // Index of the range in the list of ranges, from 0; -1 as above. An index outside is ignored.
  [[nodiscard]] i32 RangeIndex() const;
  void RangeIndex(i32 index);

  // A multiple of 10, at most 50000, at least the minimum of range and integration.
  [[nodiscard]] i32 SettleTime() const { return settleTime_; }
  void SettleTime(i32 micros);

  // A change on a thermocouple calls the listener.
  [[nodiscard]] OrvusTemperatureScales TempScale() const { return tempScale_; }
  void TempScale(OrvusTemperatureScales scale);

  // "Deg_C", "Deg_F", "Kelvin", "Rankine"; "" and any other text mean no scale.
  [[nodiscard]] std::string_view TempScaleUnits() const;
  void TempScaleUnits(std::string_view units);

  // Bit of the kind in the lists of variables.
  [[nodiscard]] i32 VarType() const { return VariableKindBit(dataObjType_); }

 private:
  cAnalogConfig(const cAnalogConfig&) = default;
  cAnalogConfig& operator=(const cAnalogConfig&) = delete;

  void setDefaultRange();
  [[nodiscard]] i32 leastSettleTime() const;

  OrvusDataObjTypes dataObjType_ = ORVUS_DOBJ_SYS_BATT;
  i32 loggerType_ = kLoggerTypeLarge;
  OrvusTemperatureScales tempScale_ = ORVUS_TEMPSCALE_NONE;
  i32 device_ = ORVUS_MEASDEV_NONE;
  OrvusAnalogTypes measureType_ = ORVUS_MEASURE_VOLT;
  OrvusMeasIntegrationCodes integCode_ = ORVUS_MEAS_INTEG_USECS;
  i32 integTime_ = 0;
  i32 settleTime_ = 0;
};

}  // namespace ostrand
