#include "blocks/volt_controls.h"

#include "blocks/analog_setup.h"
#include "blocks/scaling_fields.h"
#include "conditions/flag_usage.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// A value after a click of its spin button, with the decimals of a step of 1.
std::string spunText(float value) { return FormatNumber(DecimalValue(value), "0"); }

}  // namespace

VoltControls::VoltControls(AnalogSetup& screen, std::string_view unitsName,
                           std::string_view solveKind)
    : Units(screen, unitsName),
      DefaultMult(screen, "DefaultMult", NumberType::kSingle),
      DefaultOffset(screen, "DefaultOffset", NumberType::kSingle),
      Range(screen, "Range"),
      CalOnSite(screen, "CalOnSite"),
      ZeroFlag(screen, "ZeroFlag"),
      Solve(screen, "Solve", "frmSolveList"),
      screen_(screen),
      solveKind_(solveKind) {
  const Face faces[] = {
      {unitsName, "Scaling", "Units"},
      {"DefaultMult", "Scaling", "Multiplier", {}, kCalibratedOnSite},
      {"DefaultOffset", "Scaling", "Offset", {}, kCalibratedOnSite},
      {"Range", "Sensors", "Range"},
      {"CalOnSite", "Scaling", "Calibration on site"},
      {"ZeroFlag", "Scaling", "Zero flag"},
      {"Solve", "Scaling", "Sol&ve"},
  };
  Describe(screen, faces);
  for (const AnalogRange& range : kAnalogRanges) {
    Range.Add(range.text);
  }
  SetZeroFlagItems(ZeroFlag, screen.Project());
  LimitUnits(Units, screen_.List().Kind().type);
  Units.OnTake = [this] { screen_.Data().DefaultUnits = Trim(Units.Text()); };
  DefaultMult.OnTake = [this] {
    screen_.Data().DefaultMult = static_cast<float>(DefaultMult.Value());
  };
  DefaultOffset.OnTake = [this] {
    screen_.Data().DefaultOffset = static_cast<float>(DefaultOffset.Value());
  };
  DefaultMult.OnSpin = [this](bool up) {
    screen_.Data().MultIncDec(up ? 1.0F : -1.0F);
    DefaultMult.Text(spunText(screen_.Data().DefaultMult));
  };
  DefaultOffset.OnSpin = [this](bool up) {
    screen_.Data().OffsetIncDec(up ? 1.0F : -1.0F);
    DefaultOffset.Text(spunText(screen_.Data().DefaultOffset));
  };
  Range.OnPick = [this] {
    screen_.Analog().RangeIndex(Range.Index());
    screen_.TakeSettleTime();
  };
  CalOnSite.OnClick = [this] { onCalOnSite(); };
  ZeroFlag.OnPick = [this] {
    screen_.Analog().ZeroFlag = static_cast<i16>(ZeroFlag.Index());
    if (ZeroFlag.Index() >= 1) {
      CheckFlagUsage(screen_.Forms(), screen_.Project(), ZeroFlag.Index(),
                     ZeroFlagUser(screen_.List().Kind().type, screen_.BlockNumber()));
    }
  };
  Solve.OnPress = [this] { solve(); };
}

void VoltControls::onCalOnSite() {
  cOrvusData& data = screen_.Data();
  screen_.Analog().SiteCal = CalOnSite.Checked() ? 1 : 0;
  if (CalOnSite.Checked()) {
    data.IsPublic = kTrue;
    data.DefaultMult = 1;
    data.DefaultOffset = 0;
  }
  screen_.Changed();
}

void VoltControls::Show() {
  const cAnalogConfig& analog = screen_.Analog();
  const bool volts = !screen_.OnThermocouples();
  Control* const ofVolts[] = {&Units, &Range, &CalOnSite, &ZeroFlag};
  for (Control* control : ofVolts) control->Show(volts, "Thermocouples do not have it.");
  Range.Index(analog.RangeIndex());
  ZeroFlag.Index(analog.ZeroFlag);
  Units.Text(screen_.Data().DefaultUnits);
  DefaultMult.Value(DecimalValue(screen_.Data().DefaultMult));
  DefaultOffset.Value(DecimalValue(screen_.Data().DefaultOffset));
  const bool calibrated = volts && analog.SiteCal != 0;
  CalOnSite.Checked(calibrated);
  DefaultMult.Enabled = DefaultOffset.Enabled = !calibrated;
  Solve.Enable(!calibrated, kCalibratedOnSite);
  screen_.Public.Enabled = !calibrated;
}

void VoltControls::solve() {
  SolveRequest request{{.kind = solveKind_, .onTemperature = screen_.OnThermocouples()},
                       screen_.Scaling()};
  if (!screen_.Solve(request)) return;
  const DefaultScaling& scaling = request.scaling;
  if (!screen_.OnThermocouples()) screen_.Data().DefaultUnits = scaling.Units;
  screen_.Data().DefaultMult = scaling.Mult;
  screen_.Data().DefaultOffset = scaling.Offset;
  screen_.Changed();
}

}  // namespace ostrand
