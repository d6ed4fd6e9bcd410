// Points in time with open parts, at which the logger is switched off and on.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "controls/choice.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// A point in time; each part may be left open: "any".
struct OpenMoment {
  enum Part : std::size_t { kYear, kMonth, kDay, kHour, kMinute, kSecond, kWeekDay, kParts };
  std::array<std::optional<int>, kParts> parts;  // months from 1, week days from 1, Sunday

  [[nodiscard]] const std::optional<int>& operator[](Part part) const { return parts[part]; }
  std::optional<int>& operator[](Part part) { return parts[part]; }
  // No part is set.
  [[nodiscard]] bool IsOpen() const;
};

// Days of a month, from 1; the maximum when the month or year is open.
int DaysOfMonth(std::optional<int> month, std::optional<int> year);

// Text such as "2024 Mar 05 06:30:00", with hyphens for open parts: "---- --- -- --:--:--".
std::string MomentPicture(const OpenMoment& moment);

// The times at which the project switches the logger off and on.
OpenMoment StoredTimeOff(const Configuration& config);
OpenMoment StoredTimeOn(const Configuration& config);
void KeepTimeOff(const OpenMoment& moment, Configuration& config);
void KeepTimeOn(const OpenMoment& moment, Configuration& config);

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

}  // namespace ostrand
