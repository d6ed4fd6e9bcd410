// The record that holds a project. Members have the names of their project file keys; rows have
// their subscripts. The large ones are late rows, so that a project costs memory and time only for
// what it uses.
#pragma once

#include <string>

#include "model/scalars.h"
#include "text/late_row.h"
#include "text/row.h"

namespace ostrand {

// Hard limits of the system.
inline constexpr int kTables = 6;
inline constexpr int kBlocks = 7;       // of each analog kind
inline constexpr int kPulseBlocks = 2;  // of a pulse slot
inline constexpr int kReps = 100;       // repetitions of a block
inline constexpr int kOutputCodes = 8;  // processing instructions of an output
inline constexpr int kLevels = 40;      // level or test values of a level crossing
inline constexpr int kConditions = 10;  // conditions of a trigger or a write condition
inline constexpr int kFlags = 8;
inline constexpr int kPorts = 9;  // of a slot; the ninth is the port of the byte read
inline constexpr int kStatusRows = 11;
inline constexpr int kCanModules = 16;
inline constexpr int kCanItems = 128;
inline constexpr int kCanValues = 64;  // values of a CAN item
inline constexpr int kCalcFields = 50;

// Processing instructions of an output, numbered from 0; the project file counts from 1.
enum OutputCode : int {
  kSample = 0,
  kMaximum,
  kMinimum,
  kAverage,
  kStdDev,
  kHistogram,
  kRainFlow,
  kLevelCrossing
};

// Entries of `MonitorPower`, numbered as in the project file.
enum MonitorEntry : int {
  kMonitorBattery = 1,
  kMonitorPowerControl,
  kMonitorBatterySaver,
  kMonitorPanel,
  kMonitorStatus
};

// Histogram, rainflow and level crossing settings of one output in one table.
struct HistoSet {
  Row<i16, 1, 8> Reserved;    // kept at 0, not saved
  std::string HistogramCode;  // its leading number is the number of bins
  std::string RainHistoCode;  // comma separated, begins with the two sizes
  std::string LevelCode;      // comma separated, begins with the two sizes
  i16 LevelMeas = 0;
  std::string LevelMeasName;
  i16 NumDims = 0;
  i16 LevNumLevels = 0;
  Row<float, 0, kLevels - 1> LevelVarOne;
  i16 LevNumTests = 0;
  Row<float, 0, kLevels - 1> LevelVarTwo;

  bool operator==(const HistoSet&) const = default;
};

// The stored values of one measured item, table by table.
struct OutputSet {
  Row<Row<i16, 0, kOutputCodes - 1>, 1, kTables> OutputSelect;  // [table][OutputCode], key `Table`
  LateRow<HistoSet, 1, kTables> Histo;                          // [table]

  bool operator==(const OutputSet&) const = default;
};

// The settings of one repetition of a block. Numbers are kept as typed.
struct RepAlias {
  std::string AliasName;
  std::string AliasUnits;
  std::string AliasMult;
  std::string AliasOffset;  // on bridges the key `AliasGFactor`: offset, or gauge factor of strain
  std::string AliasExcept;  // bits 1 units, 2 multiplier, 4 offset differ from the block's

  friend bool operator==(const RepAlias&, const RepAlias&) = default;
};

// The members of every block of repeated measurements.
struct MeasBlock {
  i16 Reps = 0;                // repetitions; key `NumVals` of CAN items
  std::string DataResolution;  // "FP2" or "IEEE4"; key `DataType` of pulse blocks and CAN items
  flag Public = kFalse;
  std::string Units;        // key `LongUnits` of multiplexer blocks
  float DefaultMult = 0;    // key `Mult` of CAN items
  float DefaultOffset = 0;  // key `Offset` of CAN items
  i32 BlockTime = 0;        // microseconds
  i16 ZeroFlag = 0;         // flag number of zeroing; 0 if the kind can't be zeroed
  i16 CalOnSite = 0;        // two-point calibration on site; key `SiteCal` of pulse blocks
  OutputSet Output;

  bool operator==(const MeasBlock&) const = default;
};

// A block of up to `MaxReps` repetitions.
template <int MaxReps>
struct RepBlock : MeasBlock {
  LateRow<RepAlias, 1, MaxReps> Alias;

  bool operator==(const RepBlock&) const = default;
};

// A block on the logger's analog inputs or on a multiplexer.
struct AnalogBlock : RepBlock<kReps> {
  std::string MeasType;  // "Diff" or "SE"; multiplexer blocks hold none
  std::string Range;     // as shown: "50 mV"
  i16 RangeNo = 0;       // range code of the program
  flag OpenSensDetect = kFalse;
  i32 IntegrationRange = 0;  // 0 50 Hz, 1 60 Hz, 2 microseconds
  i32 Integration = 0;       // microseconds
  flag ReverseMes = kFalse;
  i32 SettleTime = 0;  // microseconds
  i16 StartChan = 0;   // keys `StartTempChan`, `StartVoltChan`, `StartBrdgChan`

  bool operator==(const AnalogBlock&) const = default;
};

struct TempBlockData : AnalogBlock {
  i32 TypeNo = 0;  // thermocouple type code

  bool operator==(const TempBlockData&) const = default;
};

struct VoltBlockData : AnalogBlock {
  bool operator==(const VoltBlockData&) const = default;
};

struct BridgeBlockData : AnalogBlock {
  std::string Type;        // instruction, "BrFull"
  i16 ExciteReps = 0;      // repetitions on one excitation channel
  float Excite = 0;        // millivolts
  i16 Style = 0;           // 0 to 7; from 5 on strain
  flag CheckCAO = kFalse;  // excited by a continuous analog output
  flag RevExcite = kFalse;
  flag RevOutput = kFalse;
  float GageFactor = 0;
  i16 GageCode = 0;

  bool operator==(const BridgeBlockData&) const = default;
};

struct TK40MBlockData : AnalogBlock {
  i32 TK40Volts = 0;  // 0 thermocouple, 1 voltage
  i32 TypeNo = 0;     // thermocouple type code

  bool operator==(const TK40MBlockData&) const = default;
};

struct PulseBlockData : RepBlock<kReps> {
  std::string Meas;  // "HiLev", "LoLev", "Swtch"
  i16 Opt = 0;       // 0 totalize, 1 frequency, above: frequency over so many milliseconds

  bool operator==(const PulseBlockData&) const = default;
};

// The blocks of one kind, counted from 1.
template <class Data, int Last>
struct BlockGroup {
  static constexpr int kLast = Last;
  i16 BlockCount = 0;
  LateRow<Data, 1, Last> Blocks;

  Data& operator[](int block) { return Blocks[block]; }
  const Data& operator[](int block) const { return Blocks[block]; }
  bool operator==(const BlockGroup&) const = default;
};

struct TempBlockGroup : BlockGroup<TempBlockData, kBlocks> {
  i16 SEChannelCount = 0;  // single-ended channels in use

  bool operator==(const TempBlockGroup&) const = default;
};
struct VoltBlockGroup : BlockGroup<VoltBlockData, kBlocks> {
  i16 SEChannelCount = 0;

  bool operator==(const VoltBlockGroup&) const = default;
};
struct BridgeBlockGroup : BlockGroup<BridgeBlockData, kBlocks> {
  i16 SEChannelCount = 0;
  i16 ExciteSwitched = 0;  // switched excitation ports in use
  i16 ExciteCAO = 0;       // continuous analog outputs in use

  bool operator==(const BridgeBlockGroup&) const = default;
};
struct TK40MBlockGroup : BlockGroup<TK40MBlockData, kBlocks> {
  bool operator==(const TK40MBlockGroup&) const = default;
};
struct PulseBlockGroup : BlockGroup<PulseBlockData, kPulseBlocks> {
  bool operator==(const PulseBlockGroup&) const = default;
};

// Output of a single value: battery, panel reference, multiplexer reference.
struct ReferenceOutput {
  std::string DataResolution;
  flag Public = kFalse;
  OutputSet Output;
};

// Set at start-up, not saved.
struct LoggerConstants {
  i16 SEChanTotal = 0;
  i16 ExciteChanTotal = 0;
  i16 CaoChanTotal = 0;
  i16 PulseChanTotal = 0;
  i16 PortTotal = 0;
};

struct General {
  std::string Version;           // format version of the project
  std::string VersionLastSaved;  // module version, written into heads of files
  std::string PCTime;
  std::string Operator;
  std::string IDNumber;
};

struct Configuration {
  i16 TK40MQty = 0;   // multiplexers
  i16 CanBusQty = 0;  // CAN interface modules
  flag AutoChan = kFalse;
  float SizeCard = 0;
  Row<flag, 1, 5> MonitorPower;  // [MonitorEntry]
  Row<i16, 1, 2> TcConfigOpts;   // 1 is the output of the multiplexer reference temperature
  flag RemainOff = kFalse;
  flag RemainPOOff = kFalse;
  std::string PowerOffMeasVar;
  i16 PowerOffCompare = 0;
  float PowerOffValue = 0;
  i16 PowerOffTime = 0;
  i16 PowerOffPOTime = 0;
  flag PowerOffMins = kFalse;  // unit of PowerOffTime: 0 day, 1 hour, 2 minute, 3 second
  flag PowerOnMins = kFalse;   // unit of PowerOffPOTime, the same codes
  std::string PowerOffLine;    // the complete If statement
  flag DefaultBattVolt = kFalse;
  float BattTripVolts = 0;
  flag LowBattRetry = kFalse;
  i16 RetryInterval = 0;
  flag BattRetryMins = kFalse;
  i16 StatusMonCount = 0;
  i16 StatusFlag = 0;
  i16 StatTrueFalse = 0;
  Row<Row<std::string, 1, 4>, 1, kStatusRows> Status;  // field, comparison, value, flag and state
  flag TimeOffYearShow = kFalse;
  flag TimeOffMonthShow = kFalse;
  flag TimeOffDayShow = kFalse;
  flag TimeOffHourShow = kFalse;
  flag TimeOffMinShow = kFalse;
  flag TimeOffSecShow = kFalse;
  flag TimeOffWkDayShow = kFalse;
  i16 TimeOffYear = 0;
  i16 TimeOffMonth = 0;
  i16 TimeOffDay = 0;
  i16 TimeOffHour = 0;
  i16 TimeOffMin = 0;
  i16 TimeOffSec = 0;
  i16 TimeOffWkDay = 0;
  i16 TimeOnYear = 0;
  i16 TimeOnMonth = 0;
  i16 TimeOnDay = 0;
  i16 TimeOnHour = 0;
  i16 TimeOnMin = 0;
  i16 TimeOnSec = 0;
  std::string PowerOffString;
  std::string PowerOnString;
  flag EnablePowerOff = kFalse;
  flag EnableTime = kFalse;
  flag EnableOnTime = kFalse;
  i32 BatteryTime = 0;  // microseconds
  i32 PanelTime = 0;    // microseconds
};

struct ScanSetup {
  float ExecutionTime = 0;
  i16 ExecTimeUnits = 0;  // 0 microseconds, 1 milliseconds, 2 seconds, 3 minutes
  flag ScanMode = kFalse;
  std::string ScanBuffer;
  flag BurstMode = kFalse;
  i32 BurstScans = 0;
  i32 BufferScans = 0;
  i16 FlagScan = 0;
};

// One condition of a start or stop trigger. Stop conditions have keys that begin with "Stop".
struct TriggerCondition {
  std::string StartMeasVar;
  i16 StartCompare = 0;
  i16 StartTrigVarIdx = 0;
  float StartTrigValue = 0;
  std::string StartTrigVarb;
  std::string StartTrigIndvExpress;

  friend bool operator==(const TriggerCondition&, const TriggerCondition&) = default;
};

struct WriteCondition {
  std::string MeasureVar;
  i16 Compare = 0;
  i16 VarIdx = 0;
  float Value = 0;
  std::string Varb;
  std::string Expression;

  friend bool operator==(const WriteCondition&, const WriteCondition&) = default;
};

using TriggerConditions = Row<LateRow<TriggerCondition, 1, kConditions>, 0, 1>;  // 0 start, 1 stop
using WriteConditions = LateRow<WriteCondition, 1, kConditions>;

struct OutputTable {
  flag TableOn = kFalse;
  std::string TableName;
  i32 OutInt = 0;
  i16 OutIntUnits = 0;  // OrvusTableTimeUnits
  i32 Buffer = 0;       // records
  flag SyncTable = kFalse;
  flag FillStop = kFalse;
  flag AutoSize = kFalse;
  i16 TableLocation = 0;  // 2 is the PC card
  flag CalcTime = kFalse;
  i16 FlagTable = 0;
  i16 FlagMark = 0;
  i16 FlagFull = 0;
  i16 TrigTable = 0;    // number of start conditions
  i16 TrigTabStop = 0;  // number of stop conditions
  flag SingleTrigger = kFalse;
  flag DisableTrigger = kFalse;
  i32 PreTriggerScans = 0;
  i32 AftTriggerScans = 0;
  std::string DataEventCode;
  std::string DataEventCodeStart;
  std::string DataEventCodeStop;
  TriggerConditions Trigger;
  i16 WriteIf = 0;  // number of write conditions
  flag DisableWriteIf = kFalse;
  WriteConditions Write;
  std::string GroupWriteIf;
  float FieldBytes = 0;  // bytes of a record; not saved
  i32 NumFields = 0;     // fields of a record; not saved

  friend bool operator==(const OutputTable&, const OutputTable&) = default;
};

struct TableSetup {
  i16 HDU7 = 0;  // display: 0 none, 1 public variables, 2 to 7 table 1 to 6
  Row<OutputTable, 1, kTables> Table;

  OutputTable& operator[](int table) { return Table[table]; }
  const OutputTable& operator[](int table) const { return Table[table]; }
};

struct PortState {
  std::string MeasureVar;
  i16 Compare = 0;
  float Value = 0;
  std::string Expression;
};

struct Port {
  flag Include = kFalse;
  flag Polarity = kFalse;  // none on the ninth port
  Row<PortState, 0, 1> State;
};

struct PortSlot {
  std::string DataResolution;
  flag Public = kFalse;
  i16 ReadMode = 0;
  i16 ByteMode = 0;
  Row<Port, 1, kPorts> Ports;
  Row<std::string, 0, 2> BinaryMask;
  OutputSet Output;
};

struct PortSetup {
  std::string CodeType;
  Row<PortSlot, 0, 1> Slot;
};

struct FlagState {
  std::string FlagVar;
  i16 FlagCompare = 0;
  float FlagValue = 0;
  std::string FlagExpression;
};

struct FlagControl {
  flag FlagInclude = kFalse;
  flag FlagOn = kFalse;
  Row<FlagState, 1, 2> State;
};

struct ExciteChannel {
  flag Include = kFalse;
  i16 DynamicStatic = 0;  // set for a static output
  i16 State1 = 0;
  i16 State2 = 0;
  std::string Excite1MeasVar;
  std::string Excite2MeasVar;
  i16 Excite1Compare = 0;
  i16 Excite2Compare = 0;
  float Excite1Value = 0;
  float Excite2Value = 0;
  std::string Excite1Expression;
  std::string Excite2Expression;
  i16 CurrentOut = 0;
  i16 FastDelay = 0;
};

struct ExciteControl {
  flag ExcitePublic = kFalse;
  Row<Row<ExciteChannel, 1, 2>, 0, 1> Slot;  // [slot][channel]
};

struct CanModuleData {
  i16 CanAddress = 0;
  i16 CanBaud = 0;
  i16 CanQuanta = 0;
  i16 CanSeg1 = 0;
  i16 CanSeg2 = 0;
  i16 CanDataIDType = 0;  // 0 for 11 bits, 1 for 29
  i16 CanMessageType = 0;
  flag CanEnableTransmit = kFalse;
  flag CanNaNOldData = kFalse;
  flag CanGetOSVerSig = kFalse;
  i16 CanBusEnabled = 0;
};

// A CAN item; its block part holds `NumVals`, `DataType`, `Mult` and `Offset`.
struct CanItemData : RepBlock<kCanValues> {
  std::string Name;
  i16 DataStyle = 0;
  i16 Enabled = 0;
  i16 StartBit = 0;
  i16 NumBits = 0;
  std::string DataId;
  std::string TxDataId;
  std::string TxDataFrame;
  std::string RxDataMatch;
  std::string RxDataMask;
  i32 RxTimeout = 0;  // milliseconds
  i16 ItemMessageType = 0;
  std::string Description;
};

struct CanBus {
  Row<CanModuleData, 1, kCanModules> Module;
  i16 CanCount = 0;
  i16 CanPickDataFormat = 0;
  i16 CanAutoSaveLists = 0;
  LateRow<CanItemData, 1, kCanItems> Item;
};

struct CalcFieldData {
  std::string DataResolution;
  flag Public = kFalse;
  Row<std::string, 1, 4> CalcField;  // name, expression, units, a fourth column
  OutputSet Output;
};

struct CalcFieldGroup {
  i16 CalcFieldCount = 0;
  LateRow<CalcFieldData, 1, kCalcFields> Field;
};

// Calculators keep the texts typed by the user.
struct SpeedCalcRecord {
  i16 MKSSpd = 0;
  std::string RevSpeed, WheelSize, PulsesSec;
  i16 SizeOption = 0, LengthOption = 0, UseMins = 0;
  Row<std::string, 1, 2> GearRatio;
};
struct LineCalcRecord {  // two points of a straight line
  std::string YMax, YMin, YOut, XMax, XMin, Units;
};
struct MVPerVoltCalcRecord {
  std::string mVPerV, FullScale, Units, mVOut;
};
struct RsCalcRecord {
  std::string RsOhms, Units;
};
struct RpmCalcRecord {
  std::string Pulses, WhatIf;
};
struct MoreSpeedCalcRecord {
  i16 InSystem = 0, InUnits = 0, OutSystem = 0, OutUnits = 0, UseMins = 0;
  std::string InPulses, WhatIf;
};
struct FlowCalcRecord {
  i16 CalFactor = 0;
  double Pulses = 0;
  i16 OutSystem = 0, OutUnits = 0;
  std::string WhatIf;
};

struct ProjectStore {
  LoggerConstants Logger;
  General Gen;
  Configuration Config;
  ScanSetup Scan;
  TableSetup Tables;
  ReferenceOutput PowerOut;
  ReferenceOutput TK40MRef;
  ReferenceOutput TcRef;
  TempBlockGroup TempBlock;
  VoltBlockGroup VoltBlock;
  BridgeBlockGroup BridgeBlock;
  TK40MBlockGroup TK40MBlock;
  Row<PulseBlockGroup, 0, 1> PulseBlock;  // only slot 0 is edited
  PortSetup Ports;
  Row<FlagControl, 1, kFlags> Flags;
  ExciteControl ExciteOut;
  CanBus Can;
  CalcFieldGroup CalcFields;
  SpeedCalcRecord SpeedCalc;
  LineCalcRecord MultOffCalc;
  LineCalcRecord PotCalc;
  MVPerVoltCalcRecord MVPerVoltCalc;
  RsCalcRecord RsCalc;
  RpmCalcRecord RpmCalc;
  MoreSpeedCalcRecord MoreSpeedCalc;
  FlowCalcRecord FlowCalc;
  i32 EstMeasTime = 0;  // microseconds of one scan's measurements; not saved

  // Multiplexer channels, 25 for each multiplexer.
  [[nodiscard]] int TK40ChanTotal() const { return 25 * Config.TK40MQty; }
};

// Defined in store.cpp.
extern template class LateRow<HistoSet, 1, kTables>;
extern template class LateRow<RepAlias, 1, kReps>;
extern template class LateRow<RepAlias, 1, kCanValues>;
extern template class LateRow<TriggerCondition, 1, kConditions>;
extern template class LateRow<WriteCondition, 1, kConditions>;
extern template class LateRow<TempBlockData, 1, kBlocks>;
extern template class LateRow<VoltBlockData, 1, kBlocks>;
extern template class LateRow<BridgeBlockData, 1, kBlocks>;
extern template class LateRow<TK40MBlockData, 1, kBlocks>;
extern template class LateRow<PulseBlockData, 1, kPulseBlocks>;
extern template class LateRow<CanItemData, 1, kCanItems>;
extern template class LateRow<CalcFieldData, 1, kCalcFields>;

// The store of this process. Only the session and the hosts use it.
ProjectStore& TheStore();

}  // namespace ostrand
