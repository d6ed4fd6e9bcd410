// Outputs that are compared, printed or left alone; several files, folders, standard input, jobs.
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::Setting;
using testing::WriteDisk;

// Which file it is, and when it was written.
std::pair<ino_t, long> stateOf(const std::string& path) {
  struct stat info = {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return {info.st_ino, info.st_mtim.tv_nsec};
}

class CliOutputs : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(RunOstrand({"new", pump}).code, 0); }
  Outcome run(std::vector<std::string> words, const std::string& epoch = "1000000000") const {
    return RunOstrand(words, {.epoch = epoch, .folder = folder.Path()});
  }
  // The names in the folder, with those in its folders.
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
      all.push_back(entry.path().lexically_relative(folder.Path()).string());
    }
    std::sort(all.begin(), all.end());
    return all;
  }
  void replaceIn(const std::string& path, std::string_view from, std::string_view to) const {
    std::string bytes = ReadDisk(path);
    ASSERT_TRUE(Holds(bytes, from));
    bytes.replace(bytes.find(from), from.size(), to);
    WriteDisk(path, bytes);
  }

  const testing::TempFolder folder;
  const std::string pump = folder / "pump.VKG";
  const std::string later = "1700000000";
};

TEST_F(CliOutputs, ThatDifferInDateAndTimeAloneAreLeftAlone) {
  // The same words in the text of a user are no date.
  replaceIn(pump, "\r\nOperator=", "\r\nOperator=Time written: noon");
  ASSERT_EQ(run({"generate", "pump.VKG"}).code, 0);
  ASSERT_EQ(run({"resave", "pump.VKG"}).code, 0);
  const std::string files[] = {pump, folder / "pump.VKP", folder / "pump.VKD", folder / "pump.VKW"};
  std::vector<std::pair<ino_t, long>> before;
  for (const std::string& file : files) before.push_back(stateOf(file));
  EXPECT_EQ(run({"generate", "pump.VKG"}, later).out,
            "unchanged pump.VKP\nunchanged pump.VKD\nunchanged pump.VKW\n");
  EXPECT_EQ(run({"resave", "pump.VKG"}, later).out, "unchanged pump.VKG\n");
  EXPECT_EQ(run({"save", "-q", "pump.VKG"}, later).out, "");
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(stateOf(files[i]), before[i]);

  EXPECT_EQ(run({"generate", "--force", "pump.VKG"}, later).out,
            "wrote pump.VKP\nwrote pump.VKD\nwrote pump.VKW\n");
  EXPECT_NE(stateOf(files[1]), before[1]);
  EXPECT_TRUE(Holds(ReadDisk(files[1]), "   Date written: 11-14-2023\r\n"));
  replaceIn(pump, "Time written: noon", "Time written: dusk");
  EXPECT_TRUE(run({"generate", "pump.VKG"}, later).out.starts_with("wrote pump.VKP\nwrote"));
}

TEST_F(CliOutputs, AreComparedWithoutBeingWritten) {
  WriteDisk(folder / "pump._KG", "of a save that died");
  for (const std::string option : {"--check", "--diff", "--dry-run"}) {
    for (const std::string command : {"generate", "save", "resave"}) {
      const auto before = names();
      const auto state = stateOf(pump);
      const Outcome outcome = run({command, option, "pump.VKG"}, later);
      const bool changes = command != "resave";
      EXPECT_EQ(outcome.code, option == "--check" && changes ? 1 : 0) << command << option;
      EXPECT_EQ(Holds(outcome.out, "would write pump.VKP\n"), option != "--diff" && changes)
          << outcome.out;
      EXPECT_EQ(Holds(outcome.out, "unchanged pump.VKG\n"),
                option == "--dry-run" && command != "generate")
          << outcome.out;
      EXPECT_EQ(names(), before) << command << option;
      EXPECT_EQ(stateOf(pump), state) << command << option;
    }
  }
  ASSERT_EQ(run({"generate", "pump.VKG"}).code, 0);
  EXPECT_EQ(run({"generate", "--check", "pump.VKG"}, later).code, 0);
  replaceIn(pump, "\r\nIDNumber=",
            "\r\nIDNumber=\xB5"
            "7");
  const Outcome diff = run({"generate", "--check", "--diff", "pump.VKG"}, later);
  EXPECT_EQ(diff.code, 1);
  EXPECT_TRUE(Holds(diff.out, "--- pump.VKP\n+++ pump.VKP\n@@ ")) << diff.out;
  EXPECT_TRUE(Holds(diff.out,
                    "\n-'                        I.D. number: Number\n"
                    "+'                        I.D. number: \xC2\xB5"
                    "7Number\n"))
      << diff.out;
  EXPECT_TRUE(Holds(diff.out, "\n \xE2\x94\x8C\xE2\x94\x80"))
      << "the lines of the wiring" << diff.out;
  EXPECT_FALSE(Holds(diff.out, "\n+'                       Date")) << diff.out;
}

// A dry run keeps no copy of a file with lines that are not read, and takes no mark off it.
TEST_F(CliOutputs, DryRunTouchesNothingOfADamagedProject) {
  WriteDisk(pump, ReadDisk(pump) + "[NOTHING]\r\nKey=1\r\n");
  std::filesystem::permissions(pump, std::filesystem::perms(0440));
  const Outcome outcome = run({"resave", "pump.VKG", "--dry-run"});
  EXPECT_EQ(names(), std::vector<std::string>{"pump.VKG"}) << outcome.err;
  EXPECT_EQ(std::filesystem::status(pump).permissions(), std::filesystem::perms(0440));
}

TEST_F(CliOutputs, GoToStandardOutput) {
  const Outcome program = run({"generate", "pump.VKG", "-o", "-"});
  const Outcome project = run({"resave", "-o-", "pump.VKG"});
  EXPECT_EQ(names(), std::vector<std::string>{"pump.VKG"});
  EXPECT_EQ(project.out, ReadDisk(pump));
  ASSERT_EQ(run({"generate", "pump.VKG"}).code, 0);
  EXPECT_EQ(program.out, ReadDisk(folder / "pump.VKP"));
  EXPECT_EQ(run({"generate", "pump.VKG", "pump.VKG", "-o", "-"}).code, 2);
}

TEST_F(CliOutputs, ComeFromStandardInput) {
  const Setting piped{.folder = folder.Path(), .in = pump};
  const Outcome program = RunOstrand({"generate", "-"}, piped);
  EXPECT_TRUE(Holds(program.out, "   Program name: STDIN.VKP\r\n")) << program.out << program.err;
  EXPECT_EQ(RunOstrand({"resave", "-"}, piped).out, ReadDisk(pump));
  EXPECT_EQ(RunOstrand({"check", "-"}, piped).out, "stdin.VKG: all checks passed\n");
  EXPECT_EQ(names(), std::vector<std::string>{"pump.VKG"});
  std::filesystem::create_directory(folder / "out");
  EXPECT_EQ(RunOstrand({"generate", "-", "-oout"}, piped).out,
            "wrote out/stdin.VKP\nwrote out/stdin.VKD\nwrote out/stdin.VKW\n");
}

TEST_F(CliOutputs, FoldersAreSearchedWithoutFollowingLoops) {
  std::filesystem::create_directories(folder / "a/b/.hidden");
  std::filesystem::copy(pump, folder / "a/two.vkg");
  std::filesystem::copy(pump, folder / "a/b/one.VKG");
  std::filesystem::copy(pump, folder / "a/b/.hidden/no.VKG");
  WriteDisk(folder / "a/notes.txt", "");
  std::filesystem::create_directory_symlink(folder / "a", folder / "a/b/loop");
  std::filesystem::create_directory_symlink("self", folder / "a/self");
  std::filesystem::create_symlink("../pump.VKG", folder / "a/linked.VKG");
  std::filesystem::create_directory(folder / "a/folder.VKG");
  const Outcome all = run({"check", "-r", "a"});
  EXPECT_EQ(all.out,
            "a/b/one.VKG: all checks passed\na/linked.VKG: all checks passed\n"
            "a/two.vkg: all checks passed\n");
  EXPECT_EQ(all.code, 0) << all.err;
  EXPECT_EQ(run({"check", "a"}).err, "ostrand: a: is a folder; -r takes the .VKG files in it\n");
  EXPECT_EQ(run({"get", "a"}).err, "ostrand: a: is a folder, not a project file\n");
  const Outcome none = run({"check", "-r", "a/folder.VKG"});
  EXPECT_EQ(none.code, 1);
  EXPECT_EQ(none.err, "ostrand: a/folder.VKG: no .VKG files\n");
}

TEST_F(CliOutputs, OfSeveralProcessesAreThoseOfOne) {
  std::vector<std::string> words = {"generate"};
  for (int i = 0; i < 12; ++i) {
    const std::string name = "p" + std::to_string(i) + ".VKG";
    std::filesystem::copy(pump, folder / name);
    words.push_back(name);
  }
  words[4] = "none.VKG";
  // Two projects of one name, of which the second must not replace the first.
  std::filesystem::create_directories(folder / "other");
  std::filesystem::create_directories(folder / "one");
  std::filesystem::create_directories(folder / "many");
  std::filesystem::copy(pump, folder / "other/P4.VKG");
  words.emplace_back("other/P4.VKG");
  const auto with = [&](std::vector<std::string> more) {
    more.insert(more.begin(), words.begin(), words.end());
    return run(more);
  };
  const Outcome one = with({"-oone", "-MF", "one.d"});
  const Outcome many = with({"-j5", "-omany", "-MFmany.d"});
  EXPECT_EQ(one.code, 1);
  EXPECT_EQ(many.code, 1);
  const auto sorted = [](std::string text, std::string_view folderName) {
    auto lines = Split(text, '\n');
    std::sort(lines.begin(), lines.end());
    std::string all;
    for (const auto line : lines) all += std::string(line) + "\n";
    for (std::size_t at; (at = all.find(folderName)) != std::string::npos;) {
      all.replace(at, folderName.size(), "DIR/");
    }
    return all;
  };
  EXPECT_EQ(sorted(one.out, "one/"), sorted(many.out, "many/"));
  EXPECT_EQ(sorted(one.err, "one/"), sorted(many.err, "many/"));
  EXPECT_TRUE(Holds(many.err, "many/P4.VKP: already written in this run; not overwritten"))
      << many.err;
  EXPECT_EQ(sorted(ReadDisk(folder / "one.d"), "one/"),
            sorted(ReadDisk(folder / "many.d"), "many/"));
  EXPECT_TRUE(Holds(ReadDisk(folder / "one.d"), "one/p0.VKP one/p0.VKD one/p0.VKW: p0.VKG\n"));
  EXPECT_EQ(ReadDisk(folder / "one/p7.VKP"), ReadDisk(folder / "many/p7.VKP"));
  // The objects of all processes are one array, in the order of the files.
  const Outcome json = run({"check", "--format=json", "-j3", "p0.VKG", "p1.VKG", "p2.VKG"});
  EXPECT_EQ(json.out, run({"check", "--format=json", "p0.VKG", "p1.VKG", "p2.VKG"}).out);
}

TEST_F(CliOutputs, DepfileEscapesNames) {
  std::filesystem::copy(pump, folder / "a b$#.VKG");
  std::filesystem::create_directory(folder / "out");
  ASSERT_EQ(run({"resave", "a b$#.VKG", "-o", "out", "-MF", "x.d"}).code, 0);
  EXPECT_EQ(ReadDisk(folder / "x.d"), "out/a\\ b$$\\#.VKG: a\\ b$$\\#.VKG\n");
  EXPECT_EQ(run({"generate", "pump.VKG", "-MF", "none/x.d"}).code, 1);
  // A project does not depend on itself.
  ASSERT_EQ(run({"save", "pump.VKG", "-MF", "x.d"}).code, 0);
  EXPECT_EQ(ReadDisk(folder / "x.d"), "pump.VKP pump.VKD pump.VKW: pump.VKG\n");
}

// The folder is there when the command starts, and gone when it writes.
TEST_F(CliOutputs, FolderThatVanishesIsAnError) {
  std::filesystem::create_directory(folder / "out");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const std::string bytes = ReadDisk(pump);
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[1]);
    const std::string in = "/proc/self/fd/" + std::to_string(ends[0]);
    const Outcome outcome =
        RunOstrand({"generate", "-", "-oout"}, {.folder = folder.Path(), .in = in});
    const bool told = Holds(outcome.err, "No such file or directory") && outcome.out.empty();
    ::_exit(outcome.code == 1 && told ? 0 : 1);
  }
  ::close(ends[0]);
  // Standard input is read after the folder was looked for: what was sent has been read then.
  ASSERT_GT(::write(ends[1], bytes.data(), 100), 0);
  for (int unread = 1; unread > 0;) ASSERT_EQ(::ioctl(ends[1], FIONREAD, &unread), 0);
  std::filesystem::remove(folder / "out");
  ASSERT_GT(::write(ends[1], bytes.data() + 100, bytes.size() - 100), 0);
  ::close(ends[1]);
  EXPECT_EQ(testing::EndOf(child), 0);
}

}  // namespace
}  // namespace ostrand
