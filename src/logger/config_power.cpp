#include "logger/config_power.h"

#include <algorithm>

#include "logger/config_battery.h"
#include "logger/faces.h"
#include "logger/state_rows.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kFirstHourUnit = 1;  // code of the first unit of the time to the next power-on

// The condition within the statement "If BattVolt < 11 Then".
std::string_view conditionIn(std::string_view line) {
  constexpr std::string_view kHead = "If ";
  constexpr std::string_view kTail = " Then";
  line = Trim(line);
  if (line.starts_with(kHead)) line.remove_prefix(kHead.size());
  if (line.ends_with(kTail)) line.remove_suffix(kTail.size());
  return line;
}

}  // namespace

PowerPanel::PowerPanel(Screen& screen, Configuration& config, const ConditionVariables& variables)
    : EnablePowerOff(screen, "EnablePowerOff"),
      Condition(screen, variables,
                {"PowerOffMeasVar", "PowerOffCompare", "PowerOffValue", "PowerOffExpression"},
                {.compares = kPowerOffCompares}),
      RemainOff(screen, "RemainOff"),
      PowerOffTime(screen, "PowerOffTime", NumberType::kInteger),
      PowerOffMins(screen, "PowerOffMins"),
      PowerOffInterval(screen, "PowerOffInterval"),
      PowerOffCode(screen, "PowerOffCode"),
      EnableTime(screen, "EnableTime"),
      TimeOff(screen, "TimeOff", true),
      PowerOffString(screen, "PowerOffString"),
      RemainPOOff(screen, "RemainPOOff"),
      PowerOffPOTime(screen, "PowerOffPOTime", NumberType::kInteger),
      PowerOnMins(screen, "PowerOnMins"),
      PowerOnInterval(screen, "PowerOnInterval"),
      EnableOnTime(screen, "EnableOnTime"),
      TimeOn(screen, "TimeOn", false),
      PowerOnString(screen, "PowerOnString"),
      screen_(screen),
      config_(config) {
  Condition.Describe(kConditionalPowerOff);
  PowerOffMins.SetItems({"Day", "Hr", "Min", "Sec"});
  PowerOnMins.SetItems({"Hr", "Min", "Sec"});
  PowerOffTime.Limits(0, PowerOffTime.Max());
  PowerOffPOTime.Limits(0, PowerOffPOTime.Max());
  bindCondition();
  bindTimes();
}

void PowerPanel::bindFlag(CheckBox& box, flag& member) {
  box.OnClick = [this, &box, &member] {
    if (screen_.IsLoading()) return;
    member = box.Checked() ? kTrue : kFalse;
    refresh();
  };
}

void PowerPanel::bindCondition() {
  bindFlag(EnablePowerOff, config_.EnablePowerOff);
  bindFlag(RemainOff, config_.RemainOff);
  Condition.OnEdit = [this] { takeCondition(); };
  PowerOffTime.OnTake = [this] {
    config_.PowerOffTime = static_cast<i16>(PowerOffTime.Value());
    refresh();
  };
  PowerOffMins.OnPick = [this] {
    if (screen_.IsLoading()) return;
    config_.PowerOffMins = static_cast<flag>(PowerOffMins.Index());
    refresh();
  };
}

void PowerPanel::bindTimes() {
  bindFlag(EnableTime, config_.EnableTime);
  bindFlag(EnableOnTime, config_.EnableOnTime);
  bindFlag(RemainPOOff, config_.RemainPOOff);
  TimeOff.OnEdit = [this] { takeTimeOff(); };
  TimeOn.OnEdit = [this] { takeTimeOn(); };
  PowerOffPOTime.OnTake = [this] {
    config_.PowerOffPOTime = static_cast<i16>(PowerOffPOTime.Value());
    refresh();
  };
  PowerOnMins.OnPick = [this] {
    if (screen_.IsLoading()) return;
    config_.PowerOnMins = static_cast<flag>(PowerOnMins.Index() + kFirstHourUnit);
    refresh();
  };
}

void PowerPanel::Load() {
  config_.PowerOffMins = std::max<flag>(config_.PowerOffMins, 0);
  config_.PowerOnMins = std::max<flag>(config_.PowerOnMins, kFirstHourUnit);
  EnablePowerOff.Check(config_.EnablePowerOff != kFalse);
  RemainOff.Check(config_.RemainOff != kFalse);
  PowerOffTime.Value(config_.PowerOffTime);
  PowerOffMins.PickAt(config_.PowerOffMins);
  loadCondition();
  EnableTime.Check(config_.EnableTime != kFalse);
  EnableOnTime.Check(config_.EnableOnTime != kFalse);
  RemainPOOff.Check(config_.RemainPOOff != kFalse);
  PowerOffPOTime.Value(config_.PowerOffPOTime);
  PowerOnMins.PickAt(config_.PowerOnMins - kFirstHourUnit);
  TimeOff.Load(StoredTimeOff(config_));
  TimeOn.Load(StoredTimeOn(config_));
  refresh();
}

void PowerPanel::loadCondition() {
  const std::string_view condition = conditionIn(config_.PowerOffLine);
  Condition.Load(StoredState(config_.PowerOffMeasVar, config_.PowerOffCompare,
                             config_.PowerOffValue, condition, kPowerOffCompares));
}

void PowerPanel::takeCondition() {
  const ConditionRow row = Condition.Stored();
  config_.PowerOffMeasVar = row.MeasVar;
  config_.PowerOffCompare = static_cast<i16>(row.Compare);
  config_.PowerOffValue = row.Value;
  config_.PowerOffLine = Condition.Valid() ? "If " + row.Expression + " Then" : std::string();
  refresh();
}

void PowerPanel::takeTimeOff() {
  KeepTimeOff(TimeOff.Moment(), config_);
  refresh();
}

void PowerPanel::takeTimeOn() {
  KeepTimeOn(TimeOn.Moment(), config_);
  refresh();
}

void PowerPanel::Show(bool visible) {
  visible_ = visible;
  ShowState(Condition, visible);
  for (Control* control : std::initializer_list<Control*>{
           &EnablePowerOff, &RemainOff, &PowerOffTime, &PowerOffMins, &PowerOffInterval,
           &PowerOffCode, &EnableTime, &PowerOffString, &RemainPOOff, &PowerOffPOTime, &PowerOnMins,
           &PowerOnInterval, &EnableOnTime, &PowerOnString}) {
    control->Visible = visible;
  }
  refresh();
}

void PowerPanel::refresh() {
  constexpr std::array<std::string_view, 4> kUnits = {" Days", " Hours", " Minutes", " Seconds"};
  const bool byCondition = EnablePowerOff.Checked();
  const bool byTime = EnableTime.Checked();
  const bool onTime = byTime && EnableOnTime.Checked();
  Condition.Enable(byCondition, kNeedsPowerOff);
  RemainOff.Enabled = byCondition;
  PowerOffTime.Enabled = PowerOffMins.Enabled = byCondition && !RemainOff.Checked();
  TimeOff.Show(visible_, byTime);
  TimeOn.Show(visible_, onTime);
  RemainPOOff.Enabled = EnableOnTime.Enabled = byTime;
  PowerOffPOTime.Enabled = PowerOnMins.Enabled = byTime && !RemainPOOff.Checked();

  const std::string time = NumberText(config_.PowerOffTime);
  std::string code;
  if (Condition.Valid()) {
    code = "If " + Condition.Expression.Text() + " Then PowerOff (0,";
    code += RemainOff.Checked() ? "0,0)" : time + "," + PowerOffMins.Text() + ")";
  }
  PowerOffCode.Text(code);
  const int unit = PowerOffMins.Index();
  const bool repeats = !RemainOff.Checked() && unit >= 0;
  PowerOffInterval.Text(IntervalLine(repeats ? config_.PowerOffTime : 0,
                                     repeats ? kUnits[static_cast<std::size_t>(unit)] : ""));
  PowerOnInterval.Text(RemainPOOff.Checked() ? std::string()
                                             : "Every " + NumberText(config_.PowerOffPOTime) + " " +
                                                   PowerOnMins.Text());
  PowerOffString.Text(config_.PowerOffString);
  PowerOnString.Text(config_.PowerOnString);
}

}  // namespace ostrand
