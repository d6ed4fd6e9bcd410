// Whole projects: a project file in, the exact program and documents out. The expected files were
// derived from the rules by hand. Those of wind-turbine come from the generator; its program and
// table description were read against the rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "documents/makewire.h"
#include "documents/summary.h"
#include "documents/table_description.h"
#include "generator/savedld.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

const std::string kSource = OSTRAND_SOURCE_DIR;

class GoldenProject : public ::testing::TestWithParam<std::string> {
 protected:
  GoldenProject() {
    ORVUS_COMMON::SetAllDefaults(*store_);
    ORVUS_COMMON::SetLoggerConstants(*store_);
    skipped_ = ORVUS_GENFILE::ReadProjectText(*store_, project_).skipped;
    generator_.BaseName(name_);
  }

  void expectGolden(const std::string& made, const std::string& extension) {
    EXPECT_EQ(made, testing::ReadDisk(kSource + "/tests/golden/" + name_ + extension));
  }

  const std::string name_ = GetParam();
  const std::string project_ = testing::ReadDisk(kSource + "/examples/" + name_ + ".VKG");
  std::unique_ptr<ProjectStore> store_ = NewStore();
  int skipped_ = 0;  // lines of the project
  platform::PosixFileSystem files_;
  testing::FixedClock clock_;
  testing::ScriptedForms forms_;
  const DocumentHead head_ = {name_, clock_.Now()};
  SAVEDLD generator_{*store_, files_, clock_, forms_};
};

TEST_P(GoldenProject, SurvivesSave) {
  EXPECT_EQ(skipped_, 0);
  EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(*store_, clock_.Now()), project_);
}

TEST_P(GoldenProject, GivesTheProgram) { expectGolden(generator_.ProgramText(), ".VKP"); }

TEST_P(GoldenProject, GivesTheTableDescription) {
  expectGolden(TableDescriptionText(*store_, head_), ".VKD");
}

TEST_P(GoldenProject, GivesTheWiring) {
  generator_.ProgramText();
  expectGolden(WiringText(*store_, generator_.Channels(), head_), ".VKW");
}

TEST_P(GoldenProject, GivesTheSummary) {
  PlainText summary;
  EXPECT_TRUE(Summarize(*store_, {.projectName = name_}, summary, forms_));
  expectGolden(summary.Text(), ".summary");
}

INSTANTIATE_TEST_SUITE_P(Of, GoldenProject,
                         ::testing::Values("engine-test-cell", "building-climate",
                                           "bridge-monitoring", "weather-mast", "vehicle-test",
                                           "thermal-survey", "wind-turbine"),
                         [](const auto& project) {
                           std::string name = project.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace ostrand
