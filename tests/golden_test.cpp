// Whole projects: a project file in, the exact program and documents out. The expected files were
// derived from the rules by hand, line by line.
#include <gtest/gtest.h>

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

TEST(GoldenProject, GivesTheExactProgramAndDocumentsAndIsSavedAsItWasRead) {
  const std::string source = OSTRAND_SOURCE_DIR;
  for (const std::string name : {"engine-test-cell", "building-climate", "bridge-monitoring",
                                 "weather-mast", "vehicle-test", "thermal-survey"}) {
    SCOPED_TRACE(name);
    const auto expectGolden = [&](const std::string& made, const std::string& extension) {
      EXPECT_EQ(made, testing::ReadDisk(source + "/tests/golden/" + name + extension));
    };
    const auto store = NewStore();
    ORVUS_COMMON::SetAllDefaults(*store);
    ORVUS_COMMON::SetLoggerConstants(*store);
    const std::string project = testing::ReadDisk(source + "/examples/" + name + ".VKG");
    EXPECT_EQ(ORVUS_GENFILE::ReadProjectText(*store, project).skipped, 0);
    platform::PosixFileSystem files;
    testing::FixedClock clock;
    testing::ScriptedForms forms;
    EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(*store, clock.Now()), project);
    SAVEDLD generator(*store, files, clock, forms);
    generator.BaseName(name);
    const DocumentHead head = {name, clock.Now()};
    expectGolden(generator.ProgramText(), ".VKP");
    expectGolden(TableDescriptionText(*store, head), ".VKD");
    expectGolden(WiringText(*store, generator.Channels(), head), ".VKW");
    PlainText summary;
    EXPECT_TRUE(Summarize(*store, {.projectName = name}, summary, forms));
    expectGolden(summary.Text(), ".summary");
  }
}

}  // namespace
}  // namespace ostrand
