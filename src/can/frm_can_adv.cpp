#include "can/frm_can_adv.h"

#include "can/check_value.h"

namespace ostrand {
frmCanAdv::frmCanAdv(const ScreenContext& context, CanModuleData& module)
    : Screen(context, "frmCanAdv"),
      CanGetOSVerSig(*this, "CanGetOSVerSig"),
      CanNaNOldData(*this, "CanNaNOldData"),
      CanEnableTransmit(*this, "CanEnableTransmit"),
      module_(module) {
  Caption = "CAN MODULE, ADVANCED";
  CanGetOSVerSig.Caption = "Read operating system version and signature";
  CanNaNOldData.Caption = "Flag old data as not a number";
  CanEnableTransmit.Caption = "Enable transmit";
  const Loading loading(*this);
  CanGetOSVerSig.Checked(module.CanGetOSVerSig != 0);
  CanNaNOldData.Checked(module.CanNaNOldData != 0);
  CanEnableTransmit.Checked(module.CanEnableTransmit != 0);
}

bool frmCanAdv::onDone() {
  TakeTruth(CanGetOSVerSig, module_.CanGetOSVerSig);
  TakeTruth(CanNaNOldData, module_.CanNaNOldData);
  TakeTruth(CanEnableTransmit, module_.CanEnableTransmit);
  return true;
}

}  // namespace ostrand
