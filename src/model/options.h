// What a user has set for new items.
#pragma once

#include "model/analog_config.h"
#include "model/store.h"

namespace ostrand {

// What new items start with.
struct OptionValues {
  i32 DefaultScanInterval = 10;
  i32 DefaultScanIntervalUnits = 1;  // 0 microseconds, 1 milliseconds, 2 seconds, 3 minutes
  i32 DefaultNumFlags = 8;
  MeasurementOptions Measurement;  // for cOrvusData and cAnalogConfig
  i32 DefaultTableAutoSize = 0;
  i32 DefaultTableNumRecs = 1000;
};

}  // namespace ostrand
