// Conversion between a block in the project and the object that a screen edits.
#pragma once

#include "model/orvus_data.h"
#include "model/store.h"

namespace ostrand {

// The members common to all kinds. Times and numbers of the project are copied exactly, without the
// rounding of typed values. The kind of measurement and its type must be set before.
void SetAnalogObject(cOrvusData& data, const AnalogBlock& block);
// An unknown range keeps the block's code, an unknown resolution its text.
void SetAnalogBlock(AnalogBlock& block, const cOrvusData& data);
// Whether all editable members of two blocks are equal; calculated ones are ignored.
bool SameAnalogBlock(const AnalogBlock& left, const AnalogBlock& right);

template <class Block>
concept ThermocoupleBlock = requires(Block block) {
  block.TypeNo;
};
// On a multiplexer: either kind of measurement, always differential.
template <class Block>
concept MultiplexedBlock = requires(Block block) {
  block.TK40Volts;
};

template <class Block>
void ObjectFromBlock(cOrvusData& data, const Block& block) {
  if constexpr (MultiplexedBlock<Block>) {
    data.Analog()->MeasureType(block.TK40Volts == ORVUS_MEASURE_VOLT ? ORVUS_MEASURE_VOLT
                                                                     : ORVUS_MEASURE_TC);
  }
  if constexpr (ThermocoupleBlock<Block>) {
    data.Analog()->TCType = static_cast<OrvusTCTypes>(block.TypeNo);
  }
  SetAnalogObject(data, block);
}

template <class Block>
void BlockFromObject(Block& block, const cOrvusData& data) {
  SetAnalogBlock(block, data);
  if constexpr (MultiplexedBlock<Block>) {
    block.TK40Volts = data.Analog()->MeasureType();
    block.MeasType.clear();
  }
  if constexpr (ThermocoupleBlock<Block>) block.TypeNo = data.Analog()->TCType;
}

template <class Block>
bool SameBlock(const Block& left, const Block& right) {
  if constexpr (MultiplexedBlock<Block>) {
    if (left.TK40Volts != right.TK40Volts) return false;
  }
  if constexpr (ThermocoupleBlock<Block>) {
    if (left.TypeNo != right.TypeNo) return false;
  }
  return SameAnalogBlock(left, right);
}

}  // namespace ostrand
