#include "model/channels.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using Blocks = std::vector<ChannelBlock>;

// Blocks as their types, repetitions and, for a bridge, the style: "D5 S3/4". A single-ended one
// has style 2 otherwise. "?" is not a type, "d" another spelling.
Blocks blocksOf(std::string_view text) {
  Blocks blocks;
  for (const std::string_view word : Split(text, ' ')) {
    if (word.empty()) continue;
    const char type = word.front();
    ChannelBlock block = {.Reps = std::stoi(std::string(word.substr(1))),
                          .MeasType = type == 'S'   ? "SE"
                                      : type == 'D' ? "Diff"
                                      : type == 'd' ? "diff"
                                                    : "??",
                          .Style = type == 'S' ? 2 : 0};
    if (Holds(word, "/")) block.Style = std::stoi(std::string(After(word, "/")));
    blocks.push_back(block);
  }
  return blocks;
}

TEST(LiveCounts, CountTheGapBeforeADifferentialBlock) {
  const struct {
    const char* blocks;
    int analog, bridge;
  } cases[] = {
      {"", 0, 0},
      {"D20", 40, 40},
      {"S3 D1", 6, 6},
      {"S3 D0", 4, 4},  // the gap counts without a sensor after it
      {"D1 S3 S2 D2", 12, 12},
      {"d3", 6, 6},
      {"?3", 3, 0},  // a bridge must be either
      {"D2/1", 4, 8},
      {"D2/4", 4, 8},  // a resistance bridge held as differential
      {"D2/7", 4, 4},
      {"D2/3", 4, 4},
      {"S2/3", 2, 4},
      {"S3/4", 3, 6},
      {"S1/2 S1/4 D1/1", 4, 8},
      {"S-3", -3, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(LiveChannelCount(blocksOf(c.blocks)), c.analog) << c.blocks;
    EXPECT_EQ(LiveBridgeCount(blocksOf(c.blocks)), c.bridge) << c.blocks;
  }
}

TEST(FreeChannels, FiguresReserveADifferentialChannel) {
  EXPECT_EQ(PanelFreeChans(10, 6, 4, 3), 14);
  EXPECT_EQ(PanelFreeChans(36, 0, 0, 4), -4);
  const struct {
    int free, shownDiff, single, differential;
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

TEST(FreeChannels, LimitFurtherSensorsOfABlock) {
  const struct {
    bool autoChan;
    int available;
    bool differential;
    int start, reps, more;
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

TEST(FreeChannels, CountMultiplexersAndPulses) {
  EXPECT_EQ(FreeTK40MInputs(3, blocksOf("D10 D50")), 15);
  EXPECT_EQ(FreeTK40MInputs(0, blocksOf("D1")), -1);
  EXPECT_EQ(FreePulseChans({}), 2);
  EXPECT_EQ(FreePulseChans(blocksOf("D1 D3")), -2);
  const struct { int count, free, fits, left; } cases[] = {{3, -2, 1, 0}, {1, 1, 1, 1}};
  for (const auto& c : cases) {
    const PulseFit fit = FitPulseCount(c.count, c.free);
    EXPECT_EQ(fit.count, c.fits);
    EXPECT_EQ(fit.free, c.left);
  }
}

TEST(Excitation, CountsPortsAndOutputsOfBridges) {
  struct Bridge {
    int reps, exciteReps;
    bool cao = false;
  };
  const struct {
    std::vector<Bridge> bridges;
    int switched, cao;
  } cases[] = {
      {{}, 0, 0},
      {{{4, 4}}, 1, 0},
      {{{5, 4}, {1, 1}}, 3, 0},
      {{{5, 0, true}, {3, -1}}, 0, 0},
      {{{2, 2}, {3, 2, true}}, 3, 2},  // counted in both
      {{{0, 2, true}}, 0, 0},
  };
  for (const auto& c : cases) {
    Blocks blocks;
    for (const Bridge& bridge : c.bridges) {
      blocks.push_back({.Reps = bridge.reps, .MeasType = "Diff", .ExciteReps = bridge.exciteReps});
      blocks.back().CheckCAO = bridge.cao;
    }
    EXPECT_EQ(ExciteSwitched(blocks), c.switched) << blocks.size();
    EXPECT_EQ(CAOPortsTaken(blocks), c.cao) << blocks.size();
  }
  const bool used[4][2] = {{false, false}, {false, true}, {true, true}, {true, true}};
  for (int taken = 0; taken <= 3; ++taken) {
    for (int port = 1; port <= PanelCAOPorts; ++port) {
      EXPECT_EQ(CAOPortUsedByBridge(port, taken), used[taken][port - 1]) << port << taken;
    }
  }
}

TEST(StartChannels, FollowTheSizesOfTheBlocksBefore) {
  constexpr int kLeft = 99;  // a start that is not changed
  const struct {
    const char* what;
    const char *temps, *volts, *bridges;
    std::vector<int> temp, volt, bridge;
  } cases[] = {
      {"nothing", "", "", "", {1, kLeft}, {kLeft}, {kLeft}},
      {"one kind", "D3 D2 S1 S4", "", "", {1, 4, 11, 12, kLeft}, {}, {}},
      {"a gap inside a kind counts", "S3 D2 S1", "S1", "", {1, 3, 9}, {10}, {}},
      // One too low: the block before has 5 to 8.
      {"a gap before a kind does not", "S3", "D2 S2 D1", "S1", {1}, {3, 8, 6}, {13}},
      // 1 and 2 are counted, then the odd one is skipped.
      {"the same before a bridge", "S1", "", "D1 D1", {1}, {kLeft}, {2, 3}},
      {"no first sensors", "D0 S2", "S0 S2 D1", "D0 D2", {1, 1}, {kLeft, 3, 3}, {kLeft, 4}},
      {"a first thermocouple block is not looked at", "S0", "D1", "", {1, kLeft}, {1, kLeft}, {}},
      {"a block without sensors is placed, its gap counts", "S1 D0 S1", "", "", {1, 2, 3}, {}, {}},
      {"bridges by style",
       "",
       "",
       "D1/0 D1/1 D1/5 S1/2 S1/3 S2/4 S1/2",
       {1},
       {kLeft},
       {1, 2, 4, 9, 10, 12, 16}},
      {"bridges whose type is not that of the style take nothing",
       "",
       "",
       "D2/4 D2/2 S2/0 S2/7 S1/8 D1/-1 D1/6",
       {1},
       {kLeft},
       {1, 1, 1, 1, 1, 1, 1}},
      {"a type of neither kind starts as single-ended", "?2 D1", "", "", {1, 2}, {}, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    StartChans starts;
    starts.Temp.Fill(kLeft);
    starts.Volt.Fill(kLeft);
    starts.Bridge.Fill(kLeft);
    ComputeStartChans(blocksOf(c.temps), blocksOf(c.volts), blocksOf(c.bridges), starts);
    const auto expect = [](const auto& row, const std::vector<int>& wanted, const char* kind) {
      for (int i = 0; i < std::ssize(wanted); ++i) {
        EXPECT_EQ(row[i + 1], wanted[static_cast<std::size_t>(i)]) << kind << " " << i + 1;
      }
    };
    expect(starts.Temp, c.temp, "thermocouple");
    expect(starts.Volt, c.volt, "voltage");
    expect(starts.Bridge, c.bridge, "bridge");
  }
  StartChans starts;
  EXPECT_THROW(ComputeStartChans(blocksOf("D1 D1 D1 D1 D1 D1 D1 D1"), {}, {}, starts), Fault);
}

class ChannelsOfAProject : public testing::Test {
 protected:
  ChannelsOfAProject() { ORVUS_COMMON::SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(ChannelsOfAProject, SwitchToAutomaticSelectionCountsAllRows) {
  store.TempBlock[7].Reps = 8;  // whatever the counts are
  store.VoltBlock[1].Reps = 10;
  store.VoltBlock[1].MeasType = "SE";
  store.BridgeBlock[1].Reps = 5;
  store.BridgeBlock[1].Style = 1;  // six wires count four
  store.Config.TK40MQty = 2;
  EXPECT_EQ(AutoSelectionTotal(store), 36 + 2);
  EXPECT_TRUE(AutoSelectionFits(40));
  EXPECT_FALSE(AutoSelectionFits(41));
}

TEST_F(ChannelsOfAProject, LimitTheNumberOfMultiplexers) {
  const struct {
    i16 reps;  // single-ended
    int entered, fitting;
  } cases[] = {{0, 4, 4}, {33, 3, 3}, {33, 4, 3}, {34, 3, 3}, {35, 3, 2}, {40, 1, 0}, {42, 1, -1}};
  store.VoltBlock[1].MeasType = "SE";
  store.Config.TK40MQty = 4;  // the previous quantity doesn't count
  for (const auto& c : cases) {
    store.VoltBlock[1].Reps = c.reps;
    EXPECT_EQ(FittingTK40MQty(store, c.entered), c.fitting) << c.reps;
  }
}

}  // namespace
}  // namespace ostrand
