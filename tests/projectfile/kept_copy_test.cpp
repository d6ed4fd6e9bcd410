// The old file of a project, kept before a save that drops lines of it.
#include "projectfile/kept_copy.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/posix/posix_filesystem.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

using Files = std::map<std::string, std::string>;

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
