// The user's options for new measurements.
#pragma once

#include "model/enums.h"

namespace ostrand {

struct MeasurementOptions {
  OrvusOutputDataTypes DefaultDataType = ORVUS_OUTDATA_FP2;
  OrvusMeasIntegrationCodes DefaultIntegrationCode = ORVUS_MEAS_INTEG_USECS;
  OrvusAnalogInputTypes DefaultInputType = ORVUS_INPUT_DIFF;
};

}  // namespace ostrand
