#include "setup/frm_volt_setup.h"

namespace ostrand {

frmVoltSetup::frmVoltSetup(const ScreenContext& context, AnalogList& list, int block)
    : AnalogSetup(context, "frmVoltSetup", list, block),
      Panel(*this, "StartVoltChan"),
      Volts(*this, "Units", "Volts") {
  load();
}

void frmVoltSetup::showOthers() {
  Panel.Show();
  Volts.Show();
}

}  // namespace ostrand
