#include "blocks/frm_tk40m_setup.h"

namespace ostrand {
namespace {

constexpr i32 kFirstLowRange = 3;  // "200 mV"
constexpr i32 kDefaultRange = 4;   // "50 mV"
constexpr i32 kLowestRange = 5;    // "20 mV"

}  // namespace

frmTK40MSetup::frmTK40MSetup(const ScreenContext& context, const AnalogSetupRequest& request)
    : AnalogSetup(context, "frmTK40MSetup", request),
      TK40Volts(*this, "TK40Volts"),
      Thermocouples(*this, "TempScale", "TCRange"),
      Volts(*this, "LongUnits", "TK40M") {
  constexpr Face kFaces[] = {{"TK40Volts", "Sensors", "Measurement kind", ControlKind::kOptions}};
  Describe(*this, kFaces);
  TK40Volts.SetItems({"Thermocouples", "Millivolts"});
  TK40Volts.OnPick = [this] { onKind(); };
  load();
}

void frmTK40MSetup::onKind() {
  cAnalogConfig& analog = Analog();
  analog.MeasureType(static_cast<OrvusAnalogTypes>(TK40Volts.Index()));
  const i32 range = analog.RangeIndex();
  if (OnThermocouples() && (range < kFirstLowRange || range == kLowestRange)) {
    analog.RangeIndex(kDefaultRange);
  }
  // Separate values of the repetitions belonged to the other kind.
  ClearScaling();
  TakeSettleTime();
}

void frmTK40MSetup::showOthers() {
  TK40Volts.Index(Analog().MeasureType());
  Thermocouples.Show();
  Volts.Show();
}

}  // namespace ostrand
