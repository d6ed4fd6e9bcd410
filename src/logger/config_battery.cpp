#include "logger/config_battery.h"

#include <algorithm>

#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr double kDefaultTripVolts = 11.5;
constexpr double kMinTripVolts = 10.5;
constexpr double kMaxTripVolts = 14;

}  // namespace

std::string IntervalLine(int interval, std::string_view unit) {
  if (interval == 0) return "Interval = None";
  return "Interval = " + NumberText(interval) + std::string(unit);
}

BatterySaverPanel::BatterySaverPanel(Screen& screen, Configuration& config)
    : SaverText(screen, "SaverText"),
      DefaultBattVolt(screen, "DefaultBattVolt"),
      BattTripVolts(screen, "BattTripVolts", NumberType::kSingle),
      DoNotRetry(screen, "DoNotRetry"),
      RetryInterval(screen, "RetryInterval", NumberType::kInteger),
      BattRetryMins(screen, "BattRetryMins"),
      SaverInterval(screen, "SaverInterval"),
      screen_(screen),
      config_(config) {
  SaverText.Text(
      "This provides a way to shut down the logger at a low battery voltage and turn it back on "
      "after a specified period of time.  If the battery voltage is still low after 10 minutes of "
      "operation, the logger will again turn off and the process will repeat itself.");
  BattTripVolts.Limits(kMinTripVolts, kMaxTripVolts);
  RetryInterval.Limits(0, RetryInterval.Max());
  BattRetryMins.SetItems({"Minutes", "Hours"});
  bindTripLevel();
  bindRetry();
}

void BatterySaverPanel::bindTripLevel() {
  DefaultBattVolt.OnClick = [this] {
    if (screen_.IsLoading()) return;
    config_.DefaultBattVolt = DefaultBattVolt.Checked() ? kTrue : kFalse;
    if (DefaultBattVolt.Checked()) takeTripLevel(kDefaultTripVolts);
    showTripLevel();
  };
  BattTripVolts.OnTake = [this] { takeTripLevel(BattTripVolts.Value()); };
  BattTripVolts.OnSpin = [this](bool up) {
    const double tenths = RoundHalfEven(BattTripVolts.Value() * 10) + (up ? 1 : -1);
    takeTripLevel(std::clamp(tenths / 10, kMinTripVolts, kMaxTripVolts));
  };
}

void BatterySaverPanel::bindRetry() {
  DoNotRetry.OnClick = [this] {
    if (screen_.IsLoading()) return;
    // An interval of 0 keeps the logger off.
    config_.LowBattRetry = DoNotRetry.Checked() ? kFalse : kTrue;
    config_.RetryInterval = DoNotRetry.Checked() ? i16{0} : interval_;
    showRetry();
  };
  RetryInterval.OnTake = [this] { takeRetry(static_cast<int>(RetryInterval.Value())); };
  RetryInterval.OnSpin = [this](bool up) {
    takeRetry(static_cast<int>(RetryInterval.Value()) + (up ? 1 : -1));
  };
  BattRetryMins.OnPick = [this] {
    if (screen_.IsLoading()) return;
    config_.BattRetryMins = BattRetryMins.Index() == 0 ? kTrue : kFalse;
    showRetry();
  };
}

void BatterySaverPanel::Load() {
  DefaultBattVolt.Check(config_.DefaultBattVolt != kFalse);
  DoNotRetry.Check(config_.LowBattRetry == kFalse);
  BattRetryMins.PickAt(config_.BattRetryMins != kFalse ? 0 : 1);
  interval_ = config_.RetryInterval;
  if (DefaultBattVolt.Checked()) takeTripLevel(kDefaultTripVolts);
  showTripLevel();
  showRetry();
}

void BatterySaverPanel::Show(bool visible) {
  for (Control* control :
       std::initializer_list<Control*>{&SaverText, &DefaultBattVolt, &BattTripVolts, &DoNotRetry,
                                       &RetryInterval, &BattRetryMins, &SaverInterval}) {
    control->Visible = visible;
  }
}

void BatterySaverPanel::takeTripLevel(double volts) {
  BattTripVolts.Text(FormatNumber(volts, "#0.0"));
  config_.BattTripVolts = ToSingle(BattTripVolts.Text()).value_or(config_.BattTripVolts);
}

void BatterySaverPanel::takeRetry(int interval) {
  interval_ = static_cast<i16>(std::clamp<int>(interval, 0, 32767));
  config_.RetryInterval = interval_;
  showRetry();
}

void BatterySaverPanel::showTripLevel() {
  BattTripVolts.Enabled = !DefaultBattVolt.Checked();
  BattTripVolts.Text(FormatNumber(DecimalValue(config_.BattTripVolts), "#0.0"));
}

void BatterySaverPanel::showRetry() {
  RetryInterval.Enabled = BattRetryMins.Enabled = !DoNotRetry.Checked();
  RetryInterval.Value(config_.RetryInterval);
  const int repeat = DoNotRetry.Checked() ? 0 : config_.RetryInterval;
  SaverInterval.Text(IntervalLine(repeat, BattRetryMins.Index() == 0 ? " Minutes" : " Hours"));
}

}  // namespace ostrand
