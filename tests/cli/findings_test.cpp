// The commands check and lint, and the warning of generate.
#include <gtest/gtest.h>

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
  // Two tables of one name, a floating voltage block, and blocks that share inputs.
  void spoil() {
    std::string bytes = clean;
    const std::string tables = "\r\n[TABLE SETUP]\r\n";
    bytes.insert(bytes.find(tables) + tables.size(), "TableOn(2)=-1\r\nTableName(2)=Table1\r\n");
    const std::string automatic = "\r\nAutoChan=-1\r\n";
    bytes.replace(bytes.find(automatic), automatic.size(), "\r\nAutoChan= 0\r\n");
    const std::string pulses = "\r\n[PULSE BLOCKS]\r\n";
    bytes.insert(bytes.find(pulses),
                 "\r\n[VOLTAGE BLOCKS]\r\nBlockCount= 2\r\nReps(1)= 2\r\nMeasType(1)=Diff\r\n"
                 "OpenSensDetect(1)= 0\r\nStartVoltChan(1)= 1\r\nReps(2)= "
                 "1\r\nMeasType(2)=SE\r\nStartVoltChan(2)= 2\r\n");
    WriteDisk(rig, bytes);
  }
  // The line of a key in the file.
  [[nodiscard]] std::string lineOf(const std::string& key) const {
    const std::string bytes = ReadDisk(rig);
    const std::string before = bytes.substr(0, bytes.find("\r\n" + key) + 2);
    return std::to_string(std::count(before.begin(), before.end(), '\n') + 1);
  }

  const testing::TempFolder folder;
  const testing::Setting here{.folder = folder.Path()};
  const std::string rig = folder / "rig.VKG";
  std::string clean;
};

TEST_F(CliFindings, AreLinesWithFilePlaceSeverityAndCode) {
  spoil();
  const Outcome all = RunOstrand({"check", "rig.VKG"}, here);
  EXPECT_EQ(all.code, 1);
  const std::string error = "rig.VKG:" + lineOf("TableName(2)") +
                            ": error: DUPLICATION FOUND: \"TABLE1\" is used as [ Table1  name ] "
                            "and [ Table2  name ]. [duplicate-name]\n";
  EXPECT_TRUE(all.out.starts_with(error)) << all.out;
  EXPECT_TRUE(Holds(all.out,
                    ": warning: FLOATING GROUND WARNING: Voltage block 1. "
                    "[floating-ground]\n"))
      << all.out;
  EXPECT_TRUE(Holds(all.out, "rig.VKG:" + lineOf("StartVoltChan(2)") +
                                 ": notice: Voltage block 1 and Voltage block 2 share analog input "
                                 "2 [shared-terminal]\n"))
      << all.out;
  EXPECT_TRUE(Holds(all.out, "\nrig.VKG: 1 error, 1 warning, ")) << all.out;

  EXPECT_EQ(RunOstrand({"check", "-q", "rig.VKG", "--severity=error"}, here).out, error);
  EXPECT_TRUE(Holds(RunOstrand({"check", "rig.VKG", "--severity", "warning"}, here).out,
                    "\nrig.VKG: 1 error, 1 warning\n"));
  const Outcome colored = RunOstrand({"--color=always", "check", "rig.VKG"}, here);
  EXPECT_TRUE(Holds(colored.out, ": \x1B[31merror\x1B[0m: ")) << colored.out;
}

TEST_F(CliFindings, WarningsCountAsErrorsOnRequest) {
  WriteDisk(rig, clean);
  EXPECT_EQ(RunOstrand({"check", rig, "--warnings-as-errors"}).code, 0);
  std::string bytes = clean;
  bytes.insert(bytes.find("\r\n[PULSE BLOCKS]"),
               "\r\n[VOLTAGE BLOCKS]\r\nBlockCount= 1\r\nReps(1)= 1\r\nMeasType(1)=Diff\r\n"
               "OpenSensDetect(1)= 0\r\nStartVoltChan(1)= 1\r\n");
  WriteDisk(rig, bytes);
  EXPECT_EQ(RunOstrand({"check", rig}).code, 0);
  const Outcome strict = RunOstrand({"check", rig, "--warnings-as-errors", "--severity=error"});
  EXPECT_EQ(strict.code, 1);
  EXPECT_TRUE(Holds(strict.out, ": error: FLOATING GROUND")) << strict.out;
}

TEST_F(CliFindings, SarifHasARuleAndALineForEachResult) {
  spoil();
  const Outcome sarif = RunOstrand({"check", "rig.VKG", "--format=sarif"}, here);
  EXPECT_EQ(sarif.code, 1);
  for (const std::string& part :
       {std::string(R"("version": "2.1.0")"), std::string(R"("id": "duplicate-name")"),
        std::string(R"("ruleId": "duplicate-name")"), std::string(R"("level": "error")"),
        std::string(R"("level": "note")"), std::string(R"("uri": "rig.VKG")"),
        "\"startLine\": " + lineOf("TableName(2)")}) {
    EXPECT_TRUE(Holds(sarif.out, part)) << part << sarif.out;
  }
  EXPECT_TRUE(sarif.out.ends_with("]}]}\n"));
  // Without findings, and for a file that is not there, it is a report as well.
  WriteDisk(rig, clean);
  const Outcome none = RunOstrand({"check", rig, folder / "none.VKG", "--format=sarif"});
  EXPECT_EQ(none.code, 1);
  EXPECT_TRUE(Holds(none.out, "\"executionSuccessful\": false")) << none.out;
  EXPECT_TRUE(Holds(none.out, "\"results\": []")) << none.out;
}

TEST_F(CliFindings, JsonLeadsToTheControl) {
  spoil();
  const Outcome json = RunOstrand({"check", "rig.VKG", "--format=json"}, here);
  for (const std::string_view part :
       {R"("code": "duplicate-name")", "\"key\": \"TableName(2)\"", R"("screen": "frmOutInt")",
        R"("control": "TableName")", R"("againstSaving": true)"}) {
    EXPECT_TRUE(Holds(json.out, part)) << part << json.out;
  }
}

TEST_F(CliFindings, LintChecksAProgramAlone) {
  ASSERT_EQ(RunOstrand({"generate", rig}).code, 0);
  const std::string program = folder / "rig.VKP";
  const Outcome fine = RunOstrand({"lint", "rig.VKP"}, here);
  EXPECT_EQ(fine.code, 0);
  EXPECT_EQ(fine.out, "rig.VKP: all checks passed\n");
  WriteDisk(program, ReadDisk(program) + "X = 1\r\n");
  const Outcome outcome = RunOstrand({"lint", "-r", "."}, here);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(Holds(outcome.out, ": error: X is not declared [undeclared-name]\n")) << outcome.out;
  const Outcome missing = RunOstrand({"lint", "none.VKP", "--format=json"}, here);
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.err, "ostrand: none.VKP: No such file or directory\n");
  EXPECT_TRUE(Holds(missing.out, "\"opened\": false")) << missing.out;
}

TEST_F(CliFindings, GenerateWarnsAndRefusesOnRequest) {
  EXPECT_EQ(RunOstrand({"generate", "rig.VKG", "--checked"}, here).err, "");
  spoil();
  const std::string found = "2 findings, 1 prevents saving; shown by: ostrand check rig.VKG\n";
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

}  // namespace
}  // namespace ostrand
