#include "calc/frm_rs_calc.h"

#include "controls/faces.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kHelp =
    "Click on the desired output units and enter the value of Rf in Ohms. The proper multiplier "
    "will be computed.";

constexpr Face kResistorFaces[] = {
    {"RsOhms", "Resistor", "Rf (ohms)"},
    {"Units", "Output", "Output units", ControlKind::kOptions},
    {"Multiplier", "Output", "Multiplier", ControlKind::kFigure},
};

}  // namespace

frmRsCalc::frmRsCalc(const ScreenContext& context)
    : Calculator(context, "frmRsCalc", kHelp),
      RsOhms(*this, "RsOhms"),
      Units(*this, "Units"),
      Multiplier(*this, "Multiplier"),
      record_(context.store.RsCalc) {
  Caption = "RESISTOR CALCULATOR";
  bind(RsOhms, record_.RsOhms);
  Units.SetItems({kOhms, kKiloOhms});
  Units.PickAt(SameText(record_.Units, kKiloOhms) ? 1 : 0);
  Units.OnPick = [this] {
    record_.Units = Units.Text();
    solveAndSettle();
  };
  solveAndSettle();
  Describe(*this, kResistorFaces);
}

void frmRsCalc::solve() {
  const auto answer = ResistanceMultiplier(record_);
  kept_.Take(answer ? std::optional<Shown>({*answer, Units.Text()}) : std::nullopt);
  if (kept_.Shown()) Multiplier.Text(kept_.Shown()->multiplier);
}

std::optional<ScalingAnswer> frmRsCalc::answerShown() const {
  if (!kept_.Shown()) return std::nullopt;
  const auto multiplier = ResistanceHandedBack(kept_.Shown()->multiplier);
  if (!multiplier) return std::nullopt;
  return ScalingAnswer{*multiplier, std::nullopt, kept_.Shown()->units};
}

}  // namespace ostrand
