#include "model/output_table.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/intervals.h"
#include "model/new_store.h"

namespace ostrand {
namespace {

using namespace ORVUS_COMMON;

TEST(OutputFieldCount, DependsOnTheInstruction) {
  const struct {
    i16 selected;
    int code;
    const char *histogram, *rain, *level;
    i32 fields;
  } cases[] = {
      {0, 0, "", "", "", 0},
      {1, kSample, "", "", "", 1},
      {-1, kStdDev, "", "", "", 1},
      {1, kHistogram, "", "", "", 0},
      {1, kHistogram, " 10.9,1,0", "", "", 10},
      {1, kHistogram, "1E300", "", "", 2147483647},
      {1, kRainFlow, "", "10,20,0,5", "2,2,2", 200},
      {1, kLevelCrossing, "", "2,2,2", "3,4", 0},
      {1, kLevelCrossing, "", "2,2,2", "3,4,0", 12},
      {1, kLevelCrossing, "", "", "1E400,0,0", 0},
      {1, 8, "9", "9,9,9", "9,9,9", 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(OutputFieldCount(c.selected, c.code, c.histogram, c.rain, c.level), c.fields)
        << c.code << c.histogram << c.level;
  }
}

class BytesOfRecord : public testing::Test {
 protected:
  BytesOfRecord() { SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(BytesOfRecord, GoIntoTheObjectIfGiven) {
  store.VoltBlock[1].Reps = 3;
  store.VoltBlock[1].Output.OutputSelect[2][kSample] = kTrue;
  cOutputTable table;
  EXPECT_EQ(BytesPerRecord(store, 2, &table), 6);
  EXPECT_EQ(table.NumFields, 3);
  EXPECT_EQ(table.RecordBytes(), 6);
  table.StoreEveryTS = kTrue;
  EXPECT_EQ(table.RecordBytes(), 18);
  EXPECT_EQ(store.Tables[2].NumFields, 0);
  EXPECT_THROW(BytesPerRecord(store, 7, &table), Fault);
}

TEST_F(BytesOfRecord, IntervalsOfStoreAndObjectAreEqual) {
  const struct {
    i32 interval;
    i16 units;
    flag sync;
    double micros;
  } cases[] = {{0, 2, 0, 1e6},   {5, 0, 0, 50},    {5, 1, 0, 5000},
               {2, 3, 0, 1.2e8}, {1, 4, 0, 3.6e9}, {2, 5, 0, 1.728e11},
               {5, 6, 0, 0},     {5, -1, 0, 0},    {5, 2, kTrue, 10000}};
  for (const auto& c : cases) {
    cOutputTable table;
    table.Interval = store.Tables[1].OutInt = c.interval;
    table.IntervalUnits = store.Tables[1].OutIntUnits = c.units;
    table.SyncToScan = store.Tables[1].SyncTable = c.sync;
    EXPECT_EQ(TableIntervalMicros(store, table), c.micros) << c.units;
    EXPECT_EQ(TableIntervalMicros(store, 1), c.micros) << c.units;
  }
}

TEST(OutputTableObject, SeparatesConditionsAndRefusesOtherSubscripts) {
  cOutputTable table;
  for (int number = 1; number <= 10; ++number) {
    for (int state = 0; state <= 1; ++state) {
      table.TriggerMeasVar(state, number, std::to_string(10 * number + state));
    }
    table.WriteIfExpression(number, std::to_string(number));
  }
  const cOutputTable copy = table.Clone();
  table.TriggerMeasVar(0, 1, "changed");
  EXPECT_EQ(copy.TriggerMeasVar(0, 1), "10");
  EXPECT_EQ(copy.TriggerMeasVar(1, 10), "101");
  EXPECT_EQ(copy.WriteIfExpression(9), "9");
  for (const int number : {0, 11}) {
    EXPECT_THROW((void)copy.TriggerCompare(0, number), Fault);
    EXPECT_THROW(table.WriteIfVarIdx(number, 1), Fault);
  }
  for (const int state : {-1, 2}) EXPECT_THROW(table.TriggerValue(state, 1, 1), Fault);
}

}  // namespace
}  // namespace ostrand
