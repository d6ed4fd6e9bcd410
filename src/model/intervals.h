// Scan and table intervals (module ORVUS_COMMON).
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// The scan period in microseconds: the decimal value of ExecutionTime times 1, 1000, 1000000 or
// 60000000 for the units 0 to 3. Any other unit gives 0.
double ScanIntervalMicros(const ProjectStore& store);

// The interval of table `t`, from 1, in microseconds: the scan period of a synchronous table,
// otherwise OutInt (1 when it is 0) times the factor of its unit; the factor of unit 0 is 10.
// A unit outside of 0 to 5 gives 0.
double TableIntervalMicros(const ProjectStore& store, int t);

}  // namespace ostrand::ORVUS_COMMON
