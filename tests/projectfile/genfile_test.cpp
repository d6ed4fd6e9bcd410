// Project files on the disk, their lines, and the round trip of a save.
#include "projectfile/genfile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

using Files = std::map<std::string, std::string>;

class ProjectFile : public ::testing::Test {
 protected:
  ProjectFile() { ORVUS_COMMON::SetAllDefaults(*store_); }

  std::string text() { return ProjectFileText(*store_, clock_.Now()); }
  std::unique_ptr<ProjectStore> store_ = NewStore();
  testing::FixedClock clock_;
  testing::MemoryFileSystem files_;
};

TEST_F(ProjectFile, SaveLeavesOnlyTheNewFile) {
  for (const bool hasLinks : {true, false}) {
    files_.hasLinks = hasLinks;
    for (const Files& before :
         {Files{}, Files{{"/p/pump.VKG", "old"}}, Files{{"/p/.pump.VKG.writing", "half"}},
          Files{{"/p/pump.VKG", "old"}, {"/p/pump._KG", "dead"}}, Files{{"/p/PUMP.vkg", "old"}}}) {
      files_.files = before;
      const auto saved = SaveProjectFile(*store_, files_, clock_, "/p/pump");
      ASSERT_TRUE(saved);
      EXPECT_EQ(saved.Value().keptAs, "");
      EXPECT_EQ(saved.Value().file.path, "/p/pump.VKG");
      EXPECT_EQ(files_.files, (Files{{"/p/pump.VKG", text()}}));
    }
  }
}

TEST_F(ProjectFile, SaveThatLeavesTheFileAloneRemovesWhatADeadSaveLeft) {
  struct : testing::MemoryFileSystem {
    bool Stays(const std::string&, std::string_view, bool) override { return true; }
  } disk;
  disk.files = {{"/p/pump.VKG", "old"}, {"/p/pump._KG", "dead"}};
  ASSERT_TRUE(SaveProjectFile(*store_, disk, clock_, "/p/pump"));
  EXPECT_EQ(disk.files, (Files{{"/p/pump.VKG", "old"}}));
}

TEST_F(ProjectFile, SaveKeepsTheOnlyCopyOfADeadSave) {
  files_.files = {{"/p/pump._KG", "only"}, {"/p/pump._KG.1", "other"}};
  const auto saved = SaveProjectFile(*store_, files_, clock_, "/p/pump");
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved.Value().keptAs, "/p/pump._KG.2");
  EXPECT_EQ(
      files_.files,
      (Files{{"/p/pump.VKG", text()}, {"/p/pump._KG.1", "other"}, {"/p/pump._KG.2", "only"}}));
}

// A disk that checks after every call whether the project can be read.
class WatchedDisk : public testing::MemoryFileSystem {
 public:
  Result<> Rename(std::string_view from, std::string_view to) override {
    return look(MemoryFileSystem::Rename(from, to));
  }
  Result<> Link(std::string_view from, std::string_view to) override {
    aside = true;
    return look(MemoryFileSystem::Link(from, to));
  }
  Result<> Delete(std::string_view path) override { return look(MemoryFileSystem::Delete(path)); }
  bool aside = false;

 private:
  Result<> look(Result<> result) {
    EXPECT_TRUE(Exists("/p/pump.VKG"));
    return result;
  }
};

TEST_F(ProjectFile, ProjectExistsAtEveryMomentOfASave) {
  for (const std::string name : {"/p/pump.VKG", "/p/PUMP.vkg"}) {
    WatchedDisk disk;
    disk.files = {{name, "old"}, {"/p/pump._KG", "dead"}};
    ASSERT_TRUE(SaveProjectFile(*store_, disk, clock_, "/p/pump"));
    EXPECT_TRUE(disk.aside);
    EXPECT_EQ(disk.files, (Files{{"/p/pump.VKG", text()}}));
  }
}

TEST_F(ProjectFile, RecoversTheProjectOfAnInterruptedSave) {
  const std::string whole = text();
  const std::string hidden = "/p/.pump.VKG.writing";
  // `left` is the file found and, unless there is an error, moved.
  const std::tuple<Files, std::string, std::string> cases[] = {
      {{{"/p/pump._KG", "old"}}, "/p/pump._KG", ""},
      {{{"/p/pump._KG", "old"}, {hidden, "half"}}, "/p/pump._KG", ""},
      {{{hidden, whole}}, hidden, ""},
      {{{hidden, whole.substr(0, whole.size() - 1)}},
       hidden,
       hidden + ": The save was interrupted before the file was whole"},
      {{{hidden, whole.substr(0, whole.find("[FLOW"))}},
       hidden,
       hidden + ": The save was interrupted before the file was whole"},
      {{{"/p/Pump.vkg", "new"}, {"/p/pump._KG", "old"}},
       "",
       "/p/Pump.vkg: The project exists and was not changed"},
      {{}, "", "/p/pump.VKG: No interrupted save found (/p/pump._KG)"},
  };
  for (const auto& [before, left, error] : cases) {
    files_.files = before;
    EXPECT_EQ(InterruptedSave(files_, "/p/pump.VKG").value_or(""), left);
    const auto recovered = RecoverProjectFile(files_, "/p/pump.VKG");
    EXPECT_EQ(recovered ? recovered.Value() : "", error.empty() ? left : "");
    if (recovered) {
      EXPECT_EQ(files_.files["/p/pump.VKG"], before.at(left));
      EXPECT_FALSE(files_.files.contains(left));
    } else {
      EXPECT_EQ(recovered.ErrorText(), error);
      EXPECT_EQ(files_.files, before);
    }
  }
}

TEST_F(ProjectFile, ReadOnlyProjectIsKeptUntilOpened) {
  files_.files = {{"/p/PUMP.vkg", "old"}};
  files_.readOnly = {"/p/PUMP.vkg"};
  const auto saved = SaveProjectFile(*store_, files_, clock_, "/p/pump");
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.ErrorText(), "/p/PUMP.vkg: Permission denied");
  EXPECT_EQ(files_.files, (Files{{"/p/PUMP.vkg", "old"}}));
  EXPECT_TRUE(LoadProjectFile(*store_, files_, "/p/pump"));  // removes the mark
  EXPECT_TRUE(SaveProjectFile(*store_, files_, clock_, "/p/pump"));
}

TEST_F(ProjectFile, SaveKeepsTheRightsOfTheFile) {
  const testing::TempFolder folder;
  const std::filesystem::path path = folder / "pump.VKG";
  testing::WriteDisk(path, "old");
  platform::PosixFileSystem disk(platform::Syncing::kOff);
  for (const unsigned mode : {0600U, 0664U}) {
    std::filesystem::permissions(path, std::filesystem::perms(mode));
    ASSERT_TRUE(SaveProjectFile(*store_, disk, clock_, folder / "pump"));
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(mode));
    EXPECT_EQ(testing::ReadDisk(path), text());
  }
}

TEST_F(ProjectFile, LoadsByName) {
  files_.files = {{"/p/pump.VKG", "[CONFIGURATION]\nOperator=A\n"},
                  {"/p/pump.old", "[CONFIGURATION]\nOperator=B\n"}};
  const auto load = [&](platform::FileSystem& files, std::string_view name) {
    const auto loaded = LoadProjectFile(*store_, files, name);
    return !loaded ? loaded.ErrorText() : loaded.Value() ? store_->Gen.Operator : "none";
  };
  EXPECT_EQ(load(files_, "\\p\\pump.old"), "B");
  EXPECT_EQ(load(files_, "/p/PUMP.vkg"), "A");
  EXPECT_EQ(load(files_, "/p/other"), "none");
  testing::FaultyFileSystem unmarked(files_, 2);  // the read-only mark stays without effect
  EXPECT_EQ(load(unmarked, "/p/pump"), "A");
  store_->Gen.Operator = "kept";
  testing::FaultyFileSystem unreadable(files_, 1);
  EXPECT_EQ(load(unreadable, "/p/pump"), "/p/pump.VKG: Input/output error");
  EXPECT_EQ(store_->Gen.Operator, "kept");
}

// ---- Lines not in any example

class ProjectWriter : public ::testing::Test {
 protected:
  ProjectWriter() { ORVUS_COMMON::SetAllDefaults(*store); }
  std::string saved() { return ProjectFileText(*store, {2003, 3, 10, 14, 5, 0}); }
  // `lines` in the file, one after the other.
  void expect(std::string_view lines) {
    std::string text = "\r\n";
    for (const char c : lines) text += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_TRUE(Holds(saved(), text)) << lines;
  }

  std::unique_ptr<ProjectStore> store = NewStore();
};

TEST_F(ProjectWriter, BlockWritesSelectionsAndSettings) {
  store->Tables[2].TableOn = kTrue;
  store->BridgeBlock.BlockCount = 1;
  BridgeBlockData& block = store->BridgeBlock[1];
  block.Reps = 2;
  block.Units = "";
  block.BlockTime = 1200;
  block.Output.OutputSelect[1][kSample] = 1;  // of a table not in use
  block.Output.OutputSelect[2][kHistogram] = 1;
  HistoSet& histo = block.Output.Histo[2];
  histo.HistogramCode = "14,000,1,0,394";
  histo.RainHistoCode = "not selected";
  block.Alias[1] = {"Oil", "", "2.50", "8", "6"};
  block.Alias[2].AliasExcept = "";
  expect("CalOnSite(1)= 0\nReverseMes(1)=-1\nSettleTime(1)= 200\nBlockTime(1)=1200\n");
  expect(R"(StartBrdgChan(1)= 1
HistogramCode(2,1)=14,000,1,0,394
Table(2,1,6)= 1
AliasName(1,1)=Oil
AliasMult(1,1)=2.50
AliasGFactor(1,1)=8
AliasExcept(1,1)=6
AliasExcept(1,2)=

[PULSE BLOCKS]
)");
}

TEST_F(ProjectWriter, CompletesCountsOfConditions) {
  OutputTable& table = store->Tables[1];
  table.TableOn = kTrue;
  table.TrigTable = 10;
  table.TrigTabStop = -2;
  table.Trigger[0][10].StartMeasVar = "last";
  table.WriteIf = -1;
  table.Write[1].Expression = "a = 1";
  expect("StartMeasVar(110)=last\n");
  expect("TrigTabStop(1)= 10\nStopMeasVar(1)=\n");
  expect("WriteIf(1)= 1\nMeasureVar(1)=\n");
  expect("Expression(1)=a = 1\nDisableWriteIf(1)= 0\n");
  EXPECT_EQ(table.WriteIf, 1);
  EXPECT_EQ(table.TrigTabStop, 10);
  table.WriteIf = 2;
  expect("Expression(1, 1)=a = 1\nMeasureVar(1, 2)=\n");
}

TEST_F(ProjectWriter, PortSlotsShareTheirKeys) {
  store->Ports.Slot[0].Ports[2].Include = kTrue;
  const auto includes = [&] {
    const std::string rest(After(saved(), "\r\nInclude(0,"));
    return rest.empty() ? 0 : Holds(rest, "\r\nInclude(0,") ? 2 : 1;
  };
  EXPECT_EQ(includes(), 2);  // the untouched second slot repeats the first
  PortSlot& second = store->Ports.Slot[1];
  second.Public = kTrue;
  EXPECT_EQ(includes(), 1);  // a changed one has separate lines
  second.Ports[9].Include = kTrue;
  second.BinaryMask[2] = "00001111";
  expect("Include(0,9)=-1\nMeasureVar(0,0,9)=\nCompare(0,0,9)= 1\nValue(0,0,9)=0\n");
  expect("BinaryMask(2,0,1)=00001111\n");
  second.ReadMode = kTrue;
  store->Tables[3].TableOn = kTrue;
  second.Output.OutputSelect[3][kAverage] = 1;
  expect(
      "ReadMode(0)=-1\nInclude(0,9)=-1\nHistogramCode(0,3,1)=\nTable(0,3,1,4)= 1\n\n[FLAG "
      "CONTROL]\n");
}

// Counts that memory should never contain must not leave an array.
TEST_F(ProjectWriter, ToleratesCountsOutsideTheirArrays) {
  store->VoltBlock.BlockCount = 30000;
  store->VoltBlock[7].Reps = 30000;
  store->TempBlock.BlockCount = -1;
  store->Config.CanBusQty = 1;
  store->Config.StatusMonCount = store->Can.CanCount = store->CalcFields.CalcFieldCount = 999;
  store->Tables[1].TableOn = kTrue;
  store->Tables[1].WriteIf = store->Tables[1].TrigTable = 99;
  const std::string text = saved();
  EXPECT_TRUE(Holds(text, "\r\nStartVoltChan(7)="));
  EXPECT_FALSE(Holds(text, "\r\nStartVoltChan(8)=") || Holds(text, "\r\nName(129)="));
}

// ---- Round trips

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};

std::unique_ptr<ProjectStore> reread(const std::string& text) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  const ReadReport report = ReadProjectText(*store, text);
  EXPECT_EQ(report.skipped, 0) << SkippedText(report);
  return store;
}

TEST(ProjectRoundTrip, KeepsRandomAndLargestProjects) {
  auto store = NewStore();
  for (std::uint32_t seed = 0; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(*store, seed);
    if (seed == 0) testing::MakeLargestProject(*store);
    const std::string text = ProjectFileText(*store, kMoment);
    auto back = reread(text);
    ASSERT_TRUE(ProjectFileText(*back, kMoment) == text);
    EXPECT_TRUE(back->Tables.Table == store->Tables.Table);
    EXPECT_TRUE(back->TempBlock == store->TempBlock && back->VoltBlock == store->VoltBlock);
    EXPECT_TRUE(back->BridgeBlock == store->BridgeBlock);
    EXPECT_TRUE(back->TK40MBlock == store->TK40MBlock);
    EXPECT_TRUE(back->PulseBlock[0] == store->PulseBlock[0]);
  }
}

TEST(ProjectRoundTrip, KeepsExtremeNumbers) {
  auto store = reread("");
  store->Scan.BurstScans = std::numeric_limits<i32>::min();
  store->Scan.FlagScan = std::numeric_limits<i16>::min();
  store->FlowCalc.Pulses = 1.0 / 3;
  for (const float value : {3.4028235E38F, 1.17549435E-38F, 1.4E-45F, -1.0F / 3, 16777217.0F}) {
    store->Scan.ExecutionTime = value;
    auto back = reread(ProjectFileText(*store, kMoment));
    EXPECT_EQ(back->Scan.ExecutionTime, value);
    EXPECT_EQ(back->FlowCalc.Pulses, store->FlowCalc.Pulses);
    EXPECT_EQ(ProjectFileText(*back, kMoment), ProjectFileText(*store, kMoment));
  }
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
