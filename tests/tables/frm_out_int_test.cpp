// The table screens: settings, questions, and what is stored in the project.
#include "tables/frm_out_int.h"

#include "model/new_store.h"
#include "support/table_screens_fixture.h"
#include "tables/frm_table_times.h"
#include "text/number.h"

namespace ostrand {
namespace {

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
};

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

// Every member has a different value, to detect swapped ones.
TEST(TableObjects, TableObjectKeepsAllStoredMembers) {
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

TEST_F(TableSetupTest, MediaHaveTheirSpace) {
  store->Config.SizeCard = 64;
  EXPECT_NEAR(MediumOf(*store, 2).space, 64424509.44, 0.01);  // 64 x 1,048,576 x 0.96
  store->TempBlock.BlockCount = 1;
  store->TempBlock[1].Reps = 5;
  store->TempBlock[1].MeasType = "SE";
  store->TempBlock[1].ReverseMes = kFalse;
  store->TempBlock[1].Integration = 250;
  store->Tables[1].CalcTime = kTrue;
  store->Scan.BufferScans = 1200;
  store->Scan.ScanBuffer = "1";
  TableObjects tables = TableObjectsOf(*store);
  frmTableTimes times(context, {tables, 1});
  EXPECT_EQ(shown(times, "BurstNote"), "12,000 bytes used for Burst Buffer.");
  EXPECT_EQ(shown(times, "Space"), "988,000");
  EXPECT_FALSE(times.TotalBytes.Flashes);
  type(times, "Days", "1");  // 87,400 times of 12 bytes
  EXPECT_TRUE(times.TotalBytes.Flashes);
  for (const std::string_view part : {"Days", "Hours", "Minutes", "Seconds"}) {
    type(times, part, "0");
  }
  times.Done();
  EXPECT_EQ(times.Result(), ModalResult::kNone) << "no records";
  store->Scan.ExecTimeUnits = 9;  // no interval at all
  tables[1].SyncToScan = kTrue;
  forms.ExpectBoxWith("TABLE TIME TOO LONG", "2,147,483,647");
  type(times, "Days", "1");
  EXPECT_EQ(shown(times, "Buffer"), "?");
}

}  // namespace
}  // namespace ostrand
