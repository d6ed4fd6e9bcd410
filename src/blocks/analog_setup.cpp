#include "blocks/analog_setup.h"

#include <algorithm>

#include "conditions/field_keys.h"
#include "model/names.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr i32 kSettleOfHumFilter = 3000;  // with 50 or 60 Hz
constexpr i32 kSettleOfMicros = 100;
constexpr i32 kLongestMicros = 16000;
constexpr i32 kMinSpunDown = 200;

}  // namespace

AnalogSetup::AnalogSetup(const ScreenContext& context, std::string_view name,
                         const AnalogSetupRequest& request)
    : Screen(context, name),
      Reps(*this, "Reps", NumberType::kInteger),
      OpenSensDetect(*this, "OpenSensDetect"),
      ReverseMes(*this, "ReverseMes"),
      IntegrationRange(*this, "IntegrationRange"),
      Integration(*this, "Integration", NumberType::kLong),
      SettleTime(*this, "SettleTime", NumberType::kLong),
      DataResolution(*this, "DataResolution"),
      Public(*this, "Public"),
      Each(*this, "Each"),
      Block(*this, "Block"),
      FieldNames(*this, "FieldNames", "frmFldName"),
      Outputs(*this, context.store),
      list_(request.list),
      block_(request.block),
      scaling_(Scaling()) {
  Caption = NumberText(block_) + " BLOCK " + std::string(list_.Kind().plural);
  Reps.Limits(0, kReps);
  IntegrationRange.SetItems({"50 Hz", "60 Hz", "uSecs"});
  DataResolution.SetItems({"FP2", "IEEE4"});
  bind();
  Describe(*this, kAnalogSetupFaces);
}

void AnalogSetup::bind() {
  Reps.OnTake = [this] {
    Data().Reps = static_cast<i16>(Reps.Value());
    TakeReps();
  };
  Reps.OnSpin = [this](bool up) { spinReps(up); };
  OpenSensDetect.OnClick = [this] {
    Analog().OpenSens = OpenSensDetect.Checked();
    Changed();
  };
  ReverseMes.OnClick = [this] {
    Analog().RevMeas = ReverseMes.Checked();
    Changed();
  };
  Reps.WhyChanged = [this] {
    return maxMore() > 0 ? "" : "only " + NumberText(Data().Reps) + " " + capacity();
  };
  IntegrationRange.OnPick = [this] { onIntegrationRange(); };
  Integration.OnTake = [this] {
    Analog().IntegTime(static_cast<i32>(Integration.Value()));
    TakeSettleTime();
  };
  Integration.OnSpin = [this](bool up) { spinIntegration(up); };
  SettleTime.OnTake = [this] {
    Analog().SettleTime(static_cast<i32>(SettleTime.Value()));
    Changed();
  };
  SettleTime.OnSpin = [this](bool up) {
    Analog().SettleIncDec(up);
    Changed();
  };
  DataResolution.OnPick = [this] {
    Data().DataType = static_cast<OrvusOutputDataTypes>(DataResolution.Index());
  };
  Public.OnClick = [this] { Data().IsPublic = Public.Checked() ? kTrue : kFalse; };
  FieldNames.OnPress = [this] { openFieldNames(); };
  Outputs.AskBy(context(), DataResolution, SourceName(list_.Kind().type, block_));
}

void AnalogSetup::load() {
  guarded("ShowSetup", [this] {
    const Loading loading(*this);
    Outputs.Show(list_.Output(block_));
    Changed();
  });
}

DefaultScaling AnalogSetup::Scaling() const {
  return {Data().DefaultUnits, Data().DefaultMult, Data().DefaultOffset};
}

void AnalogSetup::GiveScaling() {
  if (Data().Reps < 1) return ClearScaling();
  OverwriteAliases(list_.AliasRows(block_), Scaling());
  scaling_.Restart(Scaling());
}

void AnalogSetup::ClearScaling() {
  ClearAliases(list_.WrittenAliasRows(block_));
  scaling_.Restart(Scaling());
}

void AnalogSetup::TakeReps() {
  i16& reps = Data().Reps;
  for (int more = maxMore(); more < 0 && reps >= 1; more = maxMore()) {
    Forms().Beep();
    reps = static_cast<i16>(std::max(reps + more, 0));
  }
  Changed();
}

void AnalogSetup::spinReps(bool up) {
  const i16 before = Data().Reps;
  Data().Reps = static_cast<i16>(std::clamp(before + (up ? 1 : -1), 0, kReps));
  if (Data().Reps == before) Forms().Beep();
  TakeReps();
}

void AnalogSetup::TakeSettleTime() {
  Analog().SettleTime(Analog().SettleTime());
  Changed();
}

void AnalogSetup::spinIntegration(bool up) {
  if (Analog().IntegIncDec(up) < kMinSpunDown && !up) Analog().IntegTime(kMinSpunDown);
  TakeSettleTime();
}

void AnalogSetup::onIntegrationRange() {
  const int code = IntegrationRange.Index();
  const bool micros = code == ORVUS_MEAS_INTEG_USECS;
  const i32 before = Analog().IntegTime();
  Analog().IntegCode(code);
  // With 50 and 60 Hz the code determines the time.
  if (!micros || before > kLongestMicros) Analog().IntegTime(kLongestMicros);
  Analog().SettleTime(micros ? kSettleOfMicros : kSettleOfHumFilter);
  Changed();
}

void AnalogSetup::Changed() {
  const cAnalogConfig& analog = Analog();
  const bool differential = analog.InputType == ORVUS_INPUT_DIFF;
  Reps.Value(Data().Reps);
  DataResolution.Index(Data().DataType);
  Public.Checked(Data().IsPublic != kFalse);
  // Voltage hides the test for an open sensor when it cannot work, thermocouples disable it.
  OpenSensDetect.Checked(analog.OpenSens);
  OpenSensDetect.Visible = analog.OpenSensIsValid() && (differential || OnThermocouples());
  OpenSensDetect.Enabled = differential;
  ReverseMes.Checked(analog.RevMeas);
  ReverseMes.Caption = differential ? "Re&v Mes" : "&Off Mes";
  ReverseMes.ToolTip = differential
                           ? "Check to measure with high side referenced to low then make a 2nd "
                             "measurement with inputs reversed."
                           : "Check to measure offset prior to making measurement.";
  IntegrationRange.Index(analog.IntegCode());
  Integration.Value(analog.IntegTime());
  Integration.Enabled = analog.IntegCode() == ORVUS_MEAS_INTEG_USECS;
  SettleTime.Value(analog.SettleTime());
  Each.Text(MicrosText(Data().MeasTime()));
  Block.Text(MicrosText(Data().BlockTime()));
  FieldNames.Enable(Data().Reps > 0, kNoSensors);
  showOthers();
  list_.Refresh();
}

void AnalogSetup::openFieldNames() {
  scaling_.Follow(list_.WrittenAliasRows(block_), Scaling());
  FieldNamesRequest request;
  request.kind = list_.Kind().type;
  request.block = block_;
  request.name = Data().DefaultName();
  request.defaults = Scaling();
  request.solveSource.onTemperature = OnThermocouples();
  request.aliases = Aliases();
  request.calibrated = Analog().SiteCal != 0;
  request.onRename = [this](const AliasRenames& renames) { list_.Renamed(renames); };
  OpenScreen(context(), FieldNames.Opens(), request);
}

bool AnalogSetup::onDone() {
  if (!scaling_.Ask(Forms(), Scaling(), Aliases(), [this] { openFieldNames(); })) return false;
  scaling_.Follow(Aliases(), Scaling());
  ClearRowsBeyond(list_.WrittenAliasRows(block_), Data().Reps);
  return true;
}

}  // namespace ostrand
