// Saves that are cut off, as by a machine that stops.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

#include "model/new_store.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "session/ostrand.h"
#include "session/settings.h"
#include "support/scripted_forms.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;

const std::vector<std::string> kExtensions = {".VKG", ".VKP", ".VKD", ".VKW"};

TEST(KilledSave, AlwaysLeavesWholeFiles) {
  const testing::TempFolder folder;
  testing::WriteDisk(folder / "VKPComp.EXE", "a compiler");
  platform::PosixFileSystem files;
  platform::PosixClock clock(1'000'000'000);
  testing::ScriptedForms forms;
  const std::unique_ptr<ProjectStore> store = NewStore();
  testing::TestSurroundings around(files, clock, forms, folder.Path());
  OstrandEvents nobodyListens;
  Ostrand session(*store, around.all, nobodyListens);
  session.UserSettings().CompilerPath(folder / "VKPComp.EXE");
  session.NameProject(folder / "pump");
  session.OverwriteChanged(true);  // changed by the killed saves
  const std::string base = folder / "pump";

  const std::vector<std::string> operators = {"Ada", "Marge with a longer name"};
  std::vector<std::vector<std::string>> contents;
  for (const std::string& name : operators) {
    session.txtOper(name);
    ASSERT_TRUE(session.SavePipeline());
    contents.emplace_back();
    for (const auto& extension : kExtensions) contents.back().push_back(ReadDisk(base + extension));
  }
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(session.SavePipeline());
  const auto oneSave = std::chrono::steady_clock::now() - start;
  std::minstd_rand random(7);
  int inside = 0;
  // A slow machine may need more rounds until one kills a save in progress.
  for (int round = 0; round < 200 || (inside == 0 && round < 4000); ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (std::size_t turn = 0;; ++turn) {
        session.txtOper(operators[turn % 2]);
        session.SavePipeline();
      }
    }
    std::this_thread::sleep_for(oneSave * 4 * static_cast<int>(random() % 1000) / 1000);
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    if (std::filesystem::exists(base + "._KG")) ++inside;
    ASSERT_TRUE(std::filesystem::exists(base + ".VKG")) << round;
    for (std::size_t file = 0; file < kExtensions.size(); ++file) {
      const std::string bytes = ReadDisk(base + kExtensions[file]);
      ASSERT_TRUE(bytes == contents[0][file] || bytes == contents[1][file])
          << round << kExtensions[file];
    }
  }
  EXPECT_GT(inside, 0) << "no save was killed in its middle";
  EXPECT_TRUE(session.SavePipeline());
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    names.insert(entry.path().filename());
  }
  EXPECT_EQ(names,
            (std::set<std::string>{"VKPComp.EXE", "pump.VKD", "pump.VKG", "pump.VKP", "pump.VKW"}))
      << "the next save tidies up";
}

}  // namespace
}  // namespace ostrand
