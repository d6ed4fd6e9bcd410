#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <thread>

#include "platform/atomic_file.h"
#include "platform/moment_text.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_socket.h"
#include "platform/posix/posix_work_folders.h"
#include "platform/posix/terminal_forms.h"
#include "support/listener.h"
#include "support/temp_folder.h"

namespace ostrand::platform {
namespace {

using testing::ReadDisk;
using testing::WriteDisk;

class PosixFiles : public ::testing::Test {
 protected:
  unsigned modeOf(std::string_view name) {
    struct stat info {};
    EXPECT_EQ(::stat((folder / name).c_str(), &info), 0) << name;
    return info.st_mode & 07777;
  }
  std::string errorOf(const std::string& path) {
    const auto written = WriteWhole(files, path, "new");
    return written ? "" : written.ErrorText();
  }

  testing::TempFolder folder;
  PosixFileSystem files;
};

TEST_F(PosixFiles, AreFoundExactlyFirstThenInAnyCase) {
  std::filesystem::create_directories(folder / "Test Bench/runs");
  WriteDisk(folder / "Test Bench/runs/pump.vkg", "small");
  WriteDisk(folder / "Test Bench/runs/Pump.VKG", "capital");
  WriteDisk(folder / "Test Bench/runs/z\xC3\xA9ro.VKG", "accent");
  // `found` is empty for none.
  constexpr std::tuple<std::string_view, std::string_view> cases[] = {
      {"Test Bench/runs/pump.vkg", "Test Bench/runs/pump.vkg"},
      {"Test Bench/runs/PUMP.VKG", "Test Bench/runs/Pump.VKG"},  // first by its bytes
      {"test bench\\RUNS\\pump.vkg", "Test Bench/runs/pump.vkg"},
      {"TEST BENCH//runs/./Z\xC3\xA9RO.vkg", "Test Bench//runs/./z\xC3\xA9ro.VKG"},
      {"test bench/runs/Z\xC3\x89RO.VKG", ""},  // case is ignored in ASCII only
      {"test bench/runs/pump.vk", ""},
      {"nowhere/pump.vkg", ""},
  };
  for (const auto& [name, found] : cases) {
    const std::string asked = folder / name;
    EXPECT_EQ(files.Exists(asked), !found.empty()) << name;
    EXPECT_EQ(files.Find(asked), found.empty() ? asked : folder / found);
  }
  // The result for an unchanged folder is remembered; a changed folder is searched again.
  const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
  std::filesystem::last_write_time(folder / "Test Bench/runs", longAgo);
  EXPECT_FALSE(files.Exists(folder / "Test Bench/runs/LATER.VKG"));
  WriteDisk(folder / "Test Bench/runs/later.VKG", "x");
  EXPECT_TRUE(files.Exists(folder / "Test Bench/runs/LATER.VKG"));
  // A written file goes into the existing folder, under exactly its name.
  ASSERT_TRUE(WriteWhole(files, folder / "TEST BENCH\\Runs\\New.VKP", "program"));
  ASSERT_TRUE(WriteWhole(files, folder / "test bench/runs/NEW.vkp", "again"));
  EXPECT_EQ(ReadDisk(folder / "Test Bench/runs/New.VKP"), "program");
  EXPECT_EQ(ReadDisk(folder / "Test Bench/runs/NEW.vkp"), "again");
}

TEST_F(PosixFiles, AreReadOnlyIfRegular) {
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::filesystem::create_directory(folder / "inner");
  WriteDisk(folder / "sparse", "x");
  std::filesystem::resize_file(folder / "sparse", PosixFileSystem::kMaxBytes + 1);
  std::filesystem::create_symlink(folder / "gone", folder / "dangling");
  const std::pair<std::string, std::string> cases[] = {
      {folder / "pipe", ": Not a regular file"},
      {folder / "inner", ": Is a directory"},
      {"/dev/zero", ": Not a regular file"},
      {folder / "sparse", ": File too large"},
      {folder / "dangling", ": No such file or directory"},
  };
  for (const auto& [path, reason] : cases) {
    const auto bytes = files.Read(path);
    ASSERT_FALSE(bytes) << path;
    EXPECT_EQ(bytes.ErrorText(), path + reason);
    EXPECT_EQ(files.Exists(path), path.ends_with("sparse"));
  }
  EXPECT_TRUE(files.Taken(folder / "INNER"));
  EXPECT_FALSE(files.Taken(folder / "none"));
  EXPECT_FALSE(files.Read(std::string_view("/etc/hostname\0.VKG", 18)));
  const std::string large(5'000'011, 'x');
  WriteDisk(folder / "large", large);
  EXPECT_TRUE(files.Read(folder / "large").Value() == large);
  EXPECT_GT(files.Read("/proc/self/maps").Value().size(), 100U) << "reports size 0 but has content";
}

TEST_F(PosixFiles, FailedWriteNamesThePathAndLeavesNothing) {
  std::filesystem::create_directory(folder / "pump.VKP");
  WriteDisk(folder / "old.VKP", "old");
  EXPECT_EQ(errorOf(folder / "pump.VKP"), (folder / "pump.VKP") + ": Is a directory");
  EXPECT_EQ(errorOf(folder / "none\\pump.VKP"),
            folder / "none/pump.VKP: No such file or directory");
  EXPECT_FALSE(files.Create(folder / "old.VKP", ""));
  EXPECT_FALSE(files.Delete(folder / "none"));
  EXPECT_FALSE(files.Rename(folder / "none", folder / "old.VKP"));
  EXPECT_EQ(ReadDisk(folder / "old.VKP"), "old");

  // The next write removes what a dead process has left.
  WriteDisk(folder / ".old.VKP.writing", "half of a pro");
  EXPECT_EQ(errorOf(folder / "old.VKP"), "");
  EXPECT_EQ(ReadDisk(folder / "old.VKP"), "new");
  const std::string longest = folder / (std::string(251, 'x') + ".VKP");
  EXPECT_EQ(errorOf(longest), "");
  ASSERT_TRUE(files.Delete(longest));
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "the folder and the old file";
}

TEST_F(PosixFiles, ClearReadOnlyKeepsOtherRights) {
  const std::string path = folder / "file";
  WriteDisk(path, "x");
  ASSERT_EQ(::chmod(path.c_str(), 0440), 0);
  EXPECT_EQ(errorOf(path), path + ": Permission denied");
  EXPECT_EQ(ReadDisk(path), "x");
  ASSERT_TRUE(files.ClearReadOnly(folder / "FILE"));
  EXPECT_EQ(modeOf("file"), 0640U);
  ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
  EXPECT_EQ(errorOf(path), "");
  EXPECT_EQ(modeOf("file"), 0604U);
  EXPECT_FALSE(files.ClearReadOnly(folder / "none"));
}

TEST_F(PosixFiles, OnlyRegularFilesAreReplaced) {
  std::filesystem::create_directory(folder / "folder");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  (folder / "socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ::close(listener);
  std::filesystem::create_symlink("/dev/null", folder / "device");
  std::filesystem::create_symlink("pipe", folder / "toPipe");
  std::filesystem::create_symlink("circle", folder / "circle");
  const std::pair<std::string, std::string> cases[] = {
      {"folder", folder / "folder: Is a directory"},
      {"pipe", folder / "pipe: Not a regular file"},
      {"socket", folder / "socket: Not a regular file"},
      {"device", "/dev/null: Not a regular file"},
      {"toPipe", folder / "pipe: Not a regular file"},
      {"circle", folder / "circle: Too many levels of symbolic links"},
  };
  for (const auto& [name, error] : cases) EXPECT_EQ(errorOf(folder / name), error);
  const std::filesystem::directory_iterator entries(folder.Path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 6);
}

TEST_F(PosixFiles, LinksAreFollowedIntoTheFolderOfTheirTarget) {
  std::filesystem::create_directories(folder / "far/inner");
  WriteDisk(folder / "far/real", "old");
  std::filesystem::create_symlink("far/second", folder / "link");
  std::filesystem::create_symlink(folder / "far/real", folder / "far/second");
  std::filesystem::create_symlink("far/inner/new", folder / "dangling");
  for (const auto& [link, target] :
       {std::pair("link", "far/real"), std::pair("dangling", "far/inner/new")}) {
    AtomicFile file(files, files.Target(folder / link));
    ASSERT_TRUE(file.Write("new"));
    EXPECT_TRUE(std::filesystem::exists(HiddenNeighbour(folder / target)));
    ASSERT_TRUE(file.Commit());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / link));
    EXPECT_EQ(ReadDisk(folder / target), "new");
  }
}

TEST_F(PosixFiles, OtherEntriesUnderTheHiddenNameAreLeftAlone) {
  const std::string path = folder / "pump.VKP";
  const std::string hidden = HiddenNeighbour(path);
  WriteDisk(folder / "precious", "kept");
  const std::function<void()> plants[] = {
      [&] { std::filesystem::create_symlink("precious", hidden); },
      [&] { std::filesystem::create_symlink("nowhere", hidden); },
      [&] { std::filesystem::create_directories(hidden + "/inner"); },
      [&] { ASSERT_EQ(::mkfifo(hidden.c_str(), 0600), 0); },
  };
  for (const auto& plant : plants) {
    WriteDisk(path, "old");
    WriteDisk(hidden + ".1", "half of a pro");
    plant();
    EXPECT_EQ(errorOf(path), "");
    EXPECT_EQ(ReadDisk(path), "new");
    EXPECT_EQ(ReadDisk(folder / "precious"), "kept");
    EXPECT_NE(files.LookAt(hidden), Entry::kNone);
    std::filesystem::remove_all(hidden);
    const std::filesystem::directory_iterator entries(folder.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
  }
}

TEST_F(PosixFiles, NeighbourHasRightsAndOwnerFromTheStart) {
  const std::string path = folder / "pump.VKG";
  const std::string hidden = HiddenNeighbour(path);
  const mode_t before = ::umask(0);
  for (const unsigned mode : {0600U, 0640U, 0664U}) {
    WriteDisk(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    const bool root = ::geteuid() == 0;
    if (root) {
      ASSERT_EQ(::chown(path.c_str(), 4711, 4712), 0);
    }
    const auto neighbour = files.Create(hidden, path);
    ASSERT_TRUE(neighbour);
    struct stat info {};
    ASSERT_EQ(::stat(hidden.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, mode);
    EXPECT_EQ(info.st_uid, root ? 4711 : ::geteuid());
    ASSERT_TRUE(files.Delete(hidden));
    ASSERT_TRUE(files.Delete(path));
  }
  ::umask(before);
}

TEST(TcpSocket, ReportsALostPeerAtTheNextMessage) {
  const testing::Listener listener;
  auto socket = TcpSocket::Connect("127.0.0.1", listener.Port());
  ASSERT_TRUE(socket);
  listener.DropPeer();
  Result<> sent = Done{};
  for (int round = 0; round < 20000 && sent; ++round) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    sent = socket.Value()->SendData("hello");
  }
  ASSERT_FALSE(sent);
  EXPECT_EQ(sent.ErrorText(), listener.Name() + ": the other side has closed the connection");
  const auto wrong = TcpSocket::Connect("127.0.0.1", "no-such-service");
  ASSERT_FALSE(wrong);
  EXPECT_TRUE(wrong.ErrorText().starts_with("127.0.0.1:no-such-service: "));
}

TEST(PosixClock, FixedEpochIsShownInUtcInAnyZone) {
  ::setenv("TZ", "Asia/Tokyo", 1);
  ::tzset();
  const auto shown = [](std::int64_t epoch) { return ShortMomentText(PosixClock(epoch).Now()); };
  EXPECT_EQ(shown(951782399), "2/28/2000 11:59:59 PM");
  EXPECT_EQ(shown(951782409), "2/29/2000 12:00:09 AM");
  EXPECT_EQ(shown(951827459), "2/29/2000 12:30:59 PM");
  ::unsetenv("TZ");
  ::tzset();
}

TEST(PosixClock, EpochIsDigitsUpToTheYear9999) {
  EXPECT_EQ(PosixClock::EpochFromText("0"), 0);
  EXPECT_EQ(PosixClock::EpochFromText("253402300799"), 253402300799);
  for (const auto bad :
       {"", "-1", "+1", " 1", "1.5", "&H10", "253402300800", "9999999999999999999"}) {
    EXPECT_EQ(PosixClock::EpochFromText(bad), std::nullopt) << bad;
  }
}

TEST(PosixWorkFolders, ArePrivateAndDeletedWithTheirContent) {
  const testing::TempFolder parent;
  PosixFileSystem files;
  PosixWorkFolders folders(files);
  auto one = folders.Create(parent.Path());
  ASSERT_TRUE(one);
  const std::string path = one.Value()->Path();
  EXPECT_TRUE(path.starts_with(parent / "ostrand-")) << path;
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms::owner_all);
  {
    const auto other = folders.Create(parent.Path());
    ASSERT_TRUE(other);
    EXPECT_NE(other.Value()->Path(), path);
    std::filesystem::create_directories(path + "/a/b");
    std::filesystem::create_symlink(parent.Path(), path + "/a/link");
  }
  EXPECT_TRUE(one.Value()->Remove());
  EXPECT_TRUE(std::filesystem::is_empty(parent.Path()));
  const auto none = folders.Create(parent / "none");
  ASSERT_FALSE(none);
  EXPECT_EQ(none.ErrorText(), (parent / "none") + ": No such file or directory");
}

TEST(TerminalText, ConvertsProjectBytesAndEscapesControlCharacters) {
  constexpr std::pair<std::string_view, std::string_view> cases[] = {
      {"one\r\ntwo\nthree", "one\ntwo\nthree"},
      {"20 \xB0, \x80 5", "20 \xC2\xB0, \xE2\x82\xAC 5"},
      {"/home/\xC3\xA9t\xC3\xA9/\xE6\xB8\xAC.VKG", "/home/\xC3\xA9t\xC3\xA9/\xE6\xB8\xAC.VKG"},
      {"\x1B[2J\x07\r\x7F", "\\x1B[2J\\x07\\r\\x7F"},
      {"\xC3", "\xC3\x83"},                              // a lead byte alone is a letter
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},  // a surrogate is not UTF-8
      {"\xC2\x9B", "\\u009B"},
      {"\xC2\xA0\xC2", "\xC2\xA0\xC3\x82"},
  };
  for (const auto& [bytes, shown] : cases) EXPECT_EQ(TerminalText(bytes), shown);
  EXPECT_EQ(TerminalLines("a\nb\tc\r\nd"), "a\\nb\tc\nd");
  EXPECT_EQ(TerminalName("a\r\nb\t\xB0"), "a\\r\\nb\\t\xB0");
}

// Replaces standard input for the time of a test.
class TerminalAnswers : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(readFrom("/dev/null")); }
  void TearDown() override {
    ::dup2(before_, STDIN_FILENO);
    ::close(before_);
  }
  static bool readFrom(const char* device) {
    const int opened = ::open(device, O_RDWR | O_NOCTTY);
    if (opened < 0) return false;
    EXPECT_EQ(::dup2(opened, STDIN_FILENO), STDIN_FILENO);
    return ::close(opened) == 0;
  }
  // The answer to a box and the text shown for it.
  static std::pair<Answer, std::string> ask(TerminalForms& forms, Buttons buttons) {
    ::testing::internal::CaptureStderr();
    const Answer answer =
        forms.ShowBox({.title = "MISSING FILE", .text = "a\r\n\r\nb", .buttons = buttons});
    return {answer, ::testing::internal::GetCapturedStderr()};
  }
  int before_ = ::dup(STDIN_FILENO);
};

TEST_F(TerminalAnswers, UserIsAskedUntilTheAnswerIsValid) {
  const int user = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (user < 0 || ::grantpt(user) != 0 || ::unlockpt(user) != 0 || !readFrom(::ptsname(user))) {
    GTEST_SKIP() << "no pseudo-terminal here: " << std::strerror(errno);
  }
  constexpr std::string_view kTyped = "what?\n\n cancel\nYes\n\x04";  // then the end of the input
  ASSERT_EQ(::write(user, kTyped.data(), kTyped.size()), static_cast<ssize_t>(kTyped.size()));

  TerminalForms forms({});
  const auto [answer, shown] = ask(forms, Buttons::kYesNo);
  EXPECT_EQ(answer, Answer::kYes);
  const std::string asked = "  [y]es, [n]o: ";
  EXPECT_EQ(shown, "MISSING FILE\n  a\n\n  b\n" + asked + asked + asked + asked);
  EXPECT_EQ(ask(forms, Buttons::kYesNo).first, Answer::kNo);
  ::close(user);
}

TEST_F(TerminalAnswers, PreparedAnswersApplyElseNothingIsWritten) {
  const std::tuple<std::vector<PreparedAnswer>, bool, Buttons, Answer> cases[] = {
      {{}, false, Buttons::kOk, Answer::kOk},
      {{}, false, Buttons::kYesNo, Answer::kNo},
      {{}, false, Buttons::kYesNoCancel, Answer::kCancel},
      {{}, true, Buttons::kYesNoCancel, Answer::kYes},
      {{{"missing file", Answer::kYes}}, false, Buttons::kYesNo, Answer::kYes},
      {{{"Missing File", Answer::kNo}}, true, Buttons::kYesNo, Answer::kNo},
      {{{"ANOTHER", Answer::kYes}}, false, Buttons::kYesNo, Answer::kNo},
      // Yes to everything overwrites nothing.
      {{}, true, Buttons::kOverwriteCancel, Answer::kCancel},
      {{{"MISSING FILE", Answer::kOverwrite}},
       false,
       Buttons::kOverwriteCancel,
       Answer::kOverwrite},
      // An answer that the box does not offer is ignored.
      {{{"MISSING FILE", Answer::kOk}}, false, Buttons::kYesNo, Answer::kNo},
  };
  for (const auto& [byTitle, yes, buttons, expected] : cases) {
    TerminalForms forms({byTitle, yes});
    forms.Subject("pump.VKG");
    const auto [answer, shown] = ask(forms, buttons);
    EXPECT_EQ(answer, expected) << shown;
    EXPECT_TRUE(shown.starts_with("pump.VKG: MISSING FILE\n  a\n\n  b\n")) << shown;
    EXPECT_EQ(forms.TakeBoxesShown(), std::vector<std::string>{"MISSING FILE"});
    EXPECT_TRUE(forms.TakeBoxesShown().empty());
  }
}

}  // namespace
}  // namespace ostrand::platform
