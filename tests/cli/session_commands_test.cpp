// The commands that check, save, compile and send, and the settings command.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "support/cli_run.h"
#include "support/listener.h"
#include "support/stand_ins.h"
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
  // A new project with one text in its file replaced; returns its bytes.
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

TEST_F(CliSession, CheckWritesNothingAndEscapesTexts) {
  const std::string bytes = makeWithTwoTables("\"T\xE9\\\"", "\"T\xE9\\\"");
  const std::string none = folder / "none.VKG";
  const Outcome json = RunOstrand({"check", "--format=json", none, project});
  EXPECT_EQ(json.code, 1);
  EXPECT_TRUE(json.out.starts_with("[{\n  \"file\": \"" + none +
                                   "\",\n  \"opened\": false,\n  \"findings\": []\n},\n{"))
      << json.out;
  EXPECT_TRUE(Holds(json.out,
                    R"("text": "\"\"TÉ\\\"\" is used as [ Table2  name ] and [ Table3  name ].")"))
      << json.out;
  EXPECT_EQ(RunOstrand({"check", project, "--format=json"}, {.out = "/dev/full"}).code, 1);
  EXPECT_EQ(ReadDisk(project), bytes);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

// Every command that writes the project reports what it drops, and the first save keeps the old
// file.
TEST_F(CliSession, SaveThatDropsLinesKeepsTheOldFile) {
  const std::string old = "[CONFIGURATION]\r\nOperator=H. Quist [lab]\r\nIDNumber=7\r\n";
  const std::string script = folder / "nothing.txt";
  WriteDisk(script, "");
  const std::string copy = project + ".bak";
  const std::string warning =
      ": warning: 2 lines were not read and are not written (line 2: Operator=H. Quist [lab]: "
      "\"[\" in a text, which begins a section)";
  for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
           {"resave", project}, {"screen", project, script}, {"save", project}}) {
    SCOPED_TRACE(command[0]);
    std::filesystem::remove(copy);
    WriteDisk(project, old);
    std::filesystem::permissions(project, std::filesystem::perms(0600));
    const Outcome first = RunOstrand(command);
    EXPECT_EQ(first.code, 0) << first.err;
    EXPECT_TRUE(Holds(first.err,
                      "ostrand: " + project + warning + "; the old file is kept as " + copy + "\n"))
        << first.err;
    EXPECT_EQ(ReadDisk(copy), old);
    EXPECT_EQ(std::filesystem::status(copy).permissions(), std::filesystem::perms(0600));
    const Outcome second = RunOstrand(command);
    EXPECT_FALSE(Holds(second.err, "warning")) << second.err;
    EXPECT_FALSE(std::filesystem::exists(copy + ".1"));
  }
  // The old file stays where it is.
  WriteDisk(project, old);
  std::filesystem::remove(copy);
  std::filesystem::create_directory(folder / "out");
  const Outcome elsewhere = RunOstrand({"resave", project, "-o", folder / "out"});
  EXPECT_EQ(elsewhere.err, "ostrand: " + (folder / "out/pump.VKG") + warning + "\n");
  EXPECT_FALSE(std::filesystem::exists(copy));
  EXPECT_EQ(ReadDisk(project), old);
}

TEST_F(CliSession, SaveWritesAllFilesAndAsksLikeTheScreen) {
  std::filesystem::create_directory(folder / "out");
  const std::string bytes = makeWithTwoTables("Table1", "T");
  const Outcome refused = RunOstrand({"save", project});
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_TRUE(
      Holds(refused.err, "Save it anyway?\n  answered [n]o (standard input is not a terminal)\n"));
  EXPECT_TRUE(refused.err.ends_with("ostrand: " + project + ": not saved\n"));
  const Outcome saved = RunOstrand(
      {"save", project, "-o", folder / "out", "--answer", "Save Generator Project ?=yes"});
  EXPECT_EQ(saved.code, 0) << saved.err;
  EXPECT_EQ(saved.out, wroteAll(folder / "out/pump"));
  EXPECT_EQ(ReadDisk(project), bytes);

  // Saves a project without findings in place; the missing compiler does not prevent saving.
  make();
  const Outcome clean = RunOstrand({"save", "pump"}, {.folder = folder.Path()});
  EXPECT_EQ(clean.code, 0);
  EXPECT_EQ(clean.out, "unchanged pump.VKG\nwrote pump.VKP\nwrote pump.VKD\nwrote pump.VKW\n");
  EXPECT_TRUE(Holds(clean.err, "pump: MISSING FILE\n  Pre-Compiler was not found.\n"));

  // Files written before a failing step are listed, and the failure is one line.
  std::filesystem::remove(base + ".VKD");
  std::filesystem::create_directories(base + ".VKD/inner");
  const Outcome half = RunOstrand({"save", project, "--force"});
  EXPECT_EQ(half.code, 1);
  EXPECT_EQ(half.out, "wrote " + project + "\nwrote " + base + ".VKP\n");
  EXPECT_TRUE(Holds(half.err, "\nostrand: " + project + ": " + base + ".VKD: Is a directory\n"))
      << half.err;
  EXPECT_FALSE(Holds(half.err, "FILE PROBLEM")) << half.err;
}

TEST_F(CliSession, CompileShowsTheTimesAndStoresThemOnRequest) {
  const std::string bytes = make("\r\nMonitorPower(1)= 0\r\n", "\r\nMonitorPower(1)=-1\r\n");
  std::vector<std::string> words = {"compile", project, "--compiler", OSTRAND_STAND_IN};
  ::setenv("STAND_IN", "good", 1);
  const Outcome shown = RunOstrand(words, {.home = home.Path()});
  EXPECT_EQ(shown.code, 0) << shown.err;
  EXPECT_TRUE(shown.out.starts_with(project + ": test compiled OK\n  Battery   "));
  EXPECT_TRUE(
      Holds(shown.err, project + ": COMPILE RESULT\n  Pre-Compiler: " + (home / "ostrand-")));
  EXPECT_TRUE(Holds(shown.err, "/TEMP$$$$.VKP\n  Version No: 6.3   Date Code: "));
  EXPECT_EQ(ReadDisk(project), bytes);
  EXPECT_TRUE(std::filesystem::is_empty(home.Path()));

  words.emplace_back("--store");
  EXPECT_TRUE(RunOstrand(words).out.ends_with(" uSec\nwrote " + project + "\n"));
  const std::string after = ReadDisk(project);
  EXPECT_TRUE(Holds(after, "\r\nBatteryTime= 1"));

  ::setenv("STAND_IN", "versionnone", 1);
  const Outcome skipped = RunOstrand(words);
  EXPECT_EQ(skipped.code, 1);
  EXPECT_EQ(skipped.err, "ostrand: Skipped version. " OSTRAND_STAND_IN
                         " ended without a report\nostrand: " +
                             project + ": not compiled\n");
  EXPECT_EQ(ReadDisk(project), after);
}

TEST_F(CliSession, SaveSendsAndReportsARefusedConnection) {
  make();
  std::string name;
  std::vector<std::string> words = {"save",           project,   "--compiler",
                                    OSTRAND_STAND_IN, "--force", "--send"};
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

// Pairs of a good program and one that does not compile, compiled and sent at the same time.
TEST_F(CliSession, TwoSendingAtOnceNeverSendTheWrongProgram) {
  const char* asked = std::getenv("OSTRAND_PAIRS");
  const int pairs = asked == nullptr ? 5 : std::atoi(asked);
  const std::string bad = folder / "bad.VKG";
  make("\r\nOperator=", "\r\nOperator=does not compile");
  std::filesystem::rename(project, bad);
  make();
  ::setenv("STAND_IN", "judge", 1);
  const testing::Listener server;
  int good = 0;
  int wrong = 0;
  for (int pair = 0; pair < pairs; ++pair) {
    const auto send = [&](const std::string& file) {
      return testing::StartOstrand(
          {"save", file, "--compiler", OSTRAND_STAND_IN, "--send", server.Name()}, home.Path());
    };
    const pid_t first = send(pair % 2 == 0 ? project : bad);
    const pid_t second = send(pair % 2 == 0 ? bad : project);
    for (int peer = 0; peer < 2; ++peer) {
      const std::string received = server.Received();
      if (received.ends_with(base + ".VKP")) {
        ++good;
      } else if (!received.empty()) {
        ++wrong;
      }
    }
    EXPECT_EQ(testing::EndOf(first) + testing::EndOf(second), 1)
        << "the exit code of the bad program";
  }
  EXPECT_EQ(good, pairs);
  EXPECT_EQ(wrong, 0);
  EXPECT_TRUE(std::filesystem::is_empty(home.Path()));
}

// Reads the system's signal mask; the lowest bit is signal 1.
bool ignoresHangup(pid_t process) {
  const std::string status = ReadDisk("/proc/" + std::to_string(process) + "/status");
  const std::string_view mask = Before(After(status, "SigIgn:\t"), "\n");
  return !mask.empty() && std::string_view("13579bdf").find(mask.back()) != std::string_view::npos;
}

TEST_F(CliSession, SignalInATestCompileEndsTheCompiler) {
  make();
  const std::string ready = folder / "ready";
  ::setenv("STAND_IN", "leavehang", 1);
  ::setenv("STAND_IN_READY", ready.c_str(), 1);
  ASSERT_EQ(testing::StandInsAlive(), 0);  // marks the processes started from here on
  // The signals sent; of two the process ignores the first.
  const std::vector<int> cases[] = {{SIGHUP},  {SIGINT},  {SIGQUIT},
                                    {SIGPIPE}, {SIGTERM}, {SIGHUP, SIGTERM}};
  for (const std::vector<int>& signals : cases) {
    SCOPED_TRACE(signals.front());
    if (signals.size() > 1) ::signal(signals.front(), SIG_IGN);
    const pid_t child =
        testing::StartOstrand({"save", project, "--compiler", OSTRAND_STAND_IN}, home.Path());
    ::signal(signals.front(), SIG_DFL);
    while (!std::filesystem::exists(ready) && ::waitpid(child, nullptr, WNOHANG) == 0)
      ::usleep(1000);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ignoresHangup(child), signals.size() > 1);
    for (const int signal : signals) ::kill(child, signal);
    EXPECT_EQ(testing::EndOf(child), 128 + signals.back());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(testing::StandInsAlive(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(home.Path()));
    EXPECT_FALSE(std::filesystem::exists(base + ".VKP"));
    std::filesystem::remove(ready);
  }
}

// Control characters of a name are escaped on both outputs.
TEST_F(CliSession, ControlCharactersOfNamesAreEscaped) {
  const std::string name = folder / "a\nb\x1B\x7F\xC2\x9B.VKG";
  const std::string none = folder / "a\nb\x1B\x7F\xC2\x9Bnone.VKG";
  ::setenv("STAND_IN", "good", 1);
  const std::vector<std::string> cases[] = {{"new", name},
                                            {"new", name},
                                            {"check", name},
                                            {"check", none},
                                            {"save", name},
                                            {"save", none},
                                            {"resave", name},
                                            {"generate", name},
                                            {"compile", name, "--compiler", OSTRAND_STAND_IN},
                                            {"compile", name},
                                            {"can", "check", none},
                                            {"can", "list", none},
                                            {"screen", name, none},
                                            {name},
                                            {"resave", name, "-o", none}};
  for (const auto& words : cases) {
    const Outcome outcome = RunOstrand(words);
    const std::string both = outcome.out + outcome.err;
    EXPECT_TRUE(Holds(Upper(both), "A\\NB\\X1B\\X7F\\U009B")) << words[0] << both;
    for (const char* raw : {"/a\n", "/A\n", "\x1B", "\x7F", "\xC2\x9B"}) {
      EXPECT_FALSE(Holds(both, raw)) << words[0] << both;
    }
  }
  const Outcome json = RunOstrand({"check", "--format=json", name});
  EXPECT_TRUE(Holds(json.out, "a\\nb\\u001b\\u007f\\u009b.VKG\"")) << json.out;
}

TEST_F(CliSession, IncompleteProgramIsWrittenAndNeverSent) {
  make("\r\n[PULSE BLOCKS]\r\n", "\r\n[VOLTAGE BLOCKS]\r\nBlockCount=1\r\nReps(1)=1\r\nUnits(1)=" +
                                     std::string(60, 'u') + "\r\n\r\n[PULSE BLOCKS]\r\n");
  const testing::Listener server;
  ::setenv("STAND_IN", "good", 1);
  const Outcome outcome =
      RunOstrand({"save", project, "--compiler", OSTRAND_STAND_IN, "--send", server.Name()});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, wroteAll(base));
  EXPECT_TRUE(Holds(outcome.err, project + ": not sent\n"));
  EXPECT_TRUE(outcome.err.ends_with("ostrand: " + project +
                                    ": the program is not complete: SAVEDLD.Constants failed in "
                                    "Volt Block 1, at: Units VBlk1 = " +
                                    std::string(60, 'u') + "\n"))
      << outcome.err;
}

TEST_F(CliSession, SettingsAreShownAndChanged) {
  const testing::Setting kept{.home = home.Path()};
  const auto settings = [&](std::vector<std::string> words) {
    words.insert(words.begin(), "settings");
    return RunOstrand(words, kept);
  };
  EXPECT_EQ(settings({"get", "warningmessagemask"}).out, "8191\n");
  EXPECT_FALSE(std::filesystem::exists(home / "ostrand")) << "reading writes nothing";
  EXPECT_EQ(settings({"set", "WarningMessageMask", "0"}).code, 0);
  const std::string list = settings({"list"}).out;
  EXPECT_TRUE(Holds(list, "\nWarningMessageMask = 0  (default 8191)\n")) << list;
  EXPECT_EQ(settings({"get", "Speed"}).err, "ostrand: unknown setting \"Speed\"\n");
  EXPECT_EQ(settings({"set", "DefaultInputType", "7"}).code, 1);

  EXPECT_EQ(settings({"set", "DefaultScanInterval", "25"}).code, 0);
  EXPECT_EQ(RunOstrand({"new", project}, kept).code, 0);
  EXPECT_TRUE(Holds(ReadDisk(project), "\r\nExecutionTime= 25\r\n"));

  // Settings apply to the other commands: without its bit a check finds no floating input.
  const std::string example = OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG";
  EXPECT_EQ(RunOstrand({"check", example}, kept).out, example + ": all checks passed\n");
  // A damaged file is reported, but is not a fault of the project.
  WriteDisk(home / "ostrand/settings", std::string("\0\0", 2));
  const Outcome damaged = RunOstrand({"check", example}, kept);
  EXPECT_EQ(damaged.code, 0) << damaged.err;
  EXPECT_TRUE(Holds(damaged.err, ": SETTINGS\n"));
}

// The compiler runs between reading and saving.
TEST_F(CliSession, SaveKeepsAChangedProjectUnlessForced) {
  make();
  const std::string compiler = folder / "compiler";
  WriteDisk(compiler, "#!/bin/sh\necho changed > '" + project + "'\n");
  std::filesystem::permissions(compiler, std::filesystem::perms::owner_all);
  std::vector<std::string> words = {"save", project, "--compiler", compiler, "--yes"};
  const Outcome refused = RunOstrand(words);
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_TRUE(Holds(refused.err, "  answered [c]ancel (standard input is not a terminal)\n"))
      << refused.err;
  EXPECT_TRUE(Holds(refused.err, "ostrand: " + project +
                                     ": changed by another program since it was read; not saved, "
                                     "--force overwrites it\n"));
  EXPECT_EQ(ReadDisk(project), "changed\n");
  make();
  words.emplace_back("--force");
  EXPECT_EQ(RunOstrand(words).out, wroteAll(base));
  EXPECT_TRUE(Holds(ReadDisk(project), "[CONFIGURATION]"));
}

}  // namespace
}  // namespace ostrand
