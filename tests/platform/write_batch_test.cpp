// Files that are put into their places together.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/atomic_file.h"
#include "support/memory_filesystem.h"

namespace ostrand::platform {
namespace {

using Disk = std::map<std::string, std::string>;

const Disk kOld = {{"/a", "old"}, {"/b", "old"}, {"/c", "old"}};

// Writes the three files in a batch; the name of the first that failed, empty for none.
std::string writeAll(FileSystem& files, bool commits = true) {
  WriteBatch batch(files);
  for (const char* name : {"/a", "/b", "/c"}) {
    if (!WriteWhole(files, name, "new", FolderSync::kLater)) return name;
  }
  if (!commits) return "";
  const auto failure = batch.Commit();
  return failure ? failure->path : "";
}

TEST(WriteBatch, RenamesNothingBeforeItsCommit) {
  testing::MemoryFileSystem disk;
  disk.files = kOld;
  EXPECT_EQ(writeAll(disk, false), "");
  EXPECT_EQ(disk.files, kOld);
  disk.steps.clear();
  EXPECT_EQ(writeAll(disk), "");
  EXPECT_EQ(disk.steps, (std::vector<std::string>{"rename to /a", "rename to /b", "rename to /c"}));
  ASSERT_TRUE(WriteWhole(disk, "/a", "newer", FolderSync::kLater));
  EXPECT_EQ(disk.files["/a"], "newer") << "after the batch";
}

TEST(WriteBatch, LeavesTheFileThatFailsAndAllAfterIt) {
  for (int failAt = 1;; ++failAt) {
    ASSERT_LT(failAt, 100);
    testing::MemoryFileSystem disk;
    disk.files = kOld;
    testing::FaultyFileSystem faulty(disk, failAt);
    const std::string failed = writeAll(faulty);
    if (faulty.Calls() < failAt) {
      EXPECT_EQ(failed, "");
      return;
    }
    ASSERT_NE(failed, "") << failAt;
    EXPECT_EQ(disk.files.size(), kOld.size()) << failAt;
    for (const auto& [name, bytes] : disk.files) {
      if (name >= failed) {
        EXPECT_EQ(bytes, "old") << name << " at " << failAt;
      }
    }
  }
}

// A link to /a, and a folder whose writers take turns.
class SharedDisk : public testing::MemoryFileSystem {
 public:
  std::string Target(std::string_view path) override {
    return path == "/link" ? "/a" : std::string(path);
  }
  Result<std::unique_ptr<FolderLock>> LockFolder(std::string_view path) override {
    return path == "/shared" ? std::make_unique<FolderLock>() : nullptr;
  }
};

TEST(WriteBatch, LeavesOutFilesBehindLinksAndInSharedFolders) {
  SharedDisk disk;
  const WriteBatch batch(disk);
  ASSERT_TRUE(WriteWhole(disk, "/link", "new", FolderSync::kLater));
  ASSERT_TRUE(WriteWhole(disk, "/shared", "new", FolderSync::kLater));
  ASSERT_TRUE(WriteWhole(disk, "/b", "new", FolderSync::kNow));
  EXPECT_EQ(disk.steps,
            (std::vector<std::string>{"rename to /a", "sync folder of /a", "rename to /shared",
                                      "rename to /b", "sync folder of /b"}));
}

}  // namespace
}  // namespace ostrand::platform
