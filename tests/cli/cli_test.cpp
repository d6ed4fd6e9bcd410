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
      {{"generate", "-qj", "x", "y"}, "-j takes N, not \"x\"", " generate"},
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

TEST_F(Cli, OutputOfAProjectIsIndependentOfOthers) {
  const std::string examples = OSTRAND_SOURCE_DIR "/examples/";
  const std::string first = examples + "engine-test-cell.VKG";
  const std::string second = examples + "building-climate.VKG";
  makeFolders({"alone", "both"});
  EXPECT_EQ(RunOstrand({"generate", second, "-o", folder / "alone"}).out,
            wrote(folder / "alone/building-climate"));
  const Outcome both = RunOstrand({"generate", first, second, "--output=" + (folder / "BOTH")});
  EXPECT_EQ(both.code, 0);
  EXPECT_EQ(both.out,
            wrote(folder / "both/engine-test-cell") + wrote(folder / "both/building-climate"));
  EXPECT_EQ(ReadDisk(folder / "both/building-climate.VKP"),
            ReadDisk(folder / "alone/building-climate.VKP"));
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

TEST_F(Cli, RefusesTwoProjectsOfOneName) {
  makeFolders({"a", "b", "out"});
  makeProject(folder / "a/pump");
  makeProject(folder / "b/PUMP");
  const Outcome outcome =
      RunOstrand({"resave", folder / "a/pump.VKG", folder / "b/PUMP.VKG", "-o", folder / "out"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "wrote " + (folder / "out/pump.VKG") + "\n");
  EXPECT_TRUE(Holds(outcome.err, "out/PUMP.VKG: already written in this run; not overwritten"));
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

// ---- Lists of CAN items

const std::string kBase =
    "ORVUSV5\r\nDescription,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,"
    "DataType,StartBit,Numbits,Alias,Mult,Offset,Units";

class CliCan : public ::testing::Test {
 protected:
  testing::TempFolder folder;
  const std::string path = folder / "engine.29LST";
};

TEST_F(CliCan, ListsAndChecksItems) {
  WriteDisk(path, kBase +
                      ",TxDataID,TxDataFrame,RxDataMatch,RxTimeout\r\n"
                      "\"&HSpeed, EEC1\",3,0,0,240,4,0,2,25,16,EngSpeed,0.125,0,RPM,,,,\r\n"
                      "\"Oil \xB0\",291,-1,-1,-1,-1,0,2,25,8,OilTemp,1,-40,Deg_C,"
                      "&H18DB33F1,&H00000000005C0102,&HXXXXXXXXXX5C41XX,200\r\n");
  const Outcome list = RunOstrand({"can", "list", path});
  EXPECT_EQ(list.code, 0);
  // 3 * 2^26 + 240 * 2^16 + 4 * 2^8 = 0xCF00400
  EXPECT_EQ(list.out, path + R"(: 2 items, identifiers of 29 bits
No.  Identifier  PGN     Message  Type  Bit  Bits  Mult   Offset  Units  Alias     Description
1    &HCF00400   &HF004  Rx       2     25   16    0.125  0       RPM    EngSpeed  Speed, EEC1
2    291         1       Tx/Rx    2     25   8     1      -40     Deg_C  OilTemp   Oil °
     sends &H00000000005C0102 to &H18DB33F1, takes &HXXXXXXXXXX5C41XX within 200 ms
)");
  const Outcome check = RunOstrand({"can", "check", path});
  EXPECT_EQ(check.code, 0);
  EXPECT_EQ(check.out, path + ": all items are valid\n");
  EXPECT_EQ(RunOstrand({"can", "list", path}, {.out = "/dev/full"}).code, 1);
}

TEST_F(CliCan, ListStopsAtInvalidLineAndCheckContinues) {
  WriteDisk(path, kBase +
                      "\r\n\"Speed\",3,0,0,240,4,0,2,25,16,EngSpeed,0.125,0,RPM\r\n"
                      "\"Cut off\",3,0,0,240\r\n\r\n"
                      "\"Seventh\",3,0,0,240,4,0,7,25,16,Other,1,0,RPM\r\n");
  const Outcome list = RunOstrand({"can", "list", path});
  EXPECT_EQ(list.code, 1);
  EXPECT_EQ(list.out, "");
  EXPECT_EQ(list.err,
            "ostrand: An error occurred while reading the pick list.\nCheck Line Number : 4\n");
  const Outcome check = RunOstrand({"can", "check", path});
  EXPECT_EQ(check.code, 1);
  EXPECT_EQ(check.out, path + ": line 4: 5 fields where the header has 14\n" + path +
                           ": line 6: DataType \"7\" is out of the range from 1 to 6\n");
}

}  // namespace
}  // namespace ostrand
