#include "logger/faces.h"

namespace ostrand {
namespace {

using enum ControlKind;

// ---- Configuration ------------------------------------------------------------------------------

constexpr std::string_view kTimedOff = "Timed power off";
constexpr std::string_view kTimedOn = "Timed power on";
constexpr std::string_view kNeedsTimedOff = "Needs Timed Power Off.";
constexpr std::string_view kNoWeekDay = "Needs Timed Power Off without a week day.";
constexpr std::string_view kNeedsTimedOn = "Needs Timed Power Off and Timed Power On.";
constexpr std::string_view kNoRemainOff = "Needs Conditional Power Off without Remain Off.";
constexpr std::string_view kNoTimedRemainOff = "Needs Timed Power Off without Remain Off.";
constexpr std::string_view kRetries = "Needs Do Not Retry off.";
// Panels that are hidden until their box is checked.
constexpr std::string_view kOffPanel = "Shown with MonitorPower2.";
constexpr std::string_view kSaverPanel = "Shown with MonitorPower3.";
constexpr std::string_view kStatusPanel = "Shown with MonitorPower5.";
constexpr std::string_view kPickedRow = "Needs a row picked in the list.";

constexpr Face kConfigRows[] = {
    {"CanBusQty", "Hardware", "CAN"},
    {"TK40MQty", "Hardware", "TK40M"},
    {"AutoChan", "Hardware", "Channel selection", kOptions},
    {"SizeCard", "Hardware", "PC Card"},
    {"SizeCardUnits", "Hardware", "PC Card unit"},

    {"MonitorPower1", "Special configuration", "Main Battery &Volts..."},
    {"MonitorPower2", "Special configuration", "Conditional Power &Off..."},
    {"MonitorPower3", "Special configuration", "Battery &Saver..."},
    {"MonitorPower4", "Special configuration", "&Panel Ref Temp..."},
    {"MonitorPower5", "Special configuration", "&Monitor Status..."},
    {"BatteryOutput", "Special configuration", "Battery &output..."},
    {"PanelOutput", "Special configuration", "Panel o&utput..."},

    {"EnablePowerOff", kConditionalPowerOff, "Conditional power off", {}, kOffPanel},
    {"RemainOff", kConditionalPowerOff, "Remain off", {}, kNeedsPowerOff},
    {"PowerOffTime", kConditionalPowerOff, "Interval", {}, kNoRemainOff},
    {"PowerOffMins", kConditionalPowerOff, "Interval unit", {}, kNoRemainOff},
    {"PowerOffInterval", kConditionalPowerOff, "Interval summary"},
    {"PowerOffCode", kConditionalPowerOff, "Statement", kCode},

    {"EnableTime", kTimedOff, "Timed power off", {}, kOffPanel},
    {"TimeOffYear", kTimedOff, "Year", {}, kNoWeekDay},
    {"TimeOffMonth", kTimedOff, "Month", {}, kNoWeekDay},
    {"TimeOffDay", kTimedOff, "Day", {}, kNoWeekDay},
    {"TimeOffHour", kTimedOff, "Hour", {}, kNeedsTimedOff},
    {"TimeOffMin", kTimedOff, "Minute", {}, kNeedsTimedOff},
    {"TimeOffSec", kTimedOff, "Second", {}, kNeedsTimedOff},
    {"TimeOffWkDay", kTimedOff, "Week day", {}, kNeedsTimedOff},
    {"PowerOffString", kTimedOff, "Power-off time", kFigure},
    {"RemainPOOff", kTimedOff, "Remain off", {}, kNeedsTimedOff},
    {"PowerOffPOTime", kTimedOff, "Interval", {}, kNoTimedRemainOff},
    {"PowerOnMins", kTimedOff, "Interval unit", {}, kNoTimedRemainOff},
    {"PowerOnInterval", kTimedOff, "Power-on interval", kFigure},

    {"EnableOnTime", kTimedOn, "Timed power on", {}, kNeedsTimedOff},
    {"TimeOnYear", kTimedOn, "Year", {}, kNeedsTimedOn},
    {"TimeOnMonth", kTimedOn, "Month", {}, kNeedsTimedOn},
    {"TimeOnDay", kTimedOn, "Day", {}, kNeedsTimedOn},
    {"TimeOnHour", kTimedOn, "Hour", {}, kNeedsTimedOn},
    {"TimeOnMin", kTimedOn, "Minute", {}, kNeedsTimedOn},
    {"TimeOnSec", kTimedOn, "Second", {}, kNeedsTimedOn},
    {"PowerOnString", kTimedOn, "Power-on time", kFigure},

    {"SaverText", "Battery saver", "Explanation"},
    {"DefaultBattVolt", "Battery saver", "Default", {}, kSaverPanel},
    {"BattTripVolts", "Battery saver", "Trip level (V)", {}, "Needs Default off."},
    {"DoNotRetry", "Battery saver", "Do &Not Retry", {}, kSaverPanel},
    {"RetryInterval", "Battery saver", "Retry interval", {}, kRetries},
    {"BattRetryMins", "Battery saver", "Retry interval unit", {}, kRetries},
    {"SaverInterval", "Battery saver", "Retry summary"},

    {"StatusRows", "Status monitor", "Status field, comparison, value, flag", kTable, kStatusPanel},
    {"StatusField", "Status monitor", "Status field", {}, kStatusPanel},
    {"StatusCompare", "Status monitor", "Comp", {}, kStatusPanel},
    {"StatusValue", "Status monitor", "Value", {}, kStatusPanel},
    {"StatusFlag", "Status monitor", "Flag", {}, kStatusPanel},
    {"StatTrueFalse", "Status monitor", "State of the flag", kOptions, kStatusPanel},
    {"StatusCode", "Status monitor", "Program code", kCode},
    {"AddStatus", "Status monitor", "&Add", {}, "Needs a free row in the list."},
    {"ChangeStatus", "Status monitor", "C&hange", {}, kPickedRow},
    {"DeleteStatus", "Status monitor", "&Delete", {}, kPickedRow},
};

// ---- Scan ---------------------------------------------------------------------------------------

constexpr std::string_view kNeedsBurst = "Needs Burst Mode.";

constexpr Face kExecuteRows[] = {
    {"ExecutionTime", "Scan", "Scan interval"},
    {"ExecTimeUnits", "Scan", "Interval unit"},
    {"ScansPerSec", "Scan", "Scans/Sec", kFigure},
    {"ScanMode", "Scan", "Scan mode", kOptions},
    {"BurstMode", "Burst", "Burst mode"},
    {"BurstScans", "Burst", "Burst Sc&ans", {}, kNeedsBurst},
    {"FlagScan", "Burst", "Control Flag", {}, kNeedsBurst},
    {"BurstTime", "Burst", {}, kFigure, kNeedsBurst},
    {"BufferScans", "Buffer", "Scans to Buffe&r", {}, "Needs Burst Mode or the scan mode Buffer."},
    {"BufferBytes", "Buffer", "Buffer bytes", kFigure},
    {"AvailableBytes", "Buffer", "Available bytes", kFigure},
};

// ---- Flags and ports ----------------------------------------------------------------------------

constexpr Face kFlagsRows[] = {
    {"FlagInclude#", kFlagsTable, "Include"},
    {"FlagOn#", kFlagsTable, "State 1 sets flag"},
};

constexpr std::string_view kByteValues = "Values of the byte";
constexpr std::string_view kWritten = "Needs the port mode Byte in the direction Write.";

constexpr Face kPortsRows[] = {
    {"ByteMode", "Mode", "Port mode", kOptions},
    {"ReadMode", "Mode", "Direction", kOptions, kNeedsByte},
    {"CodeType", "Mode", "Number format", kOptions},
    {"ModeMessage", "Mode", "Note"},
    {"Output", "Mode", "&Output..."},
    {"Include#", kPortsTable, "Include", {}, kNeedsBits},
    {"Polarity#", kPortsTable, "State 1 sets port", {}, kNeedsBits},
    {"Include9", kPortByte, "Include ports 1-8", {}, kNeedsByte},
    {"Polarity9", kPortByte, "State 1 sets ports", {}, kNeedsByte},
    {"BinaryMask1", kByteValues, "State 1", {}, kWritten},
    {"BinaryMask2", kByteValues, "State 2", {}, kWritten},
    {"BinaryMask3", kByteValues, "Ports in use", {}, kNeedsByte},
};

constexpr Face kPortTablesRows[] = {
    {"DataResolution", "Value", "Resolution", kOptions},
    {"Public", "Value", "Public"},
};

// ---- Excitation ---------------------------------------------------------------------------------

constexpr std::string_view kExciteAll = "Continuous analog outputs";
constexpr std::string_view kChannel = "CAO#";
constexpr std::string_view kDelayAndCurrent = "CAO# delay and current";

constexpr Face kExciteRows[] = {
    {"Purpose", kExciteAll, "Purpose"},
    {"ExcitePublic", kExciteAll, "Public"},
    {"Include#", kChannel, {}, {}, "Needs a channel that no bridge uses."},
    {"PortMessage#", kChannel, "Channel use"},
    {"DynamicStatic#", kChannel, "Mode", kOptions},
    {"State1#", kChannel, "State 1 (mV)"},
    {"State2#", kChannel, "State 2 (mV)", {}, kNeedsDynamic},
    {"FastDelay#", kDelayAndCurrent, "Fast delay"},
    {"Delay#", kDelayAndCurrent, "Delay", kFigure},
    {"CurrentOut#", kDelayAndCurrent, "Current", kOptions},
    {"ViewCode#",
     kDelayAndCurrent,
     "View code",
     {},
     "Needs the channel included, with both conditions if dynamic."},
};

}  // namespace

constinit const std::span<const Face> kConfigFaces = kConfigRows;
constinit const std::span<const Face> kExecuteFaces = kExecuteRows;
constinit const std::span<const Face> kFlagsFaces = kFlagsRows;
constinit const std::span<const Face> kPortsFaces = kPortsRows;
constinit const std::span<const Face> kPortTablesFaces = kPortTablesRows;
constinit const std::span<const Face> kExciteFaces = kExciteRows;

}  // namespace ostrand
