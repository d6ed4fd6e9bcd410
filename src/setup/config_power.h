// The panel that switches the logger off and on: by a condition, and at a time.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"
#include "setup/conditions.h"
#include "setup/controls/choice.h"
#include "setup/controls/numeric_field.h"
#include "setup/controls/screen.h"

namespace ostrand {

// A moment of which each part may be left open: "any".
struct OpenMoment {
  enum Part : std::size_t { kYear, kMonth, kDay, kHour, kMinute, kSecond, kWeekDay, kParts };
  std::array<std::optional<int>, kParts> parts;  // months from 1, week days from 1, Sunday

  [[nodiscard]] const std::optional<int>& operator[](Part part) const { return parts[part]; }
  std::optional<int>& operator[](Part part) { return parts[part]; }
  // No part is set.
  [[nodiscard]] bool IsOpen() const;
};

// Days of a month, from 1; a month or year left open gives the most that it can have.
int DaysOfMonth(std::optional<int> month, std::optional<int> year);

// The moment as "2024 Mar 05 06:30:00", with hyphens for what is open: "---- --- -- --:--:--".
std::string MomentPicture(const OpenMoment& moment);

// The lists of a moment.
class MomentLists {
 public:
  // The lists are named `prefix` and "Year", "Month", "Day", "Hour", "Min", "Sec", "WkDay".
  MomentLists(Screen& screen, std::string_view prefix, bool weekDays);

  std::function<void()> OnEdit;

  void Load(const OpenMoment& moment);
  [[nodiscard]] OpenMoment Moment() const;
  void Show(bool visible, bool enabled);

 private:
  [[nodiscard]] Choice* list(OpenMoment::Part part) const { return lists_[part].get(); }
  void setIndex(OpenMoment::Part part, std::optional<int> value);
  void onPick();
  void fitDays();

  std::array<std::unique_ptr<Choice>, OpenMoment::kParts> lists_;
  bool setting_ = false;
};

class PowerPanel {
 public:
  // Edits the configuration in place. `variables` must outlive the panel.
  PowerPanel(Screen& screen, Configuration& config, const ConditionVariables& variables);

  CheckBox EnablePowerOff;
  ConditionControls Condition;  // PowerOffMeasVar, PowerOffCompare, PowerOffValue
  CheckBox RemainOff;
  NumericField PowerOffTime;
  Choice PowerOffMins;  // by its codes: days, hours, minutes, seconds
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

  // A flag, from 1, was picked for the condition.
  std::function<void(int flagNumber)> OnFlag;

  // Shows what the configuration holds, while the screen is loading. Units below those that the
  // lists offer are raised.
  void Load();
  void Show(bool visible);
  // Lists the variables again, after there are others; while the screen is loading.
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
