#include "documents/summary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "model/defaults.h"
#include "support/project_random.h"
#include "support/scripted_forms.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr i32 kMost = std::numeric_limits<i32>::max();

// The text with the line ends of a document.
std::string withCrLf(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

// The lines of the section with that heading, total included; empty when it is not there.
std::string sectionOf(std::string_view text, std::string_view heading) {
  return std::string(Before(After(text, "\r\n\r\n " + std::string(heading) + " "), "\r\n\r\n"));
}

class Summary : public ::testing::Test {
 protected:
  Summary() { ORVUS_COMMON::SetAllDefaults(store); }

  std::string summarize() {
    PlainText box;
    EXPECT_TRUE(Summarize(store, look, box, forms));
    return box.Text();
  }

  std::string section(std::string_view heading) { return sectionOf(summarize(), heading); }

  // The section's lines behind its heading.
  std::string rows(std::string_view heading) {
    return std::string(After(section(heading), "\r\n"));
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
  SummaryLook look{.projectName = "Pump", .text = kWindowText, .heading = 0xFF0000};
  testing::ScriptedForms forms;
};

// Something of every kind.
void makePump(ProjectStore& store) {
  store.Gen.VersionLastSaved = "6.1.0.07";
  store.Gen.PCTime = "11/24/2025 9:30:00 AM";
  store.Config.MonitorPower[kMonitorBattery] = kTrue;
  store.Config.BatteryTime = 700;
  store.Config.PanelTime = 1250;
  store.Tables[1].TableOn = kTrue;
  const auto store1 = [](OutputSet& output, int code) { output.OutputSelect[1][code] = kTrue; };
  store1(store.PowerOut.Output, kSample);

  store.TempBlock.BlockCount = 2;
  TempBlockData& exhaust = store.TempBlock[1];
  exhaust.Reps = 2;
  exhaust.TypeNo = 2;
  exhaust.BlockTime = 1900;
  store1(exhaust.Output, kSample);
  store1(exhaust.Output, kAverage);
  TempBlockData& housing = store.TempBlock[2];
  housing.Reps = 1;
  housing.Range = "200 mV";
  housing.MeasType = "SE";
  housing.Units = "Rankine";
  housing.TypeNo = 1;

  store.VoltBlock.BlockCount = 1;
  VoltBlockData& level = store.VoltBlock[1];
  level.Reps = 3;
  level.Range = "5000 mV";
  level.MeasType = "SE";
  level.DefaultOffset = -0.0025F;
  level.BlockTime = 2050;

  store.BridgeBlock.BlockCount = 1;
  BridgeBlockData& load = store.BridgeBlock[1];
  load.Reps = 1;
  load.BlockTime = 1800;
  store1(load.Output, kMaximum);
  store1(load.Output, kHistogram);
  load.Output.Histo[1].HistogramCode = "10,1,0,1,1,0,100";

  store.PulseBlock[0].BlockCount = 1;
  store.PulseBlock[0][1].Reps = 1;
  store.PulseBlock[0][1].BlockTime = 100;

  store.Config.TK40MQty = 1;
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 10;
  store.TK40MBlock[1].TK40Volts = 1;
  store.TK40MBlock[1].BlockTime = 9500;

  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = 1;
  store.Can.Item[1].DataId = "&H18FEF100";

  store.CalcFields.CalcFieldCount = 1;
  store1(store.CalcFields.Field[1].Output, kSample);

  ExciteChannel& sensor = store.ExciteOut.Slot[0][1];
  sensor.Include = kTrue;
  sensor.DynamicStatic = 1;
  sensor.State1 = 2500;
  ExciteChannel& valve = store.ExciteOut.Slot[0][2];
  valve.Include = kTrue;
  valve.State1 = 5000;

  PortSlot& byte = store.Ports.Slot[0];
  byte.Ports[kPorts].Include = kTrue;
  byte.BinaryMask[0] = "00001111";
  byte.BinaryMask[1] = "11110000";
  byte.BinaryMask[2] = "11111111";
  PortSlot& bits = store.Ports.Slot[1];
  bits.ByteMode = 0;
  bits.Ports[1].Include = kTrue;

  store.Flags[1].FlagInclude = kTrue;
  store.Flags[2].FlagInclude = kTrue;
  store.Flags[2].FlagOn = kFalse;
}

TEST_F(Summary, OfAProjectWithAllKinds) {
  makePump(store);
  EXPECT_EQ(summarize(), withCrLf(R"( Program Name: PUMP
 QUILLON Version: 6.1.0.07
 VK7300 OS Version Compatibility: 05-15-08 or later
 Last Saved: 11-24-2025 09:30:00

 Scan Interval = 10 mSecs

 Table 1         Output Interval = 10 mSecs
               Fields per Record = 17
                Bytes per Record = 56
                    Record Count = 1,000

                                              (uSec)
 Main Battery Volts Time    =                    700

 THERMO    Reps  Rng  Meas   Unit Type        (uSec)
 1 Block...   2   50  Diff  Deg_F   K          1,900
 2 Block...   1  200  SE    Rankine E           ....
                    Panel RefTemp Time =       1,250
               Total Thermocouple Time =       3,150

 VOLTS     Reps  Rng  Meas   Mult   Offset    (uSec)
 1 Block...   3 5000  SE     1.0e0 -2.5e-3     2,050
                    Total Voltage Time =       2,050

 BRIDGES   Reps  Rng  Ex mv   Mult   Offset   (uSec)
 1 Block...   1  200   5000   1.0e0   0.0e0    1,800
                     Total Bridge Time =       1,800

 PULSES    Reps Type  Option   Mult   Offset  (uSec)
 1 Block...   1 HiLev Freq     1.0e0   0.0e0     100
                      Total Pulse Time =         100

 TK40M     Reps  Rng  Meas   Unit Type        (uSec)
 1 Block...  10   50  Diff  mV                 9,500
                      Total TK40M Time =       9,500

 CAN       Reps  Data ID     Mult   Offset    (uSec)
 1 Block...   1 &H18FEF100   1.0e0   0.0e0      ....
                     Total Canbus Time =           0

 CAO OUTPUT     State 1   State 2             (uSec)
 Excite1           2500     -----               ....
 Excite2           5000         0               ....
                 Total CAO Output Time =           0

 I/O CONTROL WRITE  State1   State2    Mask   (uSec)
                  00001111 11110000 11111111    ....

 PORT SET           State1   State2           (uSec)
 Port 1             True     False              ....
                       Total Port Time =           0

 FLAGS          State 1   State 2            (uSec)
 Flag(1)            True      False             ....
 Flag(2)            False     True              ....
                       Total Flag Time =           0

    Shortest Possible Scan Time (uSec) =      17,300
)"));
  EXPECT_EQ(store.EstMeasTime, 17300);
  EXPECT_EQ(store.Tables[1].NumFields, 17);
}

TEST_F(Summary, OfANewProject) {
  look.projectName = "NoName";
  store.Gen.VersionLastSaved = "6.1.0.07";
  store.EstMeasTime = 99;
  EXPECT_EQ(summarize(), withCrLf(R"( Program Name: NONAME
 QUILLON Version: 6.1.0.07
 VK7300 OS Version Compatibility: 05-15-08 or later
 Last Saved:)"
                                  " \n"
                                  R"(
 Scan Interval = 10 mSecs

                                              (uSec)

    Shortest Possible Scan Time (uSec) =           0
)"));
  EXPECT_EQ(store.EstMeasTime, 0);
}

TEST_F(Summary, ReplacesWhatTheBoxHeld) {
  PlainText box;
  box.SelText("an older summary");
  EXPECT_TRUE(Summarize(store, look, box, forms));
  EXPECT_EQ(box.Text(), summarize());
}

TEST_F(Summary, IntervalsAndSizesOfTables) {
  store.Scan.BurstMode = kTrue;
  store.Scan.ExecutionTime = 0.1F;
  store.Scan.ExecTimeUnits = 3;
  OutputTable& fast = store.Tables[2];
  fast.TableOn = kTrue;
  fast.SyncTable = kTrue;
  fast.OutInt = 7;       // of no effect, like
  fast.OutIntUnits = 2;  // the unit that the generator leaves here
  fast.AutoSize = kTrue;
  OutputTable& daily = store.Tables[6];
  daily.TableOn = kTrue;
  daily.OutInt = 1;
  daily.OutIntUnits = 5;
  daily.Buffer = kMost;
  store.VoltBlock[1].Reps = 600;
  store.VoltBlock[1].Output.OutputSelect[6].Fill(kTrue);
  OutputTable& odd = store.Tables[5];
  odd.TableOn = kTrue;
  odd.OutInt = 30;
  odd.OutIntUnits = 6;
  EXPECT_EQ(Before(After(summarize(), "\r\n\r\n"), "\r\n    Shortest"),
            withCrLf(R"( Burst Scan Interval = 0.1 Mins

 Table 2         Output Interval = 0.1 Mins
               Fields per Record = 0
                Bytes per Record = 0
                    Record Count = Auto Size
 Table 5         Output Interval = 30
               Fields per Record = 0
                Bytes per Record = 0
                    Record Count = 1,000
 Table 6         Output Interval = 1 Days
               Fields per Record = 3,000
                Bytes per Record = 6,000
                    Record Count = 2,147,483,647

                                              (uSec)
)"));
}

TEST_F(Summary, ShowsTheMomentOfTheLastSave) {
  const struct {
    const char *saved, *shown;
  } cases[] = {
      {"3/10/2003 2:05:00 PM", "03-10-2003 14:05:00"},
      {"12/1/1999 12:00:09 AM", "12-01-1999 00:00:09"},
      {"12/1/1999 12:00:09 PM", "12-01-1999 12:00:09"},
      {"11-24-2025 09:30:00", "11-24-2025 09:30:00"},  // as it stands, like all other forms
      {"24.11.2025 09:30", "24.11.2025 09:30"},
      {"13/1/1999 1:00:00 AM", "13/1/1999 1:00:00 AM"},
      {"1/1/1999 13:00:00 PM", "1/1/1999 13:00:00 PM"},
      {"1/1/1999 1:00:00 AM ", "1/1/1999 1:00:00 AM "},
      {"1/1/19999 1:00:00 AM", "1/1/19999 1:00:00 AM"},
      {"1/1/1999 1:00:60 AM", "1/1/1999 1:00:60 AM"},
      {"1/1/1999 1:00", "1/1/1999 1:00"},
      {"yesterday", "yesterday"},
  };
  for (const auto& c : cases) {
    store.Gen.PCTime = c.saved;
    EXPECT_EQ(Before(After(summarize(), "Last Saved: "), "\r\n"), c.shown);
  }
}

TEST_F(Summary, KindsOutOfUseHaveNoSection) {
  makePump(store);
  store.TempBlock.BlockCount = 0;
  store.VoltBlock.BlockCount = 0;
  store.Can.Item[1].Enabled = 0;
  store.Ports.Slot[1].Ports[1].Include = kFalse;
  store.Ports.Slot[1].Ports[7].Include = kTrue;  // a port of the multiplexer
  EXPECT_EQ(section("VOLTS"), "");
  EXPECT_EQ(section("CAN"), "");
  EXPECT_EQ(section("PORT SET"), "");
  EXPECT_EQ(rows("THERMO"),  // the panel is still measured
            "                    Panel RefTemp Time =       1,250\r\n"
            "               Total Thermocouple Time =       1,250");
  store.Config.PanelTime = 0;
  EXPECT_EQ(section("THERMO"), "");
  store.Can.Item[1].Enabled = -1;
  EXPECT_NE(section("CAN"), "");
  store.Can.Module[1].CanBusEnabled = 0;
  EXPECT_EQ(section("CAN"), "");
  store.Can.Module[1].CanBusEnabled = 1;
  store.Config.CanBusQty = 0;
  EXPECT_EQ(section("CAN"), "");
}

TEST_F(Summary, BothSlotsOfPulsesOutputsAndPorts) {
  for (PulseBlockGroup& group : store.PulseBlock) group.BlockCount = 1;
  store.PulseBlock[0][1].Meas = "Swtch";
  store.PulseBlock[0][1].Opt = 0;
  store.PulseBlock[1][1].Reps = 2;
  store.PulseBlock[1][1].Meas = "LoLev";
  store.PulseBlock[1][1].Opt = 1000;
  store.PulseBlock[1][1].BlockTime = 250;
  for (auto& slot : store.ExciteOut.Slot) slot[2].Include = kTrue;
  for (PortSlot& slot : store.Ports.Slot) {
    slot.Ports[kPorts].Include = kTrue;
    slot.ReadMode = -1;
    slot.ByteMode = 0;
    slot.BinaryMask[2] = "00000001";
    slot.Ports[8].Include = kTrue;
  }
  store.Ports.Slot[1].Ports[8].Polarity = kFalse;
  EXPECT_EQ(rows("PULSES"),
            " 1 Block...   0 Swtch Totl     1.0e0   0.0e0    ....\r\n"
            " 1 Block...   2 LoLev Freq     1.0e0   0.0e0     250\r\n"
            "                      Total Pulse Time =         250");
  EXPECT_EQ(rows("CAO OUTPUT"),
            " Excite2              0         0               ....\r\n"
            " Excite2              0         0               ....\r\n"
            "                 Total CAO Output Time =           0");
  EXPECT_EQ(section("I/O CONTROL READ MODE"),
            "                Mask   (uSec)\r\n"
            "                                    00000001    ....\r\n"
            "                                    00000001    ....");
  EXPECT_EQ(section("I/O CONTROL WRITE"), "");
  EXPECT_EQ(rows("PORT SET"),
            " Port 8             True     False              ....\r\n"
            " Port 8             False    True               ....\r\n"
            "                       Total Port Time =           0");
}

TEST_F(Summary, AMultiplexerBlockOfThermocouplesTellsTheirType) {
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 25;
  store.TK40MBlock[1].Range = "Auto";
  store.TK40MBlock[1].TypeNo = 3;
  EXPECT_EQ(rows("TK40M"),
            " 1 Block...  25 Auto  Diff  mV      J           ....\r\n"
            "                      Total TK40M Time =           0");
}

// A field without room for its column stands one blank behind the field before it.
TEST_F(Summary, FieldsThatAreTooLongStayApart) {
  store.TempBlock.BlockCount = 1;
  TempBlockData& temp = store.TempBlock[1];
  temp.Reps = -32768;
  temp.Range = "1234567 mV";
  temp.MeasType = "Differential of its own";
  temp.Units = "Degrees_Fahrenheit";
  temp.TypeNo = 7;
  temp.BlockTime = std::numeric_limits<i32>::min();
  store.VoltBlock.BlockCount = 1;
  VoltBlockData& volt = store.VoltBlock[1];
  volt.Range = "";
  volt.MeasType = "";
  volt.DefaultMult = -3.4E+38F;
  volt.DefaultOffset = -1.25E-38F;
  volt.BlockTime = kMost;
  store.BridgeBlock.BlockCount = 1;
  BridgeBlockData& bridge = store.BridgeBlock[1];
  bridge.Excite = -2500.125F;
  bridge.DefaultMult = 1E+10F;
  bridge.DefaultOffset = -9.96E-10F;
  store.PulseBlock[0].BlockCount = 1;
  store.PulseBlock[0][1].Meas = "HiLevel";
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = kTrue;
  store.Can.CanCount = kCanItems;
  for (CanItemData& item : store.Can.Item) item.Enabled = 0;
  store.Can.Item[kCanItems].Enabled = 1;
  store.Can.Item[kCanItems].Reps = 64;
  store.Can.Item[kCanItems].DataId = "&H1FFFFFFFF";
  store.ExciteOut.Slot[0][1].Include = kTrue;
  store.ExciteOut.Slot[0][1].State2 = -32768;
  store.Ports.Slot[0].Ports[kPorts].Include = kTrue;
  store.Ports.Slot[0].BinaryMask[0] = "0000000000000000000000000001";
  EXPECT_EQ(rows("THERMO"),
            " 1 Block... -32768 1234567 Differential Degrees_Fahrenheit N -2,147,483,648\r\n"
            "                    Panel RefTemp Time =           0\r\n"
            "               Total Thermocouple Time = -2,147,483,648");
  EXPECT_EQ(rows("VOLTS"),
            " 1 Block...   0            -3.4e38 -1.3e-38 2,147,483,647\r\n"
            "                    Total Voltage Time = 2,147,483,647");
  const auto first = [](const std::string& text) { return std::string(Before(text, "\r\n")); };
  EXPECT_EQ(first(rows("BRIDGES")), " 1 Block...   0  200 -2500.125 1.0e10 -1.0e-9   ....");
  EXPECT_EQ(first(rows("PULSES")), " 1 Block...   0 HiLevel Freq   1.0e0   0.0e0    ....");
  EXPECT_EQ(first(rows("CAN")), " 128 Block... 64 &H1FFFFFFFF 1.0e0   0.0e0      ....");
  EXPECT_EQ(first(rows("CAO OUTPUT")), " Excite1              0    -32768               ....");
  EXPECT_EQ(first(rows("I/O CONTROL WRITE")),
            " 0000000000000000000000000001 00000000 00000000 ....");
  EXPECT_EQ(store.EstMeasTime, -1);
}

TEST_F(Summary, AFailureIsReportedAndTheBoxKeepsWhatStands) {
  makePump(store);
  store.EstMeasTime = 5;
  const std::string whole = summarize();
  store.VoltBlock.BlockCount = kBlocks + 1;
  store.EstMeasTime = 5;
  forms.ExpectBoxWith("TROUBLE",
                      "Unexpected error 9, \"Subscript out of range\" has occurred in .Summarize.");
  PlainText box;
  EXPECT_FALSE(Summarize(store, look, box, forms));
  const std::string kept = box.Text();
  EXPECT_EQ(Before(kept, "\r\n 2 Block...   0   50"),
            Before(whole, "\r\n                    Total V"));
  EXPECT_TRUE(kept.ends_with("\r\n 7 Block...   0   50  Diff   1.0e0   0.0e0      ....\r\n"));
  EXPECT_EQ(store.EstMeasTime, 5);
}

// What a word processor would show of a document in RTF: the letters, each with its colour and
// whether it is underlined.
struct Shown {
  std::string text;
  std::string underlined;  // "_" for each letter that is
  std::vector<int> colours;
};

Shown readRtf(std::string_view rtf) {
  Shown shown;
  bool underline = false;
  int colour = 0;
  const auto letter = [&](char c) {
    shown.text += c;
    shown.underlined += underline ? '_' : ' ';
    shown.colours.push_back(colour);
  };
  rtf = After(rtf, "\\fs20");
  while (!rtf.empty() && rtf.front() != '}') {
    const char c = rtf.front();
    rtf.remove_prefix(1);
    if (c != '\\') {
      if (c != '\r' && c != '\n') letter(c);
      continue;
    }
    if (rtf.front() == '\'') {
      letter(static_cast<char>(std::stoi(std::string(rtf.substr(1, 2)), nullptr, 16)));
      rtf.remove_prefix(3);
      continue;
    }
    const std::string word(
        rtf.substr(0, rtf.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789")));
    if (word.empty()) {
      letter(rtf.front());
      rtf.remove_prefix(1);
      continue;
    }
    rtf.remove_prefix(word.size());
    if (rtf.front() == ' ') rtf.remove_prefix(1);
    if (word == "par") shown.text += "\r\n";
    if (word == "tab") letter('\t');
    if (word == "ul") underline = true;
    if (word == "ulnone") underline = false;
    if (word.starts_with("cf")) colour = std::stoi(word.substr(2));
  }
  return shown;
}

TEST_F(Summary, HeadingsAreUnderlinedAndColoured) {
  makePump(store);
  look.projectName = "B\xFChler {1}";
  RtfText box;
  EXPECT_TRUE(Summarize(store, look, box, forms));
  const std::string rtf = box.Rtf();
  EXPECT_TRUE(Holds(rtf, "{\\colortbl ;\\red0\\green0\\blue255;}"));
  EXPECT_TRUE(Holds(rtf, "\\f0\\fs20\r\n Program Name: B\\'dcHLER \\{1\\}\\par\r\n QUILLON"));
  EXPECT_TRUE(Holds(rtf,
                    "\\par\r\n\\par\r\n\\cf1 \\ul  VOLTS     Reps  Rng  Meas   Mult   Offset    "
                    "(uSec)\\par\r\n\\cf0 \\ulnone  1 Block...   3 5000  SE"));
  const Shown shown = readRtf(rtf);
  EXPECT_EQ(shown.text, summarize());
  std::string headings;
  std::string letters;
  for (const std::string_view line : Split(shown.text, '\n')) letters += Before(line, "\r");
  for (std::size_t at = 0; at < letters.size(); ++at) {
    EXPECT_EQ(shown.colours[at], shown.underlined[at] == '_' ? 1 : 0) << at;
    if (shown.underlined[at] == '_') headings += letters[at];
  }
  EXPECT_EQ(headings,
            " THERMO    Reps  Rng  Meas   Unit Type        (uSec)"
            " VOLTS     Reps  Rng  Meas   Mult   Offset    (uSec)"
            " BRIDGES   Reps  Rng  Ex mv   Mult   Offset   (uSec)"
            " PULSES    Reps Type  Option   Mult   Offset  (uSec)"
            " TK40M     Reps  Rng  Meas   Unit Type        (uSec)"
            " CAN       Reps  Data ID     Mult   Offset    (uSec)"
            " CAO OUTPUT     State 1   State 2             (uSec)"
            " I/O CONTROL WRITE  State1   State2    Mask   (uSec)"
            " PORT SET           State1   State2           (uSec)"
            " FLAGS          State 1   State 2            (uSec)");
}

// Number of rows with that many fields in a section; a row with any other number fails.
int rowsOf(const std::string& section, std::size_t fields) {
  int count = 0;
  if (section.empty()) return 0;
  const std::string body(After(section, "\r\n"));
  for (const std::string_view line : Split(body, '\n')) {
    if (Holds(line, "Time =")) continue;
    std::size_t found = 0;
    for (const std::string_view word : Split(Before(line, "\r"), ' '))
      found += word.empty() ? 0 : 1;
    EXPECT_EQ(found, fields) << line;
    ++count;
  }
  return count;
}

TEST_F(Summary, EveryRowOfAnyProjectHasAllItsFields) {
  for (std::uint32_t seed = 0; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    if (seed == 0) {
      testing::MakeLargestProject(store);
    } else {
      testing::MakeRandomProject(store, seed);
    }
    const std::string text = summarize();
    EXPECT_EQ(rowsOf(sectionOf(text, "VOLTS"), 8), store.VoltBlock.BlockCount);
    EXPECT_EQ(rowsOf(sectionOf(text, "BRIDGES"), 8), store.BridgeBlock.BlockCount);
    EXPECT_EQ(rowsOf(sectionOf(text, "PULSES"), 8), store.PulseBlock[0].BlockCount);
    EXPECT_EQ(rowsOf(sectionOf(text, "FLAGS"), 4),
              std::count_if(store.Flags.begin(), store.Flags.end(),
                            [](const FlagControl& flag) { return flag.FlagInclude != 0; }));
    // Behind the head of the times, each line reaches their column, and none ends in a blank.
    const std::string times(After(text, "(uSec)\r\n"));
    for (const std::string_view part : Split(times, '\n')) {
      const std::string_view line = Before(part, "\r");
      EXPECT_TRUE(line.empty() || line.size() >= 51) << line;
      EXPECT_FALSE(line.ends_with(' ')) << line;
    }
  }
}

}  // namespace
}  // namespace ostrand
