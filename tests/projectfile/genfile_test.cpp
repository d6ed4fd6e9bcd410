// Project files on the disk, their lines, and the round trip of a save.
#include "projectfile/genfile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "projectfile/kept_copy.h"
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

// Counts that memory should never contain must not leave an array.
TEST_F(ProjectFile, ToleratesCountsOutsideTheirArrays) {
  store_->VoltBlock.BlockCount = 30000;
  store_->VoltBlock[7].Reps = 30000;
  store_->TempBlock.BlockCount = -1;
  store_->Config.CanBusQty = 1;
  store_->Config.StatusMonCount = store_->Can.CanCount = store_->CalcFields.CalcFieldCount = 999;
  store_->Tables[1].TableOn = kTrue;
  store_->Tables[1].WriteIf = store_->Tables[1].TrigTable = 99;
  const std::string saved = text();
  EXPECT_TRUE(Holds(saved, "\r\nStartVoltChan(7)="));
  EXPECT_FALSE(Holds(saved, "\r\nStartVoltChan(8)=") || Holds(saved, "\r\nName(129)="));
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

const std::string kProject = "/p/pump.VKG";
const std::string kOld = "[CONFIGURATION]\nFoo=1\n";

TEST(KeptCopy, TakesTheFirstFreeName) {
  struct Case {
    Files before;
    std::string kept;
  };
  const Case cases[] = {
      {{}, ""},
      {{{kProject, "[CONFIGURATION]\nOperator=A\n"}}, ""},
      {{{kProject, kOld}}, kProject + ".bak"},
      {{{kProject, kOld}, {kProject + ".bak", kOld}}, kProject + ".bak"},
      {{{kProject, kOld}, {kProject + ".bak", "other"}}, kProject + ".bak.1"},
      {{{kProject, kOld}, {kProject + ".bak", "other"}, {kProject + ".bak.1", ""}},
       kProject + ".bak.2"},
  };
  for (const Case& row : cases) {
    testing::MemoryFileSystem files;
    files.files = row.before;
    const auto kept = KeepOldFile(files, kProject);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept.Value(), row.kept);
    Files after = row.before;
    if (!row.kept.empty()) after[row.kept] = kOld;
    EXPECT_EQ(files.files, after);
  }
}

TEST(KeptCopy, FailureLeavesNothing) {
  testing::MemoryFileSystem files;
  files.files = {{kProject, kOld}};
  const Files before = files.files;
  int failures = 0;
  for (int call = 1;; ++call) {
    testing::FaultyFileSystem faulty(files, call);
    const auto kept = KeepOldFile(faulty, kProject);
    if (faulty.Calls() < call) break;
    if (kept) continue;
    ++failures;
    EXPECT_TRUE(kept.ErrorText().starts_with("/p/pump.VKG")) << kept.ErrorText();
    if (files.files.contains(kProject + ".bak")) {
      EXPECT_EQ(files.files[kProject + ".bak"], kOld);  // only its folder was not synced
      files.files.erase(kProject + ".bak");
    }
    EXPECT_EQ(files.files, before);
  }
  EXPECT_GT(failures, 3);
}

TEST(KeptCopy, DoesNotFollowLinks) {
  const testing::TempFolder folder;
  const std::string project = folder / "pump.VKG";
  testing::WriteDisk(project, kOld);
  testing::WriteDisk(folder / "victim", "victim");
  platform::PosixFileSystem disk(platform::Syncing::kOff);
  const auto keep = [&] {
    const auto kept = KeepOldFile(disk, project);
    return kept ? kept.Value() : kept.ErrorText();
  };
  std::filesystem::create_symlink("victim", project + ".bak");
  std::filesystem::create_symlink("nobody", project + ".bak.1");
  std::filesystem::create_directory(project + ".bak.2");
  EXPECT_EQ(keep(), project + ".bak.3");
  EXPECT_EQ(testing::ReadDisk(folder / "victim"), "victim");
  EXPECT_FALSE(std::filesystem::exists(folder / "nobody"));
  // A link to the project itself would show the new file after the save.
  std::filesystem::remove(project + ".bak");
  std::filesystem::create_symlink("pump.VKG", project + ".bak");
  EXPECT_EQ(keep(), project + ".bak");
  testing::WriteDisk(project, "new");
  EXPECT_EQ(testing::ReadDisk(project + ".bak"), kOld);
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
