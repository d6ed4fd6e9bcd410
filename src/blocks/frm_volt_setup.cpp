#include "blocks/frm_volt_setup.h"

namespace ostrand {

frmVoltSetup::frmVoltSetup(const ScreenContext& context, const AnalogSetupRequest& request)
    : AnalogSetup(context, "frmVoltSetup", request),
      Panel(*this, "StartVoltChan"),
      Volts(*this, "Units", "Volts") {
  load();
}

void frmVoltSetup::showOthers() {
  Panel.Show();
  Volts.Show();
}

}  // namespace ostrand
