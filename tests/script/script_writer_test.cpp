// The script that makes a project: played on a new one, it gives the same project.
#include "script/script_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "script/screen_script.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_random.h"
#include "support/saved_keys.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// A session with its own store and forms.
template <class Forms>
struct Session {
  template <class... Arguments>
  explicit Session(Arguments&&... arguments) : forms(std::forward<Arguments>(arguments)...) {}

  void Open(const std::string& project) {
    files.files["/p.VKG"] = project;
    bool cancelled = true;
    control.OpenFile("/p.VKG", cancelled);
    ASSERT_FALSE(cancelled);
  }
  std::string Text() { return ORVUS_GENFILE::ProjectFileText(*store, clock.Now()); }

  testing::MemoryFileSystem files;
  testing::FixedClock clock;
  Forms forms;
  testing::TestSurroundings around{files, clock, forms, "/tmp/"};
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around.all, nobodyListens};
};

std::string newProject() {
  Session<WriterForms> fresh(true);
  EXPECT_TRUE(fresh.control.NewProject("/p.VKG"));
  return fresh.Text();
}

// The differing keys and values, one a line.
std::string differences(const std::string& wanted, const std::string& made) {
  std::string text;
  for (const auto& change : testing::ChangedKeys(testing::KeysOf(wanted), testing::KeysOf(made))) {
    if (change.key.starts_with("[GEN VERSION]")) continue;
    text += change.key + ": " + change.before + " | " + change.after + "\n";
  }
  return text;
}

// Writes the script of a project and plays it. Returns the number of keys that it does not set;
// each is listed.
std::size_t expectSameProject(const std::string& project) {
  Session<WriterForms> wanted(false);
  Session<WriterForms> built(true);
  ScriptWriter writer(wanted.control, wanted.forms, built.control, built.forms);
  wanted.Open(project);
  built.Open(newProject());
  const std::string before = wanted.Text();
  const WrittenScript script = writer.Write();
  testing::ScriptedForms inner;
  Session<ScriptForms> played(inner);
  ScreenScript player(played.control, played.forms, script.lines);
  played.Open(newProject());
  const Result<> result = player.Run();
  EXPECT_TRUE(result) << result.ErrorText() << "\n" << script.lines;
  // Played, it gives what was built, so the list of what is not set is true.
  EXPECT_EQ(differences(built.Text(), played.Text()), "") << script.lines;
  if (std::getenv("OSTRAND_SHOW_SCRIPT") != nullptr) {
    std::string text = script.lines;
    for (const std::string& line : script.unset)
      text += "# not set: " + Utf8FromWindows1252(line) + "\n";
    std::puts(text.c_str());
    std::puts(Utf8FromWindows1252(differences(before, played.Text())).c_str());
  }
  const std::string differ = differences(before, played.Text());
  EXPECT_EQ(static_cast<std::size_t>(std::count(differ.begin(), differ.end(), '\n')),
            script.unset.size())
      << differ;
  for (const std::string& line : script.unset) {
    const std::string key(Before(Before(line, "="), " is not in the project"));
    EXPECT_TRUE(Holds("\n" + differ, "\n" + key + ": ")) << line;
  }
  return script.unset.size();
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
    const std::size_t unset = expectSameProject(testing::ReadDisk(path.string()));
    // What hidden controls keep, for example. The samples hold what no screen would store.
    const bool isExample = path.parent_path().filename() == "examples";
    EXPECT_LE(unset, isExample ? 40U : 270U) << path;
  }
}

TEST(ScriptWriter, MakesRandomProjects) {
  const char* count = std::getenv("OSTRAND_RANDOM_PROJECTS");
  const int seeds = count == nullptr ? 40 : std::atoi(count);
  for (int seed = 1; seed <= seeds; ++seed) {
    SCOPED_TRACE("seed " + NumberText(seed));
    auto store = NewStore();
    testing::MakeRandomProject(*store, static_cast<std::uint32_t>(seed));
    expectSameProject(ORVUS_GENFILE::ProjectFileText(*store, testing::FixedClock().Now()));
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace ostrand
