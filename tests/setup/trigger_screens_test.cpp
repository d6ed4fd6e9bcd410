// Triggers and write conditions, what is stored of them, and what the program makes of them.
#include <gtest/gtest.h>

#include "generator/savedld.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "setup/frm_trig_table.h"
#include "setup/frm_write_if.h"
#include "setup/table_screens_fixture.h"

namespace ostrand {
namespace {

class TriggerScreens : public testing::TableScreens {
 protected:
  TriggerScreens() {
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 2;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
    store->Scan.ExecutionTime = 2.5F;
    store->Scan.ExecTimeUnits = 1;
    table.Name = "BURST";
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

TEST_F(TriggerScreens, ADualTriggerFromNothingToTheProgram) {
  setTriggers(
      [&](Screen& screen) {
        check(screen, "SingleTrigger", false);
        type(screen, "PreTriggerScans", "10");
        type(screen, "AftTriggerScans", "400");
        pick(screen, "StopMeasVar1", "Flag(3)");
        pick(screen, "StartMeasVar1", "Oil");
        pick(screen, "StartCompare1", ">");
        type(screen, "StartTrigValue1", "0.50");
        pick(screen, "StartMeasVar2", "VBlk1(1)");
        pick(screen, "StartCompare2", "<=");
        pick(screen, "StartTrigValue2", "Oil");
        control(screen, "DataEventCodeStart").TypeText("1 ANE 2");
        forms.ExpectBoxWith("GROUPING SYNTAX ERROR - D", "character number 5");
        screen.Done();  // one box, and the line keeps the focus
        EXPECT_EQ(screen.Result(), ModalResult::kNone);
        type(screen, "DataEventCodeStart", "1 and 2");
        screen.Done();
      },
      true);
  EXPECT_EQ(table.TriggerNumber, 2);
  EXPECT_EQ(table.TriggerStopNum, 1);
  EXPECT_EQ(table.TriggerSingle, 0);
  EXPECT_EQ(table.TriggerStartExpress, "1 AND 2");
  EXPECT_EQ(table.TriggerMeasVar(0, 1), "Oil");
  EXPECT_EQ(table.TriggerIndvExpress(0, 2), "VBlk1(1) <= VBlk1(2)");
  EXPECT_EQ(table.TriggerVarb(0, 2), "Oil");
  EXPECT_EQ(table.TriggerVarb(1, 1), "True");

  // The same conditions in the store, and the lines that the logger gets.
  OutputTable& stored = store->Tables[1];
  stored.TableOn = kTrue;
  stored.TableName = table.Name;
  stored.TrigTable = table.TriggerNumber;
  stored.TrigTabStop = table.TriggerStopNum;
  stored.SingleTrigger = table.TriggerSingle;
  stored.DisableTrigger = table.TriggerDisable;
  stored.DataEventCode = table.TriggerExpression;
  stored.DataEventCodeStart = table.TriggerStartExpress;
  stored.DataEventCodeStop = table.TriggerStopExpress;
  for (int s = 0; s <= 1; ++s) {
    for (int n = 1; n <= 2; ++n) {
      stored.Trigger[s][n].StartTrigIndvExpress = table.TriggerIndvExpress(s, n);
    }
  }
  platform::PosixFileSystem files;
  platform::PosixClock clock;
  const std::string program = SAVEDLD(*store, files, clock, forms).ProgramText();
  for (const std::string_view line : {"\r\n   DataEvent (10,bStartTrigger,bStopTrigger,400)\r\n",
                                      "\r\nSub TriggerCallBURST\r\n  bStartTrigger = (VBlk1(2) > "
                                      "0.5 AND VBlk1(1) <= VBlk1(2))\r\n"
                                      "  bStopTrigger = (Flag(3) = True)\r\nEnd Sub\r\n"}) {
    EXPECT_NE(program.find(line), std::string::npos) << line;
  }
}

TEST_F(TriggerScreens, ASingleTriggerKeepsItsStopConditionsOutOfReach) {
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

TEST_F(TriggerScreens, WriteConditions) {
  setWriteIf(
      [&](Screen& screen) {
        pick(screen, "MeasureVar1", "Oil");
        pick(screen, "Compare1", "<>");
        type(screen, "Value1", "1e7");
        check(screen, "DisableWriteIf", true);
        screen.Done();
      },
      true);
  EXPECT_EQ(table.WriteIfNumber, 1);
  EXPECT_EQ(table.WriteIfDisable, 1);
  EXPECT_EQ(table.WriteIfGrpExpress, "1");
  EXPECT_EQ(table.WriteIfCompare(1), 1);
  EXPECT_EQ(table.WriteIfValue(1), 1e7F);
  EXPECT_EQ(table.WriteIfExpression(1), "VBlk1(2) <> 1e+07");

  setWriteIf(
      [](Screen& screen) {
        pick(screen, "MeasureVar1", "(None)");
        screen.Cancel();
      },
      false);
  EXPECT_EQ(table.WriteIfExpression(1), "VBlk1(2) <> 1e+07") << "Cancel changes nothing";
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
