#include "support/project_random.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "model/defaults.h"
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
  flag Flag() { return Once(2) ? kTrue : kFalse; }
  i32 Large() { return static_cast<i32>(engine_() % 2'000'000'000U); }
  float Real() {
    static constexpr std::array kOdd = {0.0F, 0.1F, -0.5F, 1.8F, 3333.3F, 1E+10F, 3.4E+38F, 1E-05F};
    if (Once(3)) return kOdd[engine_() % kOdd.size()];
    return static_cast<float>(Of(-9999, 9999)) / 100;
  }
  template <std::size_t Count>
  const char* From(const std::array<const char*, Count>& words) {
    return words[engine_() % Count];
  }
  std::string Name() {
    return std::string(From(std::array{"Oil", "Pump", "Exh", "Cabin"})) +
           From(std::array{"Temp", "Pres", "Flow", "Spd"}) + NumberText(int{Of(1, 99)});
  }
  std::string Text() { return Once(4) ? "" : Name(); }
  std::string Expression() {
    return Name() + From(std::array{" = ", " <> ", " >= ", "  < "}) + NumberText(Real());
  }

 private:
  std::mt19937 engine_;
};

void fillConfiguration(Chance& chance, ProjectStore& store) {
  Configuration& config = store.Config;
  store.Gen.Operator = chance.Text();
  store.Gen.IDNumber = chance.Text();
  config.TK40MQty = chance.Of(0, 4);
  config.SizeCard = chance.Real();
  for (flag& entry : config.MonitorPower) entry = chance.Flag();
  config.TcConfigOpts[1] = chance.Flag();
  config.PowerOffMeasVar = chance.Name();
  config.PowerOffCompare = chance.Of(0, 5);
  config.PowerOffValue = chance.Real();
  config.PowerOffTime = chance.Of(0, 99);
  config.PowerOffMins = chance.Of(0, 3);
  config.AutoChan = chance.Flag();
  config.BattTripVolts = chance.Real();
  config.RetryInterval = chance.Of(0, 99);
  config.TimeOffMonth = chance.Of(0, 12);
  config.TimeOnHour = chance.Of(0, 23);
  config.EnableTime = chance.Flag();
  config.BatteryTime = chance.Large();
  config.StatusMonCount = chance.Of(0, kStatusRows);
  for (int i = 1; i <= config.StatusMonCount; ++i) {
    config.Status[i][1] = chance.Name();
    config.Status[i][2] = chance.From(std::array{"=", "<", ">"});
    config.Status[i][3] = NumberText(chance.Real());
    config.Status[i][4] = NumberText(int{chance.Of(1, 8)});
  }
  store.Scan.ExecutionTime = static_cast<float>(chance.Of(1, 500));
  store.Scan.ExecTimeUnits = chance.Of(1, 3);
  store.Scan.ScanMode = chance.Flag();
  store.Scan.BurstScans = chance.Large();
}

void fillTable(Chance& chance, OutputTable& table) {
  table.TableOn = kTrue;
  table.TableName = chance.Name();
  table.OutInt = chance.Of(1, 1000);
  table.OutIntUnits = chance.Of(0, 5);
  table.Buffer = chance.Large();
  table.SyncTable = chance.Flag();
  table.TableLocation = chance.Of(1, 2);
  table.FlagTable = chance.Of(0, 8);
  table.FlagMark = chance.Of(0, 8);
  table.SingleTrigger = chance.Flag();
  table.PreTriggerScans = chance.Large();
  table.TrigTable = chance.Of(0, kConditions);
  table.TrigTabStop = table.TrigTable > 0 ? chance.Of(0, kConditions) : i16{0};
  const int counts[] = {table.TrigTable, table.TrigTabStop};
  for (int s = 0; s <= 1; ++s) {
    for (int i = 1; i <= counts[s]; ++i) {
      TriggerCondition& condition = table.Trigger[s][i];
      condition = {chance.Name(), chance.Of(0, 5), chance.Of(0, 20),
                   chance.Real(), chance.Text(),   chance.Expression()};
    }
  }
  if (table.TrigTable > 0) {
    table.DataEventCodeStart = "1 AND 2";
    table.DataEventCode = "DataEvent (10,bStartTrigger,True,10)";
  }
  table.WriteIf = chance.Of(0, kConditions);
  for (int i = 1; i <= table.WriteIf; ++i) {
    table.Write[i] = {chance.Name(), chance.Of(0, 5), chance.Of(0, 20),
                      chance.Real(), chance.Text(),   chance.Expression()};
  }
  if (table.WriteIf > 0) table.GroupWriteIf = "1 OR 2";
}

void fillLevels(Chance& chance, HistoSet& histo) {
  histo.LevNumLevels = chance.Of(1, kLevels);
  histo.LevNumTests = chance.Of(0, kLevels);
  histo.LevelCode = NumberText(int{histo.LevNumLevels}) + ",1,0,0.5";
  histo.LevelMeas = chance.Of(0, 20);
  histo.LevelMeasName = chance.Text();
  histo.NumDims = chance.Of(0, 1);
  for (int i = 0; i < histo.LevNumLevels; ++i) histo.LevelVarOne[i] = chance.Real();
  for (int i = 0; i < histo.LevNumTests; ++i) histo.LevelVarTwo[i] = chance.Real();
}

// Selections and codes of an item, as far as the first `codes` processing instructions.
void fillOutput(Chance& chance, const ProjectStore& store, OutputSet& output, int codes) {
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn == 0) continue;
    auto& select = output.OutputSelect[t];
    for (int k = 0; k < codes; ++k) select[k] = chance.Once(4) ? i16{1} : i16{0};
    if (select[kHistogram] != 0) output.Histo[t].HistogramCode = "14,000,1,0,394";
    if (select[kRainFlow] != 0) output.Histo[t].RainHistoCode = "2,20,0,-50,483";
    if (select[kLevelCrossing] != 0) fillLevels(chance, output.Histo[t]);
  }
}

template <class Block>
void fillAliases(Chance& chance, Block& block) {
  for (int r = 1; r <= block.Reps; ++r) {
    RepAlias& alias = block.Alias[r];
    alias.AliasName = chance.Text();
    alias.AliasUnits = chance.Text();
    if (chance.Once(3)) alias.AliasMult = NumberText(chance.Real());
    if (chance.Once(3)) alias.AliasOffset = NumberText(chance.Real());
    alias.AliasExcept = NumberText(int{chance.Of(0, 7)});
  }
}

template <class Block>
void fillBlock(Chance& chance, ProjectStore& store, Block& block, int mostReps) {
  block.Reps = chance.Of(0, mostReps);
  block.DataResolution = chance.From(std::array{"FP2", "IEEE4"});
  block.Public = chance.Flag();
  block.Units = chance.Name();
  block.DefaultMult = chance.Real();
  block.DefaultOffset = chance.Real();
  fillOutput(chance, store, block.Output, kOutputCodes);
  fillAliases(chance, block);
}

void fillAnalog(Chance& chance, ProjectStore& store, AnalogBlock& block) {
  fillBlock(chance, store, block, chance.Once(4) ? kReps : 9);
  block.Range = chance.From(std::array{"50 mV", "200 mV", "5000 mV"});
  block.RangeNo = chance.Of(0, 50);
  block.OpenSensDetect = chance.Flag();
  block.IntegrationRange = chance.Of(0, 2);
  block.Integration = chance.Of(100, 20000);
  block.ReverseMes = chance.Flag();
  block.SettleTime = chance.Of(100, 20000);
  block.BlockTime = chance.Large();
}

template <class Group>
void fillGroup(Chance& chance, ProjectStore& store, Group& group) {
  group.BlockCount = chance.Of(0, Group::kLast);
  for (int b = 1; b <= group.BlockCount; ++b) fillAnalog(chance, store, group[b]);
}

template <class Group>
void fillPanelGroup(Chance& chance, ProjectStore& store, Group& group) {
  fillGroup(chance, store, group);
  if (group.BlockCount > 0) group.SEChannelCount = chance.Of(0, 40);
  for (int b = 1; b <= group.BlockCount; ++b) {
    group[b].MeasType = chance.From(std::array{"Diff", "SE"});
    group[b].StartChan = chance.Of(1, 20);
  }
}

void fillBridges(Chance& chance, ProjectStore& store) {
  static constexpr std::array kTypes = {"BrFull", "BrFull6W", "BrHalf", "BrHalf3W", "BrHalf4W"};
  BridgeBlockGroup& group = store.BridgeBlock;
  fillPanelGroup(chance, store, group);
  if (group.BlockCount > 0) group.ExciteSwitched = chance.Of(0, 4);
  for (int b = 1; b <= group.BlockCount; ++b) {
    BridgeBlockData& block = group[b];
    block.Type = chance.From(kTypes);
    block.ExciteReps = chance.Of(1, 9);
    block.Excite = chance.Real();
    block.Style = chance.Of(0, 7);
    block.RevExcite = chance.Flag();
    block.GageFactor = chance.Real();
    block.GageCode = chance.Of(1, 6);
    block.ZeroFlag = chance.Of(0, 8);
    block.CalOnSite = chance.Flag();
  }
}

void fillBlocks(Chance& chance, ProjectStore& store) {
  fillPanelGroup(chance, store, store.TempBlock);
  for (int b = 1; b <= store.TempBlock.BlockCount; ++b) store.TempBlock[b].TypeNo = chance.Of(0, 7);
  fillPanelGroup(chance, store, store.VoltBlock);
  for (int b = 1; b <= store.VoltBlock.BlockCount; ++b) {
    store.VoltBlock[b].ZeroFlag = chance.Of(0, 8);
    store.VoltBlock[b].CalOnSite = chance.Flag();
  }
  fillBridges(chance, store);
  fillGroup(chance, store, store.TK40MBlock);
  for (int b = 1; b <= store.TK40MBlock.BlockCount; ++b) {
    store.TK40MBlock[b].TK40Volts = chance.Of(0, 1);
    store.TK40MBlock[b].TypeNo = chance.Of(0, 7);
  }
  PulseBlockGroup& pulses = store.PulseBlock[0];
  pulses.BlockCount = chance.Of(0, kPulseBlocks);
  for (int b = 1; b <= pulses.BlockCount; ++b) {
    fillBlock(chance, store, pulses[b], 2);
    pulses[b].Meas = chance.From(std::array{"HiLev", "LoLev", "Swtch"});
    pulses[b].Opt = chance.Of(0, 100);
    pulses[b].CalOnSite = chance.Flag();
    pulses[b].BlockTime = chance.Large();
  }
}

void fillPorts(Chance& chance, ProjectStore& store) {
  PortSlot& slot = store.Ports.Slot[0];
  store.Ports.CodeType = chance.From(std::array{"HEX", "BIN"});
  slot.Public = chance.Flag();
  slot.ByteMode = chance.Of(0, 1);
  slot.ReadMode = chance.Flag();
  const bool reads = slot.ReadMode != 0;
  for (int p = slot.ByteMode != 0 ? kPorts : 1; p <= (slot.ByteMode != 0 ? kPorts : 8); ++p) {
    Port& port = slot.Ports[p];
    port.Include = chance.Flag();
    if (port.Include == 0 || reads) continue;
    if (p < kPorts) port.Polarity = chance.Flag();
    for (PortState& state : port.State) {
      state = {chance.Name(), chance.Of(0, 5), chance.Real(), chance.Expression()};
    }
  }
  if (slot.Ports[kPorts].Include != 0 && !reads) slot.BinaryMask[1] = "10100110";
  if (reads) fillOutput(chance, store, slot.Output, kHistogram + 1);
}

void fillControls(Chance& chance, ProjectStore& store) {
  for (FlagControl& control : store.Flags) {
    control.FlagInclude = chance.Flag();
    if (control.FlagInclude == 0) continue;
    control.FlagOn = chance.Flag();
    for (FlagState& state : control.State) {
      state = {chance.Name(), chance.Of(0, 5), chance.Real(), chance.Expression()};
    }
  }
  store.ExciteOut.ExcitePublic = chance.Flag();
  for (ExciteChannel& channel : store.ExciteOut.Slot[0]) {
    channel.Include = chance.Flag();
    if (channel.Include == 0) continue;
    channel.DynamicStatic = chance.Of(0, 1);
    channel.State1 = chance.Of(0, 5000);
    channel.Excite2MeasVar = chance.Name();
    channel.Excite2Value = chance.Real();
    channel.Excite2Expression = chance.Expression();
    channel.FastDelay = chance.Flag();
  }
}

void fillCan(Chance& chance, ProjectStore& store, int items) {
  if (items == 0) return;
  CanModuleData& module = store.Can.Module[1];
  store.Config.CanBusQty = 1;
  store.Can.CanCount = static_cast<i16>(items);
  module.CanAddress = chance.Of(0, 127);
  module.CanBaud = chance.Of(0, 6);
  module.CanDataIDType = chance.Of(0, 1);
  module.CanEnableTransmit = chance.Flag();
  module.CanGetOSVerSig = chance.Flag();
  module.CanBusEnabled = kTrue;
  for (int i = 1; i <= items; ++i) {
    CanItemData& item = store.Can.Item[i];
    fillBlock(chance, store, item, 8);
    item.Name = chance.Name();
    item.DataStyle = chance.Of(0, 8);
    item.Enabled = chance.Of(0, 1);
    item.StartBit = chance.Of(1, 64);
    item.NumBits = chance.Of(1, 32);
    item.DataId = NumberText(std::int64_t{chance.Large()});
    item.RxTimeout = chance.Large();
    item.ItemMessageType = chance.Of(0, 2);
    item.Description = chance.Text();
  }
}

void fillCalculated(Chance& chance, ProjectStore& store) {
  CalcFieldGroup& group = store.CalcFields;
  group.CalcFieldCount = chance.Of(0, 12);
  for (int f = 1; f <= group.CalcFieldCount; ++f) {
    CalcFieldData& field = group.Field[f];
    field.Public = chance.Flag();
    field.CalcField[1] = chance.Name();
    field.CalcField[2] = chance.Expression();
    field.CalcField[3] = chance.Text();
    field.CalcField[4] = chance.Once(2) ? "1" : "0";
    fillOutput(chance, store, field.Output, kOutputCodes);
  }
  store.SpeedCalc.SizeOption = chance.Of(0, 3);
  store.SpeedCalc.GearRatio[2] = NumberText(chance.Real());
  store.PotCalc.YMax = NumberText(chance.Real());
  store.FlowCalc.Pulses = double{chance.Real()} / 3;
}

}  // namespace

void MakeRandomProject(ProjectStore& store, std::uint32_t seed) {
  Chance chance(seed);
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
  fillConfiguration(chance, store);
  store.Tables.HDU7 = chance.Of(0, 7);
  for (OutputTable& table : store.Tables.Table) {
    if (chance.Once(2)) fillTable(chance, table);
  }
  fillOutput(chance, store, store.PowerOut.Output, kRainFlow + 1);
  fillOutput(chance, store, store.TK40MRef.Output, kHistogram);
  fillOutput(chance, store, store.TcRef.Output, kHistogram);
  store.TcRef.Public = chance.Flag();
  fillBlocks(chance, store);
  fillPorts(chance, store);
  fillControls(chance, store);
  fillCan(chance, store, chance.Of(0, 10));
  fillCalculated(chance, store);
}

void MakeLargestProject(ProjectStore& store) {
  Chance chance(1);
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
  fillConfiguration(chance, store);
  for (OutputTable& table : store.Tables.Table) fillTable(chance, table);
  const auto fill = [&](auto& block, i16 reps) {
    block.Reps = reps;
    block.Output = {};
    fillOutput(chance, store, block.Output, kOutputCodes);
    for (RepAlias& alias : block.Alias) {
      alias = {chance.Name(), chance.Name(), NumberText(chance.Real()), NumberText(chance.Real()),
               "7"};
    }
  };
  const auto fillAll = [&](auto& group) {
    group.BlockCount = group.kLast;
    for (auto& block : group.Blocks) fill(block, kReps);
  };
  fillAll(store.TempBlock);
  fillAll(store.VoltBlock);
  fillAll(store.BridgeBlock);
  fillAll(store.TK40MBlock);
  fillAll(store.PulseBlock[0]);
  fillCan(chance, store, kCanItems);
  for (CanItemData& item : store.Can.Item) fill(item, kCanValues);
  fillPorts(chance, store);
  fillControls(chance, store);
  fillCalculated(chance, store);
}

}  // namespace ostrand::testing
