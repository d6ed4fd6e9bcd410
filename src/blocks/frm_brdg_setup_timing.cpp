// The input range of a bridge block and the times of its measurements.
#include <algorithm>

#include "blocks/bridge_rules.h"
#include "blocks/frm_brdg_setup.h"
#include "conditions/field_keys.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kMicros = 2;  // index of "uSecs" in the list of integration times

}  // namespace

void frmBrdgSetup::bindTiming() {
  for (const AnalogRange& range : kAnalogRanges) Range.Add(range.text);
  Range.OnPick = [this] { onRange(); };
  OpenSensDetect.ToolTip =
      "Check for open sensor test. Increases measure time by 10 uSecs per sensor.";
  bindFlag(OpenSensDetect, &BridgeBlockData::OpenSensDetect, [this] { storeRangeCode(); });
  IntegrationRange.SetItems({"50 Hz", "60 Hz", "uSecs", "mSecs"});
  IntegrationRange.OnPick = [this] { onIntegrationRange(); };
  Integration.Limits(0, 2147483647.0);
  Integration.WholePart = true;
  Integration.OnChange = [this] { DropLeadingZeros(Integration); };
  Integration.OnTake = [this] { takeIntegration(); };
  Integration.OnSpin = [this](bool up) { spinIntegration(up); };
  SettleTime.WholePart = true;
  SettleTime.OnChange = [this] {
    DropLeadingZeros(SettleTime);
    if (SettleTime.Value() > kMaxBridgeSettling) SettleTime.Correct(NumberText(kMaxBridgeSettling));
  };
  SettleTime.OnTake = [this] {
    setSettling(TakenBridgeSettling(WholePart(SettleTime), integration()));
  };
  SettleTime.OnSpin = [this](bool up) {
    constexpr i32 kStep = 10;
    const i32 micros = WholePart(SettleTime) / kStep * kStep + (up ? kStep : -kStep);
    setSettling(std::clamp(micros, 100, kMaxBridgeSettling));
  };
}

void frmBrdgSetup::onIntegrationRange() {
  data().IntegrationRange = IntegrationRange.Index();
  const i32 forced = ForcedIntegration(IntegrationRange.Index());
  Integration.Enabled = forced == 0;
  if (IsLoading()) return;
  if (forced > 0) setIntegration(forced);
  if (IntegrationRange.Index() == kMicros) setIntegration(kMaxBridgeIntegration);
  settleLongEnough();
  showTimes();
}

void frmBrdgSetup::takeIntegration() {
  // Only a stored 2 is rounded: the mark of projects that never contained a time.
  constexpr i32 kNoTimeYet = 2;
  const i32 typed = WholePart(Integration);
  setIntegration(data().Integration == kNoTimeYet ? RoundedBridgeIntegration(typed) : typed);
  settleLongEnough();
}

void frmBrdgSetup::spinIntegration(bool up) {
  const i32 micros = WholePart(Integration);
  if (!up && micros < 1) return;
  setIntegration(up ? BridgeIntegrationUp(micros) : BridgeIntegrationDown(micros));
  if (up) settleLongEnough();
}

void frmBrdgSetup::setIntegration(i32 micros) {
  data().Integration = micros;
  Integration.Value(micros);
  list_.List.RefreshRows();
  showTimes();
}

i32 frmBrdgSetup::integration() const {
  const i32 forced = ForcedIntegration(data().IntegrationRange);
  return forced > 0 ? forced : data().Integration;
}

void frmBrdgSetup::settleLongEnough() {
  const i32 min = MinBridgeSettling(integration());
  if (min > MinBridgeSettling(0) && data().SettleTime < min) setSettling(min);
}

void frmBrdgSetup::setSettling(i32 micros) {
  data().SettleTime = micros;
  SettleTime.Value(micros);
  showTimes();
}

void frmBrdgSetup::onRange() {
  const AnalogRange& range = kAnalogRanges[static_cast<std::size_t>(Range.Index())];
  data().Range = range.text;
  OpenSensDetect.Visible = range.openSensor;
  storeRangeCode();
}

void frmBrdgSetup::storeRangeCode() {
  if (Range.Index() < 0) return;
  data().RangeNo = AnalogRangeCode(kAnalogRanges[static_cast<std::size_t>(Range.Index())],
                                   data().OpenSensDetect != kFalse);
  list_.List.RefreshRows();
  showTimes();
}

void frmBrdgSetup::showTimes() {
  data().BlockTime = BridgeBlockTime(data());
  Each.Text(MicrosText(BridgeMeasTime(data())));
  Block.Text(MicrosText(data().BlockTime));
}

}  // namespace ostrand
