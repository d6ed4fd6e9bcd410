#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/terminal_forms.h"
#include "support/temp_folder.h"

namespace ostrand::platform {
namespace {

using testing::ReadDisk;
using testing::TempFolder;
using testing::WriteDisk;

TEST(PosixFileSystem, FindsANameExactlyThenWithoutRegardToCase) {
  const TempFolder folder;
  std::filesystem::create_directories(folder / "Test Bench/runs");
  WriteDisk(folder / "Test Bench/runs/pump.vkg", "small");
  WriteDisk(folder / "Test Bench/runs/Pump.VKG", "capital");
  WriteDisk(folder / "Test Bench/runs/z\xC3\xA9ro.VKG", "accent");
  struct Case {
    std::string_view asked;
    std::string_view found;  // empty for none
  };
  constexpr Case kCases[] = {
      {"Test Bench/runs/pump.vkg", "Test Bench/runs/pump.vkg"},
      {"Test Bench/runs/Pump.VKG", "Test Bench/runs/Pump.VKG"},
      {"Test Bench/runs/PUMP.VKG", "Test Bench/runs/Pump.VKG"},  // first by its bytes
      {"test bench\\RUNS\\pump.vkg", "Test Bench/runs/pump.vkg"},
      {"TEST BENCH//runs/./Z\xC3\xA9RO.vkg", "Test Bench//runs/./z\xC3\xA9ro.VKG"},
      {"test bench/runs/Z\xC3\x89RO.VKG", ""},  // no case known beyond ASCII
      {"test bench/runs/pump.vk", ""},
      {"nowhere/pump.vkg", ""},
  };
  PosixFileSystem files;
  for (const Case& row : kCases) {
    const std::string asked = folder / row.asked;
    EXPECT_EQ(files.Exists(asked), !row.found.empty()) << row.asked;
    EXPECT_EQ(files.Find(asked), row.found.empty() ? asked : folder / row.found);
  }
  // A new file goes into the folder that is there, under its own name.
  ASSERT_TRUE(WriteWhole(files, folder / "TEST BENCH\\Runs\\New.VKP", "program"));
  EXPECT_EQ(ReadDisk(folder / "Test Bench/runs/New.VKP"), "program");
  // A file that is there keeps its name and takes the new content.
  ASSERT_TRUE(WriteWhole(files, folder / "test bench/runs/NEW.vkp", "again"));
  EXPECT_EQ(ReadDisk(folder / "Test Bench/runs/New.VKP"), "again");
  EXPECT_FALSE(std::filesystem::exists(folder / "Test Bench/runs/NEW.vkp"));
}

TEST(PosixFileSystem, ReadsOnlyRegularFilesAndNamesWhatItCannotRead) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::filesystem::create_directory(folder / "inner");
  WriteDisk(folder / "sparse", "x");
  std::filesystem::resize_file(folder / "sparse", PosixFileSystem::kMostBytes + 1);
  std::filesystem::create_symlink(folder / "gone", folder / "dangling");
  struct Case {
    std::string path;
    std::string_view reason;
  };
  const Case cases[] = {
      {folder / "pipe", ": Not a regular file"},
      {folder / "inner", ": Is a directory"},
      {"/dev/zero", ": Not a regular file"},
      {folder / "sparse", ": File too large"},
      {folder / "none", ": No such file or directory"},
      {folder / "dangling", ": No such file or directory"},
  };
  PosixFileSystem files;
  for (const Case& row : cases) {
    const auto bytes = files.Read(row.path);
    ASSERT_FALSE(bytes) << row.path;
    EXPECT_EQ(bytes.ErrorText(), row.path + std::string(row.reason));
    EXPECT_EQ(files.Exists(row.path), row.reason.ends_with("large"));
  }
  EXPECT_TRUE(files.Taken(folder / "INNER"));
  EXPECT_FALSE(files.Taken(folder / "none"));
  EXPECT_FALSE(files.Read(std::string_view("/etc/hostname\0.VKG", 18)));
}

TEST(PosixFileSystem, ReadsEveryByteOfFilesOfAnySize) {
  const TempFolder folder;
  PosixFileSystem files;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{5'000'011}}) {
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at < size; ++at) bytes[at] = static_cast<char>(at * 31 % 256);
    WriteDisk(folder / "file", bytes);
    const auto read = files.Read(folder / "file");
    ASSERT_TRUE(read);
    EXPECT_TRUE(read.Value() == bytes) << size;
  }
  // A file that says it is empty and is not.
  const auto growing = files.Read("/proc/self/maps");
  ASSERT_TRUE(growing);
  EXPECT_GT(growing.Value().size(), 100U);
}

TEST(PosixFileSystem, FailuresOfWritingNameThePathAndLeaveNothingBehind) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "pump.VKP");
  WriteDisk(folder / "old.VKP", "old");
  PosixFileSystem files;

  const auto overFolder = WriteWhole(files, folder / "pump.VKP", "program");
  ASSERT_FALSE(overFolder);
  EXPECT_EQ(overFolder.ErrorText(), (folder / "pump.VKP") + ": Is a directory");
  const auto noFolder = WriteWhole(files, folder / "none/pump.VKP", "program");
  ASSERT_FALSE(noFolder);
  EXPECT_EQ(noFolder.ErrorText(), (folder / "none/pump.VKP: No such file or directory"));
  const auto backslashes = WriteWhole(files, folder / "none\\pump.VKP", "program");
  ASSERT_FALSE(backslashes);
  EXPECT_EQ(backslashes.ErrorText(), (folder / "none/pump.VKP: No such file or directory"));
  EXPECT_FALSE(files.Create(folder / "OLD.VKP"));
  EXPECT_FALSE(files.Delete(folder / "none"));
  EXPECT_FALSE(files.Rename(folder / "none", folder / "old.VKP"));
  EXPECT_EQ(ReadDisk(folder / "old.VKP"), "old");

  // What a process that died has left is cleared away by the next write.
  WriteDisk(folder / ".old.VKP.writing", "half of a pro");
  ASSERT_TRUE(WriteWhole(files, folder / "old.VKP", "new"));
  EXPECT_EQ(ReadDisk(folder / "old.VKP"), "new");
  const std::string longest = folder / (std::string(251, 'x') + ".VKP");
  ASSERT_TRUE(WriteWhole(files, longest, "new"));
  ASSERT_TRUE(files.Delete(longest));
  int entries = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    entries += entry.exists() ? 1 : 0;
  }
  EXPECT_EQ(entries, 2);  // the folder and the file of old
}

TEST(PosixFileSystem, TakesTheReadOnlyMarkOffAndKeepsTheOtherRights) {
  const TempFolder folder;
  WriteDisk(folder / "file", "x");
  ASSERT_EQ(::chmod((folder / "file").c_str(), 0440), 0);
  PosixFileSystem files;
  const Result<> written = WriteWhole(files, folder / "FILE", "new");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.ErrorText(), (folder / "file") + ": Permission denied");
  EXPECT_EQ(ReadDisk(folder / "file"), "x");
  ASSERT_TRUE(files.ClearReadOnly(folder / "FILE"));
  struct stat info {};
  ASSERT_EQ(::stat((folder / "file").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640U);
  ASSERT_EQ(::chmod((folder / "file").c_str(), 0604), 0);
  ASSERT_TRUE(WriteWhole(files, folder / "FILE", "new"));
  ASSERT_EQ(::stat((folder / "file").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0604U);
  EXPECT_FALSE(files.ClearReadOnly(folder / "none"));
}

TEST(PosixClock, AFixedEpochIsShownInUtcWhateverTheZone) {
  ::setenv("TZ", "Asia/Tokyo", 1);
  ::tzset();
  const Moment leapDay = PosixClock(951782399).Now();
  ::unsetenv("TZ");
  ::tzset();
  // 951782400 is 2000-02-29 00:00:00.
  EXPECT_EQ(leapDay.year, 2000);
  EXPECT_EQ(leapDay.month, 2);
  EXPECT_EQ(leapDay.day, 28);
  EXPECT_EQ(leapDay.hour, 23);
  EXPECT_EQ(leapDay.minute, 59);
  EXPECT_EQ(leapDay.second, 59);
}

TEST(PosixClock, AnEpochIsDigitsUpToTheYear9999) {
  EXPECT_EQ(PosixClock::EpochFromText("0"), 0);
  EXPECT_EQ(PosixClock::EpochFromText("253402300799"), 253402300799);
  for (const std::string_view bad : {"", "-1", "+1", " 1", "1.5", "1E3", "&H10", "tomorrow",
                                     "253402300800", "99999999999999999999999"}) {
    EXPECT_EQ(PosixClock::EpochFromText(bad), std::nullopt) << bad;
  }
}

TEST(TerminalText, KeepsUtf8TurnsProjectBytesAndStopsControlCharacters) {
  struct Case {
    std::string_view bytes;
    std::string_view shown;
  };
  constexpr Case kCases[] = {
      {"one\r\ntwo\nthree", "one\ntwo\nthree"},
      {"20 \xB0"
       "C, \x80 5",
       "20 \xC2\xB0"
       "C, \xE2\x82\xAC 5"},
      {"/home/\xC3\xA9t\xC3\xA9/\xE6\xB8\xAC.VKG", "/home/\xC3\xA9t\xC3\xA9/\xE6\xB8\xAC.VKG"},
      {"\x1B[2J\x07", "?[2J?"},
      {"\xC3", "\xC3\x83"},                              // a lead byte alone is a letter
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},  // a surrogate is no UTF-8
      {"\xC2\x9B", "\xC3\x82\xE2\x80\xBA"},              // nor is a hidden escape let through
  };
  for (const Case& row : kCases) EXPECT_EQ(TerminalText(row.bytes), row.shown);
}

// Puts another standard input in place for the time of a test.
class TerminalAnswers : public ::testing::Test {
 protected:
  void SetUp() override {
    before_ = ::dup(STDIN_FILENO);
    readFrom("/dev/null");
  }
  void TearDown() override {
    ::dup2(before_, STDIN_FILENO);
    ::close(before_);
  }
  void readFrom(const char* device) {
    const int opened = ::open(device, O_RDWR | O_NOCTTY);
    ASSERT_GE(opened, 0);
    ASSERT_EQ(::dup2(opened, STDIN_FILENO), STDIN_FILENO);
    ::close(opened);
  }
  int before_ = -1;
};

TEST_F(TerminalAnswers, ComeFromTheUserWhoIsAskedUntilHeIsUnderstood) {
  const int user = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_GE(user, 0);
  ASSERT_EQ(::grantpt(user), 0);
  ASSERT_EQ(::unlockpt(user), 0);
  readFrom(::ptsname(user));
  constexpr std::string_view kTyped = "what?\n\n cancel\nYes\n\x04";  // and the end of the input
  ASSERT_EQ(::write(user, kTyped.data(), kTyped.size()), static_cast<ssize_t>(kTyped.size()));

  TerminalForms forms({});
  const MessageBox box = {.title = "MISSING FILE", .text = "Search?", .buttons = Buttons::kYesNo};
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(forms.ShowBox(box), Answer::kYes);
  const std::string shown = ::testing::internal::GetCapturedStderr();
  const std::string asked = "  [y]es, [n]o: ";
  EXPECT_EQ(shown, "MISSING FILE\n  Search?\n" + asked + asked + asked + asked);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(forms.ShowBox(box), Answer::kNo);
  ::testing::internal::GetCapturedStderr();
  ::close(user);
}

TEST_F(TerminalAnswers, ComeFromWhatWasPreparedElseWriteNothing) {
  struct Case {
    std::vector<PreparedAnswer> byTitle;
    bool yes;
    Buttons buttons;
    Answer answer;
  };
  const Case cases[] = {
      {{}, false, Buttons::kOk, Answer::kOk},
      {{}, false, Buttons::kOkCancel, Answer::kCancel},
      {{}, false, Buttons::kYesNo, Answer::kNo},
      {{}, false, Buttons::kYesNoCancel, Answer::kCancel},
      {{}, true, Buttons::kOkCancel, Answer::kOk},
      {{}, true, Buttons::kYesNo, Answer::kYes},
      {{}, true, Buttons::kYesNoCancel, Answer::kYes},
      {{{"missing file", Answer::kYes}}, false, Buttons::kYesNo, Answer::kYes},
      {{{"Missing File", Answer::kNo}}, true, Buttons::kYesNo, Answer::kNo},
      {{{"MISSING FILE", Answer::kYes}, {"MISSING FILE", Answer::kNo}},
       false,
       Buttons::kYesNoCancel,
       Answer::kNo},
      {{{"ANOTHER", Answer::kYes}}, false, Buttons::kYesNo, Answer::kNo},
      // An answer that the box does not offer is none.
      {{{"MISSING FILE", Answer::kOk}}, false, Buttons::kYesNo, Answer::kNo},
      {{{"MISSING FILE", Answer::kCancel}}, true, Buttons::kYesNo, Answer::kYes},
  };
  for (const Case& row : cases) {
    TerminalForms forms({row.byTitle, row.yes});
    forms.Subject("pump.VKG");
    EXPECT_TRUE(forms.TakeBoxesShown().empty());
    ::testing::internal::CaptureStderr();
    const Answer answer =
        forms.ShowBox({.title = "MISSING FILE", .text = "a\r\n\r\nb", .buttons = row.buttons});
    const std::string shown = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(answer, row.answer) << shown;
    EXPECT_TRUE(shown.starts_with("pump.VKG: MISSING FILE\n  a\n\n  b\n")) << shown;
    EXPECT_EQ(forms.TakeBoxesShown(), std::vector<std::string>{"MISSING FILE"});
    EXPECT_TRUE(forms.TakeBoxesShown().empty());
  }
}

}  // namespace
}  // namespace ostrand::platform
