#include "projects.h"

#include "model/defaults.h"
#include "model/enums.h"
#include "text/number.h"

namespace ostrand::bench {
namespace {

template <class Block>
void setAliases(Block& block, const char* stem, int n, bool everything) {
  for (int r = 1; r <= block.Reps; ++r) {
    RepAlias& alias = block.Alias[r];
    alias.AliasName = stem + NumberText(n) + "_" + NumberText(r);
    if (!everything) continue;
    alias.AliasUnits = "kPa";
    alias.AliasMult = "0.25";
    alias.AliasOffset = "-12.5";
    alias.AliasExcept = "7";
  }
}

void selectAll(OutputSet& output, int lastCode) {
  for (int t = 1; t <= kTables; ++t) {
    for (int code = kSample; code <= lastCode; ++code) output.OutputSelect[t][code] = 1;
    HistoSet& histo = output.Histo[t];
    histo.HistogramCode = "10,0,100,1,1";
    histo.RainHistoCode = "5,5,0,100,1";
    histo.LevelCode = "40,40,A,B";
    histo.NumDims = 1;
    histo.LevelMeasName = "BattVolt";
    histo.LevNumLevels = histo.LevNumTests = kLevels;
    for (int i = 0; i < kLevels; ++i) {
      histo.LevelVarOne[i] = static_cast<float>(i) + 0.5F;
      histo.LevelVarTwo[i] = static_cast<float>(i) - 0.25F;
    }
  }
}

template <class Group>
void fillGroup(Group& group, const char* stem, int blocks, int reps) {
  group.BlockCount = static_cast<i16>(blocks);
  for (int b = 1; b <= blocks; ++b) {
    group[b].Reps = static_cast<i16>(reps);
    setAliases(group[b], stem, b, true);
    selectAll(group[b].Output, kLevelCrossing);
  }
}

void start(ProjectStore& store) {
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
  for (int t = 1; t <= kTables; ++t) store.Tables[t].TableOn = kTrue;
}

void makeFull(ProjectStore& store, int blocks, int pulseBlocks, int reps, int items, int values) {
  start(store);
  store.Config.TK40MQty = 4;
  store.Config.CanBusQty = 1;
  fillGroup(store.TempBlock, "Temp", blocks, reps);
  fillGroup(store.VoltBlock, "Volt", blocks, reps);
  fillGroup(store.BridgeBlock, "Brdg", blocks, reps);
  fillGroup(store.TK40MBlock, "Mux", blocks, reps);
  fillGroup(store.PulseBlock[0], "Puls", pulseBlocks, reps);
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = static_cast<i16>(items);
  for (int i = 1; i <= items; ++i) {
    CanItemData& item = store.Can.Item[i];
    item.Name = "Item" + NumberText(i);
    item.Reps = static_cast<i16>(values);
    setAliases(item, "Can", i, true);
    selectAll(item.Output, kLevelCrossing);
  }
  store.CalcFields.CalcFieldCount = kCalcFields;
  for (int f = 1; f <= kCalcFields; ++f) {
    CalcFieldData& field = store.CalcFields.Field[f];
    field.CalcField[1] = "Calc" + NumberText(f);
    field.CalcField[2] = "TBlk1(" + NumberText(f) + ") * 2";
    selectAll(field.Output, kLevelCrossing);
  }
}

}  // namespace

void MakeLargestProject(ProjectStore& store) {
  makeFull(store, kBlocks, kPulseBlocks, kReps, kCanItems, kCanValues);
}

void MakeWiredProject(ProjectStore& store) { makeFull(store, 2, 2, 50, 2, 50); }

void MakeEveryScreenReachable(ProjectStore& store) {
  store.TempBlock[1].TypeNo = store.TK40MBlock[1].TypeNo = ORVUS_TCTYPE_K;
  store.BridgeBlock[2].Style = 4;
}

void MakeLongestProgram(ProjectStore& store) {
  start(store);
  const auto fill = [](auto& group, const char* stem, int blocks, int reps) {
    group.BlockCount = static_cast<i16>(blocks);
    for (int b = 1; b <= blocks; ++b) {
      group[b].Reps = static_cast<i16>(reps);
      setAliases(group[b], stem, b, true);
      for (int t = 1; t <= kTables; ++t) {
        for (int code = kSample; code <= kStdDev; ++code) {
          group[b].Output.OutputSelect[t][code] = 1;
        }
      }
    }
  };
  fill(store.TempBlock, "Temp", kBlocks, 39);
  fill(store.VoltBlock, "Volt", kBlocks, 39);
}

}  // namespace ostrand::bench
