#include "blocks/faces.h"

namespace ostrand {
namespace {

using enum ControlKind;

constexpr std::string_view kBlockTable = "Blocks";
constexpr std::string_view kFree = "Free channels";
constexpr std::string_view kSensors = "Sensors";
constexpr std::string_view kExcitation = "Excitation";
constexpr std::string_view kTiming = "Timing";
constexpr std::string_view kScaling = "Scaling";
constexpr std::string_view kStorage = "Storage";
constexpr std::string_view kAlwaysPublic = "A block calibrated on site is always public.";
constexpr std::string_view kNeedsStrain = "Needs a strain style.";
constexpr std::string_view kNoStrain = "Strain styles do not have it.";
constexpr std::string_view kZeroPanel = "Shown by ZeroPanel.";
constexpr std::string_view kNeedsMicros = "Needs the integration uSecs.";

// A list shows the columns that suit the kind of its blocks.
constexpr Face kListRows[] = {
    {"BlockCount", kBlockTable, "Number of blocks"},
    {"Block#", kBlockTable, "Setup..."},
    {"Meas#", kBlockTable, "Input"},
    {"Option#", kBlockTable, "Result"},
    {"Reps#", kBlockTable, "Sensors", kFigure},
    {"MeasType#", kBlockTable, "Input type"},
    {"Range#", kBlockTable, "Range"},
    {"Integration#", kBlockTable, "Integration (\xB5s)", kFigure},
    {"DefaultMult#", kBlockTable, "Multiplier", kFigure},
    {"DefaultOffset#", kBlockTable, "Offset", kFigure},
};

constexpr Face kFreeRows[] = {
    {"FreeSE", kFree, "Single-ended", kFigure},
    {"FreeDiff", kFree, "Differential", kFigure},
    {"FreeExcite", kFree, "Switched excitations", kFigure},
    {"FreeCAO", kFree, "Continuous excitations", kFigure},
    {"FreeHiLev", kFree, "High level", kFigure},
    {"FreeLoLev", kFree, "Low level", kFigure},
    {"FreeSwtch", kFree, "Switch closure", kFigure},
    {"Chart", kFree, "Channel &chart..."},
};

constexpr Face kAnalogRows[] = {
    {"Reps", kSensors, "Sensors"},
    {"OpenSensDetect",
     kSensors,
     "Open input detect",
     {},
     "Needs the input type Diff, with voltages also a range up to 200 mV."},
    {"ReverseMes", kTiming},
    {"IntegrationRange", kTiming, "Integration", kOptions},
    {"Integration", kTiming, "Integration time (\xB5s)", {}, kNeedsMicros},
    {"SettleTime", kTiming, "Settling time (\xB5s)"},
    {"DataResolution", kStorage, "Resolution", kOptions},
    {"Public", kStorage, "Public", {}, kAlwaysPublic},
    {"Each", kTiming, "Each:", kFigure},
    {"Block", kTiming, "Block:", kFigure},
    {"FieldNames", kSensors, "&Field names..."},
};

constexpr Face kBridgeRows[] = {
    {"Style", "Bridge"},
    {"StyleInfo", "Bridge", "Description"},
    {"Reps", kSensors, "Sensors"},
    {"StartBrdgChan", kSensors, "Start channel", {}, kAutomaticStart},
    {"ExciteReps", kExcitation, "MeasPerEx"},
    {"Excite", kExcitation, "Excitation (mV)"},
    {"CheckCAO", kExcitation, "Continuous excitation"},
    {"RevExcite", kExcitation, "Reverse excitation"},
    {"ReverseMes", kTiming, "Reverse measurement", {}, "Needs a bridge with differential inputs."},
    {"RevOutput", kScaling, "Reverse output polarity", {}, kNeedsStrain},
    {"Range", kSensors, "Range"},
    {"OpenSensDetect", kSensors, "Open input detect"},
    {"IntegrationRange", kTiming, "Integration", kOptions},
    {"Integration", kTiming, "Integration time (\xB5s)", {}, kNeedsMicros},
    {"SettleTime", kTiming, "Settling time (\xB5s)"},
    {"Units", kScaling, "Units"},
    {"DefaultMult", kScaling, "Multiplier", {}, kCalibratedOnSite},
    {"DefaultOffset", kScaling, "Offset", {}, kCalibratedOnSite},
    {"GageFactor", kScaling, "Gauge factor", {}, kNeedsStrain},
    {"Solve", kScaling, "Sol&ve"},
    {"CalOnSite", kScaling, "Calibration on site", {}, kNoStrain},
    {"ZeroPanel", kScaling, "&Zero flag...", {}, kNoStrain},
    {"ZeroFlag", kScaling, "Zero flag", {}, kZeroPanel},
    {"CloseZeroPanel", kScaling, "Close", {}, kZeroPanel},
    {"ZeroFlagShown", kScaling, "Chosen zero flag"},
    {"Public", kStorage, "Public", {}, kAlwaysPublic},
    {"DataResolution", kStorage, "Resolution", kOptions},
    {"FieldNames", kSensors, "&Field names..."},
    {"Each", kTiming, "Each:", kFigure},
    {"Block", kTiming, "Block:", kFigure},
    {"FreeSE", kSensors, "Free single-ended channels", kFigure},
    {"FreeDiff", kSensors, "Free differential channels", kFigure},
    {"FreeExcite", kExcitation, "Free switched excitations", kFigure},
};

constexpr Face kPulseRows[] = {
    {"Reps", kSensors, "Sensors"},
    {"Meas", kSensors, "Input", kOptions},
    {"Option", "Result", "Result", kOptions},
    {"Opt", "Result", "Moving average (ms)", {}, "Needs the result Freq."},
    {"Units", kScaling, "Units"},
    {"DefaultMult", kScaling, "Multiplier", {}, kCalibratedOnSite},
    {"DefaultOffset", kScaling, "Offset", {}, kCalibratedOnSite},
    {"Solve", kScaling, "Sol&ve"},
    {"SiteCal", kScaling, "Calibration on site"},
    {"Public", kStorage, "Public", {}, kAlwaysPublic},
    {"DataType", kStorage, "Resolution", kOptions},
    {"FieldNames", kSensors, "&Field names..."},
    {"FreeHiLev", kSensors, "High level channels", kFigure},
    {"FreeLoLev", kSensors, "Low level channels", kFigure},
    {"FreeSwtch", kSensors, "Switch closure channels", kFigure},
    {"Each", kTiming, "Each:", kFigure},
    {"Block", kTiming, "Block:", kFigure},
};

}  // namespace

constinit const std::span<const Face> kBlockListFaces = kListRows;
constinit const std::span<const Face> kFreeChannelFaces = kFreeRows;
constinit const std::span<const Face> kAnalogSetupFaces = kAnalogRows;
constinit const std::span<const Face> kBrdgSetupFaces = kBridgeRows;
constinit const std::span<const Face> kPulseSetupFaces = kPulseRows;

}  // namespace ostrand
