// Scripts at the screens: the ones kept beside the tests, and what the player itself tells.
#include "session/screen_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "model/store.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"

namespace ostrand {
namespace {

// A session with a new project, worked at by scripts.
class ScriptSession {
 public:
  // Empty when the script went through, else what it stopped with.
  std::string Play(std::string_view text) {
    ScreenScript player(control, forms, text);
    const Result<> played = player.Run();
    return played ? std::string() : played.ErrorText();
  }

  testing::MemoryFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms inner;  // fails the test when a box reaches it
  ScriptForms forms{inner};
  testing::TestSurroundings around{files, clock, forms, "/tmp/"};
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around.all, nobodyListens};
};

// ---- The scripts kept
// -----------------------------------------------------------------------------

std::vector<std::string> keptScripts() {
  std::vector<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/tests/scripts")) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class KeptScript : public ::testing::TestWithParam<std::string> {};

TEST_P(KeptScript, GoesThrough) {
  const std::string path = OSTRAND_SOURCE_DIR "/tests/scripts/" + GetParam() + ".txt";
  ScriptSession session;
  EXPECT_EQ(session.Play(testing::ReadDisk(path)), "") << path;
}

INSTANTIATE_TEST_SUITE_P(All, KeptScript, ::testing::ValuesIn(keptScripts()),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace ostrand
