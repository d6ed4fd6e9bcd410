#include <gtest/gtest.h>

#include "model/defaults.h"
#include "projectfile/genfile.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};

std::unique_ptr<ProjectStore> newProject() {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  return store;
}

// A text with the line ends of the file.
std::string crlf(std::string_view lines) {
  std::string text;
  for (const char c : lines) text += c == '\n' ? "\r\n" : std::string(1, c);
  return text;
}

// The lines of a section, from its header to the next one.
std::string sectionOf(const std::string& text, const std::string& header) {
  const std::size_t start = text.find(header + "\r\n");
  if (start == std::string::npos) return "";
  return text.substr(start, text.find("\r\n[", start) - start);
}

constexpr std::string_view kDefaultHead = R"([GEN VERSION]
Version=6.0
VersionLastSaved=6.1.0.07
PCTime=3/10/2003 2:05:00 PM

[CONFIGURATION]
Operator=Name
IDNumber=Number
TK40MQty= 0
CanBusQty= 0
SizeCard= 0
MonitorPower(1)= 0
MonitorPower(2)= 0
MonitorPower(3)= 0
MonitorPower(4)= 0
MonitorPower(5)= 0
TcConfigOpts(1)= 0
TcConfigOpts(2)= 0
RemainOff= 0
RemainPOOff= 0
PowerOffMeasVar=
PowerOffCompare= 0
PowerOffValue= 0
PowerOffTime= 0
PowerOffPOTime= 0
PowerOffMins=-1
PowerOnMins= 0
PowerOffLine=
AutoChan=-1
DefaultBattVolt=-1
BattTripVolts= 11.5
LowBattRetry=-1
RetryInterval= 0
BattRetryMins=-1
StatusMonCount= 0
StatusFlag= 1
StatTrueFalse= 1
TimeOffYearShow=-1
TimeOffMonthShow=-1
TimeOffDayShow=-1
TimeOffHourShow=-1
TimeOffMinShow=-1
TimeOffSecShow=-1
TimeOffWkDayShow= 0
TimeOffYear= 0
TimeOffMonth= 0
TimeOffDay= 0
TimeOffHour= 0
TimeOffMin= 0
TimeOffSec= 0
TimeOffWkDay= 0
TimeOnYear= 0
TimeOnMonth= 0
TimeOnDay= 0
TimeOnHour= 0
TimeOnMin= 0
TimeOnSec= 0
PowerOffString=---- --- -- --:--:--
PowerOnString=---- --- -- --:--:--
EnablePowerOff= 0
EnableTime= 0
EnableOnTime=-1
BatteryTime= 0
PanelTime= 0

[SCAN SETUP]
ExecutionTime= 10
ExecTimeUnits= 1
ScanMode=-1
ScanBuffer=
BurstMode= 0
BurstScans= 0
BufferScans= 10
FlagScan= 0

[TABLE SETUP]
HDU7= 0

[POWEROUT TABLES]
DataResolution=FP2
Public= 0

[TK40M REF TABLES]
DataResolution=FP2
Public= 0


[TC REF TABLES]
DataResolution=FP2
Public= 0
)";

constexpr std::string_view kDefaultTail = R"(
[PULSE BLOCKS]

[PORT SETUP]
CodeType=HEX
Public(0)= 0
DataResolution(0)=IEEE4
ByteMode(0)= 1
ReadMode(0)= 0
Public(0)= 0
DataResolution(0)=IEEE4
ByteMode(0)= 1
ReadMode(0)= 0

[FLAG CONTROL]

[EXCITE CONTROL]
ExcitePublic= 0


[SPEED CALCULATOR]
MKSSpd=0
RevSpeed=50
WheelSize=30
PulsesSec=500
SizeOption=2
LengthOption=3
UseMins=1
GearRatio(1)=1
GearRatio(2)=1

[MULTOFF CALCULATOR]
YMax=100
YMin=0
YOut=50
XMax=100
XMin=0
Units=

[MVPERVOLT CALCULATOR]
mVPerV=50
FullScale=500
Units=
mVOut=100

[POT CALCULATOR]
YMax=100
YMin=0
YOut=50
XMax=100
XMin=0
Units=

[RS CALCULATOR]
RsOhms=1000
Units=

[RPM CALCULATOR]
Pulses=100
WhatIf=100

[MORESPEED CALCULATOR]
InSystem=1
InUnits=2
OutSystem=1
OutUnits=2
UseMins=0
InPulses=50
WhatIf=100

[FLOW CALCULATOR]
CalFactor=1
Pulses=100
OutSystem=1
OutUnits=100
WhatIf=100

[CALCULATED FIELDS]
CalcFieldCount= 0
)";

TEST(ProjectWriter, ANewProjectByteForByte) {
  auto store = newProject();
  EXPECT_EQ(ProjectFileText(*store, kMoment),
            crlf(std::string(kDefaultHead) + std::string(kDefaultTail)));
}

TEST(ProjectWriter, ABlockWithOutputAndAliasesByteForByte) {
  auto store = newProject();
  store->Tables[2].TableOn = kTrue;
  BridgeBlockGroup& bridges = store->BridgeBlock;
  bridges.BlockCount = 1;
  BridgeBlockData& block = bridges[1];
  block.Reps = 2;
  block.Units = "";
  block.BlockTime = 1200;
  block.DefaultOffset = -0.5F;
  for (const int code : {kSample, kHistogram, kLevelCrossing})
    block.Output.OutputSelect[2][code] = 1;
  block.Output.OutputSelect[1][kSample] = 1;  // of a table not in use
  HistoSet& histo = block.Output.Histo[2];
  histo.HistogramCode = "14,000,1,0,394";
  histo.RainHistoCode = "not selected";
  histo.LevelCode = "2,1,0,0.5";
  histo.LevNumLevels = 2;
  histo.LevelVarOne[1] = 0.1F;
  histo.LevNumTests = 1;
  histo.LevelVarTwo[0] = -3;
  block.Alias[1] = {"Oil", "", "2.50", "8", "6"};
  block.Alias[2].AliasExcept = "";
  EXPECT_EQ(sectionOf(ProjectFileText(*store, kMoment), "[BRIDGE BLOCKS]"), crlf(R"([BRIDGE BLOCKS]
BlockCount= 1
SEChannelCount= 0
ExciteSwitched= 0
ExciteCAO= 0
Public(1)= 0
Reps(1)= 2
ExciteReps(1)= 1
MeasType(1)=Diff
Excite(1)= 5000
DefaultMult(1)= 1
DefaultOffset(1)=-0.5
Range(1)=200 mV
RangeNo(1)= 50
Integration(1)= 250
DataResolution(1)=IEEE4
IntegrationRange(1)= 2
CalOnSite(1)= 0
ReverseMes(1)=-1
SettleTime(1)= 200
BlockTime(1)=1200
ZeroFlag(1)= 0
Style(1)= 0
Type(1)=BrFull
CheckCAO(1)= 0
RevExcite(1)= 0
GageFactor(1)= 2
GageCode(1)= 1
RevOutput(1)= 0
OpenSensDetect(1)= 0
StartBrdgChan(1)= 1
HistogramCode(2,1)=14,000,1,0,394
BrLevelCode(2,1)=2,1,0,0.5
BrLevelMeas(2,1)= 0
BrLevelMeasName(2,1)=
BrLevNumLevels(2,1)= 2
BrLevelVarOne(2,1,0)= 0
BrLevelVarOne(2,1,1)= 0.1
BrLevNumTests(2,1)= 1
BrLevelVarTwo(2,1,0)=-3
BrNumDims(2,1)= 0
Table(2,1,1)= 1
Table(2,1,6)= 1
Table(2,1,8)= 1
AliasName(1,1)=Oil
AliasMult(1,1)=2.50
AliasGFactor(1,1)=8
AliasExcept(1,1)=6
AliasExcept(1,2)=
)"));
}

TEST(ProjectWriter, ConditionsOfATable) {
  auto store = newProject();
  OutputTable& table = store->Tables[1];
  table.TableOn = kTrue;
  table.TrigTable = 10;
  table.TrigTabStop = -2;
  table.Trigger[0][10].StartMeasVar = "last";
  table.Trigger[1][2].StartTrigIndvExpress = "stop";
  table.DataEventCodeStart = "1 AND 2";
  table.WriteIf = -1;
  table.Write[1].Expression = "a = 1";
  std::string text = sectionOf(ProjectFileText(*store, kMoment), "[TABLE SETUP]");
  for (const std::string line :
       {"StartMeasVar(1)=", "StartMeasVar(12)=", "StartMeasVar(110)=last", "TrigTabStop(1)= 10",
        "StopTrigIndvExpress(12)=stop", "DataEventCode(1 Start)=1 AND 2",
        "DataEventCode(1)=", "WriteIf(1)= 1", "Expression(1)=a = 1"}) {
    EXPECT_NE(text.find("\r\n" + line + "\r\n"), std::string::npos) << line;
  }
  EXPECT_EQ(table.WriteIf, 1);
  EXPECT_EQ(table.TrigTabStop, 10);
  table.WriteIf = 2;
  text = ProjectFileText(*store, kMoment);
  EXPECT_NE(text.find("\r\nExpression(1, 1)=a = 1\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\nMeasureVar(1, 2)=\r\n"), std::string::npos);
}

TEST(ProjectWriter, PortSlotsShareTheirKeys) {
  auto store = newProject();
  store->Ports.Slot[0].Ports[2].Include = kTrue;
  const auto includes = [&] {
    const std::string text = ProjectFileText(*store, kMoment);
    int count = 0;
    for (std::size_t at = 0; (at = text.find("\r\nInclude(0,", at)) != std::string::npos; ++at)
      ++count;
    return count;
  };
  EXPECT_EQ(includes(), 2);  // the untouched second slot repeats the first
  store->Ports.Slot[1].Public = kTrue;
  EXPECT_EQ(includes(), 1);  // one that was touched has lines of its own
  store->Ports.Slot[1].Ports[9].Include = kTrue;
  store->Ports.Slot[1].BinaryMask[2] = "00001111";
  const std::string ports = sectionOf(ProjectFileText(*store, kMoment), "[PORT SETUP]");
  EXPECT_NE(ports.find("Include(0,9)=-1\r\nMeasureVar(0,0,9)=\r\nCompare(0,0,9)= 1\r\n"
                       "Value(0,0,9)=0\r\nExpression(0,0,9)=False\r\n"),
            std::string::npos);
  EXPECT_NE(ports.find("BinaryMask(2,0,1)=00001111\r\n"), std::string::npos);
  store->Ports.Slot[1].ReadMode = kTrue;
  store->Tables[3].TableOn = kTrue;
  store->Ports.Slot[1].Output.OutputSelect[3][kAverage] = 1;
  EXPECT_TRUE(sectionOf(ProjectFileText(*store, kMoment), "[PORT SETUP]")
                  .ends_with("ReadMode(0)=-1\r\nInclude(0,9)=-1\r\nHistogramCode(0,3,1)=\r\n"
                             "Table(0,3,1,4)= 1\r\n"));
}

TEST(ProjectWriter, MomentsOfTheDay) {
  auto store = newProject();
  const struct {
    platform::Moment moment;
    std::string_view text;
  } cases[] = {{{2024, 12, 31, 0, 0, 9}, "12/31/2024 12:00:09 AM"},
               {{2024, 1, 2, 12, 30, 59}, "1/2/2024 12:30:59 PM"},
               {{2024, 1, 2, 11, 3, 4}, "1/2/2024 11:03:04 AM"}};
  for (const auto& c : cases) {
    EXPECT_NE(ProjectFileText(*store, c.moment).find("PCTime=" + std::string(c.text) + "\r\n"),
              std::string::npos)
        << c.text;
  }
}

// Counts that memory should never hold are no reason to leave an array.
TEST(ProjectWriter, CountsOutsideTheirArraysAreHarmless) {
  auto store = newProject();
  store->VoltBlock.BlockCount = 30000;
  store->VoltBlock[7].Reps = 30000;
  store->TempBlock.BlockCount = -1;
  store->Config.StatusMonCount = 99;
  store->Config.CanBusQty = 1;
  store->Can.CanCount = 999;
  store->CalcFields.CalcFieldCount = 999;
  store->Tables[1].TableOn = kTrue;
  store->Tables[1].WriteIf = 99;
  store->Tables[1].TrigTable = 99;
  const std::string text = ProjectFileText(*store, kMoment);
  EXPECT_NE(text.find("\r\nStartVoltChan(7)="), std::string::npos);
  EXPECT_EQ(text.find("\r\nStartVoltChan(8)="), std::string::npos);
  EXPECT_EQ(text.find("\r\nName(129)="), std::string::npos);
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
