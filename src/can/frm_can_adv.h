// Advanced options of a CAN module.
#pragma once

#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// Done changes `module`, which must outlive the screen.
class frmCanAdv final : public Screen {
 public:
  frmCanAdv(const ScreenContext& context, CanModuleData& module);

  CheckBox CanGetOSVerSig;     // reads version and signature of the module's system
  CheckBox CanNaNOldData;      // old data becomes "not a number"
  CheckBox CanEnableTransmit;  // the module may transmit

 protected:
  bool onDone() override;

 private:
  CanModuleData& module_;
};

}  // namespace ostrand
