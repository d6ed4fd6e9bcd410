#include "model/output_table.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/intervals.h"
#include "model/names.h"

namespace ostrand {
namespace {

using namespace ORVUS_COMMON;

TEST(OutputFieldCount, ByInstruction) {
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

  static void select(OutputSet& output, int code) { output.OutputSelect[2][code] = kTrue; }

  void expectRecord(i32 fields, i32 bytes) {
    EXPECT_EQ(BytesPerRecord(store, 2, nullptr), bytes);
    EXPECT_EQ(store.Tables[2].NumFields, fields);
    EXPECT_EQ(store.Tables[2].FieldBytes, static_cast<float>(bytes));
    EXPECT_EQ(BytesPerRecord(store, 1, nullptr), 0);  // nothing of it in another table
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(BytesOfRecord, CountsRepetitionsOfAllRows) {
  select(store.TempBlock[1].Output, kSample);  // no repetitions: adds nothing
  expectRecord(0, 0);
  store.TempBlock[1].Reps = 10;
  select(store.TempBlock[1].Output, kAverage);
  expectRecord(20, 40);
  store.BridgeBlock[7].Reps = 3;  // beyond the block count, and still counted
  select(store.BridgeBlock[7].Output, kLevelCrossing);
  store.BridgeBlock[7].Output.Histo[2].LevelCode = "3,4,0";
  expectRecord(20 + 36, 40 + 144);
  for (int slot = 0; slot <= 1; ++slot) {
    store.PulseBlock[slot][2].Reps = 2;
    select(store.PulseBlock[slot][2].Output, kMaximum);
  }
  store.TK40MBlock[1].Reps = 5;  // whatever the number of multiplexers
  select(store.TK40MBlock[1].Output, kMinimum);
  expectRecord(56 + 4 + 5, 184 + 16 + 10);
  store.TK40MBlock[1].DataResolution = "FP3";
  expectRecord(65, 200);
}

TEST_F(BytesOfRecord, CountsSingleValuesUnderTheirSwitches) {
  Configuration& config = store.Config;
  select(store.PowerOut.Output, kSample);
  select(store.TK40MRef.Output, kSample);
  select(store.TcRef.Output, kSample);  // the panel temperature is not counted
  for (int slot = 0; slot <= 1; ++slot) select(store.Ports.Slot[slot].Output, kSample);
  select(store.Can.Item[1].Output, kSample);
  select(store.CalcFields.Field[1].Output, kSample);
  store.Can.Item[1].Reps = 64;  // values of an item don't count
  config.MonitorPower[4] = kTrue;
  config.TK40MQty = 2;
  config.CanBusQty = 1;
  store.Can.CanCount = 1;
  expectRecord(0, 0);
  config.MonitorPower[1] = kTrue;
  expectRecord(1, 2);
  config.TcConfigOpts[1] = kTrue;
  expectRecord(2, 4);
  store.Ports.Slot[1].Ports[9].Include = kTrue;
  expectRecord(2, 4);
  store.Ports.Slot[1].ReadMode = kTrue;
  expectRecord(3, 8);
  store.Can.Module[1].CanBusEnabled = 1;
  expectRecord(4, 12);
  store.CalcFields.CalcFieldCount = 1;
  expectRecord(5, 14);
}

TEST_F(BytesOfRecord, GoIntoTheObjectWhenThereIsOne) {
  store.VoltBlock[1].Reps = 3;
  select(store.VoltBlock[1].Output, kSample);
  cOutputTable table;
  EXPECT_EQ(BytesPerRecord(store, 2, &table), 6);
  EXPECT_EQ(table.NumFields, 3);
  EXPECT_EQ(table.RecordBytes(), 6);
  table.StoreEveryTS = kTrue;
  EXPECT_EQ(table.RecordBytes(), 18);
  EXPECT_EQ(store.Tables[2].NumFields, 0);
  EXPECT_THROW(BytesPerRecord(store, 7, &table), Fault);
}

TEST_F(BytesOfRecord, TableIntervalsAreTheSameOfStoreAndObject) {
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

TEST(OutputTableObject, HoldsItsConditionsApartAndRefusesOthers) {
  cOutputTable table;
  for (int number = 1; number <= 10; ++number) {
    for (int state = 0; state <= 1; ++state) {
      table.TriggerMeasVar(state, number, std::to_string(10 * number + state));
      table.TriggerVarb(state, number, "b");
    }
    table.WriteIfExpression(number, "VBlk1>" + std::to_string(number));
    table.WriteIfValue(number, 0.5F);
  }
  const cOutputTable copy = table.Clone();
  table.TriggerMeasVar(0, 1, "changed");
  EXPECT_EQ(copy.TriggerMeasVar(0, 1), "10");
  EXPECT_EQ(copy.TriggerMeasVar(1, 10), "101");
  EXPECT_EQ(copy.TriggerVarb(1, 10), "b");
  EXPECT_EQ(copy.WriteIfExpression(10), "VBlk1>10");
  EXPECT_EQ(copy.WriteIfValue(10), 0.5F);
  const auto faultOf = [](auto read) {
    try {
      read();
    } catch (const Fault& fault) {
      return fault.number;
    }
    return 0;
  };
  for (const int number : {0, 11}) {
    EXPECT_EQ(faultOf([&] { (void)copy.TriggerCompare(0, number); }), 9);
    EXPECT_EQ(faultOf([&] { table.WriteIfVarIdx(number, 1); }), 9);
  }
  for (const int state : {-1, 2}) {
    EXPECT_EQ(faultOf([&] { table.TriggerValue(state, 1, 1); }), 9);
  }
}

TEST(Names, FollowTheSchemeOfTheirKind) {
  const struct {
    OrvusDataObjTypes kind;
    const char *source, *mult, *offset, *zero, *reps;
  } cases[] = {
      {ORVUS_DOBJ_BLK_TEMP, "TBlk7", "MTBlk7", "OTBlk7", "", "TREP7"},
      {ORVUS_DOBJ_BLK_VOLT, "VBlk7", "MVBlk7", "OVBlk7", "VBlk7Zero", "VREP7"},
      {ORVUS_DOBJ_BLK_BRIDGE, "BBlk7", "MBBlk7", "OBBlk7", "BBlk7ZeroMv", "BREP7"},
      {ORVUS_DOBJ_BLK_PULSE, "PBlk7", "MPBlk7", "OPBlk7", "", "PREP7"},
      {ORVUS_DOBJ_BLK_TK40M, "ABlk7", "MABlk7", "OABlk7", "ABlk7Zero", "AREP7"},
      {ORVUS_DOBJ_BLK_QBCAN, "", "MCBlk7", "OCBlk7", "", ""},
      {ORVUS_DOBJ_CALC, "", "", "", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SourceName(c.kind, 7), c.source);
    EXPECT_EQ(MultName(c.kind, 7), c.mult);
    EXPECT_EQ(OffsetName(c.kind, 7), c.offset);
    EXPECT_EQ(ZeroName(c.kind, 7), c.zero);
    EXPECT_EQ(ConstantName(c.kind, "REP", 7), c.reps);
  }
  EXPECT_EQ(GaugeName(1), "GBBlk1");
}

}  // namespace
}  // namespace ostrand
