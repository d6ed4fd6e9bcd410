// The channels of a program's statements, for wiring the sensors.
#pragma once

#include "model/store.h"

namespace ostrand {

// First channels of the blocks in a generated program, in the block's kind of channel (differential
// or single-ended); 0 for a block without a statement.
struct StatementChannels {
  Row<int, 1, kBlocks> Temp;
  Row<int, 1, kBlocks> Volt;
  Row<int, 1, kBlocks> Bridge;
  // First excitation of a bridge block: VX number, or CAO number for a block with CheckCAO.
  Row<int, 1, kBlocks> Excite;
};

}  // namespace ostrand
