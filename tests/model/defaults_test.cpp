#include "model/defaults.h"

#include <gtest/gtest.h>

#include "model/burst_buffer.h"
#include "model/format_version.h"
#include "model/intervals.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/project_random.h"

namespace ostrand {
namespace {

using namespace ORVUS_COMMON;

class Defaults : public ::testing::Test {
 protected:
  Defaults() { SetAllDefaults(store); }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

// Each kind differs from its neighbours in these members only.
TEST_F(Defaults, DifferByBlockKind) {
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
  // Second states compare in the opposite direction.
  for (int state = 0; state <= 1; ++state) {
    EXPECT_EQ(store.Tables[6].Trigger[state][10].StartCompare, 1 + state);
    EXPECT_EQ(store.Flags[8].State[1 + state].FlagCompare, 1 + state);
    EXPECT_EQ(store.Ports.Slot[1].Ports[9].State[state].Compare, 1 + state);
  }
}

TEST_F(Defaults, ReleaseKeepsTheBlocksBelowTheIndex) {
  VoltBlockGroup& volts = store.VoltBlock;
  volts.BlockCount = 5;
  volts.SEChannelCount = 40;
  for (VoltBlockData& block : volts.Blocks) {
    block.Reps = 4;
    block.Alias[1].AliasName = "Oil";
    block.Output.Histo[6].LevelVarOne[39] = 7;
  }
  const struct {
    int first;
    i16 count, channels;
    int kept;
  } cases[] = {{2, 2, 40, 2}, {4, 2, 40, 2}, {0, 0, 0, 0}};  // unchanged if above the count
  for (const auto& c : cases) {
    SetVoltDefaults(store, c.first);
    EXPECT_EQ(volts.BlockCount, c.count);
    EXPECT_EQ(volts.SEChannelCount, c.channels);
    for (int b = 1; b <= kBlocks; ++b) {
      EXPECT_EQ(volts[b].Reps, b <= c.kept ? 4 : 0) << b;
      EXPECT_EQ(volts[b].Alias[1].AliasName, b <= c.kept ? "Oil" : "") << b;
      EXPECT_EQ(volts[b].Output.Histo[6].LevelVarOne[39], b <= c.kept ? 7 : 0) << b;
    }
  }
}

TEST_F(Defaults, TableDefaultsClearSelectionsOnlyOnRequest) {
  auto& selected = store.TempBlock[3].Output.OutputSelect;
  selected[2][kAverage] = selected[4][kAverage] = 1;
  store.Tables[2].TableName = "Fast";
  SetTableDefaults(store, 2, false);
  EXPECT_EQ(store.Tables[2].TableName, "Table2");
  EXPECT_EQ(selected[2][kAverage], 1);
  SetTableDefaults(store, 2, true);
  EXPECT_EQ(selected[2][kAverage], 0);
  EXPECT_EQ(selected[4][kAverage], 1);
}

// The project file with all counts computed again.
std::string fileWithAllCounted(ProjectStore& store) {
  store.Config.StatusMonCount = kStatusRows;
  store.Config.TK40MQty = store.Config.CanBusQty = store.Can.Module[1].CanBusEnabled = 1;
  for (OutputTable& table : store.Tables.Table) {
    table.TableOn = kTrue;
    table.TrigTable = table.TrigTabStop = table.WriteIf = kConditions;
  }
  store.TempBlock.BlockCount = store.VoltBlock.BlockCount = store.BridgeBlock.BlockCount =
      store.TK40MBlock.BlockCount = kBlocks;
  store.PulseBlock[0].BlockCount = kPulseBlocks;
  store.Can.CanCount = kCanItems;
  store.CalcFields.CalcFieldCount = kCalcFields;
  return ORVUS_GENFILE::ProjectFileText(store, {});
}

TEST_F(Defaults, ResetRemovesThePreviousProject) {
  const auto fresh = NewStore();
  SetAllDefaults(*fresh);
  testing::MakeLargestProject(store);
  store.BridgeBlock.ExciteSwitched = store.BridgeBlock.ExciteCAO = 2;
  SetAllDefaults(store);
  EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(store, {}), ORVUS_GENFILE::ProjectFileText(*fresh, {}));
  EXPECT_TRUE(fileWithAllCounted(store) == fileWithAllCounted(*fresh));
  ClearStore(store);
  EXPECT_EQ(store.Tables[1].TableName, "");
  EXPECT_EQ(store.Config.AutoChan, kFalse);
}

TEST_F(Defaults, ScanPeriodUsesTheDecimalNumber) {
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

TEST_F(Defaults, ConditionsOfOlderFormatNeedUpgrade) {
  const struct {
    const char* version;
    i16 trigTable, writeIf;
    bool needed;
  } cases[] = {
      {"5.3.1", 0, 0, false}, {"5.3.1", 1, 0, true}, {"5.9", 0, 2, true},
      {"6.0", 3, 3, false},   {"7", 1, 0, false},    {"", 1, 0, true},
      {"x6", 1, 0, true},     {"10.0", 1, 0, true},  {"5.3", -1, -1, false},
  };
  for (const auto& c : cases) {
    store.Gen.Version = c.version;
    store.Tables[6].TrigTable = c.trigTable;
    store.Tables[6].WriteIf = c.writeIf;
    EXPECT_EQ(NeedsUpgrade(store), c.needed) << c.version;
  }
}

TEST_F(Defaults, BurstBufferHasItsBytes) {
  const struct {
    const char* type;
    i16 reps;
    i32 integration;
    flag reversed;
    i32 bytes;  // of ten scans
  } cases[] = {
      {"SE", 3, 250, kFalse, 60},   {"SE", 3, 250, kTrue, 80},    {"SE", 0, 250, kTrue, 20},
      {"Diff", 3, 250, kFalse, 60}, {"Diff", 3, 250, kTrue, 120}, {"DIFF", 3, 250, kTrue, 60},
      {"se", 3, 250, kTrue, 60},    {"SE", 3, 200, kFalse, 120},  {"SE", 3, 199, kFalse, 60},
      {"SE", 3, 251, kFalse, 120},  {"SE", -3, 250, kFalse, -60},
  };
  const auto set = [](AnalogBlock& block, const char* type, i16 reps, i32 integration,
                      flag reversed) {
    block.MeasType = type;
    block.Reps = reps;
    block.Integration = integration;
    block.ReverseMes = reversed;
  };
  store.VoltBlock.BlockCount = 1;
  store.VoltBlock[2].Reps = 50;  // past the count
  for (const auto& c : cases) {
    set(store.VoltBlock[1], c.type, c.reps, c.integration, c.reversed);
    EXPECT_EQ(PROGGEN::BufferBytes(store, 10), c.bytes) << c.type << c.reps << c.integration;
  }
  // Thermocouples 2 * 2 * 2, a strain bridge turned over both ways 1 * 4 * 2 * 2, pulses
  // (1 + 1) * 4, a reversed multiplexer block 5 * 2 * 2.
  store.VoltBlock.BlockCount = 0;
  store.TempBlock.BlockCount = store.BridgeBlock.BlockCount = store.TK40MBlock.BlockCount = 1;
  for (PulseBlockGroup& group : store.PulseBlock) group.BlockCount = group[1].Reps = 1;
  set(store.TempBlock[1], "Diff", 2, 250, kTrue);
  set(store.BridgeBlock[1], "Diff", 1, 20000, kTrue);
  store.BridgeBlock[1].RevExcite = kTrue;
  set(store.TK40MBlock[1], "", 5, 250, kTrue);
  EXPECT_EQ(PROGGEN::BufferBytes(store, 1), 8 + 16 + 8 + 20);
  EXPECT_EQ(PROGGEN::BufferBytes(store, 0), 0);
  EXPECT_EQ(PROGGEN::BufferBytes(store, 2147483647), 2147483647);
}

}  // namespace
}  // namespace ostrand
