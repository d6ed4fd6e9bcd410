#include "logger/config_moment.h"

#include <algorithm>

#include "text/number.h"

namespace ostrand {
namespace {

using Part = OpenMoment::Part;

constexpr std::string_view kNoTime = "---- --- -- --:--:--";
constexpr std::string_view kAny = "any";
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<std::string_view, 7> kWeekDays = {"Sun", "Mon", "Tue", "Wed",
                                                       "Thu", "Fri", "Sat"};
constexpr int kFebruary = 2;
constexpr int kMaxDays = 31;

struct PartRow {
  std::string_view name;
  int min;
  int max;
  std::size_t place;  // in the picture; unused for the week day
  std::size_t width;
};
constexpr std::array<PartRow, OpenMoment::kParts> kParts = {{
    {"Year", 2000, 2099, 0, 4},
    {"Month", 1, 12, 5, 3},
    {"Day", 1, kMaxDays, 9, 2},
    {"Hour", 0, 23, 12, 2},
    {"Min", 0, 59, 15, 2},
    {"Sec", 0, 59, 18, 2},
    {"WkDay", 1, 7, 0, 0},
}};
constexpr std::array<Part, 3> kDateParts = {OpenMoment::kYear, OpenMoment::kMonth,
                                            OpenMoment::kDay};

Part partAt(std::size_t place) { return static_cast<Part>(place); }

bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

std::string itemText(Part part, int value) {
  if (part == OpenMoment::kMonth) return std::string(kMonths[static_cast<std::size_t>(value - 1)]);
  if (part == OpenMoment::kWeekDay) {
    return std::string(kWeekDays[static_cast<std::size_t>(value - 1)]);
  }
  return NumberText(value);
}

std::string pictureText(Part part, int value) {
  if (part == OpenMoment::kMonth) return itemText(part, value);
  return PaddedNumberText(value, part == OpenMoment::kYear ? 4 : 2);
}

// The members of the configuration for each part of a time.
struct TimeMembers {
  std::array<i16 Configuration::*, OpenMoment::kParts> values;
  std::array<flag Configuration::*, OpenMoment::kParts> shown;
};
using C = Configuration;
constexpr TimeMembers kTimeOff = {
    {&C::TimeOffYear, &C::TimeOffMonth, &C::TimeOffDay, &C::TimeOffHour, &C::TimeOffMin,
     &C::TimeOffSec, &C::TimeOffWkDay},
    {&C::TimeOffYearShow, &C::TimeOffMonthShow, &C::TimeOffDayShow, &C::TimeOffHourShow,
     &C::TimeOffMinShow, &C::TimeOffSecShow, &C::TimeOffWkDayShow}};
constexpr TimeMembers kTimeOn = {{&C::TimeOnYear, &C::TimeOnMonth, &C::TimeOnDay, &C::TimeOnHour,
                                  &C::TimeOnMin, &C::TimeOnSec, nullptr},
                                 {}};

bool isUnset(const Configuration& config, const TimeMembers& members, std::string_view picture) {
  if (picture != kNoTime) return false;
  return std::all_of(members.values.begin(), members.values.end(),
                     [&](i16 C::*member) { return member == nullptr || config.*member == 0; });
}

// Whether the picture shows a part of the time as open.
bool isHyphens(std::string_view picture, Part part) {
  const PartRow& row = kParts[part];
  return row.width > 0 && picture.size() > row.place && picture[row.place] == '-';
}

}  // namespace

bool OpenMoment::IsOpen() const {
  return std::none_of(parts.begin(), parts.end(),
                      [](const std::optional<int>& part) { return part.has_value(); });
}

int DaysOfMonth(std::optional<int> month, std::optional<int> year) {
  if (!month || *month < 1 || *month > 12) return kMaxDays;
  if (*month == kFebruary) return !year || isLeap(*year) ? 29 : 28;
  constexpr std::array<int, 4> kShort = {9, 4, 6, 11};
  return std::find(kShort.begin(), kShort.end(), *month) != kShort.end() ? 30 : kMaxDays;
}

std::string MomentPicture(const OpenMoment& moment) {
  std::string picture(kNoTime);
  for (std::size_t p = 0; p < OpenMoment::kWeekDay; ++p) {
    const Part part = partAt(p);
    if (!moment[part]) continue;
    const bool known = part != OpenMoment::kMonth || (*moment[part] >= 1 && *moment[part] <= 12);
    if (known) {
      picture.replace(kParts[part].place, kParts[part].width, pictureText(part, *moment[part]));
    }
  }
  return picture;
}

// ---- In the project -----------------------------------------------------------------------------

OpenMoment StoredTimeOff(const Configuration& config) {
  OpenMoment moment;
  if (config.TimeOffWkDayShow == kFalse && isUnset(config, kTimeOff, config.PowerOffString)) {
    return moment;
  }
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) {
    const Part part = partAt(p);
    if (config.*kTimeOff.shown[part] != kFalse) moment[part] = config.*kTimeOff.values[part];
  }
  return moment;
}

// The switch-on time does not mark open parts; its picture shows them.
OpenMoment StoredTimeOn(const Configuration& config) {
  OpenMoment moment;
  if (isUnset(config, kTimeOn, config.PowerOnString)) return moment;
  for (std::size_t p = 0; p < OpenMoment::kWeekDay; ++p) {
    const Part part = partAt(p);
    const int value = config.*kTimeOn.values[part];
    const bool open = value == 0 && (kParts[part].min > 0 || isHyphens(config.PowerOnString, part));
    if (!open) moment[part] = value;
  }
  return moment;
}

// A time without any part would switch the logger off at every scan: it is stored as not set, which
// never occurs.
void KeepTimeOff(const OpenMoment& moment, Configuration& config) {
  const bool unset = moment.IsOpen();
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) {
    const Part part = partAt(p);
    const bool shown = unset ? part != OpenMoment::kWeekDay : moment[part].has_value();
    config.*kTimeOff.shown[part] = shown ? kTrue : kFalse;
    config.*kTimeOff.values[part] = static_cast<i16>(moment[part].value_or(0));
  }
  config.PowerOffString = MomentPicture(moment);
}

void KeepTimeOn(const OpenMoment& moment, Configuration& config) {
  for (std::size_t p = 0; p < OpenMoment::kWeekDay; ++p) {
    const Part part = partAt(p);
    config.*kTimeOn.values[part] = static_cast<i16>(moment[part].value_or(0));
  }
  config.PowerOnString = MomentPicture(moment);
}

// ---- Lists --------------------------------------------------------------------------------------

MomentLists::MomentLists(Screen& screen, std::string_view prefix, bool weekDays) {
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) {
    const Part part = partAt(p);
    if (part == OpenMoment::kWeekDay && !weekDays) continue;
    const PartRow& row = kParts[part];
    lists_[part] = std::make_unique<Choice>(screen, std::string(prefix) + std::string(row.name));
    lists_[part]->OnPick = [this] { onPick(); };
    CountedList<Choice::Item>& items = lists_[part]->Items;
    items.push_back({std::string(kAny), true, true, {}});
    for (int value = row.min; value <= row.max; ++value) {
      items.push_back({itemText(part, value), true, true, {}});
    }
  }
}

void MomentLists::setIndex(Part part, std::optional<int> value) {
  Choice* list = lists_[part].get();
  if (list == nullptr) return;
  const int place = value ? *value - kParts[part].min + 1 : 0;
  // A year outside the list is added at the end.
  if (part == OpenMoment::kYear && value && *value > 0 &&
      (place < 1 || place >= static_cast<int>(list->Items.size()))) {
    list->Add(NumberText(*value));
    list->PickAt(static_cast<int>(list->Items.size()) - 1);
    return;
  }
  list->PickAt(place < 1 ? 0 : place);
}

void MomentLists::Load(const OpenMoment& moment) {
  setting_ = true;
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) setIndex(partAt(p), moment[partAt(p)]);
  setting_ = false;
  fitDays();
}

OpenMoment MomentLists::Moment() const {
  OpenMoment moment;
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) {
    const Part part = partAt(p);
    const Choice* list = lists_[part].get();
    if (list == nullptr || list->Index() < 1) continue;
    moment[part] = part == OpenMoment::kYear ? static_cast<int>(Val(list->Text()))
                                             : list->Index() - 1 + kParts[part].min;
  }
  return moment;
}

void MomentLists::onPick() {
  if (setting_) return;
  fitDays();
  if (OnEdit) OnEdit();
}

// The list of days is as long as the month; a later day becomes its last one.
void MomentLists::fitDays() {
  const OpenMoment moment = Moment();
  const int days = DaysOfMonth(moment[OpenMoment::kMonth], moment[OpenMoment::kYear]);
  CountedList<Choice::Item>& items = list(OpenMoment::kDay)->Items;
  items.resize(1);
  for (int day = 1; day <= days; ++day) items.push_back({NumberText(day), true, true, {}});
  const std::optional<int> day = moment[OpenMoment::kDay];
  if (!day || *day <= days) return;
  setting_ = true;
  setIndex(OpenMoment::kDay, days);
  setting_ = false;
}

// A week day replaces the date.
void MomentLists::Show(bool visible, bool enabled) {
  const bool byWeekDay = Moment()[OpenMoment::kWeekDay].has_value();
  for (std::size_t p = 0; p < OpenMoment::kParts; ++p) {
    Choice* list = lists_[p].get();
    if (list == nullptr) continue;
    const bool isDate =
        std::find(kDateParts.begin(), kDateParts.end(), partAt(p)) != kDateParts.end();
    list->Visible = visible;
    list->Enabled = enabled && !(byWeekDay && isDate);
  }
}

}  // namespace ostrand
