// The enumerations of the whole system. The values are in project files and known to hosts. All
// enums have a fixed type, so that they can hold and compare unlisted numbers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrand {

enum OrvusAnalogInputTypes : std::int32_t { ORVUS_INPUT_DIFF = 0, ORVUS_INPUT_SE = 1 };

enum OrvusAnalogTypes : std::int32_t { ORVUS_MEASURE_TC = 0, ORVUS_MEASURE_VOLT = 1 };

enum OrvusTCTypes : std::int32_t {
  ORVUS_TCTYPE_NONE = -1,
  ORVUS_TCTYPE_T = 0,
  ORVUS_TCTYPE_E = 1,
  ORVUS_TCTYPE_K = 2,
  ORVUS_TCTYPE_J = 3,
  ORVUS_TCTYPE_B = 4,
  ORVUS_TCTYPE_R = 5,
  ORVUS_TCTYPE_S = 6,
  ORVUS_TCTYPE_N = 7
};

enum OrvusTemperatureScales : std::int32_t {
  ORVUS_TEMPSCALE_NONE = -1,
  ORVUS_TEMPSCALE_C = 0,
  ORVUS_TEMPSCALE_F = 1,
  ORVUS_TEMPSCALE_K = 2,
  ORVUS_TEMPSCALE_R = 3
};

enum OrvusMeasIntegrationCodes : std::int32_t {
  ORVUS_MEAS_INTEG_50HZ = 0,
  ORVUS_MEAS_INTEG_60HZ = 1,
  ORVUS_MEAS_INTEG_USECS = 2
};

// 1 to 4 are the unnamed measurement modules of the larger logger family.
enum OrvusMeasurementDevices : std::int32_t { ORVUS_MEASDEV_NONE = 0, ORVUS_MEASDEV_VK7300 = 100 };

enum OrvusTableTimeUnits : std::int32_t {
  ORVUS_TBLTIME_USECS = 0,
  ORVUS_TBLTIME_MSECS = 1,
  ORVUS_TBLTIME_SECS = 2,
  ORVUS_TBLTIME_MINS = 3,
  ORVUS_TBLTIME_HRS = 4,
  ORVUS_TBLTIME_DAYS = 5
};

// Microseconds of a unit of table time; 0 for any other number. Unit 0 is 10 microseconds by
// definition.
constexpr double TableUnitMicros(std::int32_t unit) {
  constexpr std::array<double, 6> kMicros = {10, 1000, 1e6, 6e7, 3.6e9, 8.64e10};
  return unit >= 0 && unit < 6 ? kMicros[static_cast<std::size_t>(unit)] : 0;
}

enum OrvusOutputDataTypes : std::int32_t {
  ORVUS_OUTDATA_NONE = -1,
  ORVUS_OUTDATA_FP2 = 0,
  ORVUS_OUTDATA_IEEE4 = 1
};

enum OrvusDataObjTypes : std::int32_t {
  ORVUS_DOBJ_SYS_BATT = 0,
  ORVUS_DOBJ_SYS_STATTBL = 1,
  ORVUS_DOBJ_BLK_TEMP = 2,
  ORVUS_DOBJ_BLK_VOLT = 3,
  ORVUS_DOBJ_BLK_BRIDGE = 4,
  ORVUS_DOBJ_BLK_PULSE = 5,
  ORVUS_DOBJ_BLK_HV = 6,
  ORVUS_DOBJ_BLK_FILT = 7,
  ORVUS_DOBJ_BLK_HCM = 8,
  ORVUS_DOBJ_BLK_TK40M = 9,
  ORVUS_DOBJ_BLK_TK40REF = 10,
  ORVUS_DOBJ_BLK_QBCAN = 11,
  ORVUS_DOBJ_PORT = 12,
  ORVUS_DOBJ_CALC = 13
};

// The bit of a kind in the lists of variables; 0 for any other number.
constexpr std::int32_t VariableKindBit(OrvusDataObjTypes type) {
  constexpr std::array<std::int32_t, 14> kBits = {
      1, 2, 16, 32, 64, 128, 256, 512, 4096, 65536, 131072, 262144, 16777216, 268435456};
  return type >= 0 && type < 14 ? kBits[static_cast<std::size_t>(type)] : 0;
}

// The logger of a data object: the larger family, or this logger.
inline constexpr std::int32_t kLoggerTypeLarge = 0;
inline constexpr std::int32_t kLoggerTypeVK7300 = 1;

enum OrvusCanBaudRates : std::int32_t {
  ORVUS_CAN_BAUD_1M = 0,
  ORVUS_CAN_BAUD_800K = 1,
  ORVUS_CAN_BAUD_500K = 2,
  ORVUS_CAN_BAUD_250K = 3,
  ORVUS_CAN_BAUD_125K = 4,
  ORVUS_CAN_BAUD_50K = 5,
  ORVUS_CAN_BAUD_20K = 6
};

enum OrvusCanDataIDTypes : std::int32_t { ORVUS_CAN_DATAID_11BIT = 0, ORVUS_CAN_DATAID_29BIT = 1 };

enum OrvusCanMessageTypes : std::int32_t {
  ORVUS_CAN_MSGTYPE_RxOnly = 0,
  ORVUS_CAN_MSGTYPE_TxRxPair = 1,
  ORVUS_CAN_MSGTYPE_TxOnly = 2
};

enum OrvusCanJ1939Fields : std::int32_t {
  ORVUS_CAN_J1939_ID_PRIORITY = 0,
  ORVUS_CAN_J1939_ID_RESERVED = 1,
  ORVUS_CAN_J1939_ID_DATAPAGE = 2,
  ORVUS_CAN_J1939_ID_PDUFORMAT = 3,
  ORVUS_CAN_J1939_ID_PDUSPECIFIC = 4,
  ORVUS_CAN_J1939_ID_SOURCEADDR = 5
};

}  // namespace ostrand
