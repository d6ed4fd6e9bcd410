// Parameters of histogram, rainflow and level crossing: what the screens store, and that program,
// record size and table description agree on it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "documents/table_description.h"
#include "generator/savedld.h"
#include "model/output_table.h"
#include "model/record_layout.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "support/table_screens_fixture.h"
#include "tables/frm_histogram.h"
#include "tables/frm_level.h"
#include "tables/frm_rain_histo.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

class HistoScreens : public testing::TableScreens {
 protected:
  HistoScreens() {
    store->Scan.ExecutionTime = 10;
    store->Scan.ExecTimeUnits = 1;
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].Reps = 2;
    for (int t = 1; t <= 2; ++t) {
      store->Tables[t].TableOn = kTrue;
      store->Tables[t].OutInt = 1;
      store->Tables[t].OutIntUnits = 2;
    }
  }

  HistoSet& histo(int t = 1) { return store->VoltBlock[1].Output.Histo[t]; }

  static void fill(Screen& screen,
                   std::initializer_list<std::pair<std::string_view, std::string_view>> fields) {
    for (const auto& [name, keys] : fields) type(screen, name, keys);
    screen.Done();
    EXPECT_EQ(screen.Result(), ModalResult::kDone) << screen.Name();
  }
  static void add(Screen& screen, std::string_view list, std::string_view value) {
    type(screen, "LevelVar" + std::string(list), value);
    press(screen, "Add" + std::string(list));
  }
};

TEST_F(HistoScreens, ViewedParametersStayAsWritten) {
  histo().HistogramCode = "20,000,1,-150,200";
  histo().RainHistoCode = "5,10,0,0,40";
  frmHistogram histogram(context, {histo(), 1, "FP2"});
  const std::pair<std::string_view, std::string_view> fields[] = {
      {"LowerLimit", "-150"}, {"UpperLimit", "200"}, {"Form", "0"}, {"Weight", "1"}};
  for (const auto& [name, text] : fields) EXPECT_EQ(shown(histogram, name), text) << name;
  histogram.Done();
  EXPECT_EQ(histo().HistogramCode, "20,000,1,-150,200");
  frmRainHisto rain(context, {histo(), 1, "FP2"});
  EXPECT_EQ(shown(rain, "UpperLimit"), "40");
  rain.Done();
  EXPECT_EQ(histo().RainHistoCode, "5,10,0,0,40");
  frmHistogram again(context, {histo(), 1, "FP2"});
  type(again, "Bins", "25");
  again.Done();
  EXPECT_EQ(histo().HistogramCode, "25,-150,200,0,1");

  for (const std::string_view bad : {"", "5", "a,b,c,d,e", "1,2,3,4,5,6", ",,,,"}) {
    histo().HistogramCode = bad;
    frmHistogram screen(context, {histo(), 1, "FP2"});
    EXPECT_EQ(shown(screen, "Bins"), "0") << bad;
    screen.Cancel();
    EXPECT_TRUE(screen.UserCancelled);
    EXPECT_EQ(histo().HistogramCode, bad);
  }

  histo().LevelCode = "4,3,0,0.5";
  histo().NumDims = 1;
  histo().LevelMeasName = "Flag(1)";
  histo().LevelMeas = 7;
  histo().LevNumLevels = histo().LevNumTests = 2;
  histo().LevelVarOne[1] = histo().LevelVarTwo[1] = 1;
  frmLevel level(context, {histo(), 1, "FP2", "VBlk1"});
  EXPECT_EQ(shown(level, "LevelMeas"), "Flag(1)");
  level.Done();
  EXPECT_EQ(histo().LevelCode, "4,3,0,0.5");
  EXPECT_EQ(histo().LevelMeas, 7);
}

TEST_F(HistoScreens, LevelsAreUniqueAndAtMost40) {
  frmLevel screen(context, {histo(), 1, "FP2", "VBlk1"});
  for (const std::string_view value : {"5", "-1", "0.5", "5", "0.50"}) add(screen, "One", value);
  EXPECT_EQ(forms.beeps, 2) << "a value that is there already";
  for (int value = 6; value <= 43; ++value) add(screen, "One", std::to_string(value));
  EXPECT_EQ(forms.beeps, 3) << "the 41st";
  screen.Done();
  EXPECT_EQ(histo().LevNumLevels, 40);
  EXPECT_EQ(histo().LevelVarOne[0], -1);
  EXPECT_EQ(histo().LevelVarOne[39], 42);
}

// One line of the table description.
struct Described {
  int number;
  std::string source;
};

std::vector<Described> describedFields(const ProjectStore& store, int t) {
  const std::string text = TableDescriptionText(store, {"RIG", {2025, 11, 24, 9, 30, 0}});
  const std::string end = "- End Table " + std::to_string(t) + " -";
  std::string_view section = std::string_view(text).substr(0, text.find(end));
  section.remove_prefix(section.rfind("UNITS-------\r\n") + 14);
  std::vector<Described> fields;
  while (!section.empty()) {
    const std::string_view line = TakeLine(section);
    if (Val(line) < 1) continue;
    fields.push_back({static_cast<int>(Val(line)), std::string(After(line, " - "))});
  }
  return fields;
}

// The last of the three that a source can have.
int lastCodeOf(const OutputSource& source) {
  const bool isSingle =
      source.family == OutputFamily::kBattery || source.family == OutputFamily::kTK40MRef;
  return isSingle ? kRainFlow : kLevelCrossing;
}

// The name of value `i` in instructions, and the array for its level crossing.
std::pair<std::string, std::string> namesOf(const OutputSource& source, int t, int i) {
  const std::string table = std::to_string(t);
  const std::string index = std::to_string(i);
  switch (source.family) {
    case OutputFamily::kBattery:
      return {source.name, ""};
    case OutputFamily::kTK40MRef:
      return {source.name + "()", ""};
    case OutputFamily::kCalcField:
      return {source.name, "LCCalc1_" + table};
    case OutputFamily::kCan:
      return {source.name + "(" + index + ")", "LCRpm" + table};
    default:
      return {source.name + "(" + index + ")", "LC" + source.name + "_" + table + "_" + index};
  }
}

// Every kind of source with all its outputs in two tables, set up through the screens: two
// dimensions in table 1, one in table 2.
TEST_F(HistoScreens, ProgramRecordAndDescriptionAgree) {
  store->TempBlock.BlockCount = store->BridgeBlock.BlockCount = store->PulseBlock[0].BlockCount =
      store->TK40MBlock.BlockCount = store->Can.CanCount = 1;
  store->TempBlock[1].Reps = store->BridgeBlock[1].Reps = store->PulseBlock[0][1].Reps =
      store->Can.Item[1].Reps = 1;
  store->TK40MBlock[1].Reps = 2;
  store->Config.TK40MQty = store->Config.CanBusQty = 1;
  store->Can.Module[1].CanBusEnabled = store->Can.Item[1].Enabled = 1;
  store->Can.Item[1].Name = "Rpm";
  store->Config.MonitorPower[kMonitorBattery] = kTrue;
  store->Config.TcConfigOpts[1] = 1;
  store->CalcFields.CalcFieldCount = 1;
  store->CalcFields.Field[1].CalcField[1] = "Power";
  store->CalcFields.Field[1].CalcField[2] = "VBlk1(1)*2";
  store->CalcFields.Field[1].DataResolution = "FP2";

  const std::array<OutputSet*, 9> outputs = {
      &store->PowerOut.Output,           &store->TK40MRef.Output,
      &store->TempBlock[1].Output,       &store->VoltBlock[1].Output,
      &store->BridgeBlock[1].Output,     &store->PulseBlock[0][1].Output,
      &store->TK40MBlock[1].Output,      &store->Can.Item[1].Output,
      &store->CalcFields.Field[1].Output};
  const std::vector<OutputSource> sources = OutputSourcesOf(*store);
  ASSERT_EQ(sources.size(), outputs.size());
  for (std::size_t at = 0; at < sources.size(); ++at) {
    const OutputSource& source = sources[at];
    OutputSet& output = *outputs[at];
    ASSERT_EQ(source.output, &output) << source.name;
    for (int t = 1; t <= 2; ++t) {
      const HistoTarget target{output.Histo[t], t, source.resolution, LevelStem(source)};
      frmHistogram histogram(context, target);
      fill(histogram,
           {{"Bins", "20"}, {"LowerLimit", "-50"}, {"UpperLimit", "120.5"}, {"Weight", "1"}});
      frmRainHisto rain(context, target);
      fill(rain, {{"MeanBins", "3"}, {"AmpBins", "4"}, {"UpperLimit", "10"}});
      frmLevel level(context, target);
      for (const std::string_view value : {"1", "2", "3"}) add(level, "One", value);
      if (t == 1) {
        pick(level, "NumDims", "Two Dimensions");
        pick(level, "LevelMeas", "Power - CALC FORMULA");
        for (const std::string_view value : {"5", "6"}) add(level, "Two", value);
      }
      fill(level, {});
      for (int code = kHistogram; code <= lastCodeOf(source); ++code) {
        output.OutputSelect[t][code] = 1;
      }
    }
  }

  platform::PosixFileSystem files;
  platform::PosixClock clock;
  const std::string program = SAVEDLD(*store, files, clock, forms).ProgramText();
  const auto expectLine = [&](const std::string& line) {
    EXPECT_NE(program.find("\r\n" + line), std::string::npos) << line;
  };
  for (int t = 1; t <= 2; ++t) {
    const std::vector<Described> described = describedFields(*store, t);
    std::size_t next = 0;
    int number = 1;
    for (const OutputSource& source : sources) {
      const std::string res(source.resolution);
      const std::string array = LevelStem(source) + std::to_string(t);
      if (lastCodeOf(source) == kLevelCrossing) {
        expectLine("Dim " + array + "LC1(3)");
        expectLine("Dim " + array + "LC2(" + (t == 1 ? "2)" : "1)"));
      }
      const std::string dims = t == 1 ? "3,2" : "3,1";
      const struct {
        std::string instruction, parameters, shape;
        int count;
      } shapes[] = {{"Histogram(", ",20,-50,120.5,0,1)", "_Hst(20)", 20},
                    {"RainFlow(", ",3,4,0,10,0)", "_RFH(3,4)", 12},
                    {"LevelCrossing(", "," + dims + "," + array + "LC1()," + array + "LC2())",
                     "_LCr(" + dims + ")", t == 1 ? 6 : 3}};
      for (int code = kHistogram; code <= lastCodeOf(source); ++code) {
        const auto& form = shapes[code - kHistogram];
        const HistoSet& set = source.output->Histo[t];
        EXPECT_EQ(form.count, OutputColumns(*source.output, t, code));
        EXPECT_EQ(form.count, ORVUS_COMMON::OutputFieldCount(1, code, set.HistogramCode,
                                                             set.RainHistoCode, set.LevelCode));
        for (int i = 1; i <= OutputValues(source, code); ++i) {
          const auto [value, places] = namesOf(source, t, i);
          expectLine("   " + form.instruction + (code == kLevelCrossing ? places + "()" : value) +
                     "," + res + ",False" + form.parameters + "\r\n");
          ASSERT_LT(next, described.size()) << source.name;
          EXPECT_TRUE(Holds(described[next].source, form.shape)) << described[next].source;
          EXPECT_EQ(described[next].number, number) << described[next].source;
          ++next;
          number += form.count;
        }
      }
    }
    EXPECT_EQ(next, described.size());
  }
}

}  // namespace
}  // namespace ostrand
