#include "blocks/frm_volt_setup.h"

#include "controls/edits.h"

namespace ostrand {

frmVoltSetup::frmVoltSetup(const ScreenContext& context, AnalogList& list, int block)
    : AnalogSetup(context, "frmVoltSetup", list, block),
      Panel(*this, "StartVoltChan"),
      Volts(*this, "Units", "Volts") {
  addOpener(OpenedBy(Volts.Solve, "frmSolveList"));
  addOpener(OpenedBy(FieldNames, "frmFldName"));
  load();
}

void frmVoltSetup::showOthers() {
  Panel.Show();
  Volts.Show();
}

}  // namespace ostrand
