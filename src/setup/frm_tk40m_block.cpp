#include "setup/frm_tk40m_block.h"

#include "model/defaults.h"
#include "setup/controls/edits.h"
#include "setup/frm_tk40m_setup.h"
#include "text/number.h"

namespace ostrand {

frmTK40MBlock::frmTK40MBlock(const ScreenContext& context, SetupHooks hooks)
    : AnalogGroupList(
          context, std::move(hooks),
          {"frmTK40MBlock", "frmTK40MSetup", "TK40M BLOCK", " TK40M", ORVUS_DOBJ_BLK_TK40M},
          &ProjectStore::TK40MBlock, &ORVUS_COMMON::SetTK40MDefaults),
      TK40MCount(*this, "TK40MCount"),
      FreeChannels(*this, "FreeChannels"),
      ReferenceTemp(*this, "ReferenceTemp") {
  FreeChannels.Caption = "FREE CHANNELS";
  TK40MCount.Text("TK40M Count = " + NumberText(int{store().Config.TK40MQty}));
  ReferenceTemp.OnPress = [this] {
    if (!Hooks.ReferenceOutput) return;
    referenceOutput_ = true;
    Hooks.ReferenceOutput();
  };
  addOpener({"frmTK40Graph", "", [this](std::string_view) {
               frmTK40Graph graph(this->context(), liveBlocks(), store().Config.TK40MQty);
               showModal(graph);
               return true;
             }});
  addOpener(OpenedBy(ReferenceTemp, "frmPortTables"));
  load();
}

std::unique_ptr<Screen> frmTK40MBlock::makeSetup(int block) {
  return std::make_unique<frmTK40MSetup>(context(), *this, block);
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
  referenceOutput_ = anyThermocouples();
  ReferenceTemp.Enabled = referenceOutput_ && Hooks.ReferenceOutput != nullptr;
}

void frmTK40MBlock::storeRecords(int count) {
  i16& output = store().Config.TcConfigOpts[1];
  if ((output != 0) != referenceOutput_) output = referenceOutput_ ? 1 : 0;
  AnalogGroupList::storeRecords(count);
}

}  // namespace ostrand
