// The chart of the panel's analog inputs and the map of the multiplexers, as rows of text.
#pragma once

#include <memory>
#include <vector>

#include "controls/screen.h"
#include "model/channel_chart.h"

namespace ostrand {

// The blocks to show. Under automatic selection the start channels are calculated; the given ones
// apply to manual selection.
struct LogGraphRequest {
  ChartBlocks blocks;
  StartChans byHand;
};

// The blocks on this many multiplexers.
struct MuxMapRequest {
  std::vector<ChannelBlock> blocks;
  int multiplexers;
};

// The button of the chart, on each list of blocks that use the panel's analog inputs.
class ChartOpener : public Opener {
 public:
  explicit ChartOpener(Screen& screen) : Opener(screen, "Chart", "frmLogGraph") {}
};

// Labels SE1 to SE40: the user of the input, or "free".
class frmLogGraph final : public Screen {
 public:
  frmLogGraph(const ScreenContext& context, const LogGraphRequest& request);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

// Labels Block1 to Block7: "1-1 to 2-5" from multiplexer 1, channel 1 to multiplexer 2, channel 5;
// empty for blocks without sensors. Labels Mux1 to Mux100: the user of the input, or "free"; the
// second multiplexer begins at Mux26.
class frmTK40Graph final : public Screen {
 public:
  frmTK40Graph(const ScreenContext& context, const MuxMapRequest& request);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

}  // namespace ostrand
