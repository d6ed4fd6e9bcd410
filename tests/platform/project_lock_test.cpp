// The lock of a project, between processes and between machines.
#include "platform/posix/project_lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>

#include "support/temp_folder.h"

namespace ostrand::platform {
namespace {

using std::chrono::milliseconds;
using testing::ReadDisk;
using testing::WriteDisk;

constexpr LockTimes kAtOnce{.patience = milliseconds(0)};
constexpr std::string_view kElsewhere = "anna lab-pc.elsewhere 4711 1000000000\n";

std::string ownHost() {
  std::array<char, 256> name{};
  EXPECT_EQ(::gethostname(name.data(), name.size() - 1), 0);
  return name.data();
}

class ProjectLocks : public ::testing::Test {
 protected:
  // Writes a lock file that was last touched `age` seconds ago.
  void lay(std::string_view content, std::int64_t age) {
    WriteDisk(lockFile, content);
    struct stat info {};
    ASSERT_EQ(::stat(lockFile.c_str(), &info), 0);
    const timespec when{info.st_mtim.tv_sec - age, 0};
    const timespec times[] = {when, when};
    ASSERT_EQ(::utimensat(AT_FDCWD, lockFile.c_str(), times, 0), 0);
  }
  Result<std::unique_ptr<ProjectLock>> take() { return LockProjectFile(project, {}, kAtOnce); }

  const testing::TempFolder folder;
  const std::string project = folder / "pump.VKG";
  const std::string lockFile = folder / ".pump.lock";
};

TEST_F(ProjectLocks, DeadHoldersDoNotBlock) {
  // `holder` is the holder named in the error; empty if the lock is taken over.
  const std::tuple<std::string, std::int64_t, std::string> cases[] = {
      // On this machine the system knows that nobody has locked the file, whoever has the process
      // number.
      {"anna " + ownHost() + " 1 1000000000\n", 0, ""},
      {std::string(kElsewhere), 0, "anna on lab-pc.elsewhere, process 4711"},
      {std::string(kElsewhere), 50, "anna on lab-pc.elsewhere, process 4711"},
      {std::string(kElsewhere), 61, ""},
      {"an\x1Bna lab\x07 4711 1\n", 0, "an?na on lab?, process 4711"},
      {"anna lab 99999999999999 1\n", 0, "an unknown program"},
      {"what is this", 50, "an unknown program"},
      {"what is this", 61, ""},
      {"", 0, "an unknown program"},  // its holder has not written yet
      {"", 3, ""},
  };
  for (const auto& [content, age, holder] : cases) {
    lay(content, age);
    auto lock = take();
    ASSERT_EQ(static_cast<bool>(lock), holder.empty()) << content << age;
    if (!lock) {
      EXPECT_EQ(lock.ErrorText(), project + ": being saved by " + holder + " (" + lockFile + ")");
      EXPECT_EQ(ReadDisk(lockFile), content);
      continue;
    }
    const std::string now = ReadDisk(lockFile);
    const std::string own = " " + ownHost() + " " + std::to_string(::getpid()) + " ";
    EXPECT_NE(now.find(own), std::string::npos) << now;
    lock.Value().reset();
    EXPECT_FALSE(std::filesystem::exists(lockFile));
  }
}

TEST_F(ProjectLocks, WaitingSaveNamesTheHolderAndContinues) {
  auto first = take();
  ASSERT_TRUE(first);
  const auto refused = LockProjectFile(folder / "PUMP.vkg", {}, kAtOnce);  // in any spelling
  ASSERT_FALSE(refused);
  const std::string process = "on " + ownHost() + ", process " + std::to_string(::getpid());
  EXPECT_NE(refused.ErrorText().find(process), std::string::npos) << refused.ErrorText();
  EXPECT_TRUE(LockProjectFile(folder / "pump2.VKG", {}, kAtOnce)) << "another project";

  std::string named;
  const auto second = LockProjectFile(project, [&](const std::string& holder) {
    named = holder;
    first.Value().reset();
  });
  ASSERT_TRUE(second);
  EXPECT_TRUE(named.ends_with(process)) << named;
  EXPECT_TRUE(std::filesystem::exists(lockFile));
}

TEST_F(ProjectLocks, AreNeverHeldByTwo) {
  constexpr int kProcesses = 4;
  constexpr int kRounds = 60;
  const std::string counter = folder / "counter";
  WriteDisk(counter, "0");
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    children.push_back(::fork());
    if (children.back() != 0) continue;
    for (int round = 0; round < kRounds; ++round) {
      // Without pauses, so that they meet between opening a lock and taking it.
      auto lock = take();
      while (!lock) lock = take();
      WriteDisk(counter, std::to_string(std::stoi(ReadDisk(counter)) + 1));
      // A holder that dies leaves its file to the next one.
      if (round == kRounds - 1) ::_exit(0);
    }
  }
  for (const pid_t child : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(ReadDisk(counter), std::to_string(kProcesses * kRounds));
}

TEST_F(ProjectLocks, LeaveOtherEntriesAlone) {
  WriteDisk(folder / "precious", "kept");
  const std::function<void()> plants[] = {
      [&] { std::filesystem::create_symlink(folder / "precious", lockFile); },
      [&] { std::filesystem::create_symlink(folder / "nowhere", lockFile); },
      [&] { std::filesystem::create_directory(lockFile); },
      [&] { ASSERT_EQ(::mkfifo(lockFile.c_str(), 0600), 0); },
  };
  for (const auto& plant : plants) {
    plant();
    {
      const auto lock = LockProjectFile(project, {}, {});
      ASSERT_TRUE(lock) << lock.ErrorText();
      EXPECT_TRUE(std::filesystem::exists(lockFile + ".1"));
      EXPECT_FALSE(take());
    }
    EXPECT_FALSE(std::filesystem::exists(lockFile + ".1"));
    EXPECT_FALSE(std::filesystem::exists(folder / "nowhere"));
    EXPECT_EQ(ReadDisk(folder / "precious"), "kept");
    EXPECT_TRUE(std::filesystem::remove(lockFile));
  }
}

TEST_F(ProjectLocks, LongSaveTouchesItsLockAndNoticesATakeover) {
  auto lock = LockProjectFile(project, {}, {.refresh = milliseconds(0)});
  ASSERT_TRUE(lock);
  lay(ReadDisk(lockFile), 300);
  ASSERT_TRUE(lock.Value()->Keep());
  struct stat info {};
  ASSERT_EQ(::stat(lockFile.c_str(), &info), 0);
  EXPECT_LT(::time(nullptr) - info.st_mtim.tv_sec, 200);

  WriteDisk(lockFile, kElsewhere);
  const Result<> lost = lock.Value()->Keep();
  ASSERT_FALSE(lost);
  EXPECT_EQ(lost.ErrorText(), project + ": another machine has taken over the lock of this save");
  lock.Value().reset();
  EXPECT_EQ(ReadDisk(lockFile), kElsewhere) << "the lock of the other";
}

TEST_F(ProjectLocks, MissingFolderHasNoLock) {
  const auto lock = LockProjectFile(folder / "none/pump.VKG", {}, kAtOnce);
  ASSERT_TRUE(lock);
  EXPECT_EQ(lock.Value(), nullptr);
}

}  // namespace
}  // namespace ostrand::platform
