#include "blocks/frm_temp_setup.h"

namespace ostrand {

frmTempSetup::frmTempSetup(const ScreenContext& context, const AnalogSetupRequest& request)
    : AnalogSetup(context, "frmTempSetup", request),
      Panel(*this, "StartTempChan"),
      Thermocouples(*this, "Units", "Range") {
  Panel.OnInputType = [this] { onInputType(); };
  // Single-ended thermocouples cannot be tested for an open sensor, even if the project asks for
  // it.
  if (Analog().InputType == ORVUS_INPUT_SE) Analog().OpenSens = false;
  load();
}

void frmTempSetup::onInputType() {
  const bool differential = Analog().InputType == ORVUS_INPUT_DIFF;
  Analog().OpenSens = differential;
  if (differential) return;
  platform::MessageBox box;
  box.title = "Measurement Type Not Recommended";
  box.text = "Single-ended Thermocouple Measurements are not recommended.";
  box.icon = platform::Icon::kExclamation;
  Forms().ShowBox(box);
}

void frmTempSetup::showOthers() {
  Panel.Show();
  Thermocouples.Show();
}

}  // namespace ostrand
