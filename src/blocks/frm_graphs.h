// The chart of the panel's analog inputs and the map of the multiplexers, as rows of text.
#pragma once

#include <memory>
#include <vector>

#include "controls/screen.h"
#include "model/channel_chart.h"

namespace ostrand {

// Labels SE1 to SE40: who uses the input, or "free".
class frmLogGraph final : public Screen {
 public:
  // Under automatic selection the starts are worked out; the ones given are those selected by hand.
  frmLogGraph(const ScreenContext& context, const ChartBlocks& blocks, const StartChans& byHand);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

// Labels Block1 to Block7: "1-1 to 2-5" from multiplexer 1, channel 1 to multiplexer 2, channel 5;
// empty for blocks without sensors. Labels Mux1 to Mux100: who uses the input, or "free"; those of
// the second multiplexer begin with Mux26.
class frmTK40Graph final : public Screen {
 public:
  frmTK40Graph(const ScreenContext& context, ChannelBlocks blocks, int multiplexers);

 private:
  std::vector<std::unique_ptr<Label>> labels_;
};

}  // namespace ostrand
