#include "blocks/frm_graphs.h"

#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kFree = "free";

std::string placeText(const MuxPlace& place) {
  return NumberText(place.multiplexer) + "-" + NumberText(place.channel);
}

}  // namespace

frmLogGraph::frmLogGraph(const ScreenContext& context, const ChartBlocks& blocks,
                         const StartChans& byHand)
    : Screen(context, "frmLogGraph") {
  const Configuration& config = context.store.Config;
  const StartChans starts = config.AutoChan != kFalse ? AutomaticStartChans(blocks) : byHand;
  const ChannelChart chart = ChannelChartOf(blocks, starts, config.TK40MQty);
  for (int channel = 1; channel <= PanelSEChans; ++channel) {
    auto& label = labels_.emplace_back(std::make_unique<Label>(*this, "SE" + NumberText(channel)));
    std::string users;
    for (const TerminalUse& use : chart[channel]) {
      if (!users.empty()) users += ", ";
      users += UseText(use);
    }
    label->Text(users.empty() ? kFree : users);
  }
}

frmTK40Graph::frmTK40Graph(const ScreenContext& context, ChannelBlocks blocks, int multiplexers)
    : Screen(context, "frmTK40Graph") {
  for (int b = 1; b <= kBlocks; ++b) {
    labels_.push_back(std::make_unique<Label>(*this, "Block" + NumberText(b)));
  }
  for (const MuxBlockPlace& place : MuxMap(blocks)) {
    labels_[static_cast<std::size_t>(place.block - 1)]->Text(placeText(place.first) + " to " +
                                                             placeText(place.last));
  }
  int input = 0;
  for (const TerminalUse& use : MuxTerminals(blocks, multiplexers)) {
    auto& label = labels_.emplace_back(std::make_unique<Label>(*this, "Mux" + NumberText(++input)));
    label->Text(use.block == 0 ? std::string(kFree) : UseText(use));
  }
}

}  // namespace ostrand
