// Two commands on one project at the same time. OSTRAND_ROUNDS sets more rounds than the few of a
// normal run.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "platform/posix/posix_filesystem.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::EndOf;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::StartOstrand;

const std::vector<std::string> kExtensions = {".VKG", ".VKP", ".VKD", ".VKW"};

int rounds(int few) {
  const char* asked = std::getenv("OSTRAND_ROUNDS");
  return asked == nullptr ? few : std::atoi(asked);
}

// Saves of two projects of one name write to the folder `out`.
class TwoAtOnce : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto* name : {"out", "big", "small"}) {
      std::filesystem::create_directory(folder / name);
    }
    std::filesystem::copy_file(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG",
                               folder / "big/pump.VKG");
    ASSERT_EQ(RunOstrand({"new", folder / "small/pump"}).code, 0);
    for (const std::string from : {"big", "small"}) {
      ASSERT_EQ(RunOstrand({"save", folder / (from + "/pump"), "--force"}).code, 0);
    }
  }
  pid_t start(std::vector<std::string> words) const { return StartOstrand(words, home.Path()); }
  pid_t save(const std::string& from) const {
    return start({"save", folder / (from + "/pump"), "-o", folder / "out"});
  }
  // Whether all four files belong to the project of this folder.
  bool allOf(const std::string& from) const {
    for (const std::string& extension : kExtensions) {
      const std::string name = "/pump" + extension;
      if (ReadDisk(folder / ("out" + name)) != ReadDisk(folder / (from + name))) return false;
    }
    return true;
  }
  void expectNothingElse() const {
    const std::filesystem::directory_iterator entries(folder / "out");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 4);
  }

  const testing::TempFolder folder;
  const testing::TempFolder home;
  const std::string project = folder / "out/pump.VKG";
};

TEST_F(TwoAtOnce, SavesNeverMixTheirFiles) {
  for (int round = 0; round < rounds(10); ++round) {
    const pid_t first = save("big");
    const pid_t second = save("small");
    EXPECT_EQ(EndOf(first), 0);
    EXPECT_EQ(EndOf(second), 0);
    EXPECT_TRUE(allOf("big") || allOf("small")) << round;
    expectNothingElse();
  }
}

TEST_F(TwoAtOnce, NewNeverReplacesAProjectBeingSaved) {
  ASSERT_EQ(EndOf(save("big")), 0);
  for (int round = 0; round < rounds(10); ++round) {
    const pid_t saving = save(round % 2 == 0 ? "small" : "big");
    const pid_t starting = start({"new", project});
    EXPECT_EQ(EndOf(starting), 1) << round;
    EXPECT_EQ(EndOf(saving), 0);
    EXPECT_TRUE(allOf(round % 2 == 0 ? "small" : "big")) << round;
    expectNothingElse();
  }
}

TEST_F(TwoAtOnce, ReaderAlwaysFindsAWholeProject) {
  ASSERT_EQ(EndOf(save("big")), 0);
  const std::string contents[] = {ReadDisk(folder / "big/pump.VKG"),
                                  ReadDisk(folder / "small/pump.VKG")};
  platform::PosixFileSystem files;
  for (int round = 0; round < rounds(10); ++round) {
    const pid_t saving = save(round % 2 == 0 ? "small" : "big");
    const pid_t reading = start({"summary", project});
    while (::waitpid(saving, nullptr, WNOHANG) == 0) {
      const auto bytes = files.Read(project);
      ASSERT_TRUE(bytes) << round << bytes.ErrorText();
      ASSERT_TRUE(bytes.Value() == contents[0] || bytes.Value() == contents[1]) << round;
    }
    EXPECT_EQ(EndOf(reading), 0) << round;
  }
}

}  // namespace
}  // namespace ostrand
