// The table screens: what of a table can be set, what is asked, and what the project gets.
#include "setup/frm_out_int.h"

#include "setup/frm_table_times.h"
#include "setup/table_screens_fixture.h"
#include "text/number.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr std::string_view kEditsQuestion =
    "Edits were made to one or more table configurations.  Save changes before exiting screen?";

class TableSetupTest : public testing::TableScreens {
 protected:
  // A scan of 10 milliseconds; tables 1 and 2 of 1 second are on.
  TableSetupTest() {
    store->Scan.ExecutionTime = 10;
    store->Scan.ExecTimeUnits = 1;
    for (int t : {1, 2}) {
      store->Tables[t].TableOn = kTrue;
      store->Tables[t].OutInt = 1;
      store->Tables[t].OutIntUnits = ORVUS_TBLTIME_SECS;
      store->Tables[t].Buffer = 1000;
      store->Tables[t].AutoSize = kFalse;
    }
    store->Tables[1].TableName = "Engine";
    store->Tables[2].TableName = "Cabin";
  }
  // One sample of four bytes in a table.
  void storeBattery(int t) {
    store->Config.MonitorPower[kMonitorBattery] = kTrue;
    store->PowerOut.DataResolution = "IEEE4";
    store->PowerOut.Output.OutputSelect[t][kSample] = 1;
  }
};

TEST_F(TableSetupTest, DoneKeepsEveryFieldUnderItsKeyAndCancelNone) {
  const TableSetup before = store->Tables;
  for (const bool done : {false, true}) {
    frmOutInt form(context);
    pick(form, "Table", "Table 3");
    EXPECT_FALSE(usable(form, "TableName")) << "what is off is not saved";
    check(form, "TableOn", true);
    type(form, "TableName", "Slow_1");
    type(form, "OutInt", "5");
    pick(form, "OutIntUnits", "Mins");
    EXPECT_EQ(shown(form, "PerSec"), "0.00333");
    type(form, "Buffer", "1e5");
    check(form, "FillStop", true);
    check(form, "CalcTime", !form.CalcTime.Checked());
    pick(form, "TableLocation", "PC Card");
    EXPECT_FALSE(form.TableLocation.Pick("Flash"));
    pick(form, "FlagTable", "4");
    pick(form, "FlagMark", "5");
    pick(form, "FlagFull", "6");
    pick(form, "HDU7", "Table 3");
    check(form, "AutoSize", true);
    EXPECT_FALSE(usable(form, "Buffer"));
    if (done) {
      form.Done();
      EXPECT_EQ(form.Result(), ModalResult::kDone);
    } else {
      forms.ExpectBox("OUTPUT TABLES", std::string(kEditsQuestion), Answer::kNo);
      form.Cancel();
      EXPECT_EQ(form.Result(), ModalResult::kCancel);
      EXPECT_EQ(store->Tables.HDU7, before.HDU7);
      EXPECT_EQ(store->Tables.Table, before.Table);
    }
  }
  const OutputTable& kept = store->Tables[3];
  EXPECT_EQ(kept.TableOn, kTrue);
  EXPECT_EQ(kept.TableName, "Slow_1");
  EXPECT_EQ(kept.OutInt, 5);
  EXPECT_EQ(kept.OutIntUnits, ORVUS_TBLTIME_MINS);
  EXPECT_EQ(kept.Buffer, 100000);
  EXPECT_EQ(kept.FillStop, kTrue);
  EXPECT_EQ(kept.AutoSize, kTrue);
  EXPECT_EQ(kept.CalcTime, before[3].CalcTime == kFalse ? kTrue : kFalse);
  EXPECT_EQ(kept.TableLocation, 2);
  EXPECT_EQ(kept.FlagTable, 4);
  EXPECT_EQ(kept.FlagMark, 5);
  EXPECT_EQ(kept.FlagFull, 6);
  EXPECT_EQ(store->Tables.HDU7, 4) << "what the program takes for table 3";
  EXPECT_EQ(store->Tables[2], before[2]);
}

TEST_F(TableSetupTest, CompressIsTimeThatIsNotStoredInEveryRecord) {
  for (const flag stored : {kFalse, kTrue}) {
    store->Tables[1].CalcTime = stored;
    frmOutInt form(context);
    EXPECT_EQ(form.CalcTime.Checked(), stored == kFalse);
    EXPECT_EQ(TableObject(*store, 1).RecordBytes(), stored == kFalse ? 0 : 12);
  }
}

TEST_F(TableSetupTest, LocationZeroIsInternalAndNoEdit) {
  store->Tables[1].TableLocation = 0;
  frmOutInt form(context);
  EXPECT_EQ(shown(form, "TableLocation"), "Internal");
  form.Cancel();  // without a question
  EXPECT_EQ(form.Result(), ModalResult::kCancel);
  frmOutInt again(context);
  again.Done();
  EXPECT_EQ(store->Tables[1].TableLocation, 1);
}

TEST_F(TableSetupTest, FlagsUsedTwiceByTablesInUseAreAsked) {
  store->Tables[1].FlagTable = 3;
  store->Tables[2].FlagMark = 3;
  store->Tables[2].FlagFull = 3;
  store->Tables[6].FlagFull = 3;  // is off
  const std::string text =
      "Table 'Engine'  Write Flag and Table 'Cabin'  Mark Flag both use flag 3\r\n"
      "Table 'Engine'  Write Flag and Table 'Cabin'  Full Flag both use flag 3\r\n"
      "Table 'Cabin'  Mark Flag and Table 'Cabin'  Full Flag both use flag 3\r\n"
      "The above condition(s) could possibly cause undesirable results.\r\n"
      "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT.";
  frmOutInt form(context);
  forms.ExpectBox("DUPLICATE FLAGS", text, Answer::kNo);
  form.Done();
  EXPECT_EQ(form.Result(), ModalResult::kNone);
  forms.ExpectBox("DUPLICATE FLAGS", text, Answer::kYes);
  form.Done();
  EXPECT_EQ(form.Result(), ModalResult::kDone);
}

TEST_F(TableSetupTest, AFlagThatTheFlagsScreenDrivesIsTold) {
  FlagControl& flag = store->Flags[2];
  flag.FlagInclude = kTrue;
  flag.FlagOn = kTrue;
  flag.State[1].FlagExpression = "VBlk1(1) > 5";
  flag.State[2].FlagExpression = "VBlk1(1) < 4";
  frmOutInt form(context);
  forms.ExpectBoxWith("FLAG INFORMATION", "During program execution, the state of Flag(2");
  forms.CollectBoxes();
  pick(form, "FlagTable", "2");
  form.Done();
  ASSERT_FALSE(forms.shown.empty());
  EXPECT_EQ(forms.shown.back().title, "FLAG INFORMATION");
  EXPECT_EQ(forms.shown.back().text,
            "JUST LETTING YOU KNOW.\r\n"
            "Flag(2) was previously enabled in the Flags Setup window.\r\n"
            "The following code will be in the Tessel program:\r\n"
            "If VBlk1(1) > 5 Then\r\n    Flag(2) = True\r\n"
            "ElseIf VBlk1(1) < 4 Then\r\n    Flag(2) = False\r\nEnd If");
}

TEST_F(TableSetupTest, AScanRateTableOfAveragesAsksBeforeTheyBecomeSamples) {
  storeBattery(2);
  store->PowerOut.Output.OutputSelect[2][kAverage] = 1;
  frmOutInt form(context);
  pick(form, "Table", "Table 2");
  check(form, "SyncTable", true);
  forms.ExpectBoxWith("OUTPUT TABLES", "Table #2 - 'Cabin'", Answer::kNo);
  form.Done();
  EXPECT_EQ(form.Result(), ModalResult::kNone);
  EXPECT_EQ(store->Tables[2].SyncTable, kFalse) << "the project stays until it is done";
  forms.ExpectBoxWith("OUTPUT TABLES", "Table #2 - 'Cabin'", Answer::kYes);
  form.Done();
  EXPECT_EQ(store->Tables[2].SyncTable, kTrue);
  EXPECT_EQ(store->PowerOut.Output.OutputSelect[2][kAverage], 0);
}

TEST_F(TableSetupTest, AnUnevenIntervalIsOnlyAWarningHere) {
  frmOutInt form(context);
  type(form, "OutInt", "25");
  pick(form, "OutIntUnits", "mSecs");
  forms.ExpectBoxWith("TIMING PROBLEM 1", "WORKABLE TABLE INTERVALS ARE:");
  form.Done();
  EXPECT_EQ(form.Result(), ModalResult::kDone);
}

TEST_F(TableSetupTest, CancelAfterEditsMayGoOnOrSave) {
  for (const Answer answer : {Answer::kCancel, Answer::kYes}) {
    frmOutInt form(context);
    pick(form, "HDU7", "Public");
    forms.ExpectBox("OUTPUT TABLES", std::string(kEditsQuestion), answer);
    form.Cancel();
    EXPECT_EQ(form.Result(), answer == Answer::kYes ? ModalResult::kDone : ModalResult::kNone);
    EXPECT_EQ(store->Tables.HDU7, answer == Answer::kYes ? 1 : 0);
  }
}

TEST_F(TableSetupTest, ConditionsAreEditedInTheTableShown) {
  store->Config.MonitorPower[kMonitorBattery] = kTrue;
  const auto fill = [](Screen& screen, std::string_view measurement, std::string_view compare) {
    pick(screen, measurement, "BattVolt");
    pick(screen, compare, " >=");
    screen.Done();
    EXPECT_EQ(screen.Result(), ModalResult::kDone);
  };
  frmOutInt form(context);
  EXPECT_FALSE(form.Openers().empty());
  pick(form, "Table", "Table 2");
  host.scenes.push_back([&](Screen& screen) {
    check(screen, "SingleTrigger", true);
    fill(screen, "StartMeasVar1", "StartCompare1");
  });
  press(form, "Trigger");
  host.scenes.push_back([&](Screen& screen) {
    check(screen, "DisableWriteIf", true);
    fill(screen, "MeasureVar1", "Compare1");
  });
  press(form, "WriteIf");
  EXPECT_EQ(store->Tables[2].TrigTable, 0) << "before Done";
  form.Done();
  const OutputTable& kept = store->Tables[2];
  EXPECT_EQ(kept.TrigTable, 1);
  EXPECT_EQ(kept.Trigger[0][1].StartMeasVar, "BattVolt");
  EXPECT_EQ(kept.Trigger[0][1].StartTrigIndvExpress, "BattVolt >= 0");
  EXPECT_EQ(kept.WriteIf, 1);
  EXPECT_EQ(kept.DisableWriteIf, 1) << "which is what its readers ask for";
  EXPECT_EQ(kept.Write[1].Expression, "BattVolt >= 0");
}

// Every member has its own value, so that two that change places are seen.
TEST(TableObjects, AllThatTheProjectKeepsOfATableComesBack) {
  OutputTable kept{kTrue, "T", 1, 2,  3,   kTrue, kTrue, kTrue, 2,  kTrue, 4,  5,   6, 7, 8,
                   kTrue, 1,   9, 10, "a", "b",   "c",   {},    11, 1,     {}, "d", 0, 0};
  i16 n = 12;
  for (auto& state : kept.Trigger) {
    for (TriggerCondition& row : state) {
      row = {NumberText(n), static_cast<i16>(n + 1), static_cast<i16>(n + 2),
             n + 3.5F,      NumberText(n + 4),       NumberText(n + 5)};
      n = static_cast<i16>(n + 6);
    }
  }
  for (WriteCondition& row : kept.Write) {
    row = {NumberText(n), static_cast<i16>(n + 1), static_cast<i16>(n + 2),
           n + 3.5F,      NumberText(n + 4),       NumberText(n + 5)};
    n = static_cast<i16>(n + 6);
  }
  const auto store = NewStore();
  store->Tables[4] = kept;
  OutputTable back;
  KeepTable(TableObject(*store, 4), back);
  EXPECT_EQ(back, kept);
}

TEST_F(TableSetupTest, ADayOfSecondsIs86400Records) {
  storeBattery(1);
  storeBattery(2);
  store->Tables[1].CalcTime = kTrue;
  store->Tables[2].CalcTime = kFalse;
  frmOutInt form(context);
  host.scenes.push_back([&](Screen& times) {
    EXPECT_EQ(times.Caption, "TABLE ENGINE");
    EXPECT_EQ(times.Find("Hours")->ToolTip, "Enter the number of Hours desired.");
    EXPECT_EQ(shown(times, "Minutes"), "16") << "1000 records of a second";
    EXPECT_EQ(shown(times, "Seconds"), "40");
    EXPECT_EQ(shown(times, "TotalBytes"), "20,000") << "1000 x 16 + 1000 x 4";
    type(times, "Minutes", "0");
    type(times, "Seconds", "0");
    EXPECT_FALSE(times.DoneEnabled);
    times.Done();
    EXPECT_EQ(times.Result(), ModalResult::kNone);
    type(times, "Days", "1");
    EXPECT_EQ(shown(times, "Buffer"), "86,400");
    EXPECT_EQ(shown(times, "TotalBytes"), "1,386,400");
    EXPECT_EQ(times.Find("Space")->Caption, "S-Ram Space");
    EXPECT_EQ(shown(times, "Space"), "1,000,000");
    EXPECT_FALSE(times.Find("BurstNote")->Visible);
    EXPECT_TRUE(dynamic_cast<frmTableTimes&>(times).TotalBytes.Flashes);
    times.Done();
    EXPECT_EQ(times.Result(), ModalResult::kDone);
  });
  press(form, "TableTimes");
  EXPECT_EQ(shown(form, "Buffer"), "86400");
  form.Done();
  EXPECT_EQ(store->Tables[1].Buffer, 86400);
}

TEST_F(TableSetupTest, MoreRecordsThanATableCanHaveAreRefused) {
  TableObjects tables = TableObjectsOf(*store);
  frmTableTimes times(context, tables, 1);
  type(times, "Days", "24855");
  EXPECT_EQ(shown(times, "Buffer"), "2,147,473,000");  // and the rest of 1000
  forms.ExpectBoxWith("TABLE TIME TOO LONG", "2,147,483,647");
  type(times, "Days", "24856");
  times.Done();
  EXPECT_EQ(times.Result(), ModalResult::kNone);
  store->Scan.ExecTimeUnits = 9;  // no interval at all
  tables[1].SyncToScan = kTrue;
  forms.ExpectBoxWith("TABLE TIME TOO LONG", "2,147,483,647");
  type(times, "Days", "1");
  EXPECT_EQ(shown(times, "Buffer"), "?");
}

TEST_F(TableSetupTest, MediaHaveTheirSpace) {
  store->Config.SizeCard = 64;
  EXPECT_EQ(MediumOf(*store, 2).label, "PCCard Space");
  EXPECT_NEAR(MediumOf(*store, 2).space, 64424509.44, 0.01);  // 64 x 1,048,576 x 0.96
  store->TempBlock.BlockCount = 1;
  store->TempBlock[1].Reps = 5;
  store->TempBlock[1].MeasType = "SE";
  store->TempBlock[1].ReverseMes = kFalse;
  store->TempBlock[1].Integration = 250;
  store->Scan.BufferScans = 1200;
  store->Scan.ScanBuffer = "1";
  TableObjects tables = TableObjectsOf(*store);
  frmTableTimes times(context, tables, 1);
  EXPECT_EQ(shown(times, "BurstNote"), "12,000 bytes used for Burst Buffer.");
  EXPECT_EQ(shown(times, "Space"), "988,000");
  store->Scan.ScanBuffer = "0";
  EXPECT_EQ(MediumOf(*store, 1).space, 1e6);
}

TEST_F(TableSetupTest, TheReportTellsEachTableInUse) {
  store->Tables[1].Buffer = 93784;  // 1 day, 2 hours, 3 minutes, 4 seconds
  store->Tables[2].AutoSize = kTrue;
  store->Tables[3].TableOn = kTrue;
  store->Tables[3].SyncTable = kTrue;
  store->Tables[3].TableName = "Fast";
  store->Tables[3].AutoSize = kFalse;
  store->Tables[3].Buffer = 6000;
  store->Scan.ExecutionTime = 9.99999F;
  frmOutInt form(context);
  forms.ExpectBox("TABLE TIME",
                  "Table Engine Time To Fill:\r\n1 Days,  2 Hours,  3 Mins,  4.0 Secs\r\n"
                  "Table Cabin Time To Fill:\r\nBuffer Size   = Auto Size\r\n"
                  "Table Fast Time To Fill:\r\n0 Days,  0 Hours,  1 Mins,  0.0 Secs");
  press(form, "AllTables");
}

}  // namespace
}  // namespace ostrand
