#include "model/defaults.h"

#include <gtest/gtest.h>

#include "model/intervals.h"

namespace ostrand {
namespace {

using namespace ORVUS_COMMON;

class Defaults : public testing::Test {
 protected:
  Defaults() { SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(Defaults, OfANewProject) {
  EXPECT_EQ(store.TempBlock.BlockCount + store.VoltBlock.BlockCount + store.BridgeBlock.BlockCount +
                store.TK40MBlock.BlockCount + store.PulseBlock[0].BlockCount,
            0);
  for (int t = 1; t <= kTables; ++t) {
    EXPECT_EQ(store.Tables[t].TableName, "Table" + std::to_string(t));
  }
  for (const auto& row : store.Config.Status) {
    for (const std::string& cell : row) EXPECT_EQ(cell, "");
  }
  EXPECT_EQ(store.Config.AutoChan, kTrue);
  EXPECT_EQ(store.Config.PowerOffString, "---- --- -- --:--:--");
  EXPECT_EQ(store.Gen.Version, "6.0");
  EXPECT_EQ(store.Gen.VersionLastSaved, "6.1.0.07");
  EXPECT_EQ(store.Ports.CodeType, "HEX");
  EXPECT_EQ(ScanIntervalMicros(store), 10000);
}

// Each kind differs from its neighbours in just these members.
TEST_F(Defaults, OfTheBlockKinds) {
  const struct {
    const AnalogBlock& block;
    const char *resolution, *units, *measType, *range;
    float mult, offset;
    i16 rangeNo;
    flag openSensor;
  } cases[] = {
      {store.TempBlock[7], "FP2", "Deg_F", "Diff", "50 mV", 1.8F, 32, 30, kTrue},
      {store.VoltBlock[7], "FP2", "mVolts", "Diff", "50 mV", 1, 0, 50, kTrue},
      {store.BridgeBlock[7], "IEEE4", "mVoltPVolt", "Diff", "200 mV", 1, 0, 50, kFalse},
      {store.TK40MBlock[7], "FP2", "Deg_F", "", "50 mV", 1.8F, 32, 30, kTrue},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.units);
    EXPECT_EQ(c.block.DataResolution, c.resolution);
    EXPECT_EQ(c.block.Units, c.units);
    EXPECT_EQ(c.block.MeasType, c.measType);
    EXPECT_EQ(c.block.Range, c.range);
    EXPECT_EQ(c.block.DefaultMult, c.mult);
    EXPECT_EQ(c.block.DefaultOffset, c.offset);
    EXPECT_EQ(c.block.RangeNo, c.rangeNo);
    EXPECT_EQ(c.block.OpenSensDetect, c.openSensor);
    EXPECT_EQ(c.block.Integration, 250);
    EXPECT_EQ(c.block.SettleTime, 200);
    EXPECT_EQ(c.block.ReverseMes, kTrue);
    EXPECT_EQ(c.block.Alias[100].AliasExcept, "0");
  }
}

TEST_F(Defaults, SecondStatesCompareTheOtherWay) {
  EXPECT_EQ(store.Tables[6].Trigger[0][10].StartCompare, 1);
  EXPECT_EQ(store.Tables[6].Trigger[1][10].StartCompare, 2);
  EXPECT_EQ(store.Flags[8].State[1].FlagCompare, 1);
  EXPECT_EQ(store.Flags[8].State[2].FlagCompare, 2);
  EXPECT_EQ(store.Ports.Slot[1].Ports[9].State[1].Compare, 2);
  EXPECT_EQ(store.Ports.Slot[1].Ports[8].Polarity, kTrue);
  EXPECT_EQ(store.Ports.Slot[1].Ports[9].Polarity, kFalse);
}

TEST_F(Defaults, ReleaseKeepsTheBlocksBelowTheIndex) {
  VoltBlockGroup& volts = store.VoltBlock;
  volts.BlockCount = 5;
  volts.SEChannelCount = 40;
  for (VoltBlockData& block : volts.Blocks) {
    block.Reps = 4;
    block.Alias[1].AliasName = "Oil";
    block.Output.OutputSelect[1][kSample] = 1;
    block.Output.Histo[6].LevelVarOne[39] = 7;
  }
  SetVoltDefaults(store, 2);
  EXPECT_EQ(volts.BlockCount, 2);
  EXPECT_EQ(volts.SEChannelCount, 40);
  for (int b = 1; b <= kBlocks; ++b) {
    const bool kept = b <= 2;
    EXPECT_EQ(volts[b].Reps, kept ? 4 : 0) << b;
    EXPECT_EQ(volts[b].Alias[1].AliasName, kept ? "Oil" : "") << b;
    EXPECT_EQ(volts[b].Output.OutputSelect[1][kSample], kept ? 1 : 0) << b;
    EXPECT_EQ(volts[b].Output.Histo[6].LevelVarOne[39], kept ? 7 : 0) << b;
  }
  SetVoltDefaults(store, 4);  // above the count: it stays
  EXPECT_EQ(volts.BlockCount, 2);
  SetVoltDefaults(store, 0);
  EXPECT_EQ(volts.BlockCount, 0);
  EXPECT_EQ(volts.SEChannelCount, 0);
}

TEST_F(Defaults, OfATableClearItsSelectionsOnlyWhenAsked) {
  store.TempBlock[3].Output.OutputSelect[2][kAverage] = 1;
  store.TempBlock[3].Output.OutputSelect[4][kAverage] = 1;
  store.Tables[2].TableName = "Fast";
  SetTableDefaults(store, 2, false);
  EXPECT_EQ(store.Tables[2].TableName, "Table2");
  EXPECT_EQ(store.TempBlock[3].Output.OutputSelect[2][kAverage], 1);
  SetTableDefaults(store, 2, true);
  EXPECT_EQ(store.TempBlock[3].Output.OutputSelect[2][kAverage], 0);
  EXPECT_EQ(store.TempBlock[3].Output.OutputSelect[4][kAverage], 1);
}

TEST_F(Defaults, NothingOfAnotherProjectSurvives) {
  store.Config.Status[11][4] = "1 T";
  store.Can.Item[128].Alias[64].AliasName = "Speed";
  store.CalcFields.Field[50].CalcField[2] = "1+1";
  store.Ports.Slot[1].BinaryMask[0] = "0";
  store.PowerOut.Output.OutputSelect[1][0] = 1;
  store.ExciteOut.ExcitePublic = kTrue;
  store.BridgeBlock.ExciteSwitched = store.BridgeBlock.ExciteCAO = 2;
  store.Can.CanCount = 128;
  store.CalcFields.CalcFieldCount = 50;
  SetAllDefaults(store);
  EXPECT_EQ(store.Config.Status[11][4], "");
  EXPECT_EQ(store.Can.Item[128].Alias[64].AliasName, "");
  EXPECT_EQ(store.CalcFields.Field[50].CalcField[2], "");
  EXPECT_EQ(store.Ports.Slot[1].BinaryMask[0], "11111111");
  EXPECT_EQ(store.PowerOut.Output.OutputSelect[1][0], 0);
  EXPECT_EQ(store.ExciteOut.ExcitePublic, kFalse);
  EXPECT_EQ(store.BridgeBlock.ExciteSwitched + store.BridgeBlock.ExciteCAO, 0);
  EXPECT_EQ(store.Can.CanCount + store.CalcFields.CalcFieldCount, 0);
  ClearStore(store);
  EXPECT_EQ(store.Tables[1].TableName, "");
  EXPECT_EQ(store.Config.AutoChan, kFalse);
}

TEST_F(Defaults, ScanPeriodIsThatOfTheDecimalNumber) {
  const struct {
    float time;
    i16 units;
    double micros;
  } cases[] = {{0.1F, 2, 100000},   {1.1F, 1, 1100}, {0.3F, 3, 18000000},  {7, 0, 7},
               {10, 4, 0},          {10, -1, 0},     {1.001F, 2, 1001000}, {1.001F, 1, 1001},
               {0.017F, 3, 1020000}};
  for (const auto& c : cases) {
    store.Scan.ExecutionTime = c.time;
    store.Scan.ExecTimeUnits = c.units;
    EXPECT_EQ(ScanIntervalMicros(store), c.micros) << c.time;
  }
}

}  // namespace
}  // namespace ostrand
