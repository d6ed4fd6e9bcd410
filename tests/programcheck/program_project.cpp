#include "programcheck/program_project.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "support/project_random.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

class Maker {
 public:
  Maker(ProjectStore& store, std::uint32_t seed) : store_(store), engine_(seed) {
    large_ = once(40);
  }

  void Make() {
    if (once(4)) thinOut();
    blocks();
    can();
    name();
    scan();
    tables();
    calculatedFields();
    controls();
    ports(store_.Ports.Slot[0]);
    if (once(10)) {
      store_.Ports.Slot[1].ByteMode = of(0, 1);
      store_.Ports.Slot[1].ReadMode = of(0, 1);
      ports(store_.Ports.Slot[1]);
    }
    slowSequence();
    levels();
  }

 private:
  i16 of(int low, int high) {
    return static_cast<i16>(
        low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1)));
  }
  bool once(int in) { return of(1, in) == 1; }
  flag maybe() { return once(2) ? kTrue : kFalse; }
  std::string newName(std::string_view stem) {
    return std::string(stem) + NumberText(++names_) + (once(2) ? "_x" : "");
  }
  const std::string& measured() { return measured_[engine_() % measured_.size()]; }
  std::string condition() {
    static constexpr std::array kCompares = {" > ", " <= ", " <> "};
    return measured() + kCompares[engine_() % kCompares.size()] + NumberText(int{of(-99, 99)});
  }
  std::string mask() { return once(4) ? "10100110" : "00001111"; }

  // Leaves few families, so that what one family declares cannot stand in for another's.
  void thinOut() {
    const bool bare = once(3);
    for (i16* count : {&store_.TempBlock.BlockCount, &store_.VoltBlock.BlockCount,
                       &store_.BridgeBlock.BlockCount, &store_.PulseBlock[0].BlockCount,
                       &store_.CalcFields.CalcFieldCount}) {
      if (bare) *count = 0;
      if (!once(3)) *count = std::min<i16>(*count, of(0, 1));
    }
    if (once(2)) store_.Config.CanBusQty = store_.Can.CanCount = 0;
  }

  void blocks() {
    const auto shorten = [this](auto& group) {
      for (auto& block : group.Blocks) {
        if (block.Reps > 12 && !large_) block.Reps = of(1, 12);
      }
    };
    shorten(store_.TempBlock);
    shorten(store_.VoltBlock);
    shorten(store_.BridgeBlock);
    shorten(store_.TK40MBlock);
    // Four blocks find a switched excitation, two more a continuous one.
    BridgeBlockGroup& bridges = store_.BridgeBlock;
    bridges.BlockCount = std::min<i16>(bridges.BlockCount, 6);
    for (int b = 1; b <= bridges.BlockCount; ++b) {
      bridges[b].ExciteReps = kReps;
      bridges[b].Type = bridges[b].Style == 1 ? "BrFull6W" : "BrHalf";
      if (b <= 4) continue;
      bridges[b].CheckCAO = kTrue;
      bridges[b].Reps = of(0, 1);
    }
    for (int b = 1; b <= store_.TK40MBlock.BlockCount; ++b) {
      TK40MBlockData& block = store_.TK40MBlock[b];
      if (once(2)) block.ZeroFlag = of(0, 8);
      block.CalOnSite = once(4) ? kTrue : kFalse;
    }
    if (store_.Config.TK40MQty == 0 && !once(4)) store_.TK40MBlock.BlockCount = 0;
    if (once(10)) {
      store_.PulseBlock[1] = store_.PulseBlock[0];
      store_.PulseBlock[1].BlockCount = of(1, kPulseBlocks);
    }
  }

  // The aliases of a block, of which some are left out, and what an expression may name of it.
  template <class Block>
  void nameBlock(Block& block, const std::string& source, bool inUse) {
    for (int r = 1; r <= block.Reps; ++r) {
      std::string& alias = block.Alias[r].AliasName;
      if (!alias.empty()) alias = newName("Al");
      if (!inUse) continue;
      measured_.push_back(source + "(" + NumberText(r) + ")");
      if (!alias.empty()) measured_.push_back(alias);
    }
  }

  template <class Group>
  void nameGroup(Group& group, std::string_view stem, bool inUse = true) {
    for (int b = 1; b <= group.BlockCount; ++b) {
      nameBlock(group[b], std::string(stem) + NumberText(b), inUse);
    }
  }

  void name() {
    for (int f = 1; f <= kFlags; ++f) measured_.push_back("Flag(" + NumberText(f) + ")");
    if (store_.Config.MonitorPower[kMonitorBattery] != 0) measured_.push_back("BattVolt");
    nameGroup(store_.TempBlock, "TBlk");
    nameGroup(store_.VoltBlock, "VBlk");
    nameGroup(store_.BridgeBlock, "BBlk");
    nameGroup(store_.PulseBlock[0], "PBlk");
    nameGroup(store_.PulseBlock[1], "PBlk");
    nameGroup(store_.TK40MBlock, "ABlk", store_.Config.TK40MQty > 0);
    const bool canInUse = store_.Config.CanBusQty > 0 && store_.Can.Module[1].CanBusEnabled != 0;
    for (int i = 1; i <= store_.Can.CanCount; ++i) {
      CanItemData& item = store_.Can.Item[i];
      nameBlock(item, item.Name, canInUse && item.Enabled == 1);
    }
    for (int f = 1; f <= store_.CalcFields.CalcFieldCount; ++f) {
      auto& field = store_.CalcFields.Field[f].CalcField;
      field[1] =
          f > 1 && once(6) ? Upper(store_.CalcFields.Field[f - 1].CalcField[1]) : newName("Calc");
      measured_.push_back(field[1]);
    }
  }

  void can() {
    store_.Can.Module[1].CanNaNOldData = maybe();
    if (once(8)) store_.Can.Module[1].CanBusEnabled = kFalse;
    for (int i = 1; i <= store_.Can.CanCount; ++i) {
      CanItemData& item = store_.Can.Item[i];
      item.Name = newName("Can");
      if (once(12)) item.Enabled = kTrue;  // not the number 1 that the declarations want
      item.RxTimeout = of(0, 2000);
      item.TxDataId = "&H18DB33F1";
      item.TxDataFrame = "&H00000000005C01AF";
      item.RxDataMatch = once(2) ? "&HXXXXXXXXXXXXXXXX" : "&HXX12XXXXXX5C41XX";
      if (i > 1 && once(3)) item.DataId = store_.Can.Item[i - 1].DataId;
      if (i > 1) item.RxDataMatch = store_.Can.Item[i - 1].RxDataMatch;
    }
  }

  void scan() {
    store_.Scan.BufferScans = of(0, 500);
    store_.Scan.BurstMode = once(3) ? kTrue : kFalse;
    store_.Scan.FlagScan = of(0, 8);
  }

  void tables() {
    for (OutputTable& table : store_.Tables.Table) {
      table.TableName = newName("Tab");
      table.FlagFull = of(0, 8);
      table.FillStop = maybe();
      table.AutoSize = maybe();
      if (table.TableOn == 0 && once(12)) table.TrigTable = table.WriteIf = of(1, 3);
      for (auto& conditions : table.Trigger) {
        for (TriggerCondition& row : conditions) row.StartTrigIndvExpress = condition();
      }
      for (WriteCondition& row : table.Write) row.Expression = condition();
      if (once(4)) table.Write[1].Expression = "Flag(2) True";  // as older projects have it
      table.DataEventCodeStart = once(2) ? "1 AND (2 OR 10)" : "1 OR 3";
      table.DataEventCodeStop = "2 OR 1";
      table.GroupWriteIf = table.WriteIf > 1 ? "(1 AND 2)" : "1";
      if (table.DataEventCode.empty() || once(4)) table.DataEventCode = "DataEvent (5,,,10)";
      table.DisableTrigger = once(4) ? i16{1} : once(4) ? kTrue : kFalse;
      table.DisableWriteIf = once(4) ? i16{1} : once(4) ? kTrue : kFalse;
    }
  }

  void calculatedFields() {
    for (int f = 1; f <= store_.CalcFields.CalcFieldCount; ++f) {
      store_.CalcFields.Field[f].CalcField[2] =
          once(2) ? "Sqr(" + measured() + " * 1.5E-05) + " + measured()
                  : "IIF(" + condition() + ",&HFF," + measured() + ")";
    }
  }

  void controls() {
    for (FlagControl& control : store_.Flags) {
      for (FlagState& state : control.State) state.FlagExpression = condition();
    }
    if (once(6)) store_.ExciteOut.Slot[1] = store_.ExciteOut.Slot[0];
    for (auto& slot : store_.ExciteOut.Slot) {
      for (ExciteChannel& channel : slot) {
        channel.Excite1Expression = condition();
        channel.Excite2Expression = condition();
        channel.CurrentOut = maybe();
      }
    }
  }

  void ports(PortSlot& slot) {
    for (int p = 1; p <= kPorts; ++p) {
      if (p == kPorts && slot.ByteMode == 0 && slot.ReadMode == 0) slot.Ports[p].Include = kFalse;
      for (PortState& state : slot.Ports[p].State) state.Expression = condition();
    }
    if (slot.ByteMode != 0) slot.Ports[kPorts].Include = kTrue;
    for (std::string& bits : slot.BinaryMask) bits = mask();
  }

  void slowSequence() {
    Configuration& config = store_.Config;
    config.EnablePowerOff = maybe();
    config.PowerOffLine = "If " + condition() + " Then";
    config.EnableOnTime = maybe();
    config.RemainOff = maybe();
    config.BattRetryMins = maybe();
    for (flag* shown : {&config.TimeOffYearShow, &config.TimeOffMonthShow, &config.TimeOffDayShow,
                        &config.TimeOffHourShow, &config.TimeOffMinShow, &config.TimeOffSecShow,
                        &config.TimeOffWkDayShow}) {
      *shown = maybe();
    }
    for (int i = 1; i <= config.StatusMonCount; ++i) {
      config.Status[i][1] = once(2) ? "Status.SkippedScan(1,1)" : measured();
      config.Status[i][4] = NumberText(int{of(1, 8)}) + (once(2) ? " T" : " F");
    }
  }

  void levels(OutputSet& output) {
    for (HistoSet& histo : output.Histo) histo.LevelMeasName = measured();
  }

  void levels() {
    const auto levelsOf = [this](auto& group) {
      for (auto& block : group.Blocks) levels(block.Output);
    };
    levelsOf(store_.TempBlock);
    levelsOf(store_.VoltBlock);
    levelsOf(store_.BridgeBlock);
    levelsOf(store_.TK40MBlock);
    levelsOf(store_.PulseBlock[0]);
    levelsOf(store_.PulseBlock[1]);
    for (int i = 1; i <= store_.Can.CanCount; ++i) levels(store_.Can.Item[i].Output);
    for (int f = 1; f <= store_.CalcFields.CalcFieldCount; ++f) {
      levels(store_.CalcFields.Field[f].Output);
    }
    if (once(20)) store_.PowerOut.Output.OutputSelect[of(1, kTables)][kLevelCrossing] = 1;
    if (once(20)) store_.TK40MRef.Output.OutputSelect[of(1, kTables)][kLevelCrossing] = 1;
  }

  ProjectStore& store_;
  std::mt19937 engine_;
  bool large_ = false;  // may not fit into a program
  int names_ = 0;
  std::vector<std::string> measured_;
};

}  // namespace

void MakeProgramProject(ProjectStore& store, std::uint32_t seed) {
  MakeRandomProject(store, seed);
  Maker(store, seed).Make();
}

}  // namespace ostrand::testing
