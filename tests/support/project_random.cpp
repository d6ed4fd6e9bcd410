#include "support/project_random.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "text/number.h"

namespace ostrand::testing {
namespace {

// Not std::uniform_int_distribution: its results differ between libraries.
class Chance {
 public:
  explicit Chance(std::uint32_t seed) : engine_(seed) {}

  i16 Of(int low, int high) {
    const auto span = static_cast<std::uint32_t>(high - low + 1);
    return static_cast<i16>(low + static_cast<int>(engine_() % span));
  }
  bool Once(int in) { return Of(1, in) == 1; }
  flag Maybe() { return Once(2) ? kTrue : kFalse; }
  float Real() {
    static constexpr std::array kOdd = {0.0F, 0.1F, -0.5F, 1.8F, 3333.3F, 1E+10F, 3.4E+38F, 1E-05F};
    if (Once(3)) return kOdd[engine_() % kOdd.size()];
    return static_cast<float>(Of(-9999, 9999)) / 100;
  }
  template <std::size_t Count>
  const char* From(const char* const (&words)[Count]) {
    return words[engine_() % Count];
  }
  std::string Name() {
    return std::string(From({"Oil", "Pump", "Exh", "Cabin"})) + From({"Temp", "Pres", "_Spd"}) +
           NumberText(++names_);
  }
  std::string Text() { return Once(4) ? "" : Name(); }
  std::string Flag() { return "Flag(" + NumberText(int{Of(1, kFlags)}) + ")"; }
  std::string Expression() { return Flag() + From({" = ", " <> ", " >= "}) + NumberText(Real()); }

  // Fill all given members.
  template <class... Members>
  void Flags(Members&... members) {
    ((members = Maybe()), ...);
  }
  template <class... Members>
  void Reals(Members&... members) {
    ((members = Real()), ...);
  }
  template <class... Members>
  void Larges(Members&... members) {
    ((members = static_cast<i32>(engine_() % 2'000'000'000U)), ...);
  }
  template <class... Members>
  void Range(int low, int high, Members&... members) {
    ((members = Of(low, high)), ...);
  }

 private:
  std::mt19937 engine_;
  int names_ = 0;
};

// With `largest` every count is at its limit.
class Maker : private Chance {
 public:
  Maker(ProjectStore& store, std::uint32_t seed, bool largest)
      : Chance(seed), store_(store), largest_(largest) {}

  void Make() {
    ORVUS_COMMON::ClearStore(store_);
    ORVUS_COMMON::SetAllDefaults(store_);
    ORVUS_COMMON::SetLoggerConstants(store_);
    configuration();
    for (OutputTable& table : store_.Tables.Table) {
      if (largest_ || Once(2)) fill(table);
    }
    select(store_.PowerOut.Output, kRainFlow + 1);
    select(store_.TcRef.Output, kHistogram);
    fillGroup(store_.TempBlock);
    fillGroup(store_.VoltBlock);
    fillGroup(store_.BridgeBlock);
    if (store_.Config.TK40MQty > 0) {
      select(store_.TK40MRef.Output, kHistogram);
      fillGroup(store_.TK40MBlock);
    }
    fillGroup(store_.PulseBlock[0]);
    controls();
    calculated();
    can();
  }

 private:
  // A thin project has few families, so that the declarations of one cannot serve another.
  i16 count(int limit, int usual) {
    if (largest_) return static_cast<i16>(limit);
    return thin_ && !Once(3) ? Of(0, 1) : Of(0, usual);
  }

  void configuration() {
    Configuration& config = store_.Config;
    store_.Gen.Operator = Text();
    config.PowerOffMeasVar = Name();
    config.PowerOffLine = "If " + Expression() + " Then";
    for (flag& entry : config.MonitorPower) Flags(entry);
    Flags(config.TcConfigOpts[1], config.AutoChan, config.EnablePowerOff, config.EnableTime,
          config.EnableOnTime, config.RemainOff, config.BattRetryMins, config.TimeOffYearShow,
          config.TimeOffDayShow, config.TimeOffSecShow, config.TimeOffWkDayShow,
          store_.Scan.ScanMode, store_.Scan.BurstMode);
    Range(0, 8, store_.Scan.FlagScan);
    Reals(config.SizeCard, config.PowerOffValue, config.BattTripVolts);
    Range(0, 4, config.TK40MQty);
    Range(0, 12, config.PowerOffTime, config.RetryInterval, config.TimeOffMonth, config.TimeOnHour);
    Range(0, 3, config.PowerOffMins, config.PowerOffCompare);
    Range(0, 7, store_.Tables.HDU7);
    Larges(config.BatteryTime, store_.Scan.BurstScans);
    config.StatusMonCount = count(kStatusRows, kStatusRows);
    for (int i = 1; i <= config.StatusMonCount; ++i) {
      config.Status[i][1] = Once(2) ? "Status.SkippedScan(1,1)" : Flag();
      config.Status[i][2] = From({"=", "<", ">"});
      config.Status[i][3] = NumberText(Real());
      config.Status[i][4] = NumberText(int{Of(1, 8)}) + From({" T", " F"});
    }
    store_.Scan.ExecutionTime = static_cast<float>(Of(1, 500));
    Range(1, 3, store_.Scan.ExecTimeUnits);
  }

  void fill(OutputTable& table) {
    table.TableOn = kTrue;
    table.TableName = Name();
    Range(1, 1000, table.OutInt);
    Range(0, 5, table.OutIntUnits);
    Range(1, 2, table.TableLocation);
    Range(0, 8, table.FlagTable, table.FlagMark, table.FlagFull);
    Flags(table.SyncTable, table.SingleTrigger, table.FillStop, table.AutoSize);
    Larges(table.Buffer, table.PreTriggerScans);
    table.TrigTable = count(kConditions, kConditions);
    table.TrigTabStop = table.TrigTable > 0 ? count(kConditions, kConditions) : i16{0};
    table.WriteIf = count(kConditions, kConditions);
    const int counts[] = {table.TrigTable, table.TrigTabStop};
    for (int s = 0; s <= 1; ++s) {
      for (int i = 1; i <= counts[s]; ++i) condition(table.Trigger[s][i]);
    }
    for (int i = 1; i <= table.WriteIf; ++i) condition(table.Write[i]);
    if (table.WriteIf > 0 && Once(4)) table.Write[1].Expression = "Flag(2) True";  // is old
    table.DataEventCodeStart = From({"1 AND (2 OR 10)", "1 OR 3"});
    table.DataEventCodeStop = "2 OR 1";
    table.GroupWriteIf = table.WriteIf > 1 ? "(1 AND 2)" : "1";
    if (table.TrigTable > 0) {
      table.DataEventCode = From({"DataEvent (10,bStartTrigger,True,10)", "DataEvent (5,,,10)"});
    }
    for (i16* disabled : {&table.DisableTrigger, &table.DisableWriteIf}) {
      *disabled = Once(4) ? i16{1} : Once(4) ? kTrue : kFalse;
    }
  }

  template <class Condition>
  void condition(Condition& row) {
    row = {Name(), Of(0, 5), Of(0, 20), Real(), Text(), Expression()};
  }

  // Selections and codes of an item, for the first `codes` processing instructions.
  void select(OutputSet& output, int codes) {
    for (int t = 1; t <= kTables; ++t) {
      if (store_.Tables[t].TableOn == 0) continue;
      auto& selected = output.OutputSelect[t];
      HistoSet& histo = output.Histo[t];
      for (int k = 0; k < codes; ++k) selected[k] = Once(4) ? i16{1} : i16{0};
      if (selected[kHistogram] != 0) histo.HistogramCode = "14,000,1,0,394";
      if (selected[kRainFlow] != 0) histo.RainHistoCode = "2,20,0,-50,483";
      if (selected[kLevelCrossing] == 0) continue;
      Range(1, kLevels, histo.LevNumLevels);
      Range(0, kLevels, histo.LevNumTests);
      histo.LevelCode = NumberText(int{histo.LevNumLevels}) + ",1,0,0.5";
      Range(0, 20, histo.LevelMeas);
      histo.LevelMeasName = Flag();
      Range(0, 1, histo.NumDims);
      for (int i = 0; i < histo.LevNumLevels; ++i) Reals(histo.LevelVarOne[i]);
      for (int i = 0; i < histo.LevNumTests; ++i) Reals(histo.LevelVarTwo[i]);
    }
  }

  template <class Block>
  void fillReps(Block& block, int limit, int usual) {
    block.Reps = std::max<i16>(count(limit, usual), 1);
    block.DataResolution = From({"FP2", "IEEE4"});
    block.Units = Name();
    Flags(block.Public);
    Reals(block.DefaultMult, block.DefaultOffset);
    select(block.Output, kOutputCodes);
    for (int r = 1; r <= block.Reps; ++r) {
      RepAlias& alias = block.Alias[r];
      alias.AliasName = Text();
      alias.AliasUnits = Text();
      if (Once(3)) alias.AliasMult = NumberText(Real());
      if (Once(3)) alias.AliasOffset = NumberText(Real());
      alias.AliasExcept = NumberText(int{Of(0, 7)});
    }
  }

  void fill(PulseBlockData& block) {
    block.Meas = From({"HiLev", "LoLev", "Swtch"});
    Range(0, 100, block.Opt);
    Flags(block.CalOnSite);
  }
  void fill(AnalogBlock& block) {
    block.Range = From({"50 mV", "200 mV", "5000 mV"});
    Range(0, 50, block.RangeNo);
    Range(0, 2, block.IntegrationRange);
    Range(100, 20000, block.Integration, block.SettleTime);
    Flags(block.OpenSensDetect, block.ReverseMes);
  }

  // The panel's groups count their channels; thermocouples on it are not calibrated. Four bridges
  // get a switched excitation, two more a continuous one.
  template <class Group>
  void fillGroup(Group& group) {
    constexpr bool onPanel = requires { group.SEChannelCount; };
    constexpr bool bridges = requires { group.ExciteSwitched; };
    group.BlockCount = count(Group::kLast, std::min(Group::kLast, 6));
    if constexpr (onPanel) group.SEChannelCount = group.BlockCount > 0 ? Of(0, 40) : i16{0};
    for (int b = 1; b <= group.BlockCount; ++b) {
      auto& block = group[b];
      const bool continuous = bridges && b > 4 && !largest_;
      fillReps(block, kReps, continuous ? 1 : Once(99) ? kReps : 12);  // many may not fit
      fill(block);
      Larges(block.BlockTime);
      if constexpr (onPanel) {
        block.MeasType = From({"Diff", "SE"});
        Range(1, 20, block.StartChan);
      }
      if constexpr (requires { block.TypeNo; }) Range(0, 7, block.TypeNo);
      if constexpr (requires { block.TK40Volts; }) Range(0, 1, block.TK40Volts);
      if constexpr (requires { block.RangeNo; } && !(onPanel && requires { block.TypeNo; })) {
        if (Once(2)) Range(0, 8, block.ZeroFlag);
        Flags(block.CalOnSite);
      }
      if constexpr (bridges) {
        block.ExciteReps = kReps;
        Range(0, 7, block.Style);
        Range(1, 6, block.GageCode);
        block.Type = block.Style == 1 ? "BrFull6W" : "BrHalf";
        block.CheckCAO = continuous ? kTrue : kFalse;
        Reals(block.Excite, block.GageFactor);
        Flags(block.RevExcite);
      }
    }
  }

  // Ports, flags and analog outputs.
  void controls() {
    PortSlot& slot = store_.Ports.Slot[0];
    store_.Ports.CodeType = From({"HEX", "BIN"});
    Flags(slot.Public, slot.ReadMode);
    Range(0, 1, slot.ByteMode);
    const bool reads = slot.ReadMode != 0;
    for (int p = slot.ByteMode != 0 ? kPorts : 1; p <= (slot.ByteMode != 0 ? kPorts : 8); ++p) {
      Port& port = slot.Ports[p];
      Flags(port.Include);
      if (port.Include == 0 || reads) continue;
      if (p < kPorts) Flags(port.Polarity);
      states(port.State);
    }
    for (std::string& bits : slot.BinaryMask) bits = From({"10100110", "00001111"});
    if (reads) select(slot.Output, kHistogram + 1);
    for (FlagControl& control : store_.Flags) {
      Flags(control.FlagInclude);
      if (control.FlagInclude == 0) continue;
      Flags(control.FlagOn);
      states(control.State);
    }
    for (ExciteChannel& channel : store_.ExciteOut.Slot[0]) {
      Flags(channel.Include);
      if (channel.Include == 0) continue;
      Range(0, 1, channel.DynamicStatic);
      Range(0, 5000, channel.State1);
      channel.Excite1Expression = Expression();
      channel.Excite2Expression = Expression();
      Flags(channel.FastDelay, channel.CurrentOut);
    }
  }
  template <class States>
  void states(States& both) {
    for (auto& state : both) {
      state = {Name(), Of(0, 5), Real(), Expression()};
    }
  }

  void calculated() {
    CalcFieldGroup& group = store_.CalcFields;
    group.CalcFieldCount = count(12, 12);
    for (int f = 1; f <= group.CalcFieldCount; ++f) {
      CalcFieldData& field = group.Field[f];
      Flags(field.Public);
      field.CalcField[1] = Once(6) ? "CALC" : Once(6) ? "Calc" : Name();
      field.CalcField[2] =
          Once(2) ? "Sqr(" + Flag() + " * 1.5E-05)" : "IIF(" + Expression() + ",&HFF,1)";
      field.CalcField[3] = Text();
      field.CalcField[4] = From({"1", "0"});
      select(field.Output, kOutputCodes);
    }
  }

  void can() {
    store_.Can.CanCount = count(kCanItems, 10);
    if (store_.Can.CanCount == 0) return;
    CanModuleData& module = store_.Can.Module[1];
    store_.Config.CanBusQty = 1;
    Range(0, 1, module.CanDataIDType);
    module.CanBusEnabled = Once(8) ? kFalse : kTrue;
    Flags(module.CanEnableTransmit, module.CanGetOSVerSig, module.CanNaNOldData);
    const std::string match = From({"&HXXXXXXXXXXXXXXXX", "&HXX12XXXXXX5C41XX"});
    for (int i = 1; i <= store_.Can.CanCount; ++i) {
      CanItemData& item = store_.Can.Item[i];
      fillReps(item, kCanValues, 8);
      item.Name = Name();
      item.Description = Text();
      Range(0, 8, item.DataStyle);
      Range(0, 1, item.Enabled);
      Range(1, 64, item.StartBit);
      Range(1, 32, item.NumBits);
      Range(0, 2, item.ItemMessageType);
      i32 identifier = 0;
      Larges(identifier, item.RxTimeout);
      item.DataId = NumberText(std::int64_t{identifier});
      item.TxDataId = "&H18DB33F1";
      item.TxDataFrame = "&H00000000005C01AF";
      item.RxDataMatch = match;
      if (i == 1 || !Once(3)) continue;
      item.DataId = store_.Can.Item[i - 1].DataId;
      item.Enabled = store_.Can.Item[i - 1].Enabled = 1;  // both decode the reply
    }
  }

  ProjectStore& store_;
  bool largest_;
  bool thin_ = Once(4);
};

}  // namespace

void MakeRandomProject(ProjectStore& store, std::uint32_t seed) {
  Maker(store, seed, false).Make();
}

std::string RandomProjectText(std::uint32_t seed) {
  const auto store = NewStore();
  MakeRandomProject(*store, seed);
  return ORVUS_GENFILE::ProjectFileText(*store, FixedClock().Now());
}

void MakeLargestProject(ProjectStore& store) { Maker(store, 1, true).Make(); }

}  // namespace ostrand::testing
