// The script that makes a project: played on a new one, it gives the same project.
//
// OSTRAND_RANDOM_SEED is the first random project, OSTRAND_RANDOM_PROJECTS sets their number.
#include "script/script_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "projectfile/genfile.h"
#include "screens/setup_screens.h"
#include "script/script_pruner.h"
#include "support/project_random.h"
#include "support/random_user.h"
#include "support/saved_keys.h"
#include "support/script_session.h"
#include "support/temp_folder.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The differing keys and values, one a line.
std::string differences(const std::string& wanted, const std::string& made) {
  std::string text;
  for (const auto& change : testing::ChangedKeys(testing::KeysOf(wanted), testing::KeysOf(made))) {
    if (change.key.starts_with("[GEN VERSION]")) continue;
    text += change.key + ": " + change.before + " | " + change.after + "\n";
  }
  return text;
}

// What playing a script on a new project gives.
std::string madeBy(const std::string& lines) {
  testing::ScriptSession session;
  ScreenScript player(session.control, session.forms, lines);
  EXPECT_TRUE(session.control.NewProject("/new.VKG"));
  const Result<> result = player.Run();
  return result ? session.Text() : result.ErrorText();
}

std::string pruned(const std::string& lines) {
  testing::ScriptSession session;
  EXPECT_TRUE(session.control.NewProject("/new.VKG"));
  return PruneScript(lines, session.control, session.forms, session.inner);
}

// The script of a project. Played, it makes the project but for the keys that it lists as not set.
WrittenScript scriptOf(const std::string& project, bool prunes = true) {
  testing::UserSession<WriterForms> wanted(false);
  testing::UserSession<WriterForms> built(true);
  ScriptWriter writer(wanted.control, wanted.forms, built.control, built.forms);
  wanted.Open(project);
  EXPECT_TRUE(built.control.NewProject("/new.VKG"));
  const std::string before = wanted.Text();
  WrittenScript script = writer.Write();
  if (prunes) script.lines = pruned(script.lines);
  const std::string made = madeBy(script.lines);
  EXPECT_EQ(differences(built.Text(), made), "") << made.substr(0, 200) << "\n" << script.lines;
  std::set<std::string> unset;
  for (const UnsetKey& key : script.unset) unset.insert(key.key);
  std::set<std::string> differ;
  const std::string all = differences(before, made);
  for (std::string_view left = all; !left.empty();) {
    differ.emplace(Before(TakeLine(left), ": "));
  }
  EXPECT_EQ(unset, differ);
  return script;
}

std::vector<std::filesystem::path> projects() {
  std::vector<std::filesystem::path> paths;
  for (const char* folder : {"/examples", "/tests/samples"}) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(OSTRAND_SOURCE_DIR) + folder)) {
      if (entry.path().extension() == ".VKG") paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(ScriptWriter, MakesEveryProject) {
  for (const auto& path : projects()) {
    SCOPED_TRACE(path.string());
    // Values that depend on others, for example. The samples hold what no screen would store, and
    // their long scripts take long to prune.
    const bool isExample = path.parent_path().filename() == "examples";
    const WrittenScript script = scriptOf(testing::ReadDisk(path.string()), isExample);
    EXPECT_LE(script.unset.size(), isExample ? 27U : 223U);
  }
}

// A project made at the screens alone.
std::string madeByUser(std::uint32_t seed) {
  testing::UserSession<testing::RandomUser> session(seed);
  ConnectSetupScreens(session.control, session.forms);
  EXPECT_TRUE(session.control.NewProject("/new.VKG"));
  for (int visit = 0; visit < 12; ++visit) {
    const int button = session.forms.Below(kExciteButton + 1);
    if (session.control.MainButtons().Enabled(button)) session.control.Click(button);
  }
  return session.Text();
}

TEST(ScriptWriter, NeedsEachLine) {
  for (const std::string& project :
       {testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/weather-mast.VKG"), madeByUser(14)}) {
    const std::string lines = scriptOf(project).lines;
    const std::string made = madeBy(lines);
    for (std::size_t at = 0; at < lines.size();) {
      const std::size_t end = lines.find('\n', at) + 1;
      const std::string without = lines.substr(0, at) + lines.substr(end);
      const std::string line = lines.substr(at, end - at);
      EXPECT_TRUE(line == "\n" || madeBy(without) != made) << line;
      at = end;
    }
  }
}

// Burst settings without burst mode, calculators without a block, outputs of ports without bytes,
// units of a calibrated block.
TEST(ScriptWriter, FindsDetoursToWhatScreensNoLongerOffer) {
  for (const std::uint32_t seed : {10U, 14U, 16U, 21U, 25U}) {
    EXPECT_EQ(scriptOf(madeByUser(seed), false).unset.size(), 0U) << seed;
  }
}

TEST(ScriptWriter, MakesRandomProjects) {
  const auto number = [](const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atoi(text);
  };
  const int first = number("OSTRAND_RANDOM_SEED", 1);
  const int count = number("OSTRAND_RANDOM_PROJECTS", 4);
  for (int seed = first; seed < first + count; ++seed) {
    SCOPED_TRACE("OSTRAND_RANDOM_SEED=" + NumberText(seed) + " repeats it");
    // To prune takes long, most of all for the long scripts of random projects.
    scriptOf(testing::RandomProjectText(static_cast<std::uint32_t>(seed)), false);
    scriptOf(madeByUser(static_cast<std::uint32_t>(seed)), seed % 2 == 0);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace ostrand
