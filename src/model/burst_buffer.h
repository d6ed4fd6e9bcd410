// The size of the burst buffer (module PROGGEN).
#pragma once

#include "model/store.h"

namespace ostrand::PROGGEN {

// Bytes that so many scans of the project's blocks take in the burst buffer. A count past 32 bits
// gives the largest that there is.
i32 BufferBytes(const ProjectStore& store, i32 bufferScans);

}  // namespace ostrand::PROGGEN
