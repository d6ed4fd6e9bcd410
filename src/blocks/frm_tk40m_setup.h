// The setup of a block on multiplexers: thermocouples or millivolts, always differential.
#pragma once

#include "blocks/analog_setup.h"
#include "blocks/thermocouple_controls.h"
#include "blocks/volt_controls.h"

namespace ostrand {

class frmTK40MSetup final : public AnalogSetup {
 public:
  Choice TK40Volts;  // OrvusAnalogTypes
  ThermocoupleControls Thermocouples;
  VoltControls Volts;

  frmTK40MSetup(const ScreenContext& context, const AnalogSetupRequest& request);

 protected:
  void showOthers() override;
  [[nodiscard]] int maxMore() const override { return List().ChannelsAvailable(ORVUS_INPUT_DIFF); }
  [[nodiscard]] std::string capacity() const override { return "multiplexer inputs are free"; }

 private:
  void onKind();
};

}  // namespace ostrand
