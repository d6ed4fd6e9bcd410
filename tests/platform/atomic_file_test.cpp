#include "platform/atomic_file.h"

#include <gtest/gtest.h>

#include "support/memory_filesystem.h"

namespace ostrand::platform {
namespace {

// A disk on which every file stays as it is.
class StayingFiles final : public testing::MemoryFileSystem {
 public:
  bool Stays(const std::string& path, std::string_view bytes, bool replaces) override {
    asked += path + " " + std::string(bytes) + (replaces ? " replaces\n" : " new\n");
    return true;
  }
  Result<std::unique_ptr<OutputFile>> Create(std::string_view path, std::string_view) override {
    return Error{"created " + std::string(path)};
  }
  std::string asked;
};

TEST(AtomicFile, LeavesAFileThatStaysWithoutANeighbour) {
  StayingFiles files;
  files.files["old.VKP"] = "old";
  EXPECT_TRUE(WriteWhole(files, "old.VKP", "a"));
  EXPECT_TRUE(WriteWhole(files, "new.VKP", "b"));
  EXPECT_EQ(files.asked, "old.VKP a replaces\nnew.VKP b new\n");
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"old.VKP", "old"}}));
  EXPECT_TRUE(files.steps.empty());
}

}  // namespace
}  // namespace ostrand::platform
