#include "model/burst_buffer.h"

#include <algorithm>
#include <limits>

namespace ostrand::PROGGEN {
namespace {

constexpr int kPulseBytes = 4;

// Short integrations take half the bytes, except the fastest.
int bytesOfValue(const AnalogBlock& block) {
  return block.Integration == 200 || block.Integration >= 251 ? 4 : 2;
}

// Reversed inputs: a differential block is measured twice, a single-ended one has one more value.
// The type is compared case-sensitively.
double bytesOf(const AnalogBlock& block) {
  const bool reversed = block.ReverseMes != 0;
  const int values = block.Reps + (reversed && block.MeasType == "SE" ? 1 : 0);
  const int factor = reversed && block.MeasType == "Diff" ? 2 : 1;
  return static_cast<double>(values) * bytesOfValue(block) * factor;
}
double bytesOf(const BridgeBlockData& block) {
  const AnalogBlock& analog = block;
  return bytesOf(analog) * (block.RevExcite != 0 ? 2 : 1);
}
double bytesOf(const TK40MBlockData& block) {
  return static_cast<double>(block.Reps) * bytesOfValue(block) * (block.ReverseMes != 0 ? 2 : 1);
}
double bytesOf(const PulseBlockData& block) {
  return static_cast<double>(block.Reps) * kPulseBytes;
}

template <class Group>
double bytesOfAll(const Group& group) {
  double bytes = 0;
  for (int b = 1; b <= group.BlockCount; ++b) bytes += bytesOf(group[b]);
  return bytes;
}

}  // namespace

i32 BufferBytes(const ProjectStore& store, i32 bufferScans) {
  double scan = bytesOfAll(store.TempBlock) + bytesOfAll(store.VoltBlock) +
                bytesOfAll(store.BridgeBlock) + bytesOfAll(store.TK40MBlock);
  for (const PulseBlockGroup& group : store.PulseBlock) scan += bytesOfAll(group);
  constexpr double kMax = std::numeric_limits<i32>::max();
  return static_cast<i32>(std::clamp(scan * bufferScans, -kMax, kMax));
}

}  // namespace ostrand::PROGGEN
