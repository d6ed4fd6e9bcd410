// The command line: a process with arguments, files, messages and an exit code.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::WriteDisk;

// The output for the files of a generated program.
std::string wrote(const std::string& base) {
  return "wrote " + base + ".VKP\nwrote " + base + ".VKD\nwrote " + base + ".VKW\n";
}

class Cli : public ::testing::Test {
 protected:
  void makeFolders(std::initializer_list<std::string_view> names) {
    for (const auto name : names) std::filesystem::create_directory(folder / name);
  }
  void makeProject(const std::string& path) { ASSERT_EQ(RunOstrand({"new", path}).code, 0); }

  const testing::TempFolder folder;
  const testing::Setting here{.folder = folder.Path()};
  const std::string pump = folder / "pump.VKG";
};

TEST_F(Cli, WrongUsageExitsWithTwoAndNamesTheHelp) {
  // The last member is the command whose help the hint names.
  const std::tuple<std::vector<std::string>, std::string, std::string> cases[] = {
      {{}, "missing command", ""},
      {{"generate"}, "missing project file", " generate"},
      {{"generate", ""}, "empty file name", " generate"},
      {{"summary", "--force", "x"}, "unknown option --force; did you mean --format?", " summary"},
      {{"-q", "-Qx", "check", "x"}, "unknown option -Q", " check"},
      {{"check", "-qoDIR", "x"}, "unknown option -o", " check"},
      {{"generate", "-qj", "x", "y"}, "-j takes a number from 0 to 256, not \"x\"", " generate"},
      {{"generate", "--outptu", "x"},
       "unknown option --outptu; did you mean --output?",
       " generate"},
      {{"genrate", "x"}, "unknown command genrate; did you mean generate?", ""},
      {{"generate", "x", "-o"}, "-o needs a value", " generate"},
      {{"new", "--force=1", "x"}, "--force takes no value", " new"},
      {{"check", "x", "--format", "xml"}, "--format takes text|json|sarif, not \"xml\"", " check"},
      {{"save", "x", "--send", "bench:"}, "--send takes HOST:PORT, not \"bench:\"", " save"},
      {{"settings", "set", "GenPath", "x", "y"}, "too many arguments: y", " settings"},
      {{"new", "x", "y"}, "new takes one file", " new"},
      {{"new", "-"}, "new takes a file, not standard input", " new"},
      {{"generate", "x", "-o", "-", "--check"},
       "-o - prints a file; --check, --diff and --dry-run print none",
       " generate"},
      {{"can", "show", "x"}, "expected list or check, not show", " can"},
      {{"new", "x", "--answer", "TROUBLE=maybe"},
       "--answer takes TITLE=yes|no|cancel|ok|overwrite, not \"TROUBLE=maybe\"",
       " new"},
  };
  for (const auto& [arguments, message, help] : cases) {
    const Outcome outcome = RunOstrand(arguments, here);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.err, "ostrand: " + message + "\nTry: ostrand help" + help + "\n");
    EXPECT_EQ(outcome.out, "");
  }
  const Outcome epoch = RunOstrand({"new", "x"}, {.epoch = "soon", .folder = folder.Path()});
  EXPECT_EQ(epoch.code, 2);
  EXPECT_EQ(epoch.err, "ostrand: SOURCE_DATE_EPOCH: \"soon\" is not a number of seconds\n");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(Cli, ShowsVersionAndOptionsOfEachCommand) {
  const std::string version = RunOstrand({"--version"}).out;
  EXPECT_TRUE(version.starts_with("ostrand 6.1.0.07\nbuild: ")) << version;
  EXPECT_TRUE(Holds(version, "\ncommit: ")) << version;
  EXPECT_EQ(RunOstrand({"generate", "-V"}).out, version);
  EXPECT_TRUE(Holds(RunOstrand({"--help"}).out, "\n  generate FILE.VKG"));
  const std::string own = RunOstrand({"help", "generate"}).out;
  EXPECT_EQ(own, RunOstrand({"generate", "--help"}).out);
  EXPECT_TRUE(Holds(own, "--host-app") && !Holds(own, "--rtf"));
  EXPECT_EQ(RunOstrand({"--version"}, {.out = "/dev/full"}).code, 1);
}

// The files of all examples by one command, whose folder is found in any case.
TEST_F(Cli, GeneratesTheGoldenFilesOfAllExamples) {
  makeFolders({"out"});
  const Outcome all = RunOstrand({"generate", "-r", OSTRAND_SOURCE_DIR "/examples", "-o", "OUT"},
                                 {.epoch = "1047305100", .folder = folder.Path()});
  EXPECT_EQ(all.code, 0) << all.err;
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "out")) {
    const std::string name = entry.path().filename();
    EXPECT_EQ(ReadDisk(entry.path()), ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/" + name)) << name;
    EXPECT_TRUE(Holds(all.out, "wrote out/" + name + "\n")) << all.out;
    ++files;
  }
  EXPECT_EQ(files, 3 * 7);
}

TEST_F(Cli, NewProjectSurvivesResaveUnchanged) {
  EXPECT_EQ(RunOstrand({"new", "pump"}, here).out, "wrote pump.VKG\n");
  const std::string bytes = ReadDisk(pump);
  const Outcome again = RunOstrand({"new", "pump.VKG"}, here);
  EXPECT_EQ(again.code, 1);
  EXPECT_EQ(again.err, "ostrand: pump.VKG: already exists; --force replaces it\n");
  WriteDisk(pump, "old");
  EXPECT_EQ(RunOstrand({"new", "PUMP", "--force"}, here).out, "wrote PUMP.VKG\n");
  EXPECT_EQ(ReadDisk(folder / "PUMP.VKG"), bytes);
  EXPECT_FALSE(std::filesystem::exists(pump));

  EXPECT_EQ(RunOstrand({"resave", "--", "pump.VKG"}, here).code, 0);
  EXPECT_EQ(ReadDisk(pump), bytes);
  // Without -o the program goes beside the project.
  EXPECT_EQ(RunOstrand({"generate", pump}).out, wrote(folder / "pump"));
}

TEST_F(Cli, FaultNamesTheFileAndDoesNotStopTheNext) {
  makeFolders({"inner.VKG", "out"});
  const std::string inner = folder / "inner.VKG";
  const std::string pipe = folder / "pipe.VKG";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  makeProject(pump);
  const Outcome outcome =
      RunOstrand({"generate", folder / "none", inner, pipe, pump, "-o", folder / "out"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, wrote(folder / "out/pump"));
  EXPECT_EQ(outcome.err, "ostrand: " + inner + ": is a folder; -r takes the .VKG files in it\n" +
                             (folder / "none") +
                             ": FILE NOT FOUND\n  The requested program generator file: \n  " +
                             Upper(folder / "none.VKG") +
                             "\n\n  could not be located on this computer.\n" + "ostrand: " + pipe +
                             ": Not a regular file\n");

  for (const auto& [name, error] :
       {std::pair("none", ": no such directory\n"), std::pair("pump.VKG", ": not a directory\n")}) {
    const Outcome noFolder = RunOstrand({"generate", pump, "-o", folder / name});
    EXPECT_EQ(noFolder.code, 1);
    EXPECT_EQ(noFolder.err, "ostrand: " + (folder / name) + error);
  }
}

TEST_F(Cli, ReportsAndRecoversAnInterruptedSave) {
  makeProject(pump);
  const std::string bytes = ReadDisk(pump);
  for (const std::string left : {"pump._KG", ".pump.VKG.writing"}) {
    std::filesystem::rename(pump, folder / left);
    const Outcome missing = RunOstrand({"generate", "pump"}, here);
    EXPECT_EQ(missing.code, 1);
    EXPECT_TRUE(
        missing.err.ends_with("could not be located on this computer.\n"
                              "An earlier save was interrupted: " +
                              left +
                              " holds the project. To restore it: ostrand recover "
                              "pump.VKG\n"))
        << missing.err;
    const Outcome fresh = RunOstrand({"new", "pump"}, here);
    EXPECT_EQ(fresh.code, 1);
    EXPECT_EQ(fresh.err, "ostrand: " + left +
                             ": left by an interrupted save. To restore the project: "
                             "ostrand recover pump.VKG; --force starts a new one\n");
    EXPECT_FALSE(std::filesystem::exists(pump));
    EXPECT_EQ(RunOstrand({"recover", "pump"}, here).out, "recovered pump.VKG from " + left + "\n");
    EXPECT_EQ(ReadDisk(pump), bytes);
    EXPECT_EQ(RunOstrand({"recover", "pump"}, here).code, 1);
  }
  std::filesystem::rename(pump, folder / "pump._KG");
  const Outcome forced = RunOstrand({"new", "pump", "--force"}, here);
  EXPECT_EQ(forced.code, 0);
  EXPECT_TRUE(Holds(forced.err, "pump: EARLIER SAVE KEPT\n")) << forced.err;
  EXPECT_EQ(ReadDisk(folder / "pump._KG.1"), bytes);
}

TEST_F(Cli, FullDiskKeepsOldFilesAndGivesOneErrorLine) {
  makeProject(pump);
  WriteDisk(folder / "pump.VKP", "old program");
  const std::string project = ReadDisk(pump);
  for (const std::string command : {"generate", "resave"}) {
    const Outcome outcome = RunOstrand({command, pump, "--force"}, {.maxBytes = 512});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    const std::string file = pump + (command == "generate" ? ": " + (folder / "pump.VKP") : "");
    EXPECT_EQ(outcome.err, "ostrand: " + file + ": File too large\n");
  }
  EXPECT_EQ(ReadDisk(folder / "pump.VKP"), "old program");
  EXPECT_EQ(ReadDisk(pump), project);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
}

}  // namespace
}  // namespace ostrand
