#include "can/frm_can_adv.h"

#include "can/check_value.h"
#include "can/faces.h"

namespace ostrand {
frmCanAdv::frmCanAdv(const ScreenContext& context, CanModuleData& module)
    : Screen(context, "frmCanAdv"),
      CanGetOSVerSig(*this, "CanGetOSVerSig"),
      CanNaNOldData(*this, "CanNaNOldData"),
      CanEnableTransmit(*this, "CanEnableTransmit"),
      module_(module) {
  Caption = "CAN MODULE, ADVANCED";
  const Loading loading(*this);
  CanGetOSVerSig.Checked(module.CanGetOSVerSig != 0);
  CanNaNOldData.Checked(module.CanNaNOldData != 0);
  CanEnableTransmit.Checked(module.CanEnableTransmit != 0);
  Describe(*this, kCanAdvFaces);
}

bool frmCanAdv::onDone() {
  TakeTruth(CanGetOSVerSig, module_.CanGetOSVerSig);
  TakeTruth(CanNaNOldData, module_.CanNaNOldData);
  TakeTruth(CanEnableTransmit, module_.CanEnableTransmit);
  return true;
}

}  // namespace ostrand
