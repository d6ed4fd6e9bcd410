// The keys of the project file, section by section in the order of the file. The writer and the
// reader share them: no key is spelled anywhere else.
#pragma once

#include <algorithm>

#include "projectfile/field.h"

namespace ostrand::ORVUS_GENFILE {

enum class Section {
  kGenVersion,
  kConfiguration,
  kScanSetup,
  kTableSetup,
  kPowerOut,
  kTK40MRef,
  kTK40MBlocks,
  kTcRef,
  kTempBlocks,
  kVoltBlocks,
  kBridgeBlocks,
  kPulseBlocks,
  kPortSetup,
  kFlagControl,
  kExciteControl,
  kCanItems,
  kSpeedCalc,
  kMultOffCalc,
  kMVPerVoltCalc,
  kPotCalc,
  kRsCalc,
  kRpmCalc,
  kMoreSpeedCalc,
  kFlowCalc,
  kCalcFields,
};

struct SectionName {
  Section section;
  std::string_view header;
  bool blankStays = false;  // the blank line before it stays when the section is left out
};

inline constexpr SectionName kSections[] = {
    {Section::kGenVersion, "[GEN VERSION]"},
    {Section::kConfiguration, "[CONFIGURATION]"},
    {Section::kScanSetup, "[SCAN SETUP]"},
    {Section::kTableSetup, "[TABLE SETUP]"},
    {Section::kPowerOut, "[POWEROUT TABLES]"},
    {Section::kTK40MRef, "[TK40M REF TABLES]"},
    {Section::kTK40MBlocks, "[TK40M BLOCKS]", true},
    {Section::kTcRef, "[TC REF TABLES]"},
    {Section::kTempBlocks, "[THERMOCOUPLE BLOCKS]"},
    {Section::kVoltBlocks, "[VOLTAGE BLOCKS]"},
    {Section::kBridgeBlocks, "[BRIDGE BLOCKS]"},
    {Section::kPulseBlocks, "[PULSE BLOCKS]"},
    {Section::kPortSetup, "[PORT SETUP]"},
    {Section::kFlagControl, "[FLAG CONTROL]"},
    {Section::kExciteControl, "[EXCITE CONTROL]"},
    {Section::kCanItems, "[CANBUS ITEMS]", true},
    {Section::kSpeedCalc, "[SPEED CALCULATOR]"},
    {Section::kMultOffCalc, "[MULTOFF CALCULATOR]"},
    {Section::kMVPerVoltCalc, "[MVPERVOLT CALCULATOR]"},
    {Section::kPotCalc, "[POT CALCULATOR]"},
    {Section::kRsCalc, "[RS CALCULATOR]"},
    {Section::kRpmCalc, "[RPM CALCULATOR]"},
    {Section::kMoreSpeedCalc, "[MORESPEED CALCULATOR]"},
    {Section::kFlowCalc, "[FLOW CALCULATOR]"},
    {Section::kCalcFields, "[CALCULATED FIELDS]"},
};

// [GEN VERSION]

inline constexpr Field<General> kGenVersionKeys[] = {
    {"Version", Form::kText, &General::Version},
    {"VersionLastSaved", Form::kWrittenOnly, &General::VersionLastSaved},
    {"PCTime", Form::kText, &General::PCTime},
};

// [CONFIGURATION]

inline constexpr Field<General> kOperatorKeys[] = {
    {"Operator", Form::kText, &General::Operator},
    {"IDNumber", Form::kText, &General::IDNumber},
};
inline constexpr Field<Configuration> kQuantityKeys[] = {
    {"TK40MQty", Form::kStr, &Configuration::TK40MQty},
    {"CanBusQty", Form::kStr, &Configuration::CanBusQty},
    {"SizeCard", Form::kStr, &Configuration::SizeCard},
};
inline constexpr Field<flag> kMonitorPowerKeys[] = {{"MonitorPower"}};
inline constexpr Field<i16> kTcConfigOptsKeys[] = {{"TcConfigOpts"}};
inline constexpr Field<Configuration> kConfigurationKeys[] = {
    {"RemainOff", Form::kStr, &Configuration::RemainOff},
    {"RemainPOOff", Form::kStr, &Configuration::RemainPOOff},
    {"PowerOffMeasVar", Form::kText, &Configuration::PowerOffMeasVar},
    {"PowerOffCompare", Form::kStr, &Configuration::PowerOffCompare},
    {"PowerOffValue", Form::kStr, &Configuration::PowerOffValue},
    {"PowerOffTime", Form::kStr, &Configuration::PowerOffTime},
    {"PowerOffPOTime", Form::kStr, &Configuration::PowerOffPOTime},
    {"PowerOffMins", Form::kStr, &Configuration::PowerOffMins},
    {"PowerOnMins", Form::kStr, &Configuration::PowerOnMins},
    {"PowerOffLine", Form::kText, &Configuration::PowerOffLine},
    {"AutoChan", Form::kStr, &Configuration::AutoChan},
    {"DefaultBattVolt", Form::kStr, &Configuration::DefaultBattVolt},
    {"BattTripVolts", Form::kStr, &Configuration::BattTripVolts},
    {"LowBattRetry", Form::kStr, &Configuration::LowBattRetry},
    {"RetryInterval", Form::kStr, &Configuration::RetryInterval},
    {"BattRetryMins", Form::kStr, &Configuration::BattRetryMins},
    {"StatusMonCount", Form::kStr, &Configuration::StatusMonCount, kStatusRows},
    {"StatusFlag", Form::kStr, &Configuration::StatusFlag},
    {"StatTrueFalse", Form::kStr, &Configuration::StatTrueFalse},
    {"TimeOffYearShow", Form::kStr, &Configuration::TimeOffYearShow},
    {"TimeOffMonthShow", Form::kStr, &Configuration::TimeOffMonthShow},
    {"TimeOffDayShow", Form::kStr, &Configuration::TimeOffDayShow},
    {"TimeOffHourShow", Form::kStr, &Configuration::TimeOffHourShow},
    {"TimeOffMinShow", Form::kStr, &Configuration::TimeOffMinShow},
    {"TimeOffSecShow", Form::kStr, &Configuration::TimeOffSecShow},
    {"TimeOffWkDayShow", Form::kStr, &Configuration::TimeOffWkDayShow},
    {"TimeOffYear", Form::kStr, &Configuration::TimeOffYear},
    {"TimeOffMonth", Form::kStr, &Configuration::TimeOffMonth},
    {"TimeOffDay", Form::kStr, &Configuration::TimeOffDay},
    {"TimeOffHour", Form::kStr, &Configuration::TimeOffHour},
    {"TimeOffMin", Form::kStr, &Configuration::TimeOffMin},
    {"TimeOffSec", Form::kStr, &Configuration::TimeOffSec},
    {"TimeOffWkDay", Form::kStr, &Configuration::TimeOffWkDay},
    {"TimeOnYear", Form::kStr, &Configuration::TimeOnYear},
    {"TimeOnMonth", Form::kStr, &Configuration::TimeOnMonth},
    {"TimeOnDay", Form::kStr, &Configuration::TimeOnDay},
    {"TimeOnHour", Form::kStr, &Configuration::TimeOnHour},
    {"TimeOnMin", Form::kStr, &Configuration::TimeOnMin},
    {"TimeOnSec", Form::kStr, &Configuration::TimeOnSec},
    {"PowerOffString", Form::kText, &Configuration::PowerOffString},
    {"PowerOnString", Form::kText, &Configuration::PowerOnString},
    {"EnablePowerOff", Form::kStr, &Configuration::EnablePowerOff},
    {"EnableTime", Form::kStr, &Configuration::EnableTime},
    {"EnableOnTime", Form::kStr, &Configuration::EnableOnTime},
    {"BatteryTime", Form::kStr, &Configuration::BatteryTime},
    {"PanelTime", Form::kStr, &Configuration::PanelTime},
};
inline constexpr Field<std::string> kStatusKeys[] = {{"Status", Form::kTrimmed}};

// [SCAN SETUP]

inline constexpr Field<ScanSetup> kScanKeys[] = {
    {"ExecutionTime", Form::kStr, &ScanSetup::ExecutionTime},
    {"ExecTimeUnits", Form::kStr, &ScanSetup::ExecTimeUnits},
    {"ScanMode", Form::kStr, &ScanSetup::ScanMode},
    {"ScanBuffer", Form::kText, &ScanSetup::ScanBuffer},
    {"BurstMode", Form::kStr, &ScanSetup::BurstMode},
    {"BurstScans", Form::kStr, &ScanSetup::BurstScans},
    {"BufferScans", Form::kStr, &ScanSetup::BufferScans},
    {"FlagScan", Form::kStr, &ScanSetup::FlagScan},
};

// [TABLE SETUP]

inline constexpr Field<TableSetup> kDisplayKeys[] = {{"HDU7", Form::kStr, &TableSetup::HDU7}};
inline constexpr Field<OutputTable> kTableOnKeys[] = {
    {"TableOn", Form::kStr, &OutputTable::TableOn}};
inline constexpr Field<OutputTable> kTableKeys[] = {
    {"OutInt", Form::kStr, &OutputTable::OutInt},
    {"OutIntUnits", Form::kStr, &OutputTable::OutIntUnits},
    {"TableName", Form::kText, &OutputTable::TableName},
    {"Buffer", Form::kStr, &OutputTable::Buffer},
    {"SyncTable", Form::kStr, &OutputTable::SyncTable},
    {"FillStop", Form::kStr, &OutputTable::FillStop},
    {"AutoSize", Form::kStr, &OutputTable::AutoSize},
    {"TableLocation", Form::kStr, &OutputTable::TableLocation},
    {"CalcTime", Form::kStr, &OutputTable::CalcTime},
    {"TrigTable", Form::kStr, &OutputTable::TrigTable, kConditions},
};
// After the prefix of its state: StartMeasVar, StopMeasVar.
inline constexpr std::string_view kTriggerPrefix[] = {"Start", "Stop"};
inline constexpr Field<TriggerCondition> kTriggerKeys[] = {
    {"MeasVar", Form::kText, &TriggerCondition::StartMeasVar},
    {"Compare", Form::kStr, &TriggerCondition::StartCompare},
    {"TrigVarIdx", Form::kStr, &TriggerCondition::StartTrigVarIdx},
    {"TrigValue", Form::kStr, &TriggerCondition::StartTrigValue},
    {"TrigVarb", Form::kText, &TriggerCondition::StartTrigVarb},
    {"TrigIndvExpress", Form::kText, &TriggerCondition::StartTrigIndvExpress},
};
inline constexpr Field<OutputTable> kTrigTabStopKeys[] = {
    {"TrigTabStop", Form::kStr, &OutputTable::TrigTabStop, kConditions}};
// One key with three kinds of brackets: "(1 Start)", "(1 Stop)", "(1)".
inline constexpr KeyName kDataEventCode = "DataEventCode";
inline constexpr Field<OutputTable> kEventStartKeys[] = {
    {kDataEventCode, Form::kText, &OutputTable::DataEventCodeStart}};
inline constexpr Field<OutputTable> kEventStopKeys[] = {
    {kDataEventCode, Form::kText, &OutputTable::DataEventCodeStop}};
inline constexpr Field<OutputTable> kEventKeys[] = {
    {kDataEventCode, Form::kText, &OutputTable::DataEventCode}};
inline constexpr Field<OutputTable> kTableControlKeys[] = {
    {"PreTriggerScans", Form::kStr, &OutputTable::PreTriggerScans},
    {"AftTriggerScans", Form::kStr, &OutputTable::AftTriggerScans},
    {"FlagTable", Form::kStr, &OutputTable::FlagTable},
    {"FlagMark", Form::kStr, &OutputTable::FlagMark},
    {"FlagFull", Form::kStr, &OutputTable::FlagFull},
    {"SingleTrigger", Form::kStr, &OutputTable::SingleTrigger},
    {"DisableTrigger", Form::kStr, &OutputTable::DisableTrigger},
    {"WriteIf", Form::kStr, &OutputTable::WriteIf, kConditions},
};
inline constexpr Field<WriteCondition> kWriteKeys[] = {
    {"MeasureVar", Form::kText, &WriteCondition::MeasureVar},
    {"Compare", Form::kStr, &WriteCondition::Compare},
    {"VarIdx", Form::kStr, &WriteCondition::VarIdx},
    {"Value", Form::kStr, &WriteCondition::Value},
    {"Varb", Form::kText, &WriteCondition::Varb},
    {"Expression", Form::kText, &WriteCondition::Expression},
};
inline constexpr Field<OutputTable> kWriteGroupKeys[] = {
    {"DisableWriteIf", Form::kStr, &OutputTable::DisableWriteIf},
    {"GroupWriteIf", Form::kText, &OutputTable::GroupWriteIf},
};

// The trigger rows join table and condition into one number: (2) is condition 1 of table 2, (23)
// its condition 3, (210) its condition 10.
constexpr int TriggerNumber(int table, int condition) {
  if (condition == 1) return table;
  return table * (condition < 10 ? 10 : 100) + condition;
}

// The outputs of one item: keys with (table, block).

inline constexpr Field<i16> kSelectionKeys[] = {{"Table"}};
inline constexpr Field<HistoSet> kHistogramKeys[] = {
    {"HistogramCode", Form::kText, &HistoSet::HistogramCode}};
inline constexpr Field<HistoSet> kRainHistoKeys[] = {
    {"RainHistoCode", Form::kText, &HistoSet::RainHistoCode}};
// After the level prefix of the kind: TmLevelCode.
inline constexpr Field<HistoSet> kLevelKeys[] = {
    {"LevelCode", Form::kText, &HistoSet::LevelCode},
    {"LevelMeas", Form::kStr, &HistoSet::LevelMeas},
    {"LevelMeasName", Form::kText, &HistoSet::LevelMeasName},
    {"LevNumLevels", Form::kStr, &HistoSet::LevNumLevels, kLevels},
};
inline constexpr Field<float> kLevelOneKeys[] = {{"LevelVarOne"}};
inline constexpr Field<HistoSet> kLevNumTestsKeys[] = {
    {"LevNumTests", Form::kStr, &HistoSet::LevNumTests, kLevels}};
inline constexpr Field<float> kLevelTwoKeys[] = {{"LevelVarTwo"}};
inline constexpr Field<HistoSet> kNumDimsKeys[] = {{"NumDims", Form::kStr, &HistoSet::NumDims}};

// The separate values of one repetition: keys with (block, repetition).

inline constexpr Field<RepAlias> kAliasKeys[] = {
    {"AliasName", Form::kTextIfAny, &RepAlias::AliasName},
    {"AliasUnits", Form::kTextIfAny, &RepAlias::AliasUnits},
    {"AliasMult", Form::kTextIfAny, &RepAlias::AliasMult},
};
inline constexpr Field<RepAlias> kAliasOffsetKeys[] = {
    {"AliasOffset", Form::kTextIfAny, &RepAlias::AliasOffset}};
inline constexpr Field<RepAlias> kAliasGFactorKeys[] = {
    {"AliasGFactor", Form::kTextIfAny, &RepAlias::AliasOffset}};
inline constexpr Field<RepAlias> kAliasExceptKeys[] = {
    {"AliasExcept", Form::kExcept, &RepAlias::AliasExcept}};

// [POWEROUT TABLES], [TK40M REF TABLES], [TC REF TABLES]

inline constexpr Field<ReferenceOutput> kReferenceKeys[] = {
    {"DataResolution", Form::kText, &ReferenceOutput::DataResolution},
    {"Public", Form::kStr, &ReferenceOutput::Public},
};
// Only the multiplexer reference has a separate key for its rainflow code.
inline constexpr Field<HistoSet> kRainCodeKeys[] = {
    {"RainCode", Form::kText, &HistoSet::RainHistoCode}};
// Processing instructions that the file keeps of the battery and of the two references.
inline constexpr int kPowerOutCodes = kOutputCodes;
inline constexpr int kReferenceCodes = 5;

// [TK40M BLOCKS]

inline constexpr Field<TK40MBlockGroup> kTK40MGroupKeys[] = {
    {"BlockCount", Form::kLead, &TK40MBlockGroup::BlockCount, kBlocks}};
inline constexpr Field<TK40MBlockData> kTK40MKeys[] = {
    {"TK40Volts", Form::kPlain, &TK40MBlockData::TK40Volts},
    {"Public", Form::kStr, &TK40MBlockData::Public},
    {"Reps", Form::kLead, &TK40MBlockData::Reps, kReps},
    {"LongUnits", Form::kTextIfAny, &TK40MBlockData::Units},
    {"TypeNo", Form::kLead, &TK40MBlockData::TypeNo},
    {"Range", Form::kText, &TK40MBlockData::Range},
    {"RangeNo", Form::kLead, &TK40MBlockData::RangeNo},
    {"Integration", Form::kStr, &TK40MBlockData::Integration},
    {"DataResolution", Form::kText, &TK40MBlockData::DataResolution},
    {"IntegrationRange", Form::kStr, &TK40MBlockData::IntegrationRange},
    {"CalOnSite", Form::kStr, &TK40MBlockData::CalOnSite},
    {"ReverseMes", Form::kStr, &TK40MBlockData::ReverseMes},
    {"SettleTime", Form::kStr, &TK40MBlockData::SettleTime},
    {"BlockTime", Form::kPlain, &TK40MBlockData::BlockTime},
    {"DefaultMult", Form::kStr, &TK40MBlockData::DefaultMult},
    {"DefaultOffset", Form::kStr, &TK40MBlockData::DefaultOffset},
    {"ZeroFlag", Form::kStr, &TK40MBlockData::ZeroFlag},
    {"OpenSensDetect", Form::kStr, &TK40MBlockData::OpenSensDetect},
};
// Keys of older files, which distinguish thermocouple and voltage blocks in the key. Read only.
inline constexpr Field<TK40MBlockData> kTK40MOldKeys[] = {
    {"Units", Form::kText, &TK40MBlockData::Units}};
inline constexpr Field<TK40MBlockData> kTK40MOldTempKeys[] = {
    {"TCRange", Form::kText, &TK40MBlockData::Range},
    {"TCRangeNo", Form::kLead, &TK40MBlockData::RangeNo},
};
inline constexpr Field<TK40MBlockData> kTK40MOldVoltKeys[] = {
    {"VoltRange", Form::kText, &TK40MBlockData::Range},
    {"VoltRangeNo", Form::kLead, &TK40MBlockData::RangeNo},
};

// [THERMOCOUPLE BLOCKS]

inline constexpr Field<TempBlockGroup> kTempGroupKeys[] = {
    {"BlockCount", Form::kStr, &TempBlockGroup::BlockCount, kBlocks},
    {"SEChannelCount", Form::kStr, &TempBlockGroup::SEChannelCount},
};
inline constexpr Field<TempBlockData> kTempKeys[] = {
    {"Public", Form::kStr, &TempBlockData::Public},
    {"Reps", Form::kStr, &TempBlockData::Reps, kReps},
    {"MeasType", Form::kText, &TempBlockData::MeasType},
    {"TypeNo", Form::kStr, &TempBlockData::TypeNo},
    {"Range", Form::kText, &TempBlockData::Range},
    {"RangeNo", Form::kStr, &TempBlockData::RangeNo},
    {"Integration", Form::kStr, &TempBlockData::Integration},
    {"DataResolution", Form::kText, &TempBlockData::DataResolution},
    {"IntegrationRange", Form::kStr, &TempBlockData::IntegrationRange},
    {"Units", Form::kTextIfAny, &TempBlockData::Units},
    {"ReverseMes", Form::kStr, &TempBlockData::ReverseMes},
    {"SettleTime", Form::kStr, &TempBlockData::SettleTime},
    {"BlockTime", Form::kTime, &TempBlockData::BlockTime},
    {"DefaultMult", Form::kStr, &TempBlockData::DefaultMult},
    {"DefaultOffset", Form::kStr, &TempBlockData::DefaultOffset},
    {"OpenSensDetect", Form::kStr, &TempBlockData::OpenSensDetect},
    {"StartTempChan", Form::kStr, &TempBlockData::StartChan},
};

// [VOLTAGE BLOCKS]

inline constexpr Field<VoltBlockGroup> kVoltGroupKeys[] = {
    {"BlockCount", Form::kStr, &VoltBlockGroup::BlockCount, kBlocks},
    {"SEChannelCount", Form::kStr, &VoltBlockGroup::SEChannelCount},
};
inline constexpr Field<VoltBlockData> kVoltKeys[] = {
    {"Public", Form::kStr, &VoltBlockData::Public},
    {"Reps", Form::kStr, &VoltBlockData::Reps, kReps},
    {"MeasType", Form::kText, &VoltBlockData::MeasType},
    {"DefaultMult", Form::kStr, &VoltBlockData::DefaultMult},
    {"DefaultOffset", Form::kStr, &VoltBlockData::DefaultOffset},
    {"Range", Form::kText, &VoltBlockData::Range},
    {"RangeNo", Form::kStr, &VoltBlockData::RangeNo},
    {"Integration", Form::kStr, &VoltBlockData::Integration},
    {"DataResolution", Form::kText, &VoltBlockData::DataResolution},
    {"IntegrationRange", Form::kStr, &VoltBlockData::IntegrationRange},
    {"CalOnSite", Form::kStr, &VoltBlockData::CalOnSite},
    {"Units", Form::kTextIfAny, &VoltBlockData::Units},
    {"ReverseMes", Form::kStr, &VoltBlockData::ReverseMes},
    {"SettleTime", Form::kStr, &VoltBlockData::SettleTime},
    {"BlockTime", Form::kTime, &VoltBlockData::BlockTime},
    {"ZeroFlag", Form::kStr, &VoltBlockData::ZeroFlag},
    {"OpenSensDetect", Form::kStr, &VoltBlockData::OpenSensDetect},
    {"StartVoltChan", Form::kStr, &VoltBlockData::StartChan},
};

// [BRIDGE BLOCKS]

inline constexpr Field<BridgeBlockGroup> kBridgeGroupKeys[] = {
    {"BlockCount", Form::kStr, &BridgeBlockGroup::BlockCount, kBlocks},
    {"SEChannelCount", Form::kStr, &BridgeBlockGroup::SEChannelCount},
    {"ExciteSwitched", Form::kStr, &BridgeBlockGroup::ExciteSwitched},
    {"ExciteCAO", Form::kStr, &BridgeBlockGroup::ExciteCAO},
};
inline constexpr Field<BridgeBlockData> kBridgeKeys[] = {
    {"Public", Form::kStr, &BridgeBlockData::Public},
    {"Reps", Form::kStr, &BridgeBlockData::Reps, kReps},
    {"ExciteReps", Form::kStr, &BridgeBlockData::ExciteReps},
    {"MeasType", Form::kText, &BridgeBlockData::MeasType},
    {"Excite", Form::kStr, &BridgeBlockData::Excite},
    {"DefaultMult", Form::kStr, &BridgeBlockData::DefaultMult},
    {"DefaultOffset", Form::kStr, &BridgeBlockData::DefaultOffset},
    {"Range", Form::kText, &BridgeBlockData::Range},
    {"RangeNo", Form::kStr, &BridgeBlockData::RangeNo},
    {"Integration", Form::kStr, &BridgeBlockData::Integration},
    {"DataResolution", Form::kText, &BridgeBlockData::DataResolution},
    {"IntegrationRange", Form::kStr, &BridgeBlockData::IntegrationRange},
    {"CalOnSite", Form::kStr, &BridgeBlockData::CalOnSite},
    {"Units", Form::kTextIfAny, &BridgeBlockData::Units},
    {"ReverseMes", Form::kStr, &BridgeBlockData::ReverseMes},
    {"SettleTime", Form::kStr, &BridgeBlockData::SettleTime},
    {"BlockTime", Form::kTime, &BridgeBlockData::BlockTime},
    {"ZeroFlag", Form::kStr, &BridgeBlockData::ZeroFlag},
    {"Style", Form::kStr, &BridgeBlockData::Style},
    {"Type", Form::kText, &BridgeBlockData::Type},
    {"CheckCAO", Form::kStr, &BridgeBlockData::CheckCAO},
    {"RevExcite", Form::kStr, &BridgeBlockData::RevExcite},
    {"GageFactor", Form::kStr, &BridgeBlockData::GageFactor},
    {"GageCode", Form::kStr, &BridgeBlockData::GageCode},
    {"RevOutput", Form::kStr, &BridgeBlockData::RevOutput},
    {"OpenSensDetect", Form::kStr, &BridgeBlockData::OpenSensDetect},
    {"StartBrdgChan", Form::kStr, &BridgeBlockData::StartChan},
};
// Of older files. Read only.
inline constexpr Field<HistoSet> kBridgeOldKeys[] = {
    {"RainHistCode", Form::kText, &HistoSet::RainHistoCode}};

// [PULSE BLOCKS]

inline constexpr Field<PulseBlockGroup> kPulseGroupKeys[] = {
    {"BlockCount", Form::kStr, &PulseBlockGroup::BlockCount, kPulseBlocks}};
inline constexpr Field<PulseBlockData> kPulseKeys[] = {
    {"Public", Form::kStr, &PulseBlockData::Public},
    {"Reps", Form::kStr, &PulseBlockData::Reps, kReps},
    {"Opt", Form::kStr, &PulseBlockData::Opt},
    {"DefaultMult", Form::kStr, &PulseBlockData::DefaultMult},
    {"DefaultOffset", Form::kStr, &PulseBlockData::DefaultOffset},
    {"Meas", Form::kText, &PulseBlockData::Meas},
    {"DataType", Form::kText, &PulseBlockData::DataResolution},
    {"SiteCal", Form::kStr, &PulseBlockData::CalOnSite},
    {"Units", Form::kTextIfAny, &PulseBlockData::Units},
    {"BlockTime", Form::kTime, &PulseBlockData::BlockTime},
};
// Of older files. Read only.
inline constexpr Field<PulseBlockGroup> kPulseOldKeys[] = {
    {"PulseBlockCount", Form::kStr, &PulseBlockGroup::BlockCount, kPulseBlocks}};

// [PORT SETUP]; with a literal 0 in the place of the slot

inline constexpr Field<PortSetup> kCodeTypeKeys[] = {
    {"CodeType", Form::kText, &PortSetup::CodeType}};
inline constexpr Field<PortSlot> kPortSlotKeys[] = {
    {"Public", Form::kStr, &PortSlot::Public},
    {"DataResolution", Form::kText, &PortSlot::DataResolution},
    {"ByteMode", Form::kStr, &PortSlot::ByteMode},
    {"ReadMode", Form::kStr, &PortSlot::ReadMode},
};
inline constexpr Field<Port> kPortKeys[] = {{"Include", Form::kPlain, &Port::Include}};
inline constexpr Field<Port> kPolarityKeys[] = {{"Polarity", Form::kPlain, &Port::Polarity}};
inline constexpr Field<PortState> kPortStateKeys[] = {
    {"MeasureVar", Form::kText, &PortState::MeasureVar},
    {"Compare", Form::kStr, &PortState::Compare},
    {"Value", Form::kPlain, &PortState::Value},
    {"Expression", Form::kText, &PortState::Expression},
};
inline constexpr Field<std::string> kBinaryMaskKeys[] = {{"BinaryMask", Form::kText}};

// [FLAG CONTROL]

inline constexpr Field<FlagControl> kFlagKeys[] = {
    {"FlagInclude", Form::kStr, &FlagControl::FlagInclude},
    {"FlagOn", Form::kStr, &FlagControl::FlagOn},
};
// After the prefix of its state: State2FlagVar.
inline constexpr std::string_view kFlagStatePrefix[] = {"State1", "State2"};
inline constexpr Field<FlagState> kFlagStateKeys[] = {
    {"FlagVar", Form::kText, &FlagState::FlagVar},
    {"FlagCompare", Form::kStr, &FlagState::FlagCompare},
    {"FlagValue", Form::kStr, &FlagState::FlagValue},
    {"FlagExpression", Form::kText, &FlagState::FlagExpression},
};

// [EXCITE CONTROL]

inline constexpr Field<ExciteControl> kExciteKeys[] = {
    {"ExcitePublic", Form::kStr, &ExciteControl::ExcitePublic}};
inline constexpr Field<ExciteChannel> kExciteChannelKeys[] = {
    {"Include", Form::kStr, &ExciteChannel::Include},
    {"DynamicStatic", Form::kStr, &ExciteChannel::DynamicStatic},
    {"State1", Form::kStr, &ExciteChannel::State1},
    {"State2", Form::kStr, &ExciteChannel::State2},
    {"Excite1MeasVar", Form::kText, &ExciteChannel::Excite1MeasVar},
    {"Excite2MeasVar", Form::kText, &ExciteChannel::Excite2MeasVar},
    {"Excite1Compare", Form::kStr, &ExciteChannel::Excite1Compare},
    {"Excite2Compare", Form::kStr, &ExciteChannel::Excite2Compare},
    {"Excite1Value", Form::kStr, &ExciteChannel::Excite1Value},
    {"Excite2Value", Form::kStr, &ExciteChannel::Excite2Value},
    {"Excite1Expression", Form::kText, &ExciteChannel::Excite1Expression},
    {"Excite2Expression", Form::kText, &ExciteChannel::Excite2Expression},
    {"CurrentOut", Form::kStr, &ExciteChannel::CurrentOut},
    {"FastDelay", Form::kStr, &ExciteChannel::FastDelay},
};

// [CANBUS ITEMS]; the file keeps the first module only

inline constexpr int kSavedCanModule = 1;
inline constexpr Field<CanModuleData> kCanModuleKeys[] = {
    {"CanAddress", Form::kPlain, &CanModuleData::CanAddress},
    {"CanBaud", Form::kPlain, &CanModuleData::CanBaud},
    {"CanQuanta", Form::kPlain, &CanModuleData::CanQuanta},
    {"CanSeg1", Form::kPlain, &CanModuleData::CanSeg1},
    {"CanSeg2", Form::kPlain, &CanModuleData::CanSeg2},
    {"CanDataIDType", Form::kPlain, &CanModuleData::CanDataIDType},
    {"CanMessageType", Form::kPlain, &CanModuleData::CanMessageType},
    {"CanEnableTransmit", Form::kTruth, &CanModuleData::CanEnableTransmit},
    {"CanNaNOldData", Form::kTruth, &CanModuleData::CanNaNOldData},
    {"CanGetOSVerSig", Form::kTruth, &CanModuleData::CanGetOSVerSig},
};
inline constexpr Field<CanBus> kCanGroupKeys[] = {
    {"CanCount", Form::kPlain, &CanBus::CanCount, kCanItems},
    {"CanPickDataFormat", Form::kPlain, &CanBus::CanPickDataFormat},
    {"CanAutoSaveLists", Form::kPlain, &CanBus::CanAutoSaveLists},
};
inline constexpr Field<CanModuleData> kCanEnabledKeys[] = {
    {"CanBusEnabled", Form::kPlain, &CanModuleData::CanBusEnabled}};
inline constexpr Field<CanItemData> kCanItemKeys[] = {
    {"Name", Form::kText, &CanItemData::Name},
    {"DataStyle", Form::kStr, &CanItemData::DataStyle},
    {"Enabled", Form::kStr, &CanItemData::Enabled},
    {"StartBit", Form::kStr, &CanItemData::StartBit},
    {"NumBits", Form::kStr, &CanItemData::NumBits},
    {"NumVals", Form::kStr, &CanItemData::Reps, kCanValues},
    {"DataId", Form::kText, &CanItemData::DataId},
    {"TxDataId", Form::kText, &CanItemData::TxDataId},
    {"TxDataFrame", Form::kText, &CanItemData::TxDataFrame},
    {"RxDataMatch", Form::kText, &CanItemData::RxDataMatch},
    {"RxDataMask", Form::kText, &CanItemData::RxDataMask},
    {"RxTimeout", Form::kStr, &CanItemData::RxTimeout},
    {"ItemMessageType", Form::kStr, &CanItemData::ItemMessageType},
    {"Mult", Form::kStr, &CanItemData::DefaultMult},
    {"Offset", Form::kStr, &CanItemData::DefaultOffset},
    {"Units", Form::kText, &CanItemData::Units},
    {"DataType", Form::kResolution, &CanItemData::DataResolution},
    {"Public", Form::kStr, &CanItemData::Public},
    {"Description", Form::kText, &CanItemData::Description},
};

// Calculators

inline constexpr Field<SpeedCalcRecord> kSpeedCalcKeys[] = {
    {"MKSSpd", Form::kPlain, &SpeedCalcRecord::MKSSpd},
    {"RevSpeed", Form::kText, &SpeedCalcRecord::RevSpeed},
    {"WheelSize", Form::kText, &SpeedCalcRecord::WheelSize},
    {"PulsesSec", Form::kText, &SpeedCalcRecord::PulsesSec},
    {"SizeOption", Form::kPlain, &SpeedCalcRecord::SizeOption},
    {"LengthOption", Form::kPlain, &SpeedCalcRecord::LengthOption},
    {"UseMins", Form::kPlain, &SpeedCalcRecord::UseMins},
};
inline constexpr Field<std::string> kGearRatioKeys[] = {{"GearRatio", Form::kText}};
inline constexpr Field<LineCalcRecord> kLineCalcKeys[] = {
    {"YMax", Form::kText, &LineCalcRecord::YMax}, {"YMin", Form::kText, &LineCalcRecord::YMin},
    {"YOut", Form::kText, &LineCalcRecord::YOut}, {"XMax", Form::kText, &LineCalcRecord::XMax},
    {"XMin", Form::kText, &LineCalcRecord::XMin}, {"Units", Form::kText, &LineCalcRecord::Units},
};
inline constexpr Field<MVPerVoltCalcRecord> kMVPerVoltCalcKeys[] = {
    {"mVPerV", Form::kText, &MVPerVoltCalcRecord::mVPerV},
    {"FullScale", Form::kText, &MVPerVoltCalcRecord::FullScale},
    {"Units", Form::kText, &MVPerVoltCalcRecord::Units},
    {"mVOut", Form::kText, &MVPerVoltCalcRecord::mVOut},
};
inline constexpr Field<RsCalcRecord> kRsCalcKeys[] = {
    {"RsOhms", Form::kText, &RsCalcRecord::RsOhms},
    {"Units", Form::kText, &RsCalcRecord::Units},
};
inline constexpr Field<RpmCalcRecord> kRpmCalcKeys[] = {
    {"Pulses", Form::kText, &RpmCalcRecord::Pulses},
    {"WhatIf", Form::kText, &RpmCalcRecord::WhatIf},
};
inline constexpr Field<MoreSpeedCalcRecord> kMoreSpeedCalcKeys[] = {
    {"InSystem", Form::kPlain, &MoreSpeedCalcRecord::InSystem},
    {"InUnits", Form::kPlain, &MoreSpeedCalcRecord::InUnits},
    {"OutSystem", Form::kPlain, &MoreSpeedCalcRecord::OutSystem},
    {"OutUnits", Form::kPlain, &MoreSpeedCalcRecord::OutUnits},
    {"UseMins", Form::kPlain, &MoreSpeedCalcRecord::UseMins},
    {"InPulses", Form::kText, &MoreSpeedCalcRecord::InPulses},
    {"WhatIf", Form::kText, &MoreSpeedCalcRecord::WhatIf},
};
inline constexpr Field<FlowCalcRecord> kFlowCalcKeys[] = {
    {"CalFactor", Form::kPlain, &FlowCalcRecord::CalFactor},
    {"Pulses", Form::kPlain, &FlowCalcRecord::Pulses},
    {"OutSystem", Form::kPlain, &FlowCalcRecord::OutSystem},
    {"OutUnits", Form::kPlain, &FlowCalcRecord::OutUnits},
    {"WhatIf", Form::kText, &FlowCalcRecord::WhatIf},
};

// [CALCULATED FIELDS]

inline constexpr Field<CalcFieldGroup> kCalcGroupKeys[] = {
    {"CalcFieldCount", Form::kStr, &CalcFieldGroup::CalcFieldCount, kCalcFields}};
inline constexpr Field<CalcFieldData> kCalcFieldKeys[] = {
    {"Public", Form::kStr, &CalcFieldData::Public},
    {"DataResolution", Form::kText, &CalcFieldData::DataResolution},
};
inline constexpr Field<std::string> kCalcColumnKeys[] = {{"CalcField", Form::kText}};

// The families of measured items, which share the output block and the alias block. Each
// gives the place of its items, the number in use, and the prefix of its level keys.

// A count of used items, limited to their number.
template <class Items>
int CountOf(int count, const Items&) {
  return std::min(count, Items::kLast);
}

template <auto GroupMember>
struct BlockFamily {
  static auto& Group(ProjectStore& store) { return store.*GroupMember; }
  static int Count(ProjectStore& store) {
    return CountOf(Group(store).BlockCount, Group(store).Blocks);
  }
  static auto& Item(ProjectStore& store, int block) { return Group(store)[block]; }
  static constexpr const auto& kOffsetKeys = kAliasOffsetKeys;
};

struct TK40MFamily : BlockFamily<&ProjectStore::TK40MBlock> {
  static constexpr std::string_view kLevelPrefix = "Tk";
  static constexpr const auto& kGroupKeys = kTK40MGroupKeys;
  static constexpr const auto& kItemKeys = kTK40MKeys;
};
struct TempFamily : BlockFamily<&ProjectStore::TempBlock> {
  static constexpr std::string_view kLevelPrefix = "Tm";
  static constexpr const auto& kGroupKeys = kTempGroupKeys;
  static constexpr const auto& kItemKeys = kTempKeys;
};
struct VoltFamily : BlockFamily<&ProjectStore::VoltBlock> {
  static constexpr std::string_view kLevelPrefix = "Vo";
  static constexpr const auto& kGroupKeys = kVoltGroupKeys;
  static constexpr const auto& kItemKeys = kVoltKeys;
};
struct BridgeFamily : BlockFamily<&ProjectStore::BridgeBlock> {
  static constexpr std::string_view kLevelPrefix = "Br";
  static constexpr const auto& kGroupKeys = kBridgeGroupKeys;
  static constexpr const auto& kItemKeys = kBridgeKeys;
  static constexpr const auto& kOffsetKeys = kAliasGFactorKeys;
};
template <int Slot>
struct PulseFamily {
  static PulseBlockGroup& Group(ProjectStore& store) { return store.PulseBlock[Slot]; }
  static int Count(ProjectStore& store) {
    return CountOf(Group(store).BlockCount, Group(store).Blocks);
  }
  static PulseBlockData& Item(ProjectStore& store, int block) { return Group(store)[block]; }
  static constexpr std::string_view kLevelPrefix = "Pu";
  static constexpr const auto& kGroupKeys = kPulseGroupKeys;
  static constexpr const auto& kItemKeys = kPulseKeys;
  static constexpr const auto& kOffsetKeys = kAliasOffsetKeys;
};
struct CanFamily {
  static CanBus& Group(ProjectStore& store) { return store.Can; }
  static int Count(ProjectStore& store) { return CountOf(store.Can.CanCount, store.Can.Item); }
  static CanItemData& Item(ProjectStore& store, int item) { return store.Can.Item[item]; }
  static constexpr std::string_view kLevelPrefix = "Ca";
  static constexpr const auto& kGroupKeys = kCanGroupKeys;
  static constexpr const auto& kItemKeys = kCanItemKeys;
  static constexpr const auto& kOffsetKeys = kAliasOffsetKeys;
};
struct CalcFamily {
  static CalcFieldGroup& Group(ProjectStore& store) { return store.CalcFields; }
  static int Count(ProjectStore& store) {
    return CountOf(store.CalcFields.CalcFieldCount, store.CalcFields.Field);
  }
  static CalcFieldData& Item(ProjectStore& store, int field) {
    return store.CalcFields.Field[field];
  }
  static constexpr std::string_view kLevelPrefix = "Ca";
  static constexpr const auto& kGroupKeys = kCalcGroupKeys;
  static constexpr const auto& kItemKeys = kCalcFieldKeys;
};

}  // namespace ostrand::ORVUS_GENFILE
