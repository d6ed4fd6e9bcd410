// The places of checked values in the project file. The only source of the checks that spells its
// sections and keys.
#pragma once

#include <string>
#include <string_view>

#include "text/number.h"
#include "verify/finding.h"

namespace ostrand::project_keys {

inline constexpr std::string_view kConfigurationSection = "[CONFIGURATION]";
inline constexpr std::string_view kScanSetupSection = "[SCAN SETUP]";
inline constexpr std::string_view kTableSetupSection = "[TABLE SETUP]";
inline constexpr std::string_view kTK40MBlocksSection = "[TK40M BLOCKS]";
inline constexpr std::string_view kTempBlocksSection = "[THERMOCOUPLE BLOCKS]";
inline constexpr std::string_view kVoltBlocksSection = "[VOLTAGE BLOCKS]";
inline constexpr std::string_view kBridgeBlocksSection = "[BRIDGE BLOCKS]";
inline constexpr std::string_view kPulseBlocksSection = "[PULSE BLOCKS]";
inline constexpr std::string_view kPortSetupSection = "[PORT SETUP]";
inline constexpr std::string_view kFlagControlSection = "[FLAG CONTROL]";
inline constexpr std::string_view kExciteControlSection = "[EXCITE CONTROL]";
inline constexpr std::string_view kCanItemsSection = "[CANBUS ITEMS]";
inline constexpr std::string_view kCalcFieldsSection = "[CALCULATED FIELDS]";

inline constexpr std::string_view kAliasName = "AliasName";
inline constexpr std::string_view kAliasUnits = "AliasUnits";
inline constexpr std::string_view kBlockTime = "BlockTime";
inline constexpr std::string_view kCalOnSite = "CalOnSite";
inline constexpr std::string_view kCanBusQty = "CanBusQty";
inline constexpr std::string_view kCalcField = "CalcField";
inline constexpr std::string_view kDataEventCode = "DataEventCode";
inline constexpr std::string_view kExecutionTime = "ExecutionTime";
inline constexpr std::string_view kExpression = "Expression";
inline constexpr std::string_view kFlagFull = "FlagFull";
inline constexpr std::string_view kFlagInclude = "FlagInclude";
inline constexpr std::string_view kFlagMark = "FlagMark";
inline constexpr std::string_view kFlagScan = "FlagScan";
inline constexpr std::string_view kFlagTable = "FlagTable";
inline constexpr std::string_view kInclude = "Include";
inline constexpr std::string_view kLevelMeasName = "LevelMeasName";  // after the level prefix
inline constexpr std::string_view kLongUnits = "LongUnits";
inline constexpr std::string_view kMeasureVar = "MeasureVar";
inline constexpr std::string_view kMonitorPower = "MonitorPower";
inline constexpr std::string_view kName = "Name";
inline constexpr std::string_view kOpenSensDetect = "OpenSensDetect";
inline constexpr std::string_view kOutInt = "OutInt";
inline constexpr std::string_view kPowerOffLine = "PowerOffLine";
inline constexpr std::string_view kPowerOffMeasVar = "PowerOffMeasVar";
inline constexpr std::string_view kRangeNo = "RangeNo";
inline constexpr std::string_view kRepsKey = "Reps";
inline constexpr std::string_view kStartBrdgChan = "StartBrdgChan";
inline constexpr std::string_view kStartTempChan = "StartTempChan";
inline constexpr std::string_view kStartVoltChan = "StartVoltChan";
inline constexpr std::string_view kSyncTable = "SyncTable";
inline constexpr std::string_view kTK40MQty = "TK40MQty";
inline constexpr std::string_view kTableName = "TableName";
inline constexpr std::string_view kUnits = "Units";
inline constexpr std::string_view kVarb = "Varb";  // of write conditions
inline constexpr std::string_view kZeroFlag = "ZeroFlag";

// Of state 0 and 1.
inline constexpr std::string_view kTriggerMeasVar[] = {"StartMeasVar", "StopMeasVar"};
inline constexpr std::string_view kTriggerVarb[] = {"StartTrigVarb", "StopTrigVarb"};
inline constexpr std::string_view kFlagVar[] = {"State1FlagVar", "State2FlagVar"};
inline constexpr std::string_view kExciteMeasVar[] = {"Excite1MeasVar", "Excite2MeasVar"};
inline constexpr std::string_view kExciteExpression[] = {"Excite1Expression", "Excite2Expression"};

// A key with its indices: "CalcField(3,1)".
template <class... Index>
std::string KeyOf(std::string_view name, int first, Index... rest) {
  std::string key(name);
  key.append("(").append(NumberText(first));
  (key.append(",").append(NumberText(rest)), ...);
  return key.append(")");
}

// Rows of triggers join table and condition into one number: (2) is condition 1 of table 2, (23)
// its condition 3, (210) its condition 10.
inline std::string TriggerKey(std::string_view name, int table, int condition) {
  int number = table;
  if (condition > 1) number = table * (condition < 10 ? 10 : 100) + condition;
  return KeyOf(name, number);
}

// Row `condition` of the write conditions; the only row of a table has no number.
inline std::string WriteConditionKey(std::string_view name, int table, int condition, int count) {
  if (count <= 1) return KeyOf(name, table);
  return std::string(name) + "(" + NumberText(table) + ", " + NumberText(condition) + ")";
}

// State and port; the file has 0 in place of the slot.
inline std::string PortKey(std::string_view name, int state, int port) {
  return KeyOf(name, state, 0, port);
}

}  // namespace ostrand::project_keys
