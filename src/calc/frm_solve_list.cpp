#include "calc/frm_solve_list.h"

#include "calc/frm_calc_mult_off.h"
#include "calc/frm_calc_mv_per_volt.h"
#include "calc/frm_flow_calc.h"
#include "calc/frm_more_speed.h"
#include "calc/frm_rpm_calc.h"
#include "calc/frm_rs_calc.h"
#include "calc/frm_spd_calc.h"
#include "calc/source_kinds.h"

namespace ostrand {

std::optional<ScalingAnswer> SolveScaling(const ScreenContext& context,
                                          const CalculatorSource& source) {
  frmSolveList list(context, source);
  context.host.ShowModal(list);
  return list.Result() == ModalResult::kDone ? list.Answer() : std::nullopt;
}

frmSolveList::frmSolveList(const ScreenContext& screens, const CalculatorSource& source)
    : Screen(screens, "frmSolveList"),
      MultOff(*this, "MultOff"),
      MVPerVolt(*this, "MVPerVolt"),
      Pot(*this, "Pot"),
      Rs(*this, "Rs"),
      Speed(*this, "Speed"),
      MoreSpeed(*this, "MoreSpeed"),
      Rpm(*this, "Rpm"),
      Flow(*this, "Flow") {
  for (Control* button : Controls()) button->Visible = false;
  const std::string kind = source.kind == "FieldGrid" ? source.blockKind : source.kind;
  const InputAxis axis = InputAxisOf(kind, source.onTemperature, source.inVolts);
  const bool inVolts = source.inVolts;
  const auto& with = context();
  const auto line = [with, axis] { return std::make_unique<frmCalcMultOff>(with, axis); };
  if (kind == "Pulse" || kind == "Totalize") {
    offer(Speed, "&Speed Calculator", "frmSpdCalc",
          [with] { return std::make_unique<frmSpdCalc>(with); });
    offer(MoreSpeed, "&More Speed Calculator", "frmMoreSpeed",
          [with] { return std::make_unique<frmMoreSpeed>(with); });
    offer(Rpm, "&RPM Calculator", "frmRPMCalc",
          [with] { return std::make_unique<frmRPMCalc>(with); });
    offer(Flow, "&Flow Calculator", "frmFlowCalc",
          [with] { return std::make_unique<frmFlowCalc>(with); });
    offer(MultOff, "X-&Y Calculator", "frmCalcMultOff", line);
  } else if (kind == "Brdg" && source.inOhms) {
    offer(Rs, "&Resistor Calculator", "frmRsCalc",
          [with] { return std::make_unique<frmRsCalc>(with); });
  } else if (kind == "Brdg") {
    offer(MVPerVolt, inVolts ? "Volt/Volt Calculator" : "mV/&Volt Calculator", "frmCalcmVPerVolt",
          [with, inVolts] { return std::make_unique<frmCalcmVPerVolt>(with, inVolts); });
    offer(Pot, inVolts ? "Volt/Volt X-Y Calculator" : "mV/Volt X-Y Calculator", "frmCalcPot",
          [with, axis] { return std::make_unique<frmCalcPot>(with, axis); });
  } else {
    offer(MultOff, "X-&Y Calculator", "frmCalcMultOff", line);
  }
}

void frmSolveList::offer(Button& button, std::string_view caption, std::string_view screen,
                         const Make& make) {
  const auto show = [this, make] { run(*make()); };
  button.Caption = caption;
  button.Visible = true;
  button.OnPress = show;
  addOpener({std::string(screen), "", [show](std::string_view) {
               show();
               return true;
             }});
}

void frmSolveList::run(Calculator& calculator) {
  if (!showModal(calculator)) return;
  answer_ = calculator.Answer();
  End(ModalResult::kDone);
}

}  // namespace ostrand
