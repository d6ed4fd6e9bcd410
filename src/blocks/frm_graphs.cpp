#include "blocks/frm_graphs.h"

#include "controls/faces.h"
#include "model/channels.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kFree = "free";

constexpr Face kChartFaces[] = {{"SE#", "Analog inputs", "Used by", ControlKind::kPicture}};
constexpr Face kMapFaces[] = {{"Block#", "Blocks", "Multiplexer-channel"}};

std::string placeText(const MuxPlace& place) {
  return NumberText(place.multiplexer) + "-" + NumberText(place.channel);
}

}  // namespace

frmLogGraph::frmLogGraph(const ScreenContext& context, const LogGraphRequest& request)
    : Screen(context, "frmLogGraph") {
  Caption = "CHANNEL CHART";
  const Configuration& config = context.store.Config;
  const StartChans starts =
      config.AutoChan != kFalse ? AutomaticStartChans(request.blocks) : request.byHand;
  const ChannelChart chart = ChannelChartOf(request.blocks, starts, config.TK40MQty);
  for (int channel = 1; channel <= PanelSEChans; ++channel) {
    auto& label = labels_.emplace_back(std::make_unique<Label>(*this, "SE" + NumberText(channel)));
    std::string users;
    for (const TerminalUse& use : chart[channel]) {
      if (!users.empty()) users += ", ";
      users += UseText(use);
    }
    label->Text(users.empty() ? kFree : users);
  }
  Describe(*this, kChartFaces);
}

frmTK40Graph::frmTK40Graph(const ScreenContext& context, const MuxMapRequest& request)
    : Screen(context, "frmTK40Graph") {
  Caption = "MULTIPLEXER MAP";
  for (int b = 1; b <= kBlocks; ++b) {
    labels_.push_back(std::make_unique<Label>(*this, "Block" + NumberText(b)));
  }
  for (const MuxBlockPlace& place : MuxMap(request.blocks)) {
    labels_[static_cast<std::size_t>(place.block - 1)]->Text(placeText(place.first) + " to " +
                                                             placeText(place.last));
  }
  int input = 0;
  for (const TerminalUse& use : MuxTerminals(request.blocks, request.multiplexers)) {
    auto& label =
        labels_.emplace_back(std::make_unique<Label>(*this, "Mux" + NumberText(input + 1)));
    label->Kind(ControlKind::kPicture);
    label->Group = "Multiplexer " + NumberText(input / TK40MChansPerUnit + 1);
    label->Row = input % TK40MChansPerUnit + 1;
    label->Caption = "Used by";
    ++input;
    label->Text(use.block == 0 ? std::string(kFree) : UseText(use));
  }
  Describe(*this, kMapFaces);
}

}  // namespace ostrand
