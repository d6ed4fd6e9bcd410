// Whole projects: a project file in, the exact program out. The expected files were derived by
// hand from the rules of the program, line by line.
#include <gtest/gtest.h>

#include <string>

#include "generator/savedld.h"
#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

// The first line in which two files differ, with its number.
std::string firstDifference(const std::string& made, const std::string& golden) {
  std::size_t start = 0;
  int line = 1;
  for (std::size_t at = 0; at < made.size() && at < golden.size() && made[at] == golden[at]; ++at) {
    if (made[at] == '\n') {
      start = at + 1;
      ++line;
    }
  }
  const auto lineAt = [&](const std::string& text) {
    return start < text.size() ? text.substr(start, text.find('\n', start) - start) : "(end)";
  };
  return "line " + std::to_string(line) + "\n made:   " + lineAt(made) +
         "\n golden: " + lineAt(golden);
}

class GoldenProject : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    ORVUS_COMMON::ClearStore(store());
    ORVUS_COMMON::SetAllDefaults(store());
    ORVUS_COMMON::SetLoggerConstants(store());
    project_ =
        testing::ReadDisk(std::string(OSTRAND_SOURCE_DIR "/examples/") + GetParam() + ".VKG");
    ORVUS_GENFILE::ReadProjectText(store(), project_);
  }

  static ProjectStore& store() {
    static const auto store = NewStore();
    return *store;
  }

  std::string project_;
};

TEST_P(GoldenProject, GivesTheExactProgram) {
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms forms;
  SAVEDLD generator(store(), files, clock, forms);
  generator.BaseName(GetParam());
  const std::string made = generator.ProgramText();
  const std::string golden =
      testing::ReadDisk(std::string(OSTRAND_SOURCE_DIR "/tests/golden/") + GetParam() + ".VKP");
  EXPECT_TRUE(made == golden) << firstDifference(made, golden);
}

TEST_P(GoldenProject, IsSavedAsItWasRead) {
  const std::string saved = ORVUS_GENFILE::ProjectFileText(store(), testing::FixedClock().Now());
  EXPECT_TRUE(saved == project_) << firstDifference(saved, project_);
}

INSTANTIATE_TEST_SUITE_P(Examples, GoldenProject,
                         ::testing::Values("engine-test-cell", "building-climate",
                                           "bridge-monitoring", "weather-mast", "vehicle-test",
                                           "thermal-survey"),
                         [](const auto& example) {
                           std::string name = example.param;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace ostrand
