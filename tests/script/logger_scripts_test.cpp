// The screens of the logger, its outputs, the CAN bus and the calculated fields, used by scripts
// like a person.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::ReadDisk;

const std::string kScripts = OSTRAND_SOURCE_DIR "/tests/scripts/logger/";

// One script for each screen or group of screens, played on a new project in a folder with the pick
// lists: scripts name files without folders.
class LoggerScript : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    for (const auto& entry : std::filesystem::directory_iterator(kScripts)) {
      if (entry.path().extension() == ".txt") continue;
      std::filesystem::copy_file(entry.path(), folder / entry.path().filename().string());
    }
    run({"new", base});
    run({"screen", base + ".VKG", kScripts + GetParam() + ".txt"});
  }
  void run(const std::vector<std::string>& words) {
    const testing::Outcome outcome =
        testing::RunOstrand(words, {.epoch = "1047305100", .folder = folder.Path()});
    ASSERT_EQ(outcome.code, 0) << outcome.err;  // the moment is 2003-03-10 14:05:00 UTC
  }

  testing::TempFolder folder;
  const std::string example = GetParam() == "wind_turbine" ? "wind-turbine" : "vehicle-test";
  const std::string base = folder / example;
};

TEST_P(LoggerScript, GoesThrough) {
  if (GetParam() == "renames") {
    const auto checked = testing::RunOstrand({"check", base + ".VKG"}, {.folder = folder.Path()});
    EXPECT_EQ(checked.out, base + ".VKG: all checks passed\n") << checked.err;
  }
  if (GetParam() != "vehicle" && GetParam() != "wind_turbine") return;
  // These two build an example from nothing.
  EXPECT_EQ(ReadDisk(base + ".VKG"), ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + example + ".VKG"));
  run({"generate", base + ".VKG"});
  for (const std::string extension : {".VKP", ".VKD", ".VKW"}) {
    EXPECT_EQ(ReadDisk(base + extension),
              ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/" + example + extension));
  }
}

std::vector<std::string> screenScripts() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kScripts)) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(Scripts, LoggerScript, ::testing::ValuesIn(screenScripts()),
                         [](const auto& script) { return script.param; });

}  // namespace
}  // namespace ostrand
