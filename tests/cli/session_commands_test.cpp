// The commands that check, save, compile and send, and those of the settings.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/listener.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::TempFolder;
using testing::WriteDisk;

const std::vector<std::string> kExtensions = {".VKG", ".VKP", ".VKD", ".VKW"};

std::string wroteAll(const std::string& base) {
  std::string text;
  for (const std::string& extension : kExtensions) text += "wrote " + base + extension + "\n";
  return text;
}

class CliSession : public ::testing::Test {
 protected:
  // A new project with one text in its file replaced; gives its bytes.
  std::string make(std::string_view from = "", std::string_view to = "") {
    EXPECT_EQ(RunOstrand({"new", project, "--force"}).code, 0);
    std::string bytes = ReadDisk(project);
    bytes.replace(bytes.find(from), from.size(), to);
    WriteDisk(project, bytes);
    return bytes;
  }
  std::string makeWithTwoTables(const std::string& second, const std::string& third) {
    return make("\r\n[TABLE SETUP]\r\n",
                "\r\n[TABLE SETUP]\r\nTableOn(2)=-1\r\nTableName(2)=" + second +
                    "\r\nTableOn(3)=-1\r\nTableName(3)=" + third + "\r\n");
  }

  const TempFolder folder;
  const TempFolder home;
  const std::string base = folder / "pump";
  const std::string project = base + ".VKG";
};

TEST_F(CliSession, CheckTellsFindingsWithTheirPlaceAndWritesNothing) {
  const std::string bytes = makeWithTwoTables("Table1", "T");
  const Outcome text = RunOstrand({"check", project});
  EXPECT_EQ(text.code, 1);
  EXPECT_EQ(text.out, project +
                          ": DUPLICATION FOUND, against saving\n"
                          "  \"TABLE1\" is used as [ Table1  name ] and [ Table2  name ].\n"
                          "  [TABLE SETUP] TableName(2)\n" +
                          project + ": 1 finding, 1 against saving\n");
  EXPECT_EQ(ReadDisk(project), bytes);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);

  makeWithTwoTables("\"T\xE9\\\"", "\"T\xE9\\\"");
  const std::string none = folder / "none.VKG";
  const Outcome json = RunOstrand({"check", "--format=json", none, project});
  EXPECT_EQ(json.code, 1);
  EXPECT_EQ(json.out,
            "[{\"file\": \"" + none + "\", \"opened\": false, \"findings\": []},\n" +
                "{\"file\": \"" + project + R"~(", "opened": true, "findings": [
  {"title": "DUPLICATION FOUND", "text": "\"\"TÉ\\\"\" is used as [ Table2  name ] and )~" +
                R"~([ Table3  name ].", "section": "[TABLE SETUP]", "key": "TableName(3)")~" +
                R"~(, "againstSaving": true}
]}]
)~");

  EXPECT_EQ(RunOstrand({"check", project, "--format=json"}, {.out = "/dev/full"}).code, 1);
}

TEST_F(CliSession, CheckNotesLinesThatWereNotRead) {
  WriteDisk(project, "[CONFIGURATION]\r\nOperator=H. Quist [lab]\r\nIDNumber=7\r\n");
  const Outcome text = RunOstrand({"check", project});
  EXPECT_EQ(text.code, 0);
  EXPECT_EQ(text.out, project + R"(: LINES NOT READ, notice
  2 lines of the file were not read, and the next save drops them.
  line 2: Operator=H. Quist [lab]: "[" in a text, which begins a section
  line 3: IDNumber=7: in no section of a project
)" + project + ": all checks are clean, 1 notice\n");
  const Outcome json = RunOstrand({"check", "--format=json", project});
  EXPECT_EQ(json.code, 0);
  EXPECT_EQ(json.out, "[{\"file\": \"" + project +
                          R"(", "opened": true, "notices": [{"title": "LINES NOT READ", "text": )" +
                          R"("2 lines of the file were not read, and the next save drops them.\n)" +
                          R"(line 2: Operator=H. Quist [lab]: \"[\" in a text, which begins a )" +
                          R"(section\nline 3: IDNumber=7: in no section of a project"}], )" +
                          "\"findings\": []}]\n");
}

TEST_F(CliSession, SaveWritesAllFilesAndAsksAsTheScreenDoes) {
  std::filesystem::create_directory(folder / "out");
  const std::string bytes = makeWithTwoTables("Table1", "T");
  const Outcome refused = RunOstrand({"save", project});
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_TRUE(Holds(refused.err, "Save it anyway?\n  answered [n]o, nobody being asked\n"));
  EXPECT_TRUE(refused.err.ends_with("ostrand: " + project + " was not saved\n"));
  const Outcome saved = RunOstrand(
      {"save", project, "-o", folder / "out", "--answer", "Save Generator Project ?=yes"});
  EXPECT_EQ(saved.code, 0) << saved.err;
  EXPECT_EQ(saved.out, wroteAll(folder / "out/pump"));
  EXPECT_EQ(ReadDisk(project), bytes);

  // A clean one in its own place; the compiler is not there, which keeps nothing from being saved.
  make();
  const Outcome clean = RunOstrand({"save", "pump"}, {.folder = folder.Path()});
  EXPECT_EQ(clean.code, 0);
  EXPECT_EQ(clean.out, wroteAll("pump"));
  EXPECT_TRUE(Holds(clean.err, "pump: MISSING FILE\n  Pre-Compiler was not found.\n"));

  // What was written before a step failed is told.
  std::filesystem::remove(base + ".VKD");
  std::filesystem::create_directories(base + ".VKD/inner");
  const Outcome half = RunOstrand({"save", project});
  EXPECT_EQ(half.code, 1);
  EXPECT_EQ(half.out, "wrote " + project + "\nwrote " + base + ".VKP\n");
}

TEST_F(CliSession, CompileTellsTheTimesAndStoresThemWhenAsked) {
  const std::string bytes = make("\r\nMonitorPower(1)= 0\r\n", "\r\nMonitorPower(1)=-1\r\n");
  std::vector<std::string> words = {"compile", project, "--compiler", OSTRAND_STAND_IN};
  ::setenv("STAND_IN", "good", 1);
  const Outcome told = RunOstrand(words, {.home = home.Path()});
  EXPECT_EQ(told.code, 0) << told.err;
  EXPECT_TRUE(told.out.starts_with(project + ": test compiled OK\n  Battery   "));
  EXPECT_TRUE(Holds(told.err, project + ": COMPILE RESULT\n  Pre-Compiler: " +
                                  (home / "TEMP$$$$.VKP") + "\n  Version No: 6.3   Date Code: "));
  EXPECT_EQ(ReadDisk(project), bytes);
  EXPECT_TRUE(std::filesystem::is_empty(home.Path()));

  words.emplace_back("--store");
  EXPECT_TRUE(RunOstrand(words).out.ends_with(" uSec\nwrote " + project + "\n"));
  const std::string after = ReadDisk(project);
  EXPECT_TRUE(Holds(after, "\r\nBatteryTime= 1"));

  ::setenv("STAND_IN", "noversion", 1);
  const Outcome skipped = RunOstrand(words);
  EXPECT_EQ(skipped.code, 1);
  EXPECT_EQ(skipped.err, "ostrand: Skipped version. " OSTRAND_STAND_IN
                         " ended without a report\nostrand: " +
                             project + " did not compile\n");
  EXPECT_EQ(ReadDisk(project), after);
}

TEST_F(CliSession, SaveSendsAndTellsWhenNobodyIsThere) {
  make();
  std::string name;
  std::vector<std::string> words = {"save", project, "--compiler", OSTRAND_STAND_IN, "--send"};
  {
    const testing::Listener server;
    name = server.Name();
    words.push_back(name);
    ::setenv("STAND_IN", "good", 1);
    EXPECT_EQ(RunOstrand(words).out, wroteAll(base) + "sent to " + name + "\n");
    const std::string program = base + ".VKP";
    const std::string received = server.Received();
    EXPECT_EQ(received.size(), 35 + program.size());
    EXPECT_TRUE(received.ends_with(static_cast<char>(program.size()) + program));
  }
  const Outcome nobody = RunOstrand(words);
  EXPECT_EQ(nobody.code, 1);
  EXPECT_EQ(nobody.err,
            "ostrand: " + name + ": Connection refused; " + project + " was not saved\n");
}

TEST_F(CliSession, SettingsAreShownAndChanged) {
  const testing::Setting kept{.home = home.Path()};
  const auto settings = [&](std::vector<std::string> words) {
    words.insert(words.begin(), "settings");
    return RunOstrand(words, kept);
  };
  EXPECT_EQ(settings({"get", "warningmessagemask"}).out, "8191\n");
  EXPECT_FALSE(std::filesystem::exists(home / "ostrand")) << "looking writes nothing";
  EXPECT_EQ(settings({"set", "WarningMessageMask", "0"}).code, 0);
  const std::string list = settings({"list"}).out;
  EXPECT_TRUE(Holds(list, "\nWarningMessageMask = 0  (default 8191)\n")) << list;
  EXPECT_TRUE(Holds(list, "\nDefaultNumFlags = 8\n"));
  EXPECT_EQ(settings({"get", "Speed"}).err, "ostrand: there is no setting \"Speed\"\n");
  EXPECT_EQ(settings({"set", "DefaultInputType", "7"}).code, 1);

  // They count for the other commands: without its bit a check finds no floating input.
  const std::string example = OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG";
  EXPECT_EQ(RunOstrand({"check", example}, kept).out, example + ": all checks are clean\n");
  // A damaged file is told, and no fault of the project.
  WriteDisk(home / "ostrand/settings", std::string("\0\0", 2));
  const Outcome damaged = RunOstrand({"check", example}, kept);
  EXPECT_EQ(damaged.code, 0) << damaged.err;
  EXPECT_TRUE(Holds(damaged.err, ": SETTINGS\n"));
}

TEST_F(CliSession, TwoSavesAtOnceNeverMixAFile) {
  for (const auto* name : {"out", "big", "small"}) std::filesystem::create_directory(folder / name);
  std::filesystem::copy_file(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG",
                             folder / "big/pump.VKG");
  ASSERT_EQ(RunOstrand({"new", folder / "small/pump"}).code, 0);
  for (const auto* file : {"big/pump", "small/pump"}) {
    ASSERT_EQ(RunOstrand({"save", folder / file}).code, 0);
  }
  for (int round = 0; round < 10; ++round) {
    const auto save = [&](const char* file) {
      return testing::StartOstrand({"save", folder / file, "-o", folder / "out"}, home.Path());
    };
    const pid_t first = save("big/pump");
    const pid_t second = save("small/pump");
    EXPECT_EQ(testing::EndOf(first), 0);
    EXPECT_EQ(testing::EndOf(second), 0);
    for (const std::string& extension : kExtensions) {
      const std::string bytes = ReadDisk(folder / ("out/pump" + extension));
      EXPECT_TRUE(bytes == ReadDisk(folder / ("big/pump" + extension)) ||
                  bytes == ReadDisk(folder / ("small/pump" + extension)))
          << round << extension;
    }
    const std::filesystem::directory_iterator entries(folder / "out");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 4);
  }
}

}  // namespace
}  // namespace ostrand
