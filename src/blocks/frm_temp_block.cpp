#include "blocks/frm_temp_block.h"

#include "model/defaults.h"

namespace ostrand {

frmTempBlock::frmTempBlock(const ScreenContext& context)
    : PanelList(context,
                {"frmTempBlock", "frmTempSetup", "THERMOCOUPLE BLOCK", " THERMOCOUPLES",
                 ORVUS_DOBJ_BLK_TEMP},
                &ProjectStore::TempBlock, &ORVUS_COMMON::SetTempDefaults,
                {&ChartBlocks::temps, &StartChans::Temp}) {
  load();
}

}  // namespace ostrand
