#include "tables/faces.h"

namespace ostrand {
namespace {

using enum ControlKind;

// ---- Output tables ------------------------------------------------------------------------------

constexpr std::string_view kTableOn = "Needs an enabled table.";
constexpr std::string_view kNoSync = "Needs an enabled table without Sync.";

constexpr Face kOutIntRows[] = {
    {"Table", "Table", "Output table", kOptions},
    {"TableOn", "Table", "Enabled"},
    {"TableName", "Table", "Name", {}, kTableOn},
    {"OutInt", "Interval", "Interval", {}, kNoSync},
    {"OutIntUnits", "Interval", "Interval unit", {}, kNoSync},
    {"PerSec", "Interval", "/Sec", kFigure, kTableOn},
    {"SyncTable", "Interval", "Sync", {}, kTableOn},
    {"Buffer", "Records", "Records", {}, "Needs an enabled table without Auto Size."},
    {"AutoSize", "Records", "Auto Size", {}, kTableOn},
    {"FillStop", "Records", "Fill && Stop", {}, kTableOn},
    {"CalcTime", "Records", "Compress", {}, kTableOn},
    {"TableLocation", "Memory", "Location", kOptions, kTableOn},
    {"PamCard", "Memory", "Card", kOptions, "Needs an enabled table on the PC card."},
    {"FlagTable", "Flags", "Write Flag", {}, kTableOn},
    {"FlagMark", "Flags", "Mark Flag", {}, kTableOn},
    {"FlagFull", "Flags", "Full Flag", {}, kTableOn},
    {"HDU7", "Heads-up display", "Values shown"},
    {"Trigger", "Conditions and times", "Trigger"},
    {"WriteIf", "Conditions and times", "Write if"},
    {"TableTimes", "Conditions and times", "Table Time"},
    {"AllTables", "Conditions and times", "All Tables"},
};

constexpr Face kTableTimesRows[] = {
    {"Days", "Time to fill", "Days"},
    {"Hours", "Time to fill", "Hours"},
    {"Minutes", "Time to fill", "Minutes"},
    {"Seconds", "Time to fill", "Seconds"},
    {"Buffer", "Records and memory", "Records", kFigure},
    {"TotalBytes", "Records and memory", "Total bytes", kFigure},
    {"Space", "Records and memory", {}, kFigure},
    {"BurstNote", "Records and memory", "Burst buffer"},
    {"AllTables", "Records and memory", "All Tables"},
};

// ---- Conditions of tables -----------------------------------------------------------------------

constexpr Face kTrigTableRows[] = {
    {"SingleTrigger", "Trigger", "Single trigger"},
    {"DisableTrigger", "Trigger", "Disable trigger"},
    {"PreTriggerScans", "Stored scans", "Scans before the trigger"},
    {"AftTriggerScans", "Stored scans", "Scans after the trigger"},
    {"PreTriggerTime", "Stored scans", "Time before the trigger", kFigure},
    {"AftTriggerTime", "Stored scans", "Time after the trigger", kFigure},
    {"DataEventCode", "Stored scans", "Data event", kCode},
    {"ViewStart", "Program code", "View start code"},
    {"ViewStop", "Program code", "View stop code", {}, kNeedsDualTrigger},
    {"ListStart", "Program code", "List start"},
    {"ListStop", "Program code", "List stop", {}, kNeedsDualTrigger},
    {"ListBoth", "Program code", "List both", {}, kNeedsDualTrigger},
};

constexpr Face kWriteIfRows[] = {
    {"DisableWriteIf", "Conditional write", "Disable condition"},
    {"CallLine", "Program code", "Call of the table", kCode},
    {"View", "Program code", "View code"},
};

// ---- Histograms ---------------------------------------------------------------------------------

constexpr Face kHistoRows[] = {
    {"ScanTime", "Timing", "Scan time"},
    {"TableTime", "Timing", "Table time"},
    {"DataPoints", "Timing", "Data points per histogram"},
};

constexpr Face kHistogramRows[] = {
    {"Code", "Program code", "Instruction", kCode},
    {"Bins", "Bins and limits", "Number of Bins"},
    {"LowerLimit", "Bins and limits", "Lower Limit"},
    {"UpperLimit", "Bins and limits", "Upper Limit"},
    {"Form", "Form and weight", "Form"},
    {"Weight", "Form and weight", "Weighted Value"},
};

constexpr Face kRainHistoRows[] = {
    {"Code", "Program code", "Instruction", kCode},
    {"MeanBins", "Bins and limits", "Mean Bins"},
    {"AmpBins", "Bins and limits", "Amp Bins"},
    {"LowerLimit", "Bins and limits", "Lower Limit"},
    {"UpperLimit", "Bins and limits", "Upper Limit"},
    {"Form", "Form", "Form"},
};

constexpr std::string_view kValues = "Level crossing values";
constexpr std::string_view kSecond = "Second dimension";
constexpr std::string_view kTwoDims = "Needs two dimensions.";

constexpr Face kLevelRows[] = {
    {"NumDims", "Dimensions", "Dimensions", kOptions},
    {"LevelVarOne", kValues, "Level crossing values"},
    {"AddOne", kValues, "Add"},
    {"LevelsOne", kValues, "Sorted values", kTable},
    {"RemoveOne", kValues, "Remove"},
    {"LevelVarTwo", kSecond, "2nd dim boundaries", {}, kTwoDims},
    {"AddTwo", kSecond, "Add", {}, kTwoDims},
    {"LevelsTwo", kSecond, "Sorted boundaries", kTable, kTwoDims},
    {"RemoveTwo", kSecond, "Remove", {}, kTwoDims},
    {"LevelMeas", kSecond, "2nd dim selection", {}, kTwoDims},
    {"Code", "Program code", "Instruction", kCode},
};

}  // namespace

constinit const std::span<const Face> kOutIntFaces = kOutIntRows;
constinit const std::span<const Face> kTableTimesFaces = kTableTimesRows;
constinit const std::span<const Face> kTrigTableFaces = kTrigTableRows;
constinit const std::span<const Face> kWriteIfFaces = kWriteIfRows;
constinit const std::span<const Face> kHistoFaces = kHistoRows;
constinit const std::span<const Face> kHistogramFaces = kHistogramRows;
constinit const std::span<const Face> kRainHistoFaces = kRainHistoRows;
constinit const std::span<const Face> kLevelFaces = kLevelRows;

}  // namespace ostrand
