// Repetitions that follow their block's defaults, and flags that have other users.
#include "conditions/aliases.h"

#include "conditions/flag_usage.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

class AliasesTest : public testing::ScreenTest {};

TEST_F(AliasesTest, ProtectionIsByColumnAndByValue) {
  struct Case {
    std::string_view except;
    bool units, mult, offset;  // follow
  };
  constexpr Case cases[] = {
      {"", true, true, true},     {"0", true, true, true},    {" 0 ", true, true, true},
      {"1", false, true, true},   {"2", true, false, true},   {"3", false, false, true},
      {"4", true, true, false},   {"5", false, true, false},  {"6", true, false, false},
      {"7", false, false, false}, {"what", true, true, true}, {"9", true, true, true},
      {"1.5", true, true, true},
  };
  const DefaultScaling before = {"mVolts", 1, 0};
  const DefaultScaling after = {"Bar", 2.5F, -0.1F};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.except);
    // The second is blank, the third has separate values; neither follows.
    std::array<RepAlias, 3> aliases = {{{"A", "mVolts", "1.0", " 0", std::string(row.except)},
                                        {"B", "", "", "", std::string(row.except)},
                                        {"C", "MVOLTS", "1.5", "x", std::string(row.except)}}};
    FollowDefaults(aliases, before, before);
    EXPECT_EQ(aliases[0].AliasMult, "1.0") << "no change, no new form";
    FollowDefaults(aliases, before, after);
    EXPECT_EQ(aliases[0].AliasUnits, row.units ? "Bar" : "mVolts");
    EXPECT_EQ(aliases[0].AliasMult, row.mult ? "2.5" : "1.0");
    EXPECT_EQ(aliases[0].AliasOffset, row.offset ? "-0.1" : " 0");
    EXPECT_EQ(aliases[1].AliasUnits + aliases[1].AliasMult + aliases[1].AliasOffset, "");
    EXPECT_EQ(aliases[2].AliasUnits + aliases[2].AliasMult + aliases[2].AliasOffset, "MVOLTS1.5x");

    OverwriteAliases(aliases, {"Deg_C", 1, 0});
    EXPECT_EQ(aliases[1].AliasUnits, row.units ? "Deg_C" : "");
    EXPECT_EQ(aliases[1].AliasMult, row.mult ? "1" : "");
    ClearAliases(aliases);
    EXPECT_EQ(aliases[2].AliasUnits, row.units ? "" : "MVOLTS");
    EXPECT_EQ(aliases[2].AliasMult, row.mult ? "" : "1.5");
    EXPECT_EQ(aliases[2].AliasOffset, row.offset ? "" : "x");
    EXPECT_EQ(aliases[0].AliasName, "A");
  }
}

TEST_F(AliasesTest, FlagsOfTablesAreNotOffered) {
  store->Tables[1].FlagTable = 2;
  store->Tables[6].FlagMark = 8;  // off, but still uses its flag
  store->Tables[3].FlagFull = 1;
  store->Scan.FlagScan = 4;
  Screen screen(context, "frmTest");
  Choice list(screen, "ZeroFlag");
  SetZeroFlagItems(list, *store);
  ASSERT_EQ(list.Items.size(), 9U);
  for (int f = 0; f <= 8; ++f) {
    const bool taken = f == 1 || f == 2 || f == 8;
    EXPECT_EQ(list.Items[static_cast<std::size_t>(f)].Enabled, !taken) << f;
  }
}

TEST_F(AliasesTest, FlagNoticeListsAllUsers) {
  store->Flags[3].FlagInclude = kTrue;
  store->Tables[2].FlagTable = 3;
  store->Tables[2].FlagFull = 3;
  store->Scan.FlagScan = 3;  // without a burst
  store->VoltBlock.BlockCount = 1;
  store->VoltBlock[1].ZeroFlag = 3;
  store->VoltBlock[2].ZeroFlag = 3;  // after the last block
  store->TK40MBlock.BlockCount = 2;
  store->TK40MBlock[2].ZeroFlag = 3;
  store->Config.MonitorPower[kMonitorStatus] = kTrue;
  store->Config.StatusMonCount = 1;
  store->Config.Status[1][4] = "3 T";
  for (const std::string monitor : {"\r\nStatus Monitor", ""}) {
    forms.ExpectBox("FLAG INFORMATION",
                    "JUST LETTING YOU KNOW.\r\nDuring program execution, the state of Flag(3"
                    "may potentially be set by the following program configuration settings:"
                    "\r\nFlags Setup" +
                        monitor +
                        "\r\nTable 2 Run Flag\r\nTable 2 Full Flag\r\nVoltage Block 1"
                        "\r\nTK40M Block 2");
    CheckFlagUsage(forms, *store, 3);
    store->Config.MonitorPower[kMonitorStatus] = kFalse;
  }
}

}  // namespace
}  // namespace ostrand
