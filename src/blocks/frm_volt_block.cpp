#include "blocks/frm_volt_block.h"

#include "blocks/frm_volt_setup.h"
#include "model/defaults.h"

namespace ostrand {

frmVoltBlock::frmVoltBlock(const ScreenContext& context, SetupHooks hooks)
    : PanelList(context, std::move(hooks),
                {"frmVoltBlock", "frmVoltSetup", "VOLTAGE BLOCK", " VOLTAGES", ORVUS_DOBJ_BLK_VOLT},
                &ProjectStore::VoltBlock, &ORVUS_COMMON::SetVoltDefaults,
                {&ChartBlocks::volts, &StartChans::Volt}) {
  load();
}

std::unique_ptr<Screen> frmVoltBlock::makeSetup(int block) {
  return std::make_unique<frmVoltSetup>(context(), *this, block);
}

}  // namespace ostrand
