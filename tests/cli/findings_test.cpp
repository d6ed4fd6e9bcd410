// The commands that show something: their exact outputs, findings, differences.
#include <gtest/gtest.h>

#include <cstdlib>
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

class CliFindings : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunOstrand({"new", rig}).code, 0);
    clean = ReadDisk(rig);
  }
  // Two tables of one name.
  void spoil() const {
    std::string bytes = clean;
    const std::string tables = "\r\n[TABLE SETUP]\r\n";
    bytes.insert(bytes.find(tables) + tables.size(), "TableOn(2)=-1\r\nTableName(2)=Table1\r\n");
    WriteDisk(rig, bytes);
  }

  const testing::TempFolder folder;
  const testing::Setting here{.folder = folder.Path()};
  const std::string rig = folder / "rig.VKG";
  std::string clean;
};

TEST_F(CliFindings, WarningsCountAsErrorsOnRequest) {
  WriteDisk(rig, clean);
  EXPECT_EQ(RunOstrand({"check", rig, "--warnings-as-errors"}).code, 0);
  std::string bytes = clean;
  bytes.insert(bytes.find("\r\n[PULSE BLOCKS]"),
               "\r\n[VOLTAGE BLOCKS]\r\nBlockCount= 1\r\nReps(1)= 1\r\nMeasType(1)=Diff\r\n"
               "OpenSensDetect(1)= 0\r\nStartVoltChan(1)= 1\r\n");
  WriteDisk(rig, bytes);
  EXPECT_EQ(RunOstrand({"check", rig}).code, 0);
  EXPECT_TRUE(Holds(RunOstrand({"check", rig, "--severity", "warning"}).out, ": 1 warning\n"));
  const Outcome strict = RunOstrand({"check", rig, "--warnings-as-errors", "--severity=error"});
  EXPECT_EQ(strict.code, 1);
  EXPECT_TRUE(Holds(strict.out, ": error: FLOATING GROUND")) << strict.out;
}

TEST_F(CliFindings, LintChecksAProgramAlone) {
  ASSERT_EQ(RunOstrand({"generate", rig}).code, 0);
  const std::string program = folder / "rig.VKP";
  WriteDisk(program, ReadDisk(program) + "X = 1\r\n");
  const Outcome outcome = RunOstrand({"lint", "-r", "."}, here);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(Holds(outcome.out, ": error: X is not declared [undeclared-name]\n")) << outcome.out;
  EXPECT_TRUE(
      Holds(RunOstrand({"lint", "none.VKP", "--format=json"}, here).out, "\"opened\": false"));
  EXPECT_EQ(RunOstrand({"lint", "rig.VKG"}, here).err,
            "ostrand: rig.VKG: is a project, not a program; shown by: ostrand check rig.VKG\n");
  WriteDisk(folder / "empty.VKG", "");
  EXPECT_EQ(RunOstrand({"check", "-q", "empty.VKG"}, here).out,
            "empty.VKG:1: warning: The file has no section of a project; all is as in a new one "
            "[line-not-read]\n");
}

TEST_F(CliFindings, GenerateWarnsAndRefusesOnRequest) {
  EXPECT_EQ(RunOstrand({"generate", "rig.VKG", "--checked"}, here).err, "");
  spoil();
  const std::string found = "1 finding, 1 prevents saving; shown by: ostrand check rig.VKG\n";
  const Outcome warned = RunOstrand({"generate", "rig.VKG"}, here);
  EXPECT_EQ(warned.code, 0);
  EXPECT_EQ(warned.err, "ostrand: rig.VKG: warning: " + found);
  EXPECT_EQ(RunOstrand({"generate", "-q", "rig.VKG"}, here).err, "");
  std::filesystem::remove(folder / "rig.VKP");
  const Outcome refused = RunOstrand({"generate", "rig.VKG", "--checked"}, here);
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.err, "ostrand: rig.VKG: not generated: " + found);
  EXPECT_FALSE(std::filesystem::exists(folder / "rig.VKP"));
}

const std::string kExample = OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG";

class CliDocuments : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string bytes = ReadDisk(kExample);
    WriteDisk(folder / "a.VKG", bytes);
    const std::string scan = "\r\nExecutionTime=";
    const std::size_t at = bytes.find(scan) + scan.size();
    before = Trim(bytes.substr(at, bytes.find("\r\n", at) - at));
    bytes.replace(at, bytes.find("\r\n", at) - at, " 77");
    WriteDisk(folder / "b.VKG", bytes);
  }
  Outcome run(const std::vector<std::string>& words) const {
    return RunOstrand(words, {.folder = folder.Path()});
  }
  const testing::TempFolder folder;
  std::string before;
};

TEST_F(CliDocuments, DiffShowsWordsOrKeys) {
  const Outcome words = run({"diff", "a.VKG", "b.VKG"});
  EXPECT_EQ(words.code, 1);
  EXPECT_TRUE(Holds(words.out, " 77, was " + before + "\n")) << words.out;
  const std::string json = run({"diff", "a.VKG", "b.VKG", "--format=json"}).out;
  for (const std::string& part :
       {std::string(R"("change": "value")"), std::string(R"("key": "ExecutionTime")"),
        R"("before": ")" + before + "\"", std::string(R"("after": "77")")}) {
    EXPECT_TRUE(Holds(json, part)) << part << json;
  }
  // Equal but for the moment of the last save.
  const Outcome same = run({"diff", "a.VKG", kExample});
  EXPECT_EQ(same.code, 0);
  EXPECT_EQ(same.out, "");
  EXPECT_EQ(run({"diff", "a.VKG", "none.VKG"}).err,
            "ostrand: none.VKG: No such file or directory\n");
  WriteDisk(folder / "bad.VKG", "[SCAN SETUP]\r\nNothing=1\r\n");
  EXPECT_TRUE(Holds(run({"diff", "bad.VKG", "a.VKG"}).err, "bad.VKG: warning: line 2: Nothing=1"));
}

// As git calls it for one state of a file, and for a file that one state does not have.
TEST_F(CliDocuments, DiffOfOneProjectShowsWhatItSets) {
  const Outcome alone = run({"diff", "b.VKG"});
  EXPECT_EQ(alone.code, 0);
  EXPECT_TRUE(Holds(alone.out, "Voltage block 1: added\nVoltage block 1: ")) << alone.out;
  EXPECT_FALSE(Holds(alone.out, "\"")) << "values in words" << alone.out;
  // Each change of a block is seen between two states.
  std::string bytes = ReadDisk(folder / "b.VKG");
  const std::size_t units = bytes.find("\r\nUnits(1)=", bytes.find("[VOLTAGE BLOCKS]"));
  bytes.insert(units + 11, "furlongs per ");
  WriteDisk(folder / "c.VKG", bytes);
  EXPECT_TRUE(Holds(run({"diff", "c.VKG"}).out, "Voltage block 1: units furlongs per "));
  EXPECT_TRUE(
      Holds(run({"diff", "--keys", "c.VKG"}).out, "[VOLTAGE BLOCKS] Units(1): furlongs per "));
  const Outcome added = run({"diff", "/dev/null", "b.VKG"});
  EXPECT_EQ(added.code, 1);
  EXPECT_EQ(added.out, alone.out);
}

// The files of the folder hold outputs, messages and exit codes. They come from the command; the
// findings were read against the samples, the documents against the golden text of the example.
TEST(CliDocument, HasTheGoldenBytes) {
  const std::string files =
      "tests/samples/full-6.VKG tests/samples/none.VKG "
      "examples/building-climate.VKG";
  const std::pair<std::string, std::string> cases[] = {
      {"summary.rtf", "summary --rtf examples/engine-test-cell.VKG"},
      {"summary.json",
       "summary --format=json examples/engine-test-cell.VKG examples/weather-mast.VKG"},
      {"wiring.rtf", "wiring --rtf examples/engine-test-cell.VKG"},
      {"wiring.json", "wiring --format=json examples/engine-test-cell.VKG"},
      {"check.txt", "check " + files},
      {"check.json", "check --format=json " + files},
      {"check.sarif", "check --format=sarif " + files},
      {"check-errors.txt", "check -q --severity=error --color=always " + files},
      {"can-list.txt", "can list tests/scripts/logger/vehicle.29LST"},
      {"can-list.json", "can list --format=json tests/scripts/logger/vehicle.29LST"},
      {"can-list-stops.txt", "can list tests/scripts/logger/bad-line.29LST"},
      {"can-check.txt", "can check tests/scripts/logger/bad-line.29LST"},
      {"can-check.json", "can check --format=json tests/scripts/logger/vehicle.29LST"},
      {"settings.txt", "settings list"},
      {"settings.json", "settings list --format=json"},
      {"diff.txt", "diff examples/weather-mast.VKG tests/samples/plain-1.VKG"},
      {"diff-keys.txt", "diff --keys examples/weather-mast.VKG tests/samples/plain-1.VKG"},
      {"lint.txt", "lint tests/golden/engine-test-cell.VKP tests/golden/none.VKP"},
  };
  for (const auto& [golden, command] : cases) {
    const auto words = Split(command, ' ');
    const Outcome outcome = RunOstrand({words.begin(), words.end()},
                                       {.epoch = "1047305100", .folder = OSTRAND_SOURCE_DIR});
    EXPECT_EQ(outcome.out + outcome.err + "exit code " + std::to_string(outcome.code) + "\n",
              ReadDisk(OSTRAND_SOURCE_DIR "/tests/golden/commands/" + golden))
        << golden;
  }
}

TEST_F(CliDocuments, CompileGivesTimesInJson) {
  ::setenv("STAND_IN", "good", 1);
  const Outcome times = run({"compile", "a.VKG", "--compiler", OSTRAND_STAND_IN, "--format=json"});
  EXPECT_EQ(times.code, 0) << times.err;
  EXPECT_TRUE(Holds(times.out, R"("kind": "Voltage", "block": 1, "time": )")) << times.out;
  EXPECT_FALSE(Holds(times.out, "test compiled")) << times.out;
}

}  // namespace
}  // namespace ostrand
