// The commands that check, save, compile and send, and those of the settings.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
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
using testing::TempFolder;
using testing::WriteDisk;

const std::vector<std::string> kExtensions = {".VKG", ".VKP", ".VKD", ".VKW"};

std::string wroteAll(const std::string& base) {
  std::string text;
  for (const std::string& extension : kExtensions) text += "wrote " + base + extension + "\n";
  return text;
}

// A new project with one text in its file replaced.
void makeProject(const TempFolder& folder, std::string_view from, std::string_view to) {
  ASSERT_EQ(RunOstrand({"new", folder / "pump", "--force"}).code, 0);
  std::string bytes = ReadDisk(folder / "pump.VKG");
  const std::size_t at = bytes.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  WriteDisk(folder / "pump.VKG", bytes.replace(at, from.size(), to));
}

constexpr std::string_view kTables = "\r\n[TABLE SETUP]\r\n";
constexpr std::string_view kSameName =
    "\r\n[TABLE SETUP]\r\nTableOn(2)=-1\r\nTableName(2)=Table1\r\n";

TEST(CliCheck, AllExamplesAreClean) {
  std::vector<std::string> words = {"check"};
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/examples")) {
    if (entry.path().extension() == ".VKG") words.push_back(entry.path());
  }
  EXPECT_EQ(words.size(), 7U);
  const Outcome outcome = RunOstrand(words);
  EXPECT_EQ(outcome.code, 0) << outcome.out;
  EXPECT_EQ(outcome.err, "");
  EXPECT_FALSE(Holds(outcome.out, ", against saving"));
}

TEST(CliCheck, TellsFindingsWithTheirPlaceAndWritesNothing) {
  const TempFolder folder;
  makeProject(folder, kTables, kSameName);
  const std::string project = folder / "pump.VKG";
  const std::string bytes = ReadDisk(project);
  const Outcome text = RunOstrand({"check", project});
  EXPECT_EQ(text.code, 1);
  EXPECT_EQ(text.err, "");
  EXPECT_EQ(text.out, project +
                          ": DUPLICATION FOUND, against saving\n"
                          "  \"TABLE1\" is used as [ Table1  name ] and [ Table2  name ].\n"
                          "  [TABLE SETUP] TableName(2)\n" +
                          project + ": 1 finding, 1 against saving\n");
  EXPECT_EQ(ReadDisk(project), bytes);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);

  makeProject(folder, kTables,
              "\r\n[TABLE "
              "SETUP]\r\nTableOn(2)=-1\r\nTableName(2)=\"T\xE9\\\"\r\nTableOn(3)=-1\r\nTableName(3)"
              "=\"T\xE9\\\"\r\n");
  const std::string none = folder / "none.VKG";
  const Outcome json = RunOstrand({"check", "--format=json", none, project});
  EXPECT_EQ(json.code, 1);
  EXPECT_EQ(json.out,
            "[{\"file\": \"" + none + "\", \"opened\": false, \"findings\": []},\n{\"file\": \"" +
                project +
                "\", \"opened\": true, \"findings\": [\n"
                "  {\"title\": \"DUPLICATION FOUND\", \"text\": \"\\\"\\\"T\xC3\x89\\\\\\\"\\\" is "
                "used as [ Table2  name ] and [ Table3  name ].\", \"section\": "
                "\"[TABLE SETUP]\", \"key\": \"TableName(3)\", \"againstSaving\": true}\n"
                "]}]\n");

  ASSERT_EQ(RunOstrand({"new", project, "--force"}).code, 0);
  const Outcome clean = RunOstrand({"check", project});
  EXPECT_EQ(clean.code, 0);
  EXPECT_EQ(clean.out, project + ": all checks are clean\n");
  EXPECT_EQ(RunOstrand({"check", project, "--format=json"}, {.out = "/dev/full"}).code, 1);
}

TEST(CliSave, WritesAllFilesAndAsksAsTheScreenDoes) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "out");
  makeProject(folder, kTables, kSameName);
  const std::string project = folder / "pump.VKG";
  const std::string bytes = ReadDisk(project);

  const Outcome refused = RunOstrand({"save", project});
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_TRUE(Holds(refused.err, "Save it anyway?\n  answered [n]o, nobody being asked\n"));
  EXPECT_TRUE(refused.err.ends_with("ostrand: " + project + " was not saved\n"));
  EXPECT_EQ(ReadDisk(project), bytes);

  const Outcome saved = RunOstrand(
      {"save", project, "-o", folder / "out", "--answer", "Save Generator Project ?=yes"});
  EXPECT_EQ(saved.code, 0) << saved.err;
  EXPECT_EQ(saved.out, wroteAll(folder / "out/pump"));
  EXPECT_EQ(ReadDisk(project), bytes);

  // A clean one in its own place; the compiler is not there, which keeps nothing from being saved.
  makeProject(folder, "", "");
  const Outcome clean = RunOstrand({"save", "pump"}, {.folder = folder.Path()});
  EXPECT_EQ(clean.code, 0);
  EXPECT_EQ(clean.out, wroteAll("pump"));
  EXPECT_TRUE(Holds(clean.err, "pump: MISSING FILE\n  Pre-Compiler was not found.\n"));

  // What was written before a step failed is told.
  std::filesystem::remove(folder / "pump.VKD");
  std::filesystem::create_directories(folder / "pump.VKD/inner");
  const Outcome half = RunOstrand({"save", project});
  EXPECT_EQ(half.code, 1);
  EXPECT_EQ(half.out, "wrote " + project + "\nwrote " + (folder / "pump.VKP") + "\n");
}

TEST(CliCompile, TellsTheTimesAndStoresThemWhenAsked) {
  const TempFolder folder;
  const TempFolder home;
  makeProject(folder, "\r\nMonitorPower(1)= 0\r\n", "\r\nMonitorPower(1)=-1\r\n");
  const std::string project = folder / "pump.VKG";
  const std::string bytes = ReadDisk(project);
  const std::vector<std::string> words = {"compile", project, "--compiler", OSTRAND_STAND_IN};
  ::setenv("STAND_IN", "good", 1);
  const Outcome told = RunOstrand(words, {.home = home.Path()});
  EXPECT_EQ(told.code, 0) << told.err;
  EXPECT_TRUE(told.out.starts_with(project + ": test compiled OK\n  Battery   "));
  EXPECT_TRUE(Holds(told.err, project + ": COMPILE RESULT\n  Pre-Compiler: " +
                                  (home / "TEMP$$$$.VKP") + "\n  Version No: 6.3   Date Code: "));
  EXPECT_EQ(ReadDisk(project), bytes);
  EXPECT_TRUE(std::filesystem::is_empty(home.Path()));

  auto storing = words;
  storing.emplace_back("--store");
  const Outcome stored = RunOstrand(storing);
  EXPECT_TRUE(stored.out.ends_with(" uSec\nwrote " + project + "\n"));
  EXPECT_TRUE(Holds(ReadDisk(project), "\r\nBatteryTime= 1"));

  const std::string after = ReadDisk(project);
  ::setenv("STAND_IN", "bad", 1);
  const Outcome bad = RunOstrand(storing);
  EXPECT_EQ(bad.code, 1);
  EXPECT_EQ(bad.out, "");
  EXPECT_TRUE(Holds(bad.err, "Undeclared variable"));
  EXPECT_TRUE(bad.err.ends_with(project + " did not compile\n"));
  ::setenv("STAND_IN", "noversion", 1);
  const Outcome skipped = RunOstrand(storing);
  EXPECT_EQ(skipped.code, 1);
  EXPECT_EQ(skipped.err, "ostrand: Skipped version. " OSTRAND_STAND_IN
                         " ended without a report\nostrand: " +
                             project + " did not compile\n");
  EXPECT_EQ(ReadDisk(project), after);
}

// A server on this machine that listens and reads what it was sent.
class Listener {
 public:
  Listener() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    EXPECT_EQ(::bind(socket_, plain, size), 0);
    EXPECT_EQ(::listen(socket_, 4), 0);
    EXPECT_EQ(::getsockname(socket_, plain, &size), 0);
    name_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
  }
  ~Listener() { ::close(socket_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] std::string Received() const {
    const int peer = ::accept(socket_, nullptr, nullptr);
    std::string bytes(1000, '\0');
    std::size_t length = 0;
    for (ssize_t got = 1; got > 0; length += static_cast<std::size_t>(got)) {
      got = ::read(peer, bytes.data() + length, bytes.size() - length);
      if (got < 0) break;
    }
    ::close(peer);
    bytes.resize(length);
    return bytes;
  }

 private:
  int socket_;
  std::string name_;
};

TEST(CliSend, SendsAfterASaveAndTellsWhenNobodyIsThere) {
  const TempFolder folder;
  makeProject(folder, "", "");
  const std::string project = folder / "pump.VKG";
  std::string name;
  std::vector<std::string> words = {"save", project, "--compiler", OSTRAND_STAND_IN, "--send"};
  {
    const Listener server;
    name = server.Name();
    words.push_back(name);
    ::setenv("STAND_IN", "good", 1);
    const Outcome sent = RunOstrand(words);
    EXPECT_EQ(sent.code, 0) << sent.err;
    EXPECT_EQ(sent.out, wroteAll(folder / "pump") + "sent to " + name + "\n");
    const std::string program = folder / "pump.VKP";
    const std::string received = server.Received();
    EXPECT_EQ(received.size(), 35 + program.size());
    EXPECT_TRUE(received.ends_with(static_cast<char>(program.size()) + program));

    ::setenv("STAND_IN", "bad", 1);
    const Outcome bad = RunOstrand(words);
    EXPECT_EQ(bad.code, 1);
    EXPECT_EQ(bad.out, wroteAll(folder / "pump"));
    EXPECT_TRUE(bad.err.ends_with(project + " was not sent\n"));
    EXPECT_EQ(server.Received(), "");
  }
  const std::string bytes = ReadDisk(project);
  const Outcome nobody = RunOstrand(words);
  EXPECT_EQ(nobody.code, 1);
  EXPECT_EQ(nobody.err,
            "ostrand: " + name + ": Connection refused; " + project + " was not saved\n");
}

TEST(CliSettings, AreShownAndChanged) {
  const TempFolder home;
  const Setting kept{.home = home.Path()};
  const auto settings = [&](std::vector<std::string> words) {
    words.insert(words.begin(), "settings");
    return RunOstrand(words, kept);
  };
  EXPECT_EQ(settings({"get", "warningmessagemask"}).out, "8191\n");
  EXPECT_FALSE(std::filesystem::exists(home / "ostrand")) << "looking writes nothing";
  EXPECT_EQ(settings({"set", "WarningMessageMask", "0"}).code, 0);
  EXPECT_EQ(settings({"set", "Form Background", "-2147483633"}).code, 0);
  EXPECT_EQ(settings({"get", "Form Background"}).out, "-2147483633\n");
  const std::string list = settings({"list"}).out;
  EXPECT_TRUE(Holds(list, "\nWarningMessageMask = 0  (default 8191)\n")) << list;
  EXPECT_TRUE(Holds(list, "\nDefaultNumFlags = 8\n"));

  EXPECT_EQ(settings({"get", "Speed"}).err, "ostrand: there is no setting \"Speed\"\n");
  EXPECT_EQ(settings({"set", "GenPath", ""}).err, "ostrand: GenPath cannot be empty\n");
  const Outcome wrong = settings({"set", "DefaultInputType", "7"});
  EXPECT_EQ(wrong.code, 1);
  EXPECT_TRUE(Holds(wrong.err, "from 0 to 1, not \"7\""));

  // They count for the other commands: without its bit a check finds no floating input.
  const std::string example = OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG";
  EXPECT_EQ(RunOstrand({"check", example}, kept).out, example + ": all checks are clean\n");
  // A damaged file is told, and no fault of the project.
  WriteDisk(home / "ostrand/settings", std::string("\0\0", 2));
  const Outcome damaged = RunOstrand({"check", example}, kept);
  EXPECT_EQ(damaged.code, 0) << damaged.err;
  EXPECT_TRUE(Holds(damaged.err, ": SETTINGS\n"));
}

// ---- Saves at the same time ------------------------------------------

TEST(CliSave, TwoAtOnceNeverMixAFile) {
  const TempFolder folder;
  const TempFolder home;
  for (const auto* name : {"out", "big", "small"}) std::filesystem::create_directory(folder / name);
  std::filesystem::copy_file(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG",
                             folder / "big/pump.VKG");
  ASSERT_EQ(RunOstrand({"new", folder / "small/pump"}).code, 0);
  for (const auto* name : {"big", "small"}) {
    ASSERT_EQ(RunOstrand({"save", folder / (std::string(name) + "/pump.VKG")}).code, 0);
  }
  for (int round = 0; round < 10; ++round) {
    const auto save = [&](const char* name) {
      return testing::StartOstrand(
          {"save", folder / (std::string(name) + "/pump.VKG"), "-o", folder / "out"}, home.Path());
    };
    const pid_t first = save("big");
    const pid_t second = save("small");
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
