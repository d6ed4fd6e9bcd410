// The size of the burst buffer (module PROGGEN).
#pragma once

#include "model/store.h"

namespace ostrand::PROGGEN {

// Bytes of `bufferScans` scans of the project's blocks in the burst buffer. A count beyond 32 bits
// gives the largest i32.
i32 BufferBytes(const ProjectStore& store, i32 bufferScans);

}  // namespace ostrand::PROGGEN
