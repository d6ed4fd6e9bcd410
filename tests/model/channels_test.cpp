#include "model/channels.h"

#include <gtest/gtest.h>

#include "model/defaults.h"

namespace ostrand {
namespace {

using Blocks = std::vector<ChannelBlock>;

ChannelBlock diff(int reps, int style = 0) {
  return {.Reps = reps, .MeasType = "Diff", .Style = style};
}
ChannelBlock single(int reps, int style = 2) {
  return {.Reps = reps, .MeasType = "SE", .Style = style};
}
ChannelBlock excited(int reps, int exciteReps, bool cao = false) {
  return {.Reps = reps, .MeasType = "Diff", .ExciteReps = exciteReps, .CheckCAO = cao};
}

TEST(LiveCounts, CountTheGapBeforeADifferentialBlock) {
  const struct {
    Blocks blocks;
    int analog;
    int bridge;
  } cases[] = {
      {{}, 0, 0},
      {{diff(20)}, 40, 40},
      {{single(3), diff(1)}, 6, 6},
      {{single(3), diff(0)}, 4, 4},  // the gap stays without a sensor behind it
      {{diff(1), single(3), single(2), diff(2)}, 12, 12},
      {{{.Reps = 3, .MeasType = "diff"}}, 6, 6},
      {{{.Reps = 3, .MeasType = "??"}}, 3, 0},  // a bridge must be one of the two
      {{diff(2, 1)}, 4, 8},
      {{diff(2, 4)}, 4, 8},  // a resistance bridge held as differential
      {{diff(2, 7)}, 4, 4},
      {{diff(2, 3)}, 4, 4},
      {{single(2, 3)}, 2, 4},
      {{single(3, 4)}, 3, 6},
      {{single(1, 2), single(1, 4), diff(1, 1)}, 4, 8},
      {{single(-3)}, -3, 0},
  };
  int number = 0;
  for (const auto& c : cases) {
    EXPECT_EQ(LiveChannelCount(c.blocks), c.analog) << number;
    EXPECT_EQ(LiveBridgeCount(c.blocks), c.bridge) << number;
    ++number;
  }
}

TEST(FreeChannels, ShowFiguresAndKeepADifferentialOneInHand) {
  EXPECT_EQ(PanelFreeChans(10, 6, 4, 3), 14);
  EXPECT_EQ(PanelFreeChans(36, 0, 0, 4), -4);
  const struct {
    int free;
    int shownDiff;
    int single;
    int differential;
  } cases[] = {{40, 20, 40, 19}, {3, 1, 3, 1},    {2, 1, 2, 0},    {1, 0, 1, 0},
               {0, 0, 0, 0},     {-1, 0, -1, -1}, {-4, -2, -4, -2}};
  for (const auto& c : cases) {
    EXPECT_EQ(FreeChannelFigures(true, c.free).singleEnded, c.free);
    EXPECT_EQ(FreeChannelFigures(true, c.free).differential, c.shownDiff) << c.free;
    EXPECT_EQ(ChannelsAvailable(ORVUS_INPUT_SE, true, c.free), c.single);
    EXPECT_EQ(ChannelsAvailable(ORVUS_INPUT_DIFF, true, c.free), c.differential) << c.free;
  }
  EXPECT_FALSE(FreeChannelFigures(false, 40).singleEnded);
  EXPECT_FALSE(FreeChannelFigures(false, 40).differential);
  EXPECT_EQ(ChannelsAvailable(ORVUS_INPUT_SE, false, 40), -1);
}

TEST(FreeChannels, RoomForMoreSensorsOfABlock) {
  const struct {
    bool autoChan;
    int available;
    bool differential;
    int start;
    int reps;
    int more;
  } cases[] = {
      {true, 7, true, 20, 20, 7},   {true, -3, false, 1, 1, -3},  {false, -1, true, 1, 20, 0},
      {false, -1, true, 15, 2, 4},  {false, -1, true, 15, 9, -1}, {false, -1, false, 15, 9, 17},
      {false, -1, false, 40, 1, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MaxMore(c.autoChan, c.available, c.differential, c.start, c.reps), c.more)
        << c.start << " " << c.reps;
  }
}

TEST(Pools, OfMultiplexersAndPulses) {
  EXPECT_EQ(FreeTK40MInputs(3, Blocks{{.Reps = 10}, {.Reps = 50}}), 15);
  EXPECT_EQ(FreeTK40MInputs(0, Blocks{{.Reps = 1}}), -1);
  EXPECT_EQ(FreePulseChans({}), 2);
  EXPECT_EQ(FreePulseChans(Blocks{{.Reps = 1}, {.Reps = 3}}), -2);
  const PulseFit lowered = FitPulseCount(3, -2);
  EXPECT_EQ(lowered.count, 1);
  EXPECT_EQ(lowered.free, 0);
  const PulseFit kept = FitPulseCount(1, 1);
  EXPECT_EQ(kept.count, 1);
  EXPECT_EQ(kept.free, 1);
}

TEST(Excitation, OfBridgesAndTheOutputsThatTheyTake) {
  const struct {
    Blocks bridges;
    int switched;
    int cao;
  } cases[] = {
      {{}, 0, 0},
      {{excited(4, 4)}, 1, 0},
      {{excited(5, 4), excited(1, 1)}, 3, 0},
      {{excited(5, 0, true), excited(3, -1)}, 0, 0},
      {{excited(2, 2), excited(3, 2, true)}, 3, 2},  // counted in both
      {{excited(0, 2, true)}, 0, 0},
  };
  int number = 0;
  for (const auto& c : cases) {
    EXPECT_EQ(ExciteSwitched(c.bridges), c.switched) << number;
    EXPECT_EQ(CAOPortsTaken(c.bridges), c.cao) << number++;
  }
  const bool used[4][2] = {{false, false}, {false, true}, {true, true}, {true, true}};
  for (int taken = 0; taken <= 3; ++taken) {
    for (int port = 1; port <= PanelCAOPorts; ++port) {
      EXPECT_EQ(CAOPortUsedByBridge(port, taken), used[taken][port - 1]) << port << taken;
    }
  }
}

TEST(StartChannels, FollowTheSizesOfTheBlocksBefore) {
  constexpr int kLeft = 99;  // a start that is left as it was
  const struct {
    const char* what;
    Blocks temps, volts, bridges;
    std::vector<int> temp, volt, bridge;
  } cases[] = {
      {"nothing", {}, {}, {}, {1, kLeft}, {kLeft}, {kLeft}},
      {"one kind", {diff(3), diff(2), single(1), single(4)}, {}, {}, {1, 4, 11, 12, kLeft}, {}, {}},
      {"a gap inside a kind counts",
       {single(3), diff(2), single(1)},
       {single(1)},
       {},
       {1, 3, 9},
       {10},
       {}},
      {"a gap before a kind does not",
       {single(3)},
       {diff(2), single(2), diff(1)},
       {single(1)},
       {1},
       {3, 8, 6},  // one low: the block before holds 5 to 8
       {13}},
      {"the same before a bridge",
       {single(1)},
       {},
       {diff(1), diff(1)},
       {1},
       {kLeft},
       {2, 3}},  // 1 and 2 counted, then the odd one is skipped
      {"a first block without sensors",
       {diff(0), single(2)},
       {single(0), single(2), diff(1)},
       {diff(0), diff(2)},
       {1, 1},
       {kLeft, 3, 3},
       {kLeft, 4}},
      {"a first thermocouple block is not looked at",
       {single(0)},
       {diff(1)},
       {},
       {1, kLeft},
       {1, kLeft},
       {}},
      {"a block without sensors is placed, its gap counts",
       {single(1), diff(0), single(1)},
       {},
       {},
       {1, 2, 3},
       {},
       {}},
      {"bridges by style",
       {},
       {},
       {diff(1, 0), diff(1, 1), diff(1, 5), single(1, 2), single(1, 3), single(2, 4), single(1, 2)},
       {1},
       {kLeft},
       {1, 2, 4, 9, 10, 12, 16}},
      {"bridges whose type is not that of the style take nothing",
       {},
       {},
       {diff(2, 4), diff(2, 2), single(2, 0), single(2, 7), single(1, 8), diff(1, -1), diff(1, 6)},
       {1},
       {kLeft},
       {1, 1, 1, 1, 1, 1, 1}},
      {"a type of neither kind starts as single-ended",
       {{.Reps = 2, .MeasType = "??"}, diff(1)},
       {},
       {},
       {1, 2},
       {},
       {}},
  };
  for (const auto& c : cases) {
    StartChans starts;
    starts.Temp.Fill(kLeft);
    starts.Volt.Fill(kLeft);
    starts.Bridge.Fill(kLeft);
    ComputeStartChans(c.temps, c.volts, c.bridges, starts);
    const auto expect = [&c](const auto& row, const std::vector<int>& wanted, const char* kind) {
      for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(row[static_cast<int>(i) + 1], wanted[i])
            << c.what << ": " << kind << " " << i + 1;
      }
    };
    expect(starts.Temp, c.temp, "thermocouple");
    expect(starts.Volt, c.volt, "voltage");
    expect(starts.Bridge, c.bridge, "bridge");
  }
  StartChans starts;
  EXPECT_THROW(ComputeStartChans(Blocks(8, diff(1)), {}, {}, starts), Fault);
}

class ChannelsOfAProject : public testing::Test {
 protected:
  ChannelsOfAProject() { ORVUS_COMMON::SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(ChannelsOfAProject, AreTakenFromTheBlocksInUse) {
  store.BridgeBlock.BlockCount = 2;
  store.BridgeBlock[1].Reps = 3;
  store.BridgeBlock[1].ExciteReps = 2;
  store.BridgeBlock[1].Style = 1;
  store.BridgeBlock[2].Reps = 1;
  store.BridgeBlock[2].MeasType = "SE";
  store.BridgeBlock[2].Style = 4;
  store.BridgeBlock[2].CheckCAO = kTrue;
  store.BridgeBlock[3].Reps = 5;  // beyond the count
  const Blocks bridges = ChannelBlocksOf(store.BridgeBlock);
  EXPECT_EQ(LiveBridgeCount(bridges), 12 + 2);
  EXPECT_EQ(ExciteSwitched(bridges), 3);
  EXPECT_EQ(CAOPortsTaken(bridges), 1);

  store.TempBlock.BlockCount = 1;
  store.TempBlock[1].Reps = 3;
  store.TempBlock[1].MeasType = "SE";
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[1].Reps = 2;
  EXPECT_EQ(LiveChannelCount(ChannelBlocksOf(store.TempBlock)), 3);
  EXPECT_EQ(LiveChannelCount(ChannelBlocksOf(store.VoltBlock)), 4);
  store.PulseBlock[0].BlockCount = store.TK40MBlock.BlockCount = 1;
  store.PulseBlock[0][1].Reps = 2;
  store.TK40MBlock[1].Reps = 20;
  EXPECT_EQ(FreePulseChans(ChannelBlocksOf(store.PulseBlock[0])), 0);
  EXPECT_EQ(FreeTK40MInputs(1, ChannelBlocksOf(store.TK40MBlock)), 5);
}

TEST_F(ChannelsOfAProject, SwitchToAutomaticSelectionByAllRowsAndOnePerMultiplexer) {
  store.TempBlock[7].Reps = 8;  // whatever the counts
  store.VoltBlock[1].Reps = 10;
  store.VoltBlock[1].MeasType = "SE";
  store.BridgeBlock[1].Reps = 5;
  store.BridgeBlock[1].Style = 1;  // six wires count as four
  store.Config.TK40MQty = 2;
  EXPECT_EQ(AutoSelectionTotal(store), 36 + 2);
  EXPECT_TRUE(AutoSelectionFits(38));
  EXPECT_EQ(PanelFreeChans(36, 0, 0, 2), 0);
  EXPECT_TRUE(AutoSelectionFits(40));
  EXPECT_FALSE(AutoSelectionFits(41));
}

TEST_F(ChannelsOfAProject, LeaveRoomForSoManyMultiplexers) {
  const struct {
    i16 reps;  // single-ended
    int entered;
    int fitting;
  } cases[] = {{0, 4, 4}, {33, 3, 3}, {33, 4, 3}, {34, 3, 3}, {35, 3, 2}, {40, 1, 0}, {42, 1, -1}};
  store.VoltBlock[1].MeasType = "SE";
  store.Config.TK40MQty = 4;  // the quantity before doesn't count
  for (const auto& c : cases) {
    store.VoltBlock[1].Reps = c.reps;
    EXPECT_EQ(FittingTK40MQty(store, c.entered), c.fitting) << c.reps;
  }
}

}  // namespace
}  // namespace ostrand
