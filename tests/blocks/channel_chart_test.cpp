// Users of the terminals of the panel and of the multiplexers.
#include "model/channel_chart.h"

#include "blocks/frm_graphs.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

using namespace testing;

class ChannelChartTest : public ScreenTest {};

TEST_F(ChannelChartTest, SingleEndedThenDifferentialLeavesAGap) {
  const ChartBlocks blocks = {{{3, "SE"}, {2, "Diff"}}, {}, {{1, "SE", 3}, {1, "Diff", 1}}};
  store->Config.TK40MQty = 1;
  frmLogGraph graph(context, {blocks, {}});
  const std::string_view expected[] = {"TBlk1(1)", "TBlk1(2)", "TBlk1(3)", "free",     "TBlk2(1)",
                                       "TBlk2(1)", "TBlk2(2)", "TBlk2(2)", "BBlk1(1)", "BBlk1(1)",
                                       "BBlk2(1)", "BBlk2(1)", "BBlk2(1)", "BBlk2(1)", "free"};
  for (int channel = 1; channel <= 15; ++channel) {
    EXPECT_EQ(Shown(graph, "SE" + std::to_string(channel)), expected[channel - 1]) << channel;
  }
  EXPECT_EQ(Shown(graph, "SE38"), "free");
  EXPECT_EQ(Shown(graph, "SE39"), "TK40M 1");
  EXPECT_EQ(Shown(graph, "SE40"), "TK40M 1");
}

TEST_F(ChannelChartTest, ManualBlocksMayOverlapAndExceedPanel) {
  store->Config.AutoChan = kFalse;
  StartChans starts;
  starts.Temp[1] = 2;
  starts.Volt[1] = 3;
  starts.Volt[2] = 40;
  frmLogGraph graph(context, {{{{1, "Diff"}}, {{2, "SE"}, {3, "SE"}}, {}}, starts});
  EXPECT_EQ(Shown(graph, "SE2"), "free");
  EXPECT_EQ(Shown(graph, "SE3"), "TBlk1(1), VBlk1(1)");
  EXPECT_EQ(Shown(graph, "SE4"), "TBlk1(1), VBlk1(2)");
  EXPECT_EQ(Shown(graph, "SE40"), "VBlk2(1)");
}

TEST_F(ChannelChartTest, BlocksFollowEachOtherOverTheMultiplexers) {
  struct Case {
    std::vector<ChannelBlock> blocks;
    std::vector<MuxBlockPlace> places;
  };
  const Case cases[] = {
      {{{30}, {20}}, {{1, {1, 1}, {2, 5}}, {2, {2, 6}, {2, 25}}}},
      {{{25}, {1}}, {{1, {1, 1}, {1, 25}}, {2, {2, 1}, {2, 1}}}},
      {{{0}, {25}, {0}, {75}}, {{2, {1, 1}, {1, 25}}, {4, {2, 1}, {4, 25}}}},
      {{}, {}},
  };
  for (const Case& row : cases) EXPECT_EQ(MuxMap(row.blocks), row.places);
}

TEST_F(ChannelChartTest, EachMultiplexerIsATableOfItsInputs) {
  const frmTK40Graph graph(context, {{{30, "Diff"}}, 2});
  const auto placeOf = [&graph](std::string_view name) {
    const Control& input = *graph.Find(name);
    return input.Group + ' ' + std::to_string(input.Row);
  };
  EXPECT_EQ(placeOf("Mux1"), "Multiplexer 1 1");
  EXPECT_EQ(placeOf("Mux25"), "Multiplexer 1 25");
  EXPECT_EQ(placeOf("Mux26"), "Multiplexer 2 1");
  EXPECT_EQ(placeOf("Mux50"), "Multiplexer 2 25");
}

}  // namespace
}  // namespace ostrand
