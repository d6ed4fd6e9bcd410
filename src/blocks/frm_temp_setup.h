// The setup of a thermocouple block.
#pragma once

#include "blocks/analog_setup.h"
#include "blocks/panel_controls.h"
#include "blocks/thermocouple_controls.h"

namespace ostrand {

class frmTempSetup final : public AnalogSetup {
 public:
  PanelControls Panel;
  ThermocoupleControls Thermocouples;

  frmTempSetup(const ScreenContext& context, const AnalogSetupRequest& request);

 protected:
  void showOthers() override;
  [[nodiscard]] int maxMore() const override { return Panel.MaxMore(); }
  [[nodiscard]] std::string capacity() const override { return Panel.Capacity(); }

 private:
  void onInputType();
};

}  // namespace ostrand
