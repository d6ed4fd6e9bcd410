// The screens of the logger, its outputs, the CAN bus and the calculated fields, used by scripts
// like a person.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::ReadDisk;

const std::string kScripts = OSTRAND_SOURCE_DIR "/tests/scripts/logger/";

// One script for each screen or group of screens, played on a new project in a folder with the pick
// lists: scripts name files without folders.
TEST(LoggerScripts, GoThrough) {
  const testing::TempFolder folder;
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kScripts)) {
    const std::filesystem::path& path = entry.path();
    if (path.extension() == ".txt") {
      names.push_back(path.stem());
    } else {
      std::filesystem::copy_file(path, folder / path.filename().string());
    }
  }
  EXPECT_GE(names.size(), 10U);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    const std::string example = name == "wind_turbine" ? "wind-turbine" : "vehicle-test";
    const std::string base = folder / example;
    const auto run = [&](const std::vector<std::string>& words) {
      const testing::Outcome outcome =
          testing::RunOstrand(words, {.epoch = "1047305100", .folder = folder.Path()});
      EXPECT_EQ(outcome.code, 0) << outcome.err;  // the moment is 2003-03-10 14:05:00 UTC
      return outcome.out;
    };
    std::filesystem::remove(base + ".VKG");
    run({"new", base});
    run({"screen", base + ".VKG", kScripts + name + ".txt"});
    if (name == "renames") {
      EXPECT_EQ(run({"check", base + ".VKG"}), base + ".VKG: all checks passed\n");
    }
    if (name != "vehicle" && name != "wind_turbine") continue;
    // These two build an example from nothing.
    EXPECT_EQ(ReadDisk(base + ".VKG"),
              ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + example + ".VKG"));
    run({"generate", base + ".VKG"});
    for (const std::string extension : {".VKP", ".VKD", ".VKW"}) {
      EXPECT_EQ(ReadDisk(base + extension),
                ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/" + example + extension));
    }
  }
}

}  // namespace
}  // namespace ostrand
