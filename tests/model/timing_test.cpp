#include "model/timing.h"

#include <gtest/gtest.h>

#include <limits>

#include "model/defaults.h"

namespace ostrand {
namespace {

using namespace ORVUS_COMMON;

constexpr i32 kMost = std::numeric_limits<i32>::max();
constexpr i32 kLeast = std::numeric_limits<i32>::min();

class Timing : public ::testing::Test {
 protected:
  Timing() { SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(Timing, NothingBeforeTheFirstCompile) { EXPECT_EQ(EstMeasTime(store), 0); }

TEST_F(Timing, AddsTheBlocksInUseByKind) {
  store.Config.BatteryTime = 1;
  store.Config.PanelTime = 20;
  store.TempBlock.BlockCount = 2;
  store.TempBlock[1].BlockTime = 300;
  store.TempBlock[2].BlockTime = 400;
  store.TempBlock[3].BlockTime = 1000000;  // released
  store.VoltBlock.BlockCount = kBlocks;
  store.VoltBlock[7].BlockTime = 5000;
  store.BridgeBlock.BlockCount = 1;
  store.BridgeBlock[1].BlockTime = 60000;
  store.PulseBlock[0].BlockCount = 1;
  store.PulseBlock[0][1].BlockTime = 700000;
  store.PulseBlock[1].BlockCount = 2;
  store.PulseBlock[1][2].BlockTime = 8000000;
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].BlockTime = 90000000;  // whether a multiplexer is fitted or not
  EXPECT_EQ(ThermocoupleTime(store), 720);
  EXPECT_EQ(VoltageTime(store), 5000);
  EXPECT_EQ(BridgeTime(store), 60000);
  EXPECT_EQ(PulseTime(store), 8700000);
  EXPECT_EQ(TK40MTime(store), 90000000);
  EXPECT_EQ(EstMeasTime(store), 98765721);
  EXPECT_EQ(store.EstMeasTime, 0);  // whoever draws the summary sets it
}

TEST_F(Timing, StaysAtTheLimitsOfItsNumbers) {
  store.VoltBlock.BlockCount = 2;
  store.VoltBlock[1].BlockTime = kMost;
  store.VoltBlock[2].BlockTime = 1;
  EXPECT_EQ(VoltageTime(store), kMost);
  store.Config.BatteryTime = -2;
  EXPECT_EQ(EstMeasTime(store), kMost - 1);  // the whole sum is limited, not its parts
  store.VoltBlock[1].BlockTime = kLeast;
  store.VoltBlock[2].BlockTime = -1;
  EXPECT_EQ(VoltageTime(store), kLeast);
  EXPECT_EQ(EstMeasTime(store), kLeast);
}

TEST_F(Timing, RaisesOnACountPastTheRows) {
  store.BridgeBlock.BlockCount = kBlocks + 1;
  EXPECT_THROW((void)BridgeTime(store), Fault);
  EXPECT_THROW((void)EstMeasTime(store), Fault);
}

}  // namespace
}  // namespace ostrand
