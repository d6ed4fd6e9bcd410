// The panel that shuts the logger down at a low battery.
#pragma once

#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// "Interval = 10 Minutes"; "Interval = None" for 0. `unit` is one of " Seconds", " Minutes",
// " Hours" and " Days".
std::string IntervalLine(int interval, std::string_view unit);

class BatterySaverPanel {
 public:
  // Edits the configuration in place.
  BatterySaverPanel(Screen& screen, Configuration& config);

  Label SaverText;
  CheckBox DefaultBattVolt;
  NumericField BattTripVolts;
  CheckBox DoNotRetry;
  NumericField RetryInterval;
  Choice BattRetryMins;  // minutes, hours
  Label SaverInterval;

  // Shows the configuration while the screen is loading.
  void Load();
  void Show(bool visible);

 private:
  void bindTripLevel();
  void bindRetry();
  void takeTripLevel(double volts);
  void takeRetry(int interval);
  void showTripLevel();
  void showRetry();

  Screen& screen_;
  Configuration& config_;
  i16 interval_ = 0;  // for retries
};

}  // namespace ostrand
