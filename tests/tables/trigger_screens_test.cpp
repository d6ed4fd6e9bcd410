// Triggers and write conditions, and their stored form.
#include <gtest/gtest.h>

#include "support/table_screens_fixture.h"
#include "tables/frm_trig_table.h"
#include "tables/frm_write_if.h"

namespace ostrand {
namespace {

class TriggerScreens : public testing::TableScreens {
 protected:
  TriggerScreens() {
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 2;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
  }

  void setTriggers(std::function<void(Screen&)> scene, bool done) {
    host.scenes.push_back(std::move(scene));
    frmTrigTable screen(context);
    EXPECT_EQ(screen.SetTriggers(table), done);
  }
  void setWriteIf(std::function<void(Screen&)> scene, bool done) {
    host.scenes.push_back(std::move(scene));
    frmWriteIf screen(context);
    EXPECT_EQ(screen.SetWriteIf(table), done);
  }

  cOutputTable table;
};

TEST_F(TriggerScreens, SingleTriggerDisablesButKeepsStopConditions) {
  table.TriggerNumber = table.TriggerStopNum = 1;
  for (int s = 0; s <= 1; ++s) {
    table.TriggerMeasVar(s, 1, "Flag(1)");
    table.TriggerVarb(s, 1, "False");
    table.TriggerIndvExpress(s, 1, "Flag(1) = False");
  }
  table.TriggerScansPre = 5;
  setTriggers(
      [&](Screen& screen) {
        check(screen, "SingleTrigger", true);
        check(screen, "DisableTrigger", true);
        for (const std::string_view name : {"StopMeasVar1", "StopMeasVar2", "StopCompare1",
                                            "StopTrigValue1", "DataEventCodeStop", "ViewStop"}) {
          EXPECT_FALSE(usable(screen, name)) << name;
        }
        screen.Done();
      },
      true);
  EXPECT_EQ(table.TriggerSingle, -1);
  EXPECT_EQ(table.TriggerDisable, 1) << "only 1 makes the program call the table again";
  EXPECT_EQ(table.TriggerExpression, "DataEvent (5,bStartTrigger,True,0)");
  EXPECT_EQ(table.TriggerStopNum, 1);
  EXPECT_EQ(table.TriggerIndvExpress(1, 1), "Flag(1) = False");
}

// Unused rows are stored as in a new project.
TEST_F(TriggerScreens, EmptyRowsAreStoredAsInNewProject) {
  table.TriggerNumber = 1;
  table.TriggerMeasVar(0, 1, "Oil");
  setTriggers(
      [&](Screen& screen) {
        check(screen, "SingleTrigger", true);
        screen.Done();
      },
      true);
  for (const int n : {2, kConditions}) {
    for (const int s : {0, 1}) {
      EXPECT_EQ(table.TriggerCompare(s, n), store->Tables[1].Trigger[s][n].StartCompare) << s;
    }
  }
}

TEST_F(TriggerScreens, WriteConditions) {
  for (const bool done : {false, true}) {
    setWriteIf(
        [&](Screen& screen) {
          pick(screen, "MeasureVar1", "Oil");
          pick(screen, "Compare1", "<>");
          type(screen, "Value1", "1e7");
          check(screen, "DisableWriteIf", true);
          done ? screen.Done() : screen.Cancel();
        },
        done);
    EXPECT_EQ(table.WriteIfNumber, done ? 1 : 0);
    EXPECT_EQ(table.WriteIfDisable, done ? 1 : 0);
    EXPECT_EQ(table.WriteIfExpression(1), done ? "VBlk1(2) <> 1e+07" : "");
  }
  EXPECT_EQ(table.WriteIfGrpExpress, "1");
  EXPECT_EQ(table.WriteIfCompare(1), 1);
  EXPECT_EQ(table.WriteIfValue(1), 1e7F);
  setWriteIf(
      [&](Screen& screen) {
        pick(screen, "MeasureVar1", "(None)");
        screen.Done();
      },
      true);
  EXPECT_EQ(table.WriteIfNumber, 0);
  EXPECT_EQ(table.WriteIfMeasVar(1), "");
  EXPECT_EQ(table.WriteIfExpression(1), "");
}

}  // namespace
}  // namespace ostrand
