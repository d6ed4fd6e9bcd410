#include "platform/atomic_file.h"

#include <gtest/gtest.h>

#include "support/memory_filesystem.h"

namespace ostrand::platform {
namespace {

using testing::FaultyFileSystem;
using testing::MemoryFileSystem;
using Files = std::map<std::string, std::string>;

// The calls of one write, in their order: create, write, sync, close, rename, sync of the folder.
TEST(AtomicFile, EveryFailingCallIsToldAndLeavesAWholeFileAlone) {
  struct Case {
    int failAt;
    std::string_view content;  // of the target afterwards
    bool written;
  };
  constexpr Case kCases[] = {{1, "old", false}, {2, "old", false}, {3, "old", false},
                             {4, "old", false}, {5, "old", false}, {6, "new", false},
                             {7, "new", true}};
  for (const Case& row : kCases) {
    MemoryFileSystem disk;
    disk.files = {{"/data/pump.VKP", "old"}};
    FaultyFileSystem faulty(disk, row.failAt);
    const Result<> written = WriteWhole(faulty, "/data/pump.VKP", "new");
    EXPECT_EQ(static_cast<bool>(written), row.written) << row.failAt;
    EXPECT_EQ(disk.files, (Files{{"/data/pump.VKP", std::string(row.content)}})) << row.failAt;
    if (row.written) continue;
    EXPECT_TRUE(written.ErrorText().starts_with("/data/")) << row.failAt;
  }
}

TEST(AtomicFile, WhatIsNotCommittedIsGoneAndTheTargetAsItWas) {
  MemoryFileSystem disk;
  disk.files = {{"/data/pump.VKP", "old"}};
  {
    AtomicFile file(disk, "/data/pump.VKP");
    ASSERT_TRUE(file.Write("half of a "));
    ASSERT_TRUE(file.Write("program"));
    EXPECT_EQ(disk.files.size(), 2U);
    EXPECT_EQ(disk.files.at("/data/pump.VKP"), "old");
  }
  EXPECT_EQ(disk.files, (Files{{"/data/pump.VKP", "old"}}));
}

TEST(AtomicFile, AReadOnlyTargetIsToldAndKept) {
  MemoryFileSystem disk;
  disk.files = {{"/data/pump.VKP", "old"}};
  disk.readOnly = {"/data/pump.VKP"};
  const Result<> written = WriteWhole(disk, "/data/pump.VKP", "new");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.ErrorText(), "/data/pump.VKP: Permission denied");
  EXPECT_EQ(disk.files, (Files{{"/data/pump.VKP", "old"}}));
}

TEST(AtomicFile, ClearsAwayWhatADeadProcessLeft) {
  MemoryFileSystem disk;
  disk.files = {{"/data/.pump.VKP.writing", "half"}};
  ASSERT_TRUE(WriteWhole(disk, "\\data\\pump.VKP", "whole"));
  EXPECT_EQ(disk.files, (Files{{"/data/pump.VKP", "whole"}}));
}

}  // namespace
}  // namespace ostrand::platform
