#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_machine_registry.h"
#include "platform/posix/posix_settings_store.h"
#include "platform/posix/user_folders.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"
#include "text/number.h"

namespace ostrand::platform {
namespace {

using testing::FaultyFileSystem;
using testing::ReadDisk;
using testing::TempFolder;
using testing::WriteDisk;

constexpr std::string_view kApp = "QUILLON";

unsigned modeOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 07777;
}

class PosixSettings : public ::testing::Test {
 protected:
  static Result<> put(SettingsStore& store, std::string_view name, std::string_view value) {
    const Setting row = {std::string(name), std::string(value)};
    return store.Write(kApp, kApp, {&row, 1});
  }
  static std::string get(SettingsStore& store, std::string_view name) {
    for (const Setting& row : store.Read(kApp, kApp)) {
      if (row.name == name) return row.value;
    }
    return "none";
  }
  // A settings file with this content, its folder made.
  void lay(std::string_view bytes) {
    std::filesystem::create_directories(folder / "config/ostrand");
    WriteDisk(path, bytes);
  }

  TempFolder folder;
  std::string path = folder / "config/ostrand/settings";
  PosixFileSystem files{Syncing::kOff, Readers::kOwner};
  PosixSettingsStore store{files, path};
};

TEST_F(PosixSettings, AreAPlainFileForTheirOwnerAlone) {
  EXPECT_TRUE(store.Read(kApp, kApp).empty());
  EXPECT_FALSE(std::filesystem::exists(folder / "config"));  // reading leaves no trace
  ASSERT_TRUE(put(store, "GenPath", "C:\\plans"));
  ASSERT_TRUE(put(store, "Form Background", "-2147483636"));
  EXPECT_EQ(ReadDisk(path),
            "[QUILLON\\QUILLON]\nGenPath = C:\\plans\nForm Background = -2147483636\n");
  EXPECT_EQ(modeOf(path), 0600U);
  EXPECT_EQ(modeOf(folder / "config/ostrand"), 0700U);
  EXPECT_EQ(modeOf(folder / "config"), 0700U);
  EXPECT_EQ(get(store, "GenPath"), "C:\\plans");
  EXPECT_EQ(store.TakeNotice(), "");

  // One that others may read is closed to them, whether its content changes or not.
  for (const std::string_view value : {"C:\\plans", "D:\\plans"}) {
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    ASSERT_TRUE(put(store, "GenPath", value));
    EXPECT_EQ(modeOf(path), 0600U);
  }
}

TEST_F(PosixSettings, KeepRowsOfOthersAndTellOfStrangeLinesOnce) {
  lay("# by hand\n[Other]\nx = 1\n[quillon\\quillon]\nsecret = y\nwhat is this\ngenpath = a\n");
  EXPECT_EQ(get(store, "genpath"), "a");
  ASSERT_TRUE(put(store, "GenPath", "b"));
  EXPECT_EQ(
      ReadDisk(path),
      "# by hand\n[Other]\nx = 1\n[quillon\\quillon]\nsecret = y\nwhat is this\nGenPath = b\n");
  EXPECT_EQ(store.TakeNotice(),
            "A line of the settings is not understood and is passed over: " + path + ", line 6");
  EXPECT_EQ(get(store, "GenPath"), "b");
  EXPECT_EQ(store.TakeNotice(), "");
}

TEST_F(PosixSettings, ADamagedFileReadsAsNoneIsToldAndKeptAside) {
  const std::string binary("[QUILLON\\QUILLON]\nGenPath = a\0b\n", 33);
  const std::string huge(SettingsText::kMostBytes + 1, '\n');
  struct Case {
    std::string_view bytes;
    std::string_view reason;
    std::string_view aside;
  };
  const Case cases[] = {{binary, ": Not a text file", ".damaged"},
                        {huge, ": File too large", ".damaged-2"}};
  for (const Case& row : cases) {
    lay(row.bytes);
    PosixSettingsStore damaged(files, path);
    EXPECT_TRUE(damaged.Read(kApp, kApp).empty());
    EXPECT_EQ(damaged.TakeNotice(), "The settings cannot be read, the defaults are in use: " +
                                        path + std::string(row.reason));
    damaged.Read(kApp, kApp);
    EXPECT_EQ(damaged.TakeNotice(), "");
    EXPECT_TRUE(ReadDisk(path) == row.bytes);  // reading changes nothing

    ASSERT_TRUE(put(damaged, "GenPath", "new"));
    const std::string aside = path + std::string(row.aside);
    EXPECT_EQ(damaged.TakeNotice(), "The damaged settings were kept as " + aside);
    EXPECT_TRUE(ReadDisk(aside) == row.bytes);
    EXPECT_EQ(get(damaged, "GenPath"), "new");
  }
}

TEST_F(PosixSettings, AFolderOrAPipeInTheirPlaceStopsNothing) {
  std::filesystem::create_directories(path + "/inner");
  EXPECT_TRUE(store.Read(kApp, kApp).empty());
  EXPECT_TRUE(store.TakeNotice().ends_with(path + ": Is a directory"));
  ASSERT_TRUE(put(store, "GenPath", "new"));
  EXPECT_TRUE(std::filesystem::is_directory(path + ".damaged/inner"));
  EXPECT_EQ(get(store, "GenPath"), "new");

  std::filesystem::remove(path);
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(store.Read(kApp, kApp).empty());
  EXPECT_TRUE(store.TakeNotice().ends_with(path + ": Not a regular file"));
}

TEST_F(PosixSettings, ALinkStaysALink) {
  std::filesystem::create_directories(folder / "config/ostrand");
  WriteDisk(folder / "mine", "[QUILLON\\QUILLON]\nGenPath = a\n");
  std::filesystem::create_symlink(folder / "mine", path);
  ASSERT_TRUE(put(store, "GenPath", "b"));
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_EQ(ReadDisk(folder / "mine"), "[QUILLON\\QUILLON]\nGenPath = b\n");
}

// In turn each call to the disk fails: what was there before stays or the new content stands
// whole, nothing else is left, and a damaged file is never lost.
TEST_F(PosixSettings, AFailingDiskLosesNothing) {
  const std::string before = "[QUILLON\\QUILLON]\nGenPath = a\n";
  const std::string after = "[QUILLON\\QUILLON]\nGenPath = b\n";
  const std::string binary("\0\1", 2);
  for (const std::string& old : {before, binary}) {
    bool failed = true;
    for (int failAt = 1; failed; ++failAt) {
      ASSERT_LT(failAt, 30);
      std::filesystem::remove_all(folder / "config");
      lay(old);
      FaultyFileSystem faulty(files, failAt);
      PosixSettingsStore broken(faulty, path);
      const Result<> written = put(broken, "GenPath", "b");
      failed = faulty.Calls() >= failAt;
      if (!written) {
        EXPECT_TRUE(written.ErrorText().starts_with(folder / "config/ostrand/"));
      }
      std::vector<std::string> kept;
      for (const auto& entry : std::filesystem::directory_iterator(folder / "config/ostrand")) {
        const std::string name = entry.path().filename();
        if (name == ".settings.lock") continue;
        EXPECT_TRUE(name == "settings" || name == "settings.damaged") << name << failAt;
        kept.push_back(ReadDisk(entry.path()));
      }
      const bool oldKept = std::find(kept.begin(), kept.end(), old) != kept.end();
      const bool newThere = std::find(kept.begin(), kept.end(), after) != kept.end();
      EXPECT_TRUE(oldKept || (newThere && old == before)) << failAt;
      EXPECT_TRUE(newThere || !written) << failAt;
    }
  }
}

// Runs `body` in a child; its result is that of the child, 0 for success.
template <class Body>
pid_t inChild(Body&& body) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  return child;
}

int endOf(pid_t child) {
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(PosixSettings, AFolderThatMayNotBeWrittenGivesAClearError) {
  ASSERT_TRUE(put(store, "GenPath", "a"));
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder / "config").c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder / "config/ostrand").c_str(), 0555), 0);
  ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
  const int end = endOf(inChild([&] {
    if (::geteuid() == 0 && ::seteuid(65534) != 0) return 9;  // the superuser may write anywhere
    const Result<> changed = put(store, "GenPath", "b");
    if (changed || changed.ErrorText() != path + ": Permission denied") return 1;
    return put(store, "GenPath", "a") ? 0 : 2;  // what stands there needs no write
  }));
  ASSERT_EQ(::chmod((folder / "config/ostrand").c_str(), 0755), 0);
  EXPECT_EQ(end, 0);

  PosixSettingsStore belowAFile(files, path + "/ostrand/settings");
  const Result<> written = put(belowAFile, "GenPath", "b");
  ASSERT_FALSE(written);
  EXPECT_TRUE(written.ErrorText().ends_with(": Not a directory")) << written.ErrorText();
  PosixSettingsStore nowhere(files, "");
  EXPECT_TRUE(nowhere.Read(kApp, kApp).empty());
  EXPECT_FALSE(put(nowhere, "GenPath", "b"));
}

TEST_F(PosixSettings, AFileThatMayNotBeReadIsToldAndKept) {
  ASSERT_TRUE(put(store, "GenPath", "a"));
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
  ASSERT_EQ(::chmod((folder / "config").c_str(), 0777), 0);
  ASSERT_EQ(::chmod((folder / "config/ostrand").c_str(), 0777), 0);
  std::filesystem::remove(folder / "config/ostrand/.settings.lock");
  EXPECT_EQ(endOf(inChild([&] {
              if (::geteuid() == 0 && ::seteuid(65534) != 0) return 9;
              if (!store.Read(kApp, kApp).empty()) return 1;
              if (!store.TakeNotice().ends_with(path + ": Permission denied")) return 2;
              if (!put(store, "GenPath", "b")) return 3;
              return get(store, "GenPath") == "b" ? 0 : 4;
            })),
            0);
  ASSERT_EQ(::chmod((path + ".damaged").c_str(), 0600), 0);
  EXPECT_EQ(ReadDisk(path + ".damaged"), "[QUILLON\\QUILLON]\nGenPath = a\n");
}

TEST_F(PosixSettings, WritersSideBySideLoseNothingAndMixNothing) {
  constexpr int kWriters = 4;
  constexpr int kRounds = 25;
  std::vector<pid_t> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(inChild([&] {
      PosixSettingsStore own(files, path);
      const std::string name = "Own" + NumberText(writer);
      for (int round = 1; round <= kRounds; ++round) {
        const std::string value = NumberText(writer * 1000 + round);
        // The three belong together; a reader must never see those of two writers.
        const Setting rows[] = {{"One", value}, {name, NumberText(round)}, {"Two", value}};
        if (!own.Write(kApp, kApp, rows)) return 1;
      }
      return 0;
    }));
  }
  int mixed = 0;
  for (int look = 0; look < 300; ++look) {
    std::map<std::string, std::string> seen;
    for (const Setting& row : store.Read(kApp, kApp)) seen[row.name] = row.value;
    if (seen["One"] != seen["Two"]) ++mixed;
  }
  for (const pid_t writer : writers) EXPECT_EQ(endOf(writer), 0);
  EXPECT_EQ(mixed, 0);
  EXPECT_EQ(store.TakeNotice(), "");
  for (int writer = 0; writer < kWriters; ++writer) {
    EXPECT_EQ(get(store, "Own" + NumberText(writer)), NumberText(kRounds));
  }
  EXPECT_EQ(store.Read(kApp, kApp).size(), 2U + kWriters);
}

class PosixRegistry : public ::testing::Test {
 protected:
  RegistryReading read(std::string_view hive, std::string_view key, std::string_view name) {
    return registry.Read(hive, key, name);
  }

  TempFolder folder;
  PosixFileSystem files;
  PosixMachineRegistry registry{files, folder / "registry", folder / "settings"};
};

TEST_F(PosixRegistry, GivesTextsAndNumbersOrTheFailure) {
  WriteDisk(folder / "registry",
            "[HKLM\\SOFTWARE\\Fernhollow Instruments\\ProgGen]\n"
            "WorkDir = /var/tmp/vk\nCount = 12\nQuoted = \"12\"\nWide = 4294967296\n"
            "Raw = bytes: 01 02\nNone =\n"
            "[HKCU\\Elsewhere]\nx = 1\n");
  WriteDisk(folder / "settings", "[HKCU\\Software\\Fernhollow Instruments\\ProgGen]\nSize = 9\n");
  constexpr std::string_view kKey = "software\\fernhollow instruments\\PROGGEN";
  struct Case {
    std::string_view hive;
    std::string_view key;
    std::string_view name;
    RegistryReading reading;
  };
  const Case cases[] = {
      {"HKLM", kKey, "workdir", {"/var/tmp/vk", {}}},
      {"hklm", kKey, "Count", {12, {}}},
      {"HKLM", kKey, "Quoted", {"12", {}}},
      {"HKLM", kKey, "None", {"", {}}},
      {"HKLM", kKey, "Wide", {"", RegistryFailure::kDataType}},
      {"HKLM", kKey, "Raw", {"", RegistryFailure::kDataType}},
      {"HKLM", kKey, "Size", {"", RegistryFailure::kReadValue}},
      {"HKLM", "SOFTWARE\\Fernhollow Instruments", "Compilers", {"", RegistryFailure::kReadValue}},
      {"HKLM", "SOFTWARE\\Fernhollow", "Compilers", {"", RegistryFailure::kOpenKey}},
      {"HKCU", kKey, "Size", {9, {}}},
      {"HKCU", "Elsewhere", "x", {"", RegistryFailure::kOpenKey}},
      {"HKXX", kKey, "WorkDir", {"", RegistryFailure::kOpenKey}},
      {"", "", "", {"", RegistryFailure::kOpenKey}},
  };
  for (const Case& row : cases) {
    const RegistryReading reading = read(row.hive, row.key, row.name);
    EXPECT_EQ(reading.value, row.reading.value) << row.key << " " << row.name;
    EXPECT_EQ(reading.failure, row.reading.failure) << row.key << " " << row.name;
  }
  EXPECT_EQ(registry.TakeNotice(), "");
}

TEST_F(PosixRegistry, AFileThatIsMissingIsQuietAndADamagedOneIsTold) {
  EXPECT_EQ(read("HKLM", "A", "b").failure, RegistryFailure::kOpenKey);
  EXPECT_EQ(registry.TakeNotice(), "");
  std::filesystem::create_directory(folder / "registry");
  EXPECT_EQ(read("HKLM", "A", "b").failure, RegistryFailure::kOpenKey);
  EXPECT_EQ(registry.TakeNotice(), "The keys of this machine cannot be read: " +
                                       (folder / "registry") + ": Is a directory");
}

// The environment as it is said here for the time of a test.
class Environment : public ::testing::Test {
 protected:
  void set(const char* name, const char* value) {
    if (!before_.contains(name)) {
      const char* present = ::getenv(name);
      before_[name] = present == nullptr ? std::nullopt : std::optional<std::string>(present);
    }
    put(name, value);
  }
  void TearDown() override {
    for (const auto& [name, value] : before_) {
      put(name.c_str(), value ? value->c_str() : nullptr);
    }
  }

 private:
  static void put(const char* name, const char* value) {
    if (value == nullptr) {
      ::unsetenv(name);
    } else {
      ::setenv(name, value, 1);
    }
  }
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(Environment, NamesTheFolders) {
  set("HOME", "/home/marge");
  set("XDG_CONFIG_HOME", "/etc/marge//");
  EXPECT_EQ(UserSettingsPath(), "/etc/marge/ostrand/settings");
  for (const char* useless : {"", "relative/config"}) {
    set("XDG_CONFIG_HOME", useless);
    EXPECT_EQ(UserSettingsPath(), "/home/marge/.config/ostrand/settings");
  }
  set("XDG_CONFIG_HOME", nullptr);
  set("HOME", nullptr);  // the account knows
  EXPECT_TRUE(UserSettingsPath().empty() ||
              UserSettingsPath().ends_with("/.config/ostrand/settings"));

  set("OSTRAND_REGISTRY", nullptr);
  EXPECT_EQ(MachineRegistryPath(), "/etc/ostrand/registry");
  set("OSTRAND_REGISTRY", "keys.txt");
  EXPECT_EQ(MachineRegistryPath(), "keys.txt");

  set("TMPDIR", nullptr);
  EXPECT_EQ(TemporaryFolder(), "/tmp");
  set("TMPDIR", "/var/tmp/");
  EXPECT_EQ(TemporaryFolder(), "/var/tmp");
}

}  // namespace
}  // namespace ostrand::platform
