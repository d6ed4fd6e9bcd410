// The setup of a voltage block.
#pragma once

#include "blocks/analog_setup.h"
#include "blocks/panel_controls.h"
#include "blocks/volt_controls.h"

namespace ostrand {

class frmVoltSetup final : public AnalogSetup {
 public:
  PanelControls Panel;
  VoltControls Volts;

  frmVoltSetup(const ScreenContext& context, const AnalogSetupRequest& request);

 protected:
  void showOthers() override;
  [[nodiscard]] int maxMore() const override { return Panel.MaxMore(); }
  [[nodiscard]] std::string capacity() const override { return Panel.Capacity(); }
};

}  // namespace ostrand
