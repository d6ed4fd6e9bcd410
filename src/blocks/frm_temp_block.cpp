#include "blocks/frm_temp_block.h"

#include "blocks/frm_temp_setup.h"
#include "model/defaults.h"

namespace ostrand {

frmTempBlock::frmTempBlock(const ScreenContext& context, SetupHooks hooks)
    : PanelList(context, std::move(hooks),
                {"frmTempBlock", "frmTempSetup", "THERMOCOUPLE BLOCK", " THERMOCOUPLES",
                 ORVUS_DOBJ_BLK_TEMP},
                &ProjectStore::TempBlock, &ORVUS_COMMON::SetTempDefaults,
                {&ChartBlocks::temps, &StartChans::Temp}) {
  load();
}

std::unique_ptr<Screen> frmTempBlock::makeSetup(int block) {
  return std::make_unique<frmTempSetup>(context(), *this, block);
}

}  // namespace ostrand
