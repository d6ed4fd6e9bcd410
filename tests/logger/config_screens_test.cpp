// The logger's screens: what they preserve of projects from other programs. Scripts test the
// screens themselves.
#include "logger/config_moment.h"
#include "logger/frm_config.h"
#include "logger/frm_execute.h"
#include "logger/frm_flags.h"
#include "support/table_screens_fixture.h"

namespace ostrand {
namespace {

class ConfigScreens : public testing::TableScreens {
 protected:
  ConfigScreens() {
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 3;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
  }
};

TEST_F(ConfigScreens, DefaultTripLevelOverridesFile) {
  store->Config.MonitorPower[kMonitorBatterySaver] = kTrue;
  store->Config.DefaultBattVolt = kTrue;
  store->Config.BattTripVolts = 12.5F;
  frmConfig screen(context);
  EXPECT_EQ(shown(screen, "BattTripVolts"), "11.5");
  EXPECT_FALSE(usable(screen, "BattTripVolts"));
  screen.Done();
  EXPECT_EQ(store->Config.BattTripVolts, 11.5F);
}

TEST_F(ConfigScreens, StatusRowIsVariableAtOnce) {
  frmConfig first(context);
  check(first, "MonitorPower5", true);
  pick(first, "StatusFlag", "3");
  pick(first, "StatTrueFalse", "False");
  first.Done();
  frmConfig screen(context);
  press(screen, "AddStatus");
  check(screen, "MonitorPower2", true);
  check(screen, "EnablePowerOff", true);
  pick(screen, "PowerOffMeasVar", "Status.SkippedScan(1,1)");
}

TEST_F(ConfigScreens, ViewedSettingsStayUnchanged) {
  Configuration& config = store->Config;
  config.MonitorPower[kMonitorBattery] = config.MonitorPower[kMonitorPowerControl] = kTrue;
  config.PowerOffMeasVar = "BattVolt";
  config.PowerOffCompare = 4;
  config.PowerOffValue = 10.8F;
  config.PowerOffLine = "If BattVolt < 10.8 Then";
  config.PowerOffMins = 1;
  config.PowerOnMins = 2;
  store->Flags[1].FlagInclude = kTrue;
  store->Flags[1].State[1] = {"VBlk1(3)", 1, 5, "VBlk1(3) <> 5"};
  store->Flags[1].State[2] = {"VBlk1(3)", 3, 5, "VBlk1(3) >= 5"};
  const Configuration before = config;
  const FlagControl flagBefore = store->Flags[1];
  frmConfig screen(context);
  EXPECT_EQ(shown(screen, "PowerOffCompare"), " <") << "the line decides, not the code";
  screen.Done();
  EXPECT_EQ(config.PowerOffLine, before.PowerOffLine);
  EXPECT_EQ(config.PowerOffCompare, before.PowerOffCompare);
  frmFlags flags(context);
  EXPECT_EQ(shown(flags, "State1FlagExpression1"), "VBlk1(3) <> 5");
  EXPECT_EQ(shown(flags, "State2FlagCompare1"), " >=");
  flags.Done();
  for (int state : {1, 2}) {
    EXPECT_EQ(store->Flags[1].State[state].FlagExpression, flagBefore.State[state].FlagExpression);
    EXPECT_EQ(store->Flags[1].State[state].FlagCompare, flagBefore.State[state].FlagCompare);
  }
}

TEST(Moments, MonthsHaveTheDaysOfTheCalendar) {
  const struct {
    std::optional<int> month, year;
    int days;
  } cases[] = {{{}, {}, 31},  {9, {}, 30},   {12, {}, 31},  {2, {}, 29},
               {2, 2000, 29}, {2, 2024, 29}, {2, 2025, 28}, {2, 2100, 28}};
  for (const auto& c : cases) {
    EXPECT_EQ(DaysOfMonth(c.month, c.year), c.days) << c.year.value_or(0);
  }
}

TEST(Moments, ShowTheMonthsOfTheCalendar) {
  constexpr std::pair<int, std::string_view> cases[] = {
      {0, "---"}, {1, "Jan"}, {12, "Dec"}, {13, "---"}};
  for (const auto& [month, name] : cases) {
    OpenMoment moment;
    moment[OpenMoment::kMonth] = month;
    EXPECT_EQ(MomentPicture(moment).substr(5, 3), name);
  }
}

TEST_F(ConfigScreens, BufferBeyondTheMemoryFlashes) {
  store->VoltBlock[1].ReverseMes = kFalse;
  store->VoltBlock[1].Integration = 20000;
  frmExecute screen(context);
  check(screen, "BurstMode", true);
  type(screen, "BufferScans", "83333");  // of 3 values with 4 bytes each
  EXPECT_EQ(shown(screen, "BufferBytes"), "999,996");
  EXPECT_FALSE(screen.BufferBytes.Flashes);
  type(screen, "BufferScans", "83334");
  EXPECT_TRUE(screen.BufferBytes.Flashes);
}

}  // namespace
}  // namespace ostrand
