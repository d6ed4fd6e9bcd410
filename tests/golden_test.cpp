// Whole projects: a project file in, the exact program and documents out. The expected files were
// derived from the rules by hand, line by line.
#include <gtest/gtest.h>

#include <string>

#include "documents/makewire.h"
#include "documents/summary.h"
#include "documents/table_description.h"
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

  static void expectGolden(const std::string& made, const std::string& extension) {
    const std::string golden = testing::ReadDisk(std::string(OSTRAND_SOURCE_DIR "/tests/golden/") +
                                                 GetParam() + extension);
    EXPECT_TRUE(made == golden) << extension << ' ' << firstDifference(made, golden);
  }

  std::string project_;
};

TEST_P(GoldenProject, GivesTheExactProgramAndDocuments) {
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms forms;
  SAVEDLD generator(store(), files, clock, forms);
  generator.BaseName(GetParam());
  const DocumentHead head = {GetParam(), clock.Now()};
  expectGolden(generator.ProgramText(), ".VKP");
  expectGolden(TableDescriptionText(store(), head), ".VKD");
  expectGolden(WiringText(store(), generator.Channels(), head), ".VKW");
  PlainText summary;
  EXPECT_TRUE(Summarize(store(), {.projectName = GetParam()}, summary, forms));
  expectGolden(summary.Text(), ".summary");
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
