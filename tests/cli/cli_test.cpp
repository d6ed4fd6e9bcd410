// The command line as its user meets it: a process with arguments, files, messages and a code.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::Setting;
using testing::TempFolder;
using testing::WriteDisk;

Outcome run(const std::vector<std::string>& arguments, const Setting& setting = {}) {
  return testing::RunOstrand(arguments, setting);
}

std::string example(std::string_view name) {
  return OSTRAND_SOURCE_DIR "/examples/" + std::string(name);
}

// What is told of the files of a generated program.
std::string wrote(const std::string& base) {
  return "wrote " + base + ".VKP\nwrote " + base + ".VKD\nwrote " + base + ".VKW\n";
}

TEST(Cli, WrongUsageEndsWithTwoAndNamesTheHelp) {
  struct Case {
    std::vector<std::string> arguments;
    std::string_view message;
  };
  const Case cases[] = {
      {{}, "ostrand: which command?\nTry: ostrand help\n"},
      {{"frobnicate"}, "ostrand: there is no command frobnicate\nTry: ostrand help\n"},
      {{"help", "me"}, "ostrand: there is no command me\nTry: ostrand help\n"},
      {{"generate"}, "ostrand: which project file?\nTry: ostrand help generate\n"},
      {{"generate", ""}, "ostrand: a file name is empty\nTry: ostrand help generate\n"},
      {{"generate", "--forse", "x"},
       "ostrand: there is no option --forse\nTry: ostrand help generate\n"},
      {{"generate", "--force", "x"},
       "ostrand: there is no option --force\nTry: ostrand help generate\n"},
      {{"resave", "--host-app", "X", "x"},
       "ostrand: there is no option --host-app\nTry: ostrand help resave\n"},
      {{"generate", "x", "-o"},
       "ostrand: a value is missing after -o\nTry: ostrand help generate\n"},
      {{"new", "--force=1", "x"}, "ostrand: no value goes with --force\nTry: ostrand help new\n"},
      {{"check", "x", "--format", "xml"},
       "ostrand: --format takes text|json, not \"xml\"\nTry: ostrand help check\n"},
      {{"save", "x", "--send", "bench:"},
       "ostrand: --send takes HOST:PORT, not \"bench:\"\nTry: ostrand help save\n"},
      {{"settings"}, "ostrand: list, get or set?\nTry: ostrand help settings\n"},
      {{"settings", "get"},
       "ostrand: say list, get NAME or set NAME VALUE\nTry: ostrand help settings\n"},
      {{"settings", "set", "GenPath", "x", "y"},
       "ostrand: too much: y\nTry: ostrand help settings\n"},
      {{"new", "x", "y"}, "ostrand: one file at a time, please\nTry: ostrand help new\n"},
      {{"new", "x", "--answer", "TROUBLE=maybe"},
       "ostrand: --answer takes TITLE=yes|no|cancel|ok, not \"TROUBLE=maybe\"\n"
       "Try: ostrand help new\n"},
  };
  const TempFolder folder;
  for (const Case& row : cases) {
    const Outcome outcome = run(row.arguments, {.folder = folder.Path()});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.err, row.message);
    EXPECT_EQ(outcome.out, "");
  }
  const Outcome epoch = run({"new", "x"}, {.epoch = "soon", .folder = folder.Path()});
  EXPECT_EQ(epoch.code, 2);
  EXPECT_TRUE(Holds(epoch.err, "SOURCE_DATE_EPOCH"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Cli, TellsItsVersionAndTheOptionsOfEachCommandOnly) {
  EXPECT_EQ(run({"--version"}).out, "ostrand 6.1.0.07\n");
  const std::string help = run({"--help"}).out;
  for (const std::string_view command : {"generate", "resave", "new"}) {
    EXPECT_TRUE(Holds(help, "\n  " + std::string(command) + " FILE.VKG"));
    const Outcome own = run({"help", std::string(command)});
    EXPECT_EQ(own.code, 0);
    EXPECT_EQ(own.out, run({std::string(command), "--help"}).out);
    EXPECT_TRUE(own.out.starts_with("Usage: ostrand " + std::string(command)));
    EXPECT_EQ(Holds(own.out, "--output"), command != "new");
    EXPECT_EQ(Holds(own.out, "--force"), command == "new");
    EXPECT_EQ(Holds(own.out, "--host-app"), command == "generate");
  }
  EXPECT_EQ(run({"--version"}, {.out = "/dev/full"}).code, 1);
}

TEST(Cli, GeneratesEachProjectAsIfItWereTheOnlyOne) {
  const TempFolder folder;
  const std::string first = example("engine-test-cell.VKG");
  const std::string second = example("building-climate.VKG");
  std::filesystem::create_directory(folder / "alone");
  std::filesystem::create_directory(folder / "both");
  EXPECT_EQ(run({"generate", second, "-o", folder / "alone"}).out,
            wrote(folder / "alone/building-climate"));
  const Outcome both = run({"generate", first, second, "--output=" + (folder / "BOTH")});
  EXPECT_EQ(both.code, 0);
  EXPECT_EQ(both.err, "");
  EXPECT_EQ(both.out,
            wrote(folder / "both/engine-test-cell") + wrote(folder / "both/building-climate"));
  EXPECT_EQ(ReadDisk(folder / "both/building-climate.VKP"),
            ReadDisk(folder / "alone/building-climate.VKP"));
}

TEST(Cli, ANewProjectSavesAgainAsTheSameBytes) {
  const TempFolder folder;
  const Setting here{.folder = folder.Path()};
  EXPECT_EQ(run({"new", "pump"}, here).out, "wrote pump.VKG\n");
  const std::string bytes = ReadDisk(folder / "pump.VKG");
  EXPECT_TRUE(Holds(bytes, "\r\nPCTime=9/9/2001 1:46:40 AM\r\n"));

  const Outcome again = run({"new", "pump.VKG"}, here);
  EXPECT_EQ(again.code, 1);
  EXPECT_EQ(again.err, "ostrand: pump.VKG exists already; --force replaces it\n");
  WriteDisk(folder / "pump.VKG", "old");
  EXPECT_EQ(run({"new", "PUMP", "--force"}, here).out, "wrote PUMP.VKG\n");
  EXPECT_EQ(ReadDisk(folder / "PUMP.VKG"), bytes);
  EXPECT_FALSE(std::filesystem::exists(folder / "pump.VKG"));

  EXPECT_EQ(run({"resave", "--", "pump.VKG"}, here).code, 0);
  EXPECT_EQ(ReadDisk(folder / "pump.VKG"), bytes);
  // Without -o the program goes beside the project.
  EXPECT_EQ(run({"generate", folder / "pump.VKG"}).out, wrote(folder / "pump"));
}

TEST(Cli, FaultsEndWithOneNameTheFileAndGoOnWithTheNext) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "inner.VKG");
  std::filesystem::create_directory(folder / "out");
  ASSERT_EQ(::mkfifo((folder / "pipe.VKG").c_str(), 0600), 0);
  ASSERT_EQ(run({"new", folder / "pump"}).code, 0);
  const Outcome outcome = run({"generate", folder / "none", folder / "inner.VKG",
                               folder / "pipe.VKG", folder / "pump.VKG", "-o", folder / "out"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, wrote(folder / "out/pump"));
  const std::string unreadable =
      ": FILE CANNOT BE READ\n  The requested program generator file could not be read: \n  ";
  const std::string inner = folder / "inner.VKG";
  const std::string pipe = folder / "pipe.VKG";
  EXPECT_EQ(outcome.err,
            (folder / "none") + ": FILE NOT FOUND\n  The requested program generator file: \n  " +
                Upper(folder / "none.VKG") + "\n\n  could not be located on this computer.\n" +
                inner + unreadable + inner + ": Is a directory\n" + pipe + unreadable + pipe +
                ": Not a regular file\n");

  const Outcome noFolder = run({"generate", folder / "pump.VKG", "-o", folder / "none"});
  EXPECT_EQ(noFolder.code, 1);
  EXPECT_EQ(noFolder.err, "ostrand: " + (folder / "none/") + " is no folder\n");
}

TEST(Cli, TwoProjectsOfOneNameNeverShareAnOutput) {
  const TempFolder folder;
  for (const std::string_view name : {"a", "b", "out"}) {
    std::filesystem::create_directory(folder / name);
  }
  ASSERT_EQ(run({"new", folder / "a/pump"}).code, 0);
  ASSERT_EQ(run({"new", folder / "b/PUMP"}).code, 0);
  const Outcome outcome =
      run({"resave", folder / "a/pump.VKG", folder / "b/PUMP.VKG", "-o", folder / "out"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "wrote " + (folder / "out/pump.VKG") + "\n");
  EXPECT_TRUE(Holds(outcome.err, "out/PUMP.VKG was written in this run already"));
}

TEST(Cli, AFullDiskLeavesTheOldFilesAndTellsThePath) {
  const TempFolder folder;
  ASSERT_EQ(run({"new", folder / "pump"}).code, 0);
  WriteDisk(folder / "pump.VKP", "old program");
  const std::string project = ReadDisk(folder / "pump.VKG");
  const Setting full{.mostBytes = 512};

  const Outcome generated = run({"generate", folder / "pump.VKG"}, full);
  EXPECT_EQ(generated.code, 1);
  EXPECT_EQ(generated.out, "");
  EXPECT_TRUE(Holds(generated.err, folder.Path())) << generated.err;
  EXPECT_TRUE(Holds(generated.err, "File too large")) << generated.err;
  const Outcome resaved = run({"resave", folder / "pump.VKG"}, full);
  EXPECT_EQ(resaved.code, 1);
  EXPECT_TRUE(Holds(resaved.err, "ORVUS_GENFILE.SaveProjectFile")) << resaved.err;

  EXPECT_EQ(ReadDisk(folder / "pump.VKP"), "old program");
  EXPECT_EQ(ReadDisk(folder / "pump.VKG"), project);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
}

}  // namespace
}  // namespace ostrand
