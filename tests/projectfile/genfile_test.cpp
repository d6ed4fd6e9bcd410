#include "projectfile/genfile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

using Files = std::map<std::string, std::string>;

class ProjectFile : public ::testing::Test {
 protected:
  ProjectFile() { ORVUS_COMMON::SetAllDefaults(*store_); }

  std::string text() { return ProjectFileText(*store_, clock_.Now()); }
  bool save(platform::FileSystem& files, std::string_view base = "/p/pump") {
    const auto saved = SaveProjectFile(*store_, files, clock_, base);
    if (!saved) error_ = saved.ErrorText();
    return static_cast<bool>(saved);
  }

  std::unique_ptr<ProjectStore> store_ = NewStore();
  testing::FixedClock clock_;
  testing::MemoryFileSystem files_;
  std::string error_;
};

TEST_F(ProjectFile, SavingLeavesTheNewFileAlone) {
  for (const Files& before :
       {Files{}, Files{{"/p/pump.VKG", "old"}}, Files{{"/p/pump._KG", "dead"}},
        Files{{"/p/pump.VKG", "old"}, {"/p/pump._KG", "dead"}}, Files{{"/p/PUMP.vkg", "old"}}}) {
    files_.files = before;
    EXPECT_TRUE(save(files_));
    EXPECT_EQ(files_.files, (Files{{"/p/pump.VKG", text()}}));
  }
}

// Whatever call fails, alone or with all behind it, either the new file stands whole or the old
// content does, under its own name or as the remainder of a dead save.
TEST_F(ProjectFile, AFailingDiskLosesNothing) {
  for (const bool staysBroken : {false, true}) {
    for (const Files& before : {Files{{"/p/pump.VKG", "old"}}, Files{{"/p/pump._KG", "old"}}}) {
      int reported = 0;
      for (int failAt = 1;; ++failAt) {
        files_.files = before;
        testing::FaultyFileSystem faulty(files_, failAt, staysBroken);
        const bool saved = save(faulty);
        if (faulty.Calls() < failAt) break;  // all calls have had their turn
        const std::string& project = files_.files["/p/pump.VKG"];
        if (saved) {
          EXPECT_EQ(project, text()) << failAt;
          continue;
        }
        ++reported;
        EXPECT_NE(error_.find("pump"), std::string::npos) << error_;
        EXPECT_TRUE(project == "old" || project.empty() || project == text()) << failAt;
        EXPECT_TRUE(project == "old" || files_.files["/p/pump._KG"] == "old") << failAt;
        if (!staysBroken && before.contains("/p/pump.VKG")) {
          EXPECT_EQ(files_.files["/p/pump.VKG"], "old") << failAt;
        }
      }
      EXPECT_GE(reported, 5);  // create, write, sync, close and rename at the least
    }
  }
}

TEST_F(ProjectFile, AReadOnlyProjectIsKeptUntilItIsOpened) {
  files_.files = {{"/p/PUMP.vkg", "old"}};
  files_.readOnly = {"/p/PUMP.vkg"};
  EXPECT_FALSE(save(files_));
  EXPECT_NE(error_.find("/p/PUMP.vkg"), std::string::npos) << error_;
  EXPECT_EQ(files_.files, (Files{{"/p/PUMP.vkg", "old"}}));
  EXPECT_TRUE(
      static_cast<bool>(LoadProjectFile(*store_, files_, "/p/pump")));  // takes the mark off
  EXPECT_TRUE(save(files_));
}

TEST_F(ProjectFile, ASavedProjectKeepsTheRightsOfItsFile) {
  const testing::TempFolder folder;
  testing::WriteDisk(folder / "pump.VKG", "old");
  platform::PosixFileSystem disk(platform::Syncing::kOff);
  for (const mode_t mode : {0600U, 0664U}) {
    ASSERT_EQ(::chmod((folder / "pump.VKG").c_str(), mode), 0);
    ASSERT_TRUE(save(disk, folder / "pump"));
    struct stat info {};
    ASSERT_EQ(::stat((folder / "pump.VKG").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, mode);
    EXPECT_EQ(testing::ReadDisk(folder / "pump.VKG"), text());
  }
}

TEST_F(ProjectFile, LoadingByName) {
  files_.files = {{"/p/pump.VKG", "[CONFIGURATION]\nOperator=A\n"},
                  {"/p/pump.old", "[CONFIGURATION]\nOperator=B\n"}};
  const auto load = [&](std::string_view name) {
    const auto loaded = LoadProjectFile(*store_, files_, name);
    return loaded && loaded.Value() ? store_->Gen.Operator : "none";
  };
  EXPECT_EQ(load("/p/pump"), "A");
  EXPECT_EQ(load("\\p\\pump.old"), "B");
  EXPECT_EQ(load("/p/PUMP.vkg"), "A");
  EXPECT_EQ(load("/p/other"), "none");
  EXPECT_EQ(store_->Gen.Operator, "A");
}

TEST_F(ProjectFile, AFileThatCannotBeReadIsReported) {
  files_.files = {{"/p/pump.VKG", "[CONFIGURATION]\nOperator=A\n"}};
  testing::FaultyFileSystem unmarked(files_, 1);  // the read-only mark stays: no hindrance
  EXPECT_TRUE(static_cast<bool>(LoadProjectFile(*store_, unmarked, "/p/pump")));
  store_->Gen.Operator = "kept";
  testing::FaultyFileSystem unreadable(files_, 2);
  const auto loaded = LoadProjectFile(*store_, unreadable, "/p/pump");
  ASSERT_FALSE(static_cast<bool>(loaded));
  EXPECT_NE(loaded.ErrorText().find("/p/pump.VKG"), std::string::npos);
  EXPECT_EQ(store_->Gen.Operator, "kept");
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
