#include "documents/table_description.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <vector>

#include "generator/savedld.h"
#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "programcheck/program_project.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_random.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

const DocumentHead kHead = {"PUMP", {2025, 11, 24, 9, 30, 0}};

std::string withLineEnds(std::string_view text) {
  std::string lines;
  for (const char c : text) lines += c == '\n' ? "\r\n" : std::string(1, c);
  return lines;
}

class TableDescription : public ::testing::Test {
 protected:
  TableDescription() {
    ORVUS_COMMON::SetAllDefaults(store);
    store.Gen.IDNumber = "Rig 7";
  }

  void select(OutputSet& output, int code, int t = 1) { output.OutputSelect[t][code] = 1; }

  [[nodiscard]] std::string text() const { return TableDescriptionText(store, kHead); }

  // The lines of table 1 between its heading and its end.
  [[nodiscard]] std::string fields() const {
    const std::string made = text();
    const std::size_t start = made.find("UNITS-------\r\n") + 14;
    return made.substr(start, made.find("- End Table 1 -") - start);
  }

  [[nodiscard]] std::string line(std::string_view label) const {
    const std::string made = text();
    const std::size_t start = made.find(label);
    if (start == std::string::npos) return "";
    return made.substr(start + label.size(), made.find("\r\n", start) - start - label.size());
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

// The description of a project with a table of a few blocks.
constexpr std::string_view kPump =
    R"(
File name   : PUMP.VKD                                 Date written: 11-24-2025
Written by  : Name                                     Time written: 09:30:00
I.D. number : Rig 7                                     QUILLON Vers: 6.1.0.07

==================================================================================
TABLE #1      = Table1
Location      = SRAM in CPU
Interval      = 10 (mSec) Synchronous
Buffer Size   = 1,000 Records
Time to Fill  = 0 Days, 0 Hours, 0 Mins, 10.00000 Secs
Record Size   = 56 Bytes
Fill and Stop = False
Sync Table    = True
Control Flag  = None
Mark Flag     = Flag(3)
Full Flag     = None

FIELD NO--------RES----MEAS------FIELD------------ALIAS---------------UNITS-------
-- Logger Volts ------------------------------------------------------------------
001.            FP2    Sample  - BattVolt         -----------         Volts
-- Thermocouple Block 1 ----------------------------------------------------------
002.            FP2    Sample  - TBlk1(1)         Exhaust             Deg_F
003.            FP2    Sample  - TBlk1(2)         Intake              Deg_F
004.            FP2    Average - TBlk1(1)_Avg     Exhaust             Deg_F
005.            FP2    Average - TBlk1(2)_Avg     Intake              Deg_F
-- Bridge Block 1 ----------------------------------------------------------------
006.            IEEE4  Maximum - BBlk1(1)_Max     Load                mVoltPVolt
007.            IEEE4  Histgrm - BBlk1(1)_Hst(10) Load                mVoltPVolt
-- Calculated Field --------------------------------------------------------------
017.            FP2    Sample  - Power            -----------         --------
- End Table 1 --------------------------------------------------------------------
)";

void fillPump(ProjectStore& store) {
  store.Tables[1].TableOn = kTrue;
  store.Tables[1].SyncTable = kTrue;
  store.Tables[1].FlagMark = 3;
  store.Config.MonitorPower[kMonitorBattery] = kTrue;
  store.PowerOut.Output.OutputSelect[1][kSample] = 1;
  TempBlockData& temp = store.TempBlock[1];
  store.TempBlock.BlockCount = 1;
  temp.Reps = 2;
  temp.Alias[1].AliasName = "Exhaust";
  temp.Alias[2].AliasName = "Intake";
  temp.Output.OutputSelect[1][kSample] = temp.Output.OutputSelect[1][kAverage] = 1;
  BridgeBlockData& bridge = store.BridgeBlock[1];
  store.BridgeBlock.BlockCount = 1;
  bridge.Reps = 1;
  bridge.Alias[1].AliasName = "Load";
  bridge.Output.OutputSelect[1][kMaximum] = bridge.Output.OutputSelect[1][kHistogram] = 1;
  bridge.Output.Histo[1].HistogramCode = "10,000,1,0,50";
  store.CalcFields.CalcFieldCount = 1;
  store.CalcFields.Field[1].CalcField[1] = "Power";
  store.CalcFields.Field[1].Output.OutputSelect[1][kSample] = 1;
}

TEST_F(TableDescription, IsDrawnLineByLine) {
  fillPump(store);
  EXPECT_EQ(text(), withLineEnds(kPump));
}

TEST_F(TableDescription, OfATableWithoutOutputsHasHeadingAndEndOnly) {
  store.Tables[3].TableOn = kTrue;
  store.Tables[3].TableName = "Idle";
  store.Tables[3].TableLocation = 2;
  store.Tables[3].AutoSize = kTrue;
  store.Tables[3].FillStop = kTrue;
  store.Tables[3].FlagTable = 8;
  store.Tables[3].FlagFull = 1;
  store.Tables[3].OutInt = 15;
  store.Tables[3].OutIntUnits = ORVUS_TBLTIME_MINS;
  store.TempBlock.BlockCount = 1;
  store.TempBlock[1].Reps = 1;
  select(store.TempBlock[1].Output, kSample, 1);  // of a table that is off
  const std::string made = text();
  EXPECT_EQ(made.substr(made.find("\r\n\r\n") + 2), withLineEnds(R"(
==================================================================================
TABLE #3      = Idle
Location      = PC Card 
Interval      = 15 Min
Buffer Size   = Auto Size
Record Size   = 0 Bytes
Fill and Stop = True
Sync Table    = False
Control Flag  = Flag(8)
Mark Flag     = None
Full Flag     = Flag(1)

FIELD NO--------RES----MEAS------FIELD------------ALIAS---------------UNITS-------
- End Table 3 --------------------------------------------------------------------
)"));
}

TEST_F(TableDescription, TellsIntervalAndTimeToFill) {
  const struct {
    float scan;
    i16 scanUnits;
    flag sync;
    i32 interval;
    i16 units;
    i32 buffer;
    const char *shown, *size, *fill;
  } cases[] = {
      {10, 1, 0, 10, 1, 1000, "10 mSec", "1,000 Records", "0 Days, 0 Hours, 0 Mins, 10.00000 Secs"},
      {0.1F, 2, kTrue, 10, 1, 3, "0.1 (Sec) Synchronous", "3 Records",
       "0 Days, 0 Hours, 0 Mins, 0.30000 Secs"},
      {10, 7, kTrue, 10, 1, 3, "10 Synchronous", "3 Records",
       "0 Days, 0 Hours, 0 Mins, 0.00000 Secs"},
      {10, 1, 0, 5, 6, 1234567, "5", "1,234,567 Records", "0 Days, 0 Hours, 0 Mins, 0.00000 Secs"},
      {10, 1, 0, 0, 2, 100000, "0 Sec", "100,000 Records",
       "1 Days, 3 Hours, 46 Mins, 40.00000 Secs"},
      {10, 1, 0, 7, 0, 1, "7 uSec", "1 Records", "0 Days, 0 Hours, 0 Mins, 0.00007 Secs"},
      {10, 1, 0, 1, 4, 25, "1 Hour", "25 Records", "1 Days, 1 Hours, 0 Mins, 0.00000 Secs"},
      {10, 1, 0, 1, 5, 2147483647, "1 Day", "2,147,483,647 Records",
       "2147483647 Days, 0 Hours, 0 Mins, 0.00000 Secs"},
      {59.999996F, 2, kTrue, 1, 1, 1, "59.999996 (Sec) Synchronous", "1 Records",
       "0 Days, 0 Hours, 1 Mins, 0.00000 Secs"},
      {1.5F, 2, kTrue, 1, 1, -3, "1.5 (Sec) Synchronous", "-3 Records",
       "0 Days, 0 Hours, 0 Mins, -4.50000 Secs"},
  };
  store.Tables[1].TableOn = kTrue;
  for (const auto& c : cases) {
    store.Scan.ExecutionTime = c.scan;
    store.Scan.ExecTimeUnits = c.scanUnits;
    OutputTable& table = store.Tables[1];
    table.SyncTable = c.sync;
    table.OutInt = c.interval;
    table.OutIntUnits = c.units;
    table.Buffer = c.buffer;
    EXPECT_EQ(line("Interval      = "), c.shown);
    EXPECT_EQ(line("Buffer Size   = "), c.size);
    EXPECT_EQ(line("Time to Fill  = "), c.fill);
  }
}

TEST_F(TableDescription, NamesTheValuesOfEveryFamily) {
  store.Tables[1].TableOn = kTrue;
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorBattery] = config.MonitorPower[kMonitorPanel] = kTrue;
  select(store.PowerOut.Output, kRainFlow);
  store.PowerOut.Output.Histo[1].RainHistoCode = "2, 3,0,0,9";
  select(store.TcRef.Output, kMinimum);
  config.TK40MQty = 2;
  config.TcConfigOpts[1] = 1;
  select(store.TK40MRef.Output, kStdDev);
  select(store.TK40MRef.Output, kHistogram);
  store.TK40MRef.Output.Histo[1].HistogramCode = "4";
  store.VoltBlock.BlockCount = 2;
  VoltBlockData& volt = store.VoltBlock[2];
  volt.Reps = 2;
  volt.Alias[1] = {"A name that runs past the units", "bar", "", "", "0"};
  volt.Units = "";
  select(volt.Output, kLevelCrossing);
  volt.Output.Histo[1].LevelCode = "3,2,0,0.5";
  volt.Output.Histo[1].NumDims = 1;
  for (int slot = 0; slot <= 1; ++slot) {
    store.PulseBlock[slot].BlockCount = 1;
    store.PulseBlock[slot][1].Reps = 1;
    select(store.PulseBlock[slot][1].Output, kSample);
  }
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 1;
  store.TK40MBlock[1].DataResolution = "An odd one";
  select(store.TK40MBlock[1].Output, kSample);
  config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = 2;
  for (int i = 1; i <= 2; ++i) {
    CanItemData& item = store.Can.Item[i];
    item.Name = i == 1 ? "EngineSpeedOfTheFront" : "Gear";
    item.Reps = 2;
    item.Units = "rpm";
    item.Output.Histo[1].LevelCode = "3,2,0,0.5";  // of one dimension, so it has a second size of 1
    select(item.Output, i == 1 ? kSample : kLevelCrossing);
  }
  store.Ports.Slot[0].Ports[9].Include = kTrue;
  select(store.Ports.Slot[0].Output, kHistogram);
  store.Ports.Slot[0].Output.Histo[1].HistogramCode = "5,0";
  store.Ports.Slot[1].ReadMode = 1;
  select(store.Ports.Slot[1].Output, kSample);
  select(store.Ports.Slot[1].Output, kHistogram);  // it has no histogram
  store.CalcFields.CalcFieldCount = 2;
  store.CalcFields.Field[2].CalcField[1] = "Power";
  store.CalcFields.Field[2].CalcField[3] = "kW";
  select(store.CalcFields.Field[2].Output, kAverage);
  select(store.CalcFields.Field[2].Output, kLevelCrossing);
  store.CalcFields.Field[2].Output.Histo[1].LevelCode = "2,2,0,1";
  store.CalcFields.Field[2].Output.Histo[1].NumDims = 1;
  EXPECT_EQ(
      fields(),
      withLineEnds(
          R"(-- Logger Volts ------------------------------------------------------------------
001.            FP2    Rainflo - BattVolt_RFH(2,3) -----------        Volts
-- Panel Ref Temp ----------------------------------------------------------------
007.            FP2    Minimum - TRef_Min         -----------         Deg_C
-- TK40M Reference ---------------------------------------------------------------
008.            FP2    Std Dev - TK40MRef(1)_Std  -----------         Deg_C
009.            FP2    Std Dev - TK40MRef(2)_Std  -----------         Deg_C
010.            FP2    Histgrm - TK40MRef_Hst(4)  -----------         Deg_C
-- Voltage Block 2 ---------------------------------------------------------------
014.            FP2    LevelCr - VBlk2(1)_LCr(3,2) A name that runs past the units bar
020.            FP2    LevelCr - VBlk2(2)_LCr(3,2) -----------        --------
-- Pulse Block 1 -----------------------------------------------------------------
026.            IEEE4  Sample  - PBlk1(1)         -----------         Hz
-- Pulse Block 1 -----------------------------------------------------------------
027.            IEEE4  Sample  - PBlk1(1)         -----------         Hz
-- TK40M Block 1 -----------------------------------------------------------------
028.            An odd one Sample  - ABlk1(1)     -----------         Deg_F
-- CANBus Item -------------------------------------------------------------------
029.            IEEE4  Sample  - EngineSpeedOfTheFront(1) ----------- rpm
030.            IEEE4  Sample  - EngineSpeedOfTheFront(2) ----------- rpm
031.            IEEE4  LevelCr - Gear(1)_LCr(3,1) -----------         rpm
-- Ports -------------------------------------------------------------------------
034.            IEEE4  Histgrm - WritPort_Hst(5)  -----------         --------
039.            IEEE4  Sample  - ReadPort         -----------         --------
-- Calculated Field --------------------------------------------------------------
040.            FP2    Average - Power_Avg        -----------         kW
041.            FP2    LevelCr - LCCalc2_1_LCr(2,2) -----------       kW
)"));
}

TEST_F(TableDescription, NumbersPastAThousandColumns) {
  store.Tables[1].TableOn = kTrue;
  store.TempBlock.BlockCount = 1;
  store.TempBlock[1].Reps = 3;
  select(store.TempBlock[1].Output, kHistogram);
  store.TempBlock[1].Output.Histo[1].HistogramCode = "600,000,1,0,50";
  const std::string made = fields();
  EXPECT_TRUE(Holds(made, "\r\n1201.           FP2    Histgrm - TBlk1(3)_Hst(600)")) << made;
}

// What a description and a program say about the stored columns of a table.
struct Column {
  std::string meas;
  std::string source;  // empty where the two name it each in their own way
  std::string resolution;
  std::int64_t first;

  bool operator==(const Column&) const = default;
};
using Tables = std::vector<std::vector<Column>>;

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  for (std::string_view line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
  }
  return lines;
}

// Reads the data tables of a program column by column.
class ProgramColumns {
 public:
  explicit ProgramColumns(std::string_view program) {
    for (const std::string& line : linesOf(program)) read(line);
  }
  [[nodiscard]] const Tables& All() const { return tables_; }

 private:
  static constexpr std::array<std::string_view, kOutputCodes> kInstructions = {
      "Sample ", "Maximum",   "Minimum",  "Average",
      "StdDev ", "Histogram", "RainFlow", "LevelCrossing"};

  // The arguments of a call, up to the parenthesis that closes it.
  static std::vector<std::string> argumentsOf(std::string_view call) {
    std::vector<std::string> arguments(1);
    int depth = 0;
    for (const char c : call.substr(call.find('(') + 1)) {
      if (c == ')' && depth-- == 0) break;
      if (c == '(') ++depth;
      if (c == ',' && depth == 0) {
        arguments.emplace_back();
      } else {
        arguments.back() += c;
      }
    }
    return arguments;
  }

  void read(const std::string& line) {
    if (line.starts_with("Const ")) {
      const std::string_view rest = std::string_view(line).substr(6);
      constants_[std::string(Trim(Before(rest, "=")))] = static_cast<int>(Val(After(rest, "=")));
    }
    if (line.starts_with("   DataInterval(")) {  // the project's own tables have one
      tables_.emplace_back();
      column_ = 1;
      open_ = true;
    }
    if (line.starts_with("EndTable")) open_ = false;
    if (!open_) return;
    for (int code = kSample; code <= kLevelCrossing; ++code) {
      const std::string_view name = kInstructions[static_cast<std::size_t>(code)];
      if (!line.starts_with("   " + std::string(name) + "(")) continue;
      store(code, argumentsOf(line), static_cast<int>(Val(After(line, "'"))));
    }
  }

  // `told` is the count in the comment, which stands in for a constant that a CAN item of another
  // mark than 1 has not declared.
  void store(int code, const std::vector<std::string>& arguments, int told) {
    static constexpr std::array<std::string_view, kOutputCodes> kMeas = {
        "Sample ", "Maximum", "Minimum", "Average", "Std Dev", "Histgrm", "Rainflo", "LevelCr"};
    static constexpr std::array<std::string_view, kHistogram> kSuffix = {"", "_Max", "_Min", "_Avg",
                                                                         "_Std"};
    const std::string meas(kMeas[static_cast<std::size_t>(code)]);
    const auto number = [&](std::size_t at) {
      return at < arguments.size() ? Val(arguments[at]) : 0;
    };
    if (code < kHistogram) {
      const auto known = constants_.find(arguments[0]);
      const int reps = known != constants_.end() ? known->second : told;
      const std::string name(Before(arguments[1], "("));
      for (int i = 1; i <= reps; ++i) {
        std::string source;
        if (name != "TK40Ref") {
          source = name + (name == arguments[1] ? "" : "(" + NumberText(i) + ")") +
                   std::string(kSuffix[static_cast<std::size_t>(code)]);
        }
        tables_.back().push_back({meas, source, arguments[2], column_++});
      }
      return;
    }
    // Value, resolution, switch, then the sizes; a rainflow or level crossing has more behind two.
    const bool flat = code == kHistogram;
    const double columns = flat ? number(3) : arguments.size() > 5 ? number(3) * number(4) : 0;
    tables_.back().push_back({meas, "", arguments[1], column_});
    column_ += static_cast<std::int64_t>(columns);
  }

  std::map<std::string, int> constants_;
  Tables tables_;
  std::int64_t column_ = 1;
  bool open_ = false;
};

Tables describedColumns(std::string_view description) {
  Tables tables;
  for (const std::string& line : linesOf(description)) {
    if (line.starts_with("FIELD NO")) tables.emplace_back();
    if (line.empty() || line[0] < '0' || line[0] > '9') continue;
    const std::string meas = line.substr(23, 7);
    std::string source(Before(std::string_view(line).substr(33), " "));
    const bool shaped = meas == "Histgrm" || meas == "Rainflo" || meas == "LevelCr";
    if (shaped || source.starts_with("TK40MRef")) source.clear();
    tables.back().push_back({meas, source,
                             std::string(Before(std::string_view(line).substr(16), " ")),
                             static_cast<std::int64_t>(Val(Before(line, ".")))});
  }
  return tables;
}

class DescriptionAndProgram : public ::testing::Test {
 protected:
  // The description numbers the columns that the program of the same project stores. It is the
  // same before the program is made and after.
  void expectSameColumns() {
    const std::string description = TableDescriptionText(*store, kHead);
    SAVEDLD generator(*store, files, clock, forms);
    const ProgramColumns program(generator.ProgramText());
    if (!forms.shown.empty()) return;  // too long a program: it is cut short
    ++whole;
    const Tables described = describedColumns(description);
    ASSERT_EQ(described.size(), program.All().size());
    for (std::size_t t = 0; t < described.size(); ++t) {
      const auto& left = described[t];
      const auto& right = program.All()[t];
      columns += left.size();
      ASSERT_EQ(left.size(), right.size()) << "table " << t;
      for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(left[i], right[i]) << left[i].first << " " << left[i].source << " "
                                     << right[i].first << " " << right[i].source;
      }
    }
    EXPECT_TRUE(TableDescriptionText(*store, kHead) == description);
  }

  std::unique_ptr<ProjectStore> store = NewStore();
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms forms;
  int whole = 0;
  std::size_t columns = 0;
};

TEST_F(DescriptionAndProgram, CountTheSameColumnsInTheExamples) {
  for (const char* example : {"engine-test-cell", "building-climate", "bridge-monitoring",
                              "weather-mast", "vehicle-test", "thermal-survey"}) {
    SCOPED_TRACE(example);
    ORVUS_COMMON::ClearStore(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
    ORVUS_GENFILE::ReadProjectText(
        *store, testing::ReadDisk(std::string(OSTRAND_SOURCE_DIR "/examples/") + example + ".VKG"));
    expectSameColumns();
  }
  EXPECT_EQ(whole, 6);
  EXPECT_GT(columns, 100U);
}

TEST_F(DescriptionAndProgram, CountTheSameColumnsInRandomProjects) {
  forms.CollectBoxes();
  for (std::uint32_t seed = 1; seed <= 120 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    forms.shown.clear();
    testing::MakeProgramProject(*store, seed);
    // Level crossings over a second dimension, and without one though the code tells a size.
    for (auto& block : store->VoltBlock.Blocks) {
      for (HistoSet& histo : block.Output.Histo) {
        if (!histo.LevelCode.empty()) histo.LevelCode = "4,3,0,0.5";
      }
    }
    expectSameColumns();
  }
  EXPECT_GT(whole, 100);
  EXPECT_GT(columns, 20'000U);
}

TEST_F(TableDescription, OfTheLargestProjectNeedsNoMoreThanItsFields) {
  testing::MakeLargestProject(store);
  const std::string made = text();
  EXPECT_EQ(std::count(made.begin(), made.end(), '\n'), std::count(made.begin(), made.end(), '\r'));
  EXPECT_TRUE(made.ends_with("- End Table 6 -" + std::string(67, '-') + "\r\n"));
}

TEST_F(TableDescription, IsWrittenWholeOrNotAtAll) {
  fillPump(store);
  testing::MemoryFileSystem disk;
  testing::ScriptedForms forms;
  const std::string old = "an old description\r\n";
  disk.files["/out/PUMP.VKD"] = old;
  EXPECT_TRUE(WriteTableDescription(disk, forms, "/out/PUMP", store, kHead));
  EXPECT_EQ(disk.files["/out/PUMP.VKD"], withLineEnds(kPump));

  disk.files["/out/PUMP.VKD"] = old;
  forms.ExpectBox("FILE PROBLEM",
                  "Permission denied to save /out/PUMP.VKD\r\n"
                  "It probably already exists and is set for \"Read Only\".  ");
  testing::FaultyFileSystem full(disk, 1, true);
  EXPECT_FALSE(WriteTableDescription(full, forms, "/out/PUMP", store, kHead));
  EXPECT_EQ(disk.files["/out/PUMP.VKD"], old);
  EXPECT_EQ(disk.files.size(), 1U);
}

}  // namespace
}  // namespace ostrand
