#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <type_traits>

#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "support/project_random.h"
#include "text/number.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};

std::unique_ptr<ProjectStore> reread(const std::string& text) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ReadProjectText(*store, text);
  return store;
}

// Every member of the families and tables as one text, independent of the file's tables.
class Dump {
 public:
  template <class... Members>
  void All(const Members&... members) {
    (one(members), ...);
  }
  std::string text;

 private:
  void one(const std::string& value) { text += value + "|"; }
  template <class T, int First, int Last>
  void one(const Row<T, First, Last>& row) {
    for (const T& item : row) one(item);
  }
  template <class T>
  void one(const T& value) {
    if constexpr (std::is_arithmetic_v<T>) {
      text += NumberText(static_cast<double>(value)) + "|";
    } else {
      record(value);
    }
  }
  void record(const HistoSet& h) {
    All(h.HistogramCode, h.RainHistoCode, h.LevelCode, h.LevelMeas, h.LevelMeasName, h.NumDims,
        h.LevNumLevels, h.LevelVarOne, h.LevNumTests, h.LevelVarTwo);
  }
  void record(const OutputSet& o) { All(o.OutputSelect, o.Histo); }
  void record(const RepAlias& a) {
    All(a.AliasName, a.AliasUnits, a.AliasMult, a.AliasOffset, a.AliasExcept);
  }
  void record(const ReferenceOutput& r) { All(r.DataResolution, r.Public, r.Output); }
  void record(const TriggerCondition& c) {
    All(c.StartMeasVar, c.StartCompare, c.StartTrigVarIdx, c.StartTrigValue, c.StartTrigVarb,
        c.StartTrigIndvExpress);
  }
  void record(const WriteCondition& c) {
    All(c.MeasureVar, c.Compare, c.VarIdx, c.Value, c.Varb, c.Expression);
  }
  void record(const OutputTable& t) {
    All(t.TableOn, t.TableName, t.OutInt, t.OutIntUnits, t.Buffer, t.SyncTable, t.FillStop,
        t.AutoSize, t.TableLocation, t.CalcTime, t.FlagTable, t.FlagMark, t.FlagFull, t.TrigTable,
        t.TrigTabStop, t.SingleTrigger, t.DisableTrigger, t.PreTriggerScans, t.AftTriggerScans,
        t.DataEventCode, t.DataEventCodeStart, t.DataEventCodeStop, t.Trigger, t.WriteIf,
        t.DisableWriteIf, t.Write, t.GroupWriteIf);
  }
  template <class Block>
  void repeated(const Block& b) {
    All(b.Reps, b.DataResolution, b.Public, b.Units, b.DefaultMult, b.DefaultOffset, b.BlockTime,
        b.ZeroFlag, b.CalOnSite, b.Output, b.Alias);
  }
  void analog(const AnalogBlock& b) {
    repeated(b);
    All(b.MeasType, b.Range, b.RangeNo, b.OpenSensDetect, b.IntegrationRange, b.Integration,
        b.ReverseMes, b.SettleTime, b.StartChan);
  }
  void record(const VoltBlockData& b) { analog(b); }
  void record(const TempBlockData& b) { analog(b), All(b.TypeNo); }
  void record(const TK40MBlockData& b) { analog(b), All(b.TypeNo, b.TK40Volts); }
  void record(const BridgeBlockData& b) {
    analog(b);
    All(b.Type, b.ExciteReps, b.Excite, b.Style, b.CheckCAO, b.RevExcite, b.RevOutput, b.GageFactor,
        b.GageCode);
  }
  void record(const PulseBlockData& b) { repeated(b), All(b.Meas, b.Opt); }
  void record(const CanItemData& i) {
    repeated(i);
    All(i.Name, i.DataStyle, i.Enabled, i.StartBit, i.NumBits, i.DataId, i.TxDataId, i.TxDataFrame,
        i.RxDataMatch, i.RxDataMask, i.RxTimeout, i.ItemMessageType, i.Description);
  }
  void record(const CalcFieldData& f) { All(f.DataResolution, f.Public, f.CalcField, f.Output); }
};

std::string dump(const ProjectStore& s) {
  Dump dump;
  dump.All(s.Tables.HDU7, s.Tables.Table, s.PowerOut, s.TK40MRef, s.TcRef);
  dump.All(s.TempBlock.BlockCount, s.TempBlock.SEChannelCount, s.TempBlock.Blocks);
  dump.All(s.VoltBlock.BlockCount, s.VoltBlock.SEChannelCount, s.VoltBlock.Blocks);
  dump.All(s.BridgeBlock.BlockCount, s.BridgeBlock.SEChannelCount, s.BridgeBlock.ExciteSwitched,
           s.BridgeBlock.ExciteCAO, s.BridgeBlock.Blocks);
  dump.All(s.TK40MBlock.BlockCount, s.TK40MBlock.Blocks);
  dump.All(s.PulseBlock[0].BlockCount, s.PulseBlock[0].Blocks, s.PulseBlock[1].BlockCount);
  dump.All(s.Can.CanCount, s.Can.Item, s.CalcFields.CalcFieldCount, s.CalcFields.Field);
  return dump.text;
}

TEST(ProjectRoundTrip, RandomProjectsComeBack) {
  auto store = NewStore();
  for (std::uint32_t seed = 1; seed <= 40; ++seed) {
    testing::MakeRandomProject(*store, seed);
    const std::string text = ProjectFileText(*store, kMoment);
    auto back = reread(text);
    ASSERT_EQ(ProjectFileText(*back, kMoment), text) << seed;
    ASSERT_TRUE(dump(*back) == dump(*store)) << seed;
  }
}

TEST(ProjectRoundTrip, TheLargestProjectComesBack) {
  auto store = NewStore();
  testing::MakeLargestProject(*store);
  auto back = reread(ProjectFileText(*store, kMoment));
  EXPECT_TRUE(dump(*back) == dump(*store));
}

TEST(ProjectRoundTrip, ExtremeNumbersComeBack) {
  auto store = reread("");
  store->Scan.BurstScans = std::numeric_limits<i32>::min();
  store->Scan.FlagScan = std::numeric_limits<i16>::min();
  store->FlowCalc.Pulses = 1.0 / 3;
  for (const float value : {std::numeric_limits<float>::max(), std::numeric_limits<float>::min(),
                            std::numeric_limits<float>::denorm_min(), -1.0F / 3, 16777217.0F}) {
    store->Scan.ExecutionTime = value;
    auto back = reread(ProjectFileText(*store, kMoment));
    EXPECT_EQ(back->Scan.ExecutionTime, value);
    EXPECT_EQ(back->Scan.BurstScans, store->Scan.BurstScans);
    EXPECT_EQ(back->Scan.FlagScan, store->Scan.FlagScan);
    EXPECT_EQ(back->FlowCalc.Pulses, store->FlowCalc.Pulses);
  }
}

// Empty units of a block are not written and come back as the default: the one thing that a second
// save of these files may change.
std::string withoutUnits(const std::string& text) {
  std::string kept;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find("\r\n", at) + 2;
    const std::string_view line(text.data() + at, end - at);
    if (!line.starts_with("Units(") && !line.starts_with("LongUnits(")) kept += line;
    at = end;
  }
  return kept;
}

TEST(ProjectRoundTrip, SampleFilesResaveAlike) {
  const std::filesystem::path folder = OSTRAND_SOURCE_DIR "/../shared/samples";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no sample files here";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".VKG") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::string first = ProjectFileText(*reread(bytes), kMoment);
    const std::string second = ProjectFileText(*reread(first), kMoment);
    EXPECT_EQ(withoutUnits(first), withoutUnits(second)) << entry.path();
    EXPECT_EQ(ProjectFileText(*reread(second), kMoment), second) << entry.path();
  }
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
