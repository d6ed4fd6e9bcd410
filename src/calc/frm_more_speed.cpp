#include "calc/frm_more_speed.h"

#include <array>

#include "controls/faces.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Select the items you know and the items you want and the proper multiplier will be computed.";

constexpr Face kMoreSpeedFaces[] = {
    {"InSystem", "Known", "System", ControlKind::kOptions},
    {"InUnits", "Known", "Calibration unit", ControlKind::kOptions},
    {"InPulses", "Known", "Calibration value"},
    {"OutSystem", "Wanted", "System", ControlKind::kOptions},
    {"OutUnits", "Wanted", "Speed unit", ControlKind::kOptions},
    {"UseMins", "Wanted", "Minutes"},
    {"OutName", "Wanted", "Short name of the unit"},
};

}  // namespace

frmMoreSpeed::frmMoreSpeed(const ScreenContext& context)
    : RateCalculator(context, "frmMoreSpeed", kHelp, "Speed"),
      InSystem(*this, "InSystem"),
      InUnits(*this, "InUnits"),
      InPulses(*this, "InPulses"),
      OutSystem(*this, "OutSystem"),
      OutUnits(*this, "OutUnits"),
      UseMins(*this, "UseMins"),
      OutName(*this, "OutName"),
      record_(context.store.MoreSpeedCalc) {
  Caption = "MORE SPEED CALCULATOR";
  for (Choice* system : {&InSystem, &OutSystem}) system->SetItems({"Metric", "English"});
  listUnits();
  bindCodes(InSystem, record_.InSystem);
  bindCodes(InUnits, record_.InUnits);
  bindCodes(OutSystem, record_.OutSystem);
  bindCodes(OutUnits, record_.OutUnits);
  bindSwitch(UseMins, record_.UseMins);
  bind(InPulses, record_.InPulses);
  bind(WhatIf, record_.WhatIf);
  solveAndSettle();
  Describe(*this, kMoreSpeedFaces);
}

// The lists name the units of the systems and the time chosen; the picked index stays.
void frmMoreSpeed::listUnits() {
  MoreSpeedCalcRecord each = record_;
  std::array<std::string_view, 3> in;
  std::array<std::string_view, 3> out;
  for (std::size_t place = 0; place < in.size(); ++place) {
    each.InUnits = each.OutUnits = static_cast<i16>(place + 1);
    in[place] = MoreSpeedInName(each);
    out[place] = MoreSpeedOutName(each);
  }
  const Loading loading(*this);
  InUnits.SetItems({in[0], in[1], in[2]});
  OutUnits.SetItems({out[0], out[1], out[2]});
  InUnits.PickAt(record_.InUnits - 1);
  OutUnits.PickAt(record_.OutUnits - 1);
}

void frmMoreSpeed::solve() {
  listUnits();
  RateCalculator::solve();
  if (rates()) OutName.Text(MoreSpeedOutShortName(record_));
}

}  // namespace ostrand
