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

}  // namespace
}  // namespace ostrand
