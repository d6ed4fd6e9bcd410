// Triggers and their stored form.
#include <gtest/gtest.h>

#include "support/table_screens_fixture.h"
#include "tables/frm_trig_table.h"

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

}  // namespace
}  // namespace ostrand
