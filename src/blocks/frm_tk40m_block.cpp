#include "blocks/frm_tk40m_block.h"

#include <algorithm>
#include <iterator>

#include "model/defaults.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kMultiplexers = "Multiplexers";
constexpr Face kFaces[] = {
    {"TK40MCount", kMultiplexers, "Multiplexers"},
    {"FreeChannels", kMultiplexers, "FREE CHANNELS", ControlKind::kFigure},
    {"ReferenceTemp", kMultiplexers, "&Reference temperature..."},
    {"Map", kMultiplexers, "Multiplexer &map..."},
};

}  // namespace

frmTK40MBlock::frmTK40MBlock(const ScreenContext& context)
    : AnalogGroupList(
          context,
          {"frmTK40MBlock", "frmTK40MSetup", "TK40M BLOCK", " TK40M", ORVUS_DOBJ_BLK_TK40M},
          &ProjectStore::TK40MBlock, &ORVUS_COMMON::SetTK40MDefaults),
      TK40MCount(*this, "TK40MCount"),
      FreeChannels(*this, "FreeChannels"),
      ReferenceTemp(*this, "ReferenceTemp", "frmPortTables"),
      Map(*this, "Map", "frmTK40Graph") {
  Describe(*this, kFaces);
  TK40MCount.Text("TK40M Count = " + NumberText(int{store().Config.TK40MQty}));
  ReferenceTemp.OnPress = [this] {
    ValueOutputsRequest request{SingleValue::kTK40MRef};
    OpenScreen(this->context(), ReferenceTemp.Opens(), request);
  };
  Map.OnPress = [this] {
    MuxMapRequest request{liveBlocks(), store().Config.TK40MQty};
    OpenScreen(this->context(), Map.Opens(), request);
  };
  load();
}

// However the list ends, the reference depends on the blocks that remain in the project.
frmTK40MBlock::~frmTK40MBlock() {
  const TK40MBlockGroup& group = project();
  const int count = std::min<int>(group.BlockCount, kBlocks);
  setReference(std::any_of(group.Blocks.begin(),
                           std::next(group.Blocks.begin(), std::max(count, 0)),
                           [](const TK40MBlockData& block) {
                             return block.TK40Volts != ORVUS_MEASURE_VOLT && block.Reps >= 1;
                           }));
}

int frmTK40MBlock::ChannelsAvailable() const {
  return FreeTK40MInputs(store().Config.TK40MQty, liveBlocks());
}

bool frmTK40MBlock::anyThermocouples() const {
  for (int b = 1; b <= Blocks.Count(); ++b) {
    if (Data(b).Analog()->MeasureType() == ORVUS_MEASURE_TC && Data(b).Reps >= 1) return true;
  }
  return false;
}

void frmTK40MBlock::showFigures() {
  FreeChannels.Text(NumberText(ChannelsAvailable()));
  const bool measured = anyThermocouples();
  setReference(measured);
  ReferenceTemp.Enable(measured, "No block measures thermocouples.");
}

// The measurement of the reference temperature; any number other than 0 means on.
void frmTK40MBlock::setReference(bool measured) {
  i16& output = store().Config.TcConfigOpts[1];
  if ((output != 0) != measured) output = measured ? 1 : 0;
}

}  // namespace ostrand
