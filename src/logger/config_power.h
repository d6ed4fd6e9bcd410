// The panel that switches the logger off and on by a condition, and at a time.
#pragma once

#include "conditions/condition_row.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "logger/config_moment.h"
#include "model/store.h"

namespace ostrand {

class PowerPanel {
 public:
  // Edits the configuration in place. `variables` must outlive the panel.
  PowerPanel(Screen& screen, Configuration& config, const ConditionVariables& variables);

  CheckBox EnablePowerOff;
  ConditionControls Condition;  // PowerOffMeasVar, PowerOffCompare, PowerOffValue
  CheckBox RemainOff;
  NumericField PowerOffTime;
  Choice PowerOffMins;  // in the order of its codes: days, hours, minutes, seconds
  Label PowerOffInterval;
  Label PowerOffCode;  // the whole statement

  CheckBox EnableTime;
  MomentLists TimeOff;
  Label PowerOffString;
  CheckBox RemainPOOff;
  NumericField PowerOffPOTime;
  Choice PowerOnMins;  // hours, minutes, seconds
  Label PowerOnInterval;
  CheckBox EnableOnTime;
  MomentLists TimeOn;
  Label PowerOnString;

  // Shows the configuration while the screen is loading. Units below the offered ones are raised.
  void Load();
  void Show(bool visible);
  // Updates the lists of variables after these changed; while the screen is loading.
  void ListVariables() { loadCondition(); }

 private:
  void bindCondition();
  void bindTimes();
  void bindFlag(CheckBox& box, flag& member);
  void loadCondition();
  void takeCondition();
  void takeTimeOff();
  void takeTimeOn();
  void refresh();

  Screen& screen_;
  Configuration& config_;
  bool visible_ = true;
};

}  // namespace ostrand
