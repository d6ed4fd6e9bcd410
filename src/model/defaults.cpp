#include "model/defaults.h"

#include "model/new_store.h"

namespace ostrand {

namespace ORVUS_COMMON {
namespace {

constexpr std::string_view kNoTime = "---- --- -- --:--:--";

// Resets a record to zeros and empty texts by assignment, so that nothing in it moves.
template <class Record>
void clear(Record& record) {
  record = Record{};
}

const RepAlias& unusedAlias() {
  static const RepAlias alias = {"", "", "", "", "0"};
  return alias;
}

// The values of an unused block that depend on its kind.
struct BlockDefaults {
  std::string_view resolution;
  std::string_view units;
  float mult;
  float offset;
};

template <class Block>
Block unusedBlock(const BlockDefaults& defaults) {
  Block block;
  block.DataResolution = defaults.resolution;
  block.Units = defaults.units;
  block.DefaultMult = defaults.mult;
  block.DefaultOffset = defaults.offset;
  block.Alias.Reset(unusedAlias());
  return block;
}

struct AnalogDefaults {
  BlockDefaults block;
  std::string_view measType;
  std::string_view range;
  i16 rangeNo;
  flag openSensor;
  i16 startChan;
};

constexpr AnalogDefaults kTemp = {{"FP2", "Deg_F", 1.8F, 32}, "Diff", "50 mV", 30, kTrue, 1};
constexpr AnalogDefaults kVolt = {{"FP2", "mVolts", 1, 0}, "Diff", "50 mV", 50, kTrue, 1};
constexpr AnalogDefaults kBridge = {{"IEEE4", "mVoltPVolt", 1, 0}, "Diff", "200 mV", 50, kFalse, 1};
constexpr AnalogDefaults kTK40M = {{"FP2", "Deg_F", 1.8F, 32}, "", "50 mV", 30, kTrue, 0};
constexpr BlockDefaults kPulse = {"IEEE4", "Hz", 1, 0};
constexpr BlockDefaults kCanItem = {"IEEE4", "", 1, 0};

template <class Block>
Block unusedAnalogBlock(const AnalogDefaults& defaults) {
  auto block = unusedBlock<Block>(defaults.block);
  block.MeasType = defaults.measType;
  block.Range = defaults.range;
  block.RangeNo = defaults.rangeNo;
  block.OpenSensDetect = defaults.openSensor;
  block.IntegrationRange = 2;
  block.Integration = 250;
  block.ReverseMes = kTrue;
  block.SettleTime = 200;
  block.StartChan = defaults.startChan;
  return block;
}

BridgeBlockData unusedBridgeBlock() {
  auto block = unusedAnalogBlock<BridgeBlockData>(kBridge);
  block.Type = "BrFull";
  block.ExciteReps = 1;
  block.Excite = 5000;
  block.GageFactor = 2;
  block.GageCode = 1;
  return block;
}

PulseBlockData unusedPulseBlock() {
  auto block = unusedBlock<PulseBlockData>(kPulse);
  block.Meas = "HiLev";
  block.Opt = 1;
  return block;
}

CanItemData unusedCanItem() {
  auto item = unusedBlock<CanItemData>(kCanItem);
  item.Reps = 1;
  item.Enabled = 1;
  item.StartBit = 1;
  item.NumBits = 1;
  item.DataId = "0";
  item.TxDataId = "0";
  item.TxDataFrame = "&H0000000000000000";
  item.RxDataMatch = "&HXXXXXXXXXXXXXXXX";
  item.RxDataMask = "0";
  item.RxTimeout = 1000;
  return item;
}

CalcFieldData unusedCalcField() {
  CalcFieldData field;
  field.DataResolution = "FP2";
  field.CalcField[4] = "0";
  return field;
}

TriggerCondition unusedCondition(i16 compare) {
  TriggerCondition condition;
  condition.StartCompare = compare;
  return condition;
}

// Lowers the count of a group to `first`; true if no block is left.
template <class Group>
bool lowerCount(Group& group, int first) {
  if (group.BlockCount > first) group.BlockCount = static_cast<i16>(first);
  return group.BlockCount == 0;
}

void setReference(ReferenceOutput& reference) {
  clear(reference);
  reference.DataResolution = "FP2";
}

void clearSelection(OutputSet& output, int table) { output.OutputSelect[table].Fill(0); }

template <class Items>
void clearSelections(Items& items, int table) {
  for (auto& item : items.Made()) clearSelection(item.Output, table);
}

void clearTableSelections(ProjectStore& store, int table) {
  clearSelection(store.PowerOut.Output, table);
  clearSelection(store.TK40MRef.Output, table);
  clearSelection(store.TcRef.Output, table);
  clearSelections(store.TempBlock.Blocks, table);
  clearSelections(store.VoltBlock.Blocks, table);
  clearSelections(store.BridgeBlock.Blocks, table);
  clearSelections(store.TK40MBlock.Blocks, table);
  for (PulseBlockGroup& group : store.PulseBlock) clearSelections(group.Blocks, table);
  for (PortSlot& slot : store.Ports.Slot) clearSelection(slot.Output, table);
  clearSelections(store.Can.Item, table);
  clearSelections(store.CalcFields.Field, table);
}

}  // namespace

void ClearStore(ProjectStore& store) {
  const auto cleared = NewStore();
  store = *cleared;
}

void SetLoggerConstants(ProjectStore& store) { store.Logger = {40, 4, 2, 2, 8}; }

void SetConfigurationDefaults(ProjectStore& store) {
  store.Gen = {std::string(kFormatVersion), std::string(kModuleVersion), "", "Name", "Number"};
  clear(store.Config);
  Configuration& config = store.Config;
  config.AutoChan = kTrue;
  config.PowerOffMins = kTrue;
  config.DefaultBattVolt = kTrue;
  config.BattTripVolts = 11.5F;
  config.LowBattRetry = kTrue;
  config.BattRetryMins = kTrue;
  config.StatusFlag = 1;
  config.StatTrueFalse = 1;
  config.TimeOffYearShow = kTrue;
  config.TimeOffMonthShow = kTrue;
  config.TimeOffDayShow = kTrue;
  config.TimeOffHourShow = kTrue;
  config.TimeOffMinShow = kTrue;
  config.TimeOffSecShow = kTrue;
  config.PowerOffString = kNoTime;
  config.PowerOnString = kNoTime;
  config.EnableOnTime = kTrue;
}

void SetScanDefaults(ProjectStore& store) {
  clear(store.Scan);
  store.Scan.ExecutionTime = 10;
  store.Scan.ExecTimeUnits = 1;
  store.Scan.ScanMode = kTrue;
  store.Scan.BufferScans = 10;
}

void SetTableDefaults(ProjectStore& store, int table, bool clearSelections) {
  OutputTable& output = store.Tables[table];
  clear(output);
  output.TableName = "Table";
  output.TableName += static_cast<char>('0' + table);
  output.OutInt = 10;
  output.OutIntUnits = 1;
  output.Buffer = 1000;
  output.TableLocation = 1;
  output.PreTriggerScans = 10;
  output.AftTriggerScans = 10;
  static const TriggerCondition unusedStart = unusedCondition(1);
  static const TriggerCondition unusedStop = unusedCondition(2);
  output.Trigger[0].Reset(unusedStart);
  output.Trigger[1].Reset(unusedStop);
  if (clearSelections) clearTableSelections(store, table);
}

void SetTempDefaults(TempBlockGroup& group, int first) {
  static const auto unused = unusedAnalogBlock<TempBlockData>(kTemp);
  group.Blocks.Reset(unused, first + 1);
  if (lowerCount(group, first)) group.SEChannelCount = 0;
}

void SetTempDefaults(ProjectStore& store, int first) { SetTempDefaults(store.TempBlock, first); }

void SetVoltDefaults(VoltBlockGroup& group, int first) {
  static const auto unused = unusedAnalogBlock<VoltBlockData>(kVolt);
  group.Blocks.Reset(unused, first + 1);
  if (lowerCount(group, first)) group.SEChannelCount = 0;
}

void SetVoltDefaults(ProjectStore& store, int first) { SetVoltDefaults(store.VoltBlock, first); }

void SetBridgeDefaults(ProjectStore& store, int first) {
  BridgeBlockGroup& group = store.BridgeBlock;
  static const BridgeBlockData unused = unusedBridgeBlock();
  group.Blocks.Reset(unused, first + 1);
  if (lowerCount(group, first)) group.SEChannelCount = 0;
}

void SetTK40MDefaults(TK40MBlockGroup& group, int first) {
  static const auto unused = unusedAnalogBlock<TK40MBlockData>(kTK40M);
  group.Blocks.Reset(unused, first + 1);
  lowerCount(group, first);
}

void SetTK40MDefaults(ProjectStore& store, int first) { SetTK40MDefaults(store.TK40MBlock, first); }

void SetPulseDefaults(ProjectStore& store, int slot, int first) {
  static const PulseBlockData unused = unusedPulseBlock();
  PulseBlockGroup& group = store.PulseBlock[slot];
  group.Blocks.Reset(unused, first + 1);
  lowerCount(group, first);
}

void SetPortDefaults(ProjectStore& store, int slot) {
  PortSlot& ports = store.Ports.Slot[slot];
  clear(ports);
  ports.DataResolution = "IEEE4";
  ports.ByteMode = 1;
  for (int p = 1; p <= kPorts; ++p) {
    Port& port = ports.Ports[p];
    port.Polarity = p < kPorts ? kTrue : kFalse;
    port.State[0].Compare = 1;
    port.State[1].Compare = 2;
    for (PortState& state : port.State) state.Expression = "False";
  }
  ports.BinaryMask[0] = "11111111";
  ports.BinaryMask[1] = "00000000";
  ports.BinaryMask[2] = "00000000";
}

void SetExciteDefaults(ProjectStore& store, int slot) {
  for (ExciteChannel& channel : store.ExciteOut.Slot[slot]) clear(channel);
}

void SetFlagDefaults(ProjectStore& store, int first) {
  for (int f = first + 1; f <= kFlags; ++f) {
    FlagControl& control = store.Flags[f];
    clear(control);
    control.FlagOn = kTrue;
    control.State[1].FlagCompare = 1;
    control.State[2].FlagCompare = 2;
    for (FlagState& state : control.State) state.FlagExpression = "False";
  }
}

void SetCanModuleDefaults(ProjectStore& store, int module) {
  CanModuleData& data = store.Can.Module[module];
  clear(data);
  data.CanQuanta = 1;  // timing of baud code 0, 1 Mbit/s
  data.CanSeg1 = 5;
  data.CanSeg2 = 2;
  data.CanDataIDType = 1;
}

void SetCanItemDefaults(ProjectStore& store, int first) {
  static const CanItemData unused = unusedCanItem();
  store.Can.Item.Reset(unused, first + 1);
  if (store.Can.CanCount > first) store.Can.CanCount = static_cast<i16>(first);
}

void SetCalcFieldDefaults(ProjectStore& store, int first) {
  static const CalcFieldData unused = unusedCalcField();
  CalcFieldGroup& group = store.CalcFields;
  group.Field.Reset(unused, first + 1);
  if (group.CalcFieldCount > first) group.CalcFieldCount = static_cast<i16>(first);
}

void SetCalculatorDefaults(ProjectStore& store) {
  SpeedCalcRecord& speed = store.SpeedCalc;
  speed.MKSSpd = 0;
  speed.RevSpeed = "50";
  speed.WheelSize = "30";
  speed.PulsesSec = "500";
  speed.SizeOption = 2;
  speed.LengthOption = 3;
  speed.UseMins = 1;
  speed.GearRatio.Fill("1");
  store.MultOffCalc = {"100", "0", "50", "100", "0", ""};
  store.PotCalc = store.MultOffCalc;
  store.MVPerVoltCalc = {"50", "500", "", "100"};
  store.RsCalc = {"1000", ""};
  store.RpmCalc = {"100", "100"};
  store.MoreSpeedCalc = {1, 2, 1, 2, 0, "50", "100"};
  store.FlowCalc = {1, 100, 1, 100, "100"};
}

void SetAllDefaults(ProjectStore& store) {
  SetConfigurationDefaults(store);
  SetScanDefaults(store);
  store.Tables.HDU7 = 0;
  for (int t = 1; t <= kTables; ++t) SetTableDefaults(store, t, false);
  setReference(store.PowerOut);
  SetTempDefaults(store, 0);
  SetVoltDefaults(store, 0);
  SetBridgeDefaults(store, 0);
  store.BridgeBlock.ExciteSwitched = 0;
  store.BridgeBlock.ExciteCAO = 0;
  SetTK40MDefaults(store, 0);
  setReference(store.TK40MRef);
  setReference(store.TcRef);
  for (int slot = 0; slot <= 1; ++slot) {
    SetPulseDefaults(store, slot, 0);
    SetPortDefaults(store, slot);
    SetExciteDefaults(store, slot);
  }
  store.Ports.CodeType = "HEX";
  store.ExciteOut.ExcitePublic = kFalse;
  SetFlagDefaults(store, 0);
  for (int module = 1; module <= kCanModules; ++module) SetCanModuleDefaults(store, module);
  SetCanItemDefaults(store, 0);
  store.Can.CanPickDataFormat = 0;
  store.Can.CanAutoSaveLists = 0;
  SetCalcFieldDefaults(store, 0);
  SetCalculatorDefaults(store);
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
