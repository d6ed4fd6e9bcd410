#include "calc/frm_solve_list.h"

#include "controls/faces.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr Face kSolveListFaces[] = {
    {"MultOff", "Calculators", "X-&Y Calculator"},
    {"MVPerVolt", "Calculators"},
    {"Pot", "Calculators"},
    {"Rs", "Calculators", "&Resistor calculator"},
    {"Speed", "Calculators", "&Speed calculator"},
    {"MoreSpeed", "Calculators", "&More speed calculator"},
    {"Rpm", "Calculators", "&RPM calculator"},
    {"Flow", "Calculators", "&Flow calculator"},
};

void take(const ScalingAnswer& answer, DefaultScaling& scaling) {
  scaling.Mult = ToSingle(answer.multiplier).value_or(scaling.Mult);
  if (answer.offset) scaling.Offset = ToSingle(*answer.offset).value_or(scaling.Offset);
  if (!answer.units.empty()) scaling.Units = answer.units;
}

}  // namespace

frmSolveList::frmSolveList(const ScreenContext& context, SolveRequest& request)
    : Screen(context, "frmSolveList"),
      MultOff(*this, "MultOff", "frmCalcMultOff"),
      MVPerVolt(*this, "MVPerVolt", "frmCalcmVPerVolt"),
      Pot(*this, "Pot", "frmCalcPot"),
      Rs(*this, "Rs", "frmRsCalc"),
      Speed(*this, "Speed", "frmSpdCalc"),
      MoreSpeed(*this, "MoreSpeed", "frmMoreSpeed"),
      Rpm(*this, "Rpm", "frmRPMCalc"),
      Flow(*this, "Flow", "frmFlowCalc"),
      request_(request) {
  Caption = "CALCULATORS";
  const SolveSource& source = request.source;
  const std::string_view kind = source.kind == "FieldGrid" ? source.blockKind : source.kind;
  const bool inVolts = source.inVolts;
  calculator_ = {InputAxisOf(kind, source.onTemperature, inVolts), inVolts};
  MVPerVolt.Caption = inVolts ? "Volt/Volt Calculator" : "mV/&Volt Calculator";
  Pot.Caption = inVolts ? "Volt/Volt X-Y Calculator" : "mV/Volt X-Y Calculator";
  const bool pulses = kind == "Pulse" || kind == "Totalize";
  const bool bridge = kind == "Brdg";
  offer({&Speed, &MoreSpeed, &Rpm, &Flow}, pulses);
  offer({&Rs}, bridge && source.inOhms);
  offer({&MVPerVolt, &Pot}, bridge && !source.inOhms);
  offer({&MultOff}, !bridge);
  Describe(*this, kSolveListFaces);
}

void frmSolveList::offer(std::initializer_list<Opener*> calculators, bool fit) {
  for (Opener* calculator : calculators) {
    calculator->Show(fit, "This calculator does not fit the measurement.");
    calculator->OnPress = [this, calculator] { run(*calculator); };
  }
}

void frmSolveList::run(const Opener& opener) {
  if (!OpenScreen(context(), opener.Opens(), calculator_)) return;
  request_.answered = calculator_.answer.has_value();
  if (request_.answered) take(*calculator_.answer, request_.scaling);
  End(ModalResult::kDone);
}

}  // namespace ostrand
