// The chart of the panel's analog inputs and the map of the multiplexers, as rows of text.
#pragma once

#include <memory>
#include <vector>

#include "controls/screen.h"
#include "model/channel_chart.h"

namespace ostrand {

// The blocks to be shown. Under automatic selection the starts are worked out; the ones given are
// those selected by hand.
struct LogGraphRequest {
  ChartBlocks blocks;
  StartChans byHand;
};

// The blocks on so many multiplexers.
struct MuxMapRequest {
  std::vector<ChannelBlock> blocks;
  int multiplexers;
};

// The button of the chart, on each list of blocks that use the panel's analog inputs.
class ChartOpener : public Opener {
 public:
  explicit ChartOpener(Screen& screen) : Opener(screen, "Chart", "frmLogGraph") {}
};

// Labels SE1 to SE40: who uses the input, or "free".
class frmLogGraph final : public Screen {
 public:
  frmLogGraph(const ScreenContext& context, const LogGraphRequest& request);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

// Labels Block1 to Block7: "1-1 to 2-5" from multiplexer 1, channel 1 to multiplexer 2, channel 5;
// empty for blocks without sensors. Labels Mux1 to Mux100: who uses the input, or "free"; those of
// the second multiplexer begin with Mux26.
class frmTK40Graph final : public Screen {
 public:
  frmTK40Graph(const ScreenContext& context, const MuxMapRequest& request);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

}  // namespace ostrand
