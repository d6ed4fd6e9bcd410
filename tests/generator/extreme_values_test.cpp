// Smallest and largest values in all members at once. The sanitizer builds catch arithmetic on
// values of a file that overflows its type.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "support/extreme_project.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

TEST(ExtremeValues, GiveTheSameFilesEachTime) {
  std::mt19937 random(1);
  for (int run = 0; run < 20; ++run) {
    std::string bytes(1 + 3 * (random() % 200), '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    const std::string text = ExtremeProjectText(bytes);
    ASSERT_EQ(MakeEverything(text), MakeEverything(text)) << run;
  }
}

TEST(ExtremeValues, FuzzerSeedsGiveFiles) {
  int seeds = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/fuzz/corpus/project")) {
    EXPECT_FALSE(MakeEverything(ReadDisk(entry.path())).empty()) << entry.path();
    ++seeds;
  }
  EXPECT_GT(seeds, 2);
}

}  // namespace
}  // namespace ostrand::testing
