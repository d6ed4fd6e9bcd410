#include "blocks/frm_volt_block.h"

#include "model/defaults.h"

namespace ostrand {

frmVoltBlock::frmVoltBlock(const ScreenContext& context)
    : PanelList(context,
                {"frmVoltBlock", "frmVoltSetup", "VOLTAGE BLOCK", " VOLTAGES", ORVUS_DOBJ_BLK_VOLT},
                &ProjectStore::VoltBlock, &ORVUS_COMMON::SetVoltDefaults,
                {&ChartBlocks::volts, &StartChans::Volt}) {
  load();
}

}  // namespace ostrand
