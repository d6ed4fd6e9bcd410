#include "model/proggen.h"

#include <gtest/gtest.h>

namespace ostrand {
namespace {

TEST(BufferBytes, OneVoltageBlock) {
  const struct {
    const char* type;
    int reps, integration;
    bool reversed;
    i32 bytes;  // of ten scans
  } cases[] = {
      {"SE", 3, 250, false, 60},   {"SE", 3, 250, true, 80},    {"SE", 0, 250, true, 20},
      {"Diff", 3, 250, false, 60}, {"Diff", 3, 250, true, 120}, {"DIFF", 3, 250, true, 60},
      {"se", 3, 250, true, 60},    {"SE", 3, 200, false, 120},  {"SE", 3, 199, false, 60},
      {"SE", 3, 251, false, 120},  {"SE", -3, 250, false, -60},
  };
  const auto storage = NewStore();
  ProjectStore& store = *storage;
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[2].Reps = 50;  // past the count
  for (const auto& c : cases) {
    VoltBlockData& block = store.VoltBlock[1];
    block.MeasType = c.type;
    block.Reps = static_cast<i16>(c.reps);
    block.Integration = c.integration;
    block.ReverseMes = c.reversed ? kTrue : kFalse;
    EXPECT_EQ(PROGGEN::BufferBytes(store, 10), c.bytes) << c.type << c.reps << c.integration;
  }
}

// Thermocouples 2 * 2 * 2, a strain bridge turned over both ways 1 * 4 * 2 * 2, pulses (1 + 1) * 4,
// a reversed multiplexer block 5 * 2 * 2.
TEST(BufferBytes, AllKinds) {
  const auto storage = NewStore();
  ProjectStore& store = *storage;
  store.TempBlock.BlockCount = store.BridgeBlock.BlockCount = store.TK40MBlock.BlockCount = 1;
  for (PulseBlockGroup& group : store.PulseBlock) {
    group.BlockCount = 1;
    group[1].Reps = 1;
  }
  for (AnalogBlock* block : {static_cast<AnalogBlock*>(&store.TempBlock[1]),
                             static_cast<AnalogBlock*>(&store.BridgeBlock[1]),
                             static_cast<AnalogBlock*>(&store.TK40MBlock[1])}) {
    block->ReverseMes = kTrue;
    block->Integration = 250;
  }
  store.TempBlock[1].Reps = 2;
  store.TempBlock[1].MeasType = store.BridgeBlock[1].MeasType = "Diff";
  store.BridgeBlock[1].Reps = 1;
  store.BridgeBlock[1].RevExcite = kTrue;
  store.BridgeBlock[1].Integration = 20000;
  store.TK40MBlock[1].Reps = 5;
  EXPECT_EQ(PROGGEN::BufferBytes(store, 1), 8 + 16 + 8 + 20);
  EXPECT_EQ(PROGGEN::BufferBytes(store, 0), 0);
  EXPECT_EQ(PROGGEN::BufferBytes(store, 2147483647), 2147483647);
}

}  // namespace
}  // namespace ostrand
