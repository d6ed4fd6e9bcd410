// The screens of the logger, its outputs, the CAN bus and the calculated fields, worked at by
// scripts as a person does it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "model/defaults.h"
#include "platform/posix/posix_filesystem.h"
#include "session/screen_script.h"
#include "support/fixed_clock.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;

const std::filesystem::path kScripts = OSTRAND_SOURCE_DIR "/tests/scripts/logger";

// A session in a folder of its own that holds the pick lists. Scripts name files without folders.
class LoggerScript : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto& entry : std::filesystem::directory_iterator(kScripts)) {
      const std::filesystem::path& path = entry.path();
      if (path.extension() == ".txt") continue;
      std::filesystem::copy_file(path, std::filesystem::path(folder.Path()) / path.filename());
    }
    home_ = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
  }
  void TearDown() override { std::filesystem::current_path(home_); }

  // Plays a script on an empty project, which is saved first as a new one is.
  Result<> play(const std::string& script) {
    ScreenScript player(session, scripted, ReadDisk(kScripts / (script + ".txt")));
    session.NameProject(base + ".VKG");
    EXPECT_TRUE(session.WriteProjectFile(base));
    bool cancelled = false;
    session.OpenFile(base + ".VKG", cancelled);
    EXPECT_FALSE(cancelled);
    return player.Run();
  }

  testing::TempFolder folder;
  const std::string base = folder / "vehicle-test";
  platform::PosixFileSystem files{platform::Syncing::kOff};
  testing::FixedClock clock;
  testing::ScriptedForms forms;  // fails the test when a box gets past the script
  ScriptForms scripted{forms};
  OstrandEvents nobody;
  std::unique_ptr<ProjectStore> store = NewStore();
  testing::TestSurroundings around{files, clock, scripted, folder.Path()};
  Ostrand session{*store, around.all, nobody};

 private:
  std::filesystem::path home_;
};

TEST_F(LoggerScript, TheVehicleTestIsMadeFromNothing) {
  const Result<> played = play("vehicle");
  ASSERT_TRUE(played) << played.ErrorText();
  ASSERT_TRUE(session.WriteProjectFile(base));
  ASSERT_TRUE(session.WriteProgram(base));
  ASSERT_TRUE(session.WriteTableDescription(base));
  ASSERT_TRUE(session.WriteWiringDiagram(base));
  const std::string examples = OSTRAND_SOURCE_DIR "/examples/vehicle-test";
  const std::string golden = OSTRAND_SOURCE_DIR "/tests/golden/vehicle-test";
  EXPECT_TRUE(ReadDisk(base + ".VKG") == ReadDisk(examples + ".VKG"));
  for (const std::string extension : {".VKP", ".VKD", ".VKW"}) {
    EXPECT_TRUE(ReadDisk(base + extension) == ReadDisk(golden + extension)) << extension;
  }
}

// One script for each screen or group of screens; each is a file of its own.
class ScreenByScreen : public LoggerScript, public ::testing::WithParamInterface<std::string> {};

TEST_P(ScreenByScreen, IsAsItIsExpected) {
  const Result<> played = play(GetParam());
  EXPECT_TRUE(played) << GetParam() << ".txt: " << played.ErrorText();
}

std::vector<std::string> screenScripts() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kScripts)) {
    if (entry.path().extension() != ".txt" || entry.path().stem() == "vehicle") continue;
    names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScreenByScreen, ::testing::ValuesIn(screenScripts()),
                         [](const auto& script) { return script.param; });

}  // namespace
}  // namespace ostrand
