#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <set>

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_machine_registry.h"
#include "platform/posix/posix_settings_store.h"
#include "platform/posix/user_folders.h"
#include "platform/settings_text.h"
#include "support/cli_run.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

using testing::ReadDisk;
using testing::TempFolder;
using testing::WriteDisk;

constexpr std::string_view kApp = "QUILLON";
const std::string kHead = "[QUILLON\\QUILLON]\n";

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
  // Writes a settings file with this content and makes its folder.
  void lay(std::string_view bytes) {
    std::filesystem::create_directories(folder / "config/ostrand");
    WriteDisk(path, bytes);
  }

  TempFolder folder;
  std::string path = folder / "config/ostrand/settings";
  PosixFileSystem files{Syncing::kOff, Readers::kOwner};
  PosixSettingsStore store{files, path};
};

TEST_F(PosixSettings, AreReadableByTheirOwnerOnly) {
  EXPECT_TRUE(store.Read(kApp, kApp).empty());
  EXPECT_FALSE(std::filesystem::exists(folder / "config"));  // reading leaves no trace
  ASSERT_TRUE(put(store, "Form Background", "-2147483636"));
  ASSERT_TRUE(put(store, "GenPath", "C:\\plans"));
  EXPECT_EQ(ReadDisk(path), kHead + "Form Background = -2147483636\nGenPath = C:\\plans\n");
  EXPECT_EQ(modeOf(folder / "config/ostrand"), 0700U);
  EXPECT_EQ(modeOf(folder / "config"), 0700U);
  // A file that others may read becomes private, whether its content changes or not.
  for (const std::string_view value : {"C:\\plans", "D:\\plans"}) {
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    ASSERT_TRUE(put(store, "GenPath", value));
    EXPECT_EQ(modeOf(path), 0600U);
  }
}

TEST_F(PosixSettings, InvalidLineIsReportedOnceAndKept) {
  lay("# by hand\nwhat?\n[quillon\\quillon]\ngenpath = a\n");
  ASSERT_TRUE(put(store, "GenPath", "b"));
  EXPECT_EQ(ReadDisk(path), "# by hand\nwhat?\n[quillon\\quillon]\nGenPath = b\n");
  EXPECT_EQ(store.TakeNotice(),
            "A line of the settings is not understood and is ignored: " + path + ", line 2");
  EXPECT_EQ(get(store, "GenPath") + store.TakeNotice(), "b");
}

TEST_F(PosixSettings, DamagedFileIsReportedAndKeptAside) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {kHead + std::string("GenPath = a\0b\n", 14), ": Not a text file", ".damaged"},
      {std::string(SettingsText::kMaxBytes + 1, '\n'), ": File too large", ".damaged-2"}};
  for (const auto& [bytes, reason, aside] : cases) {
    lay(bytes);
    PosixSettingsStore damaged(files, path);
    EXPECT_TRUE(damaged.Read(kApp, kApp).empty());
    EXPECT_EQ(damaged.TakeNotice(),
              "The settings cannot be read, the defaults are in use: " + path + reason);
    EXPECT_TRUE(ReadDisk(path) == bytes);  // reading changes nothing
    ASSERT_TRUE(put(damaged, "GenPath", "new"));
    EXPECT_EQ(damaged.TakeNotice(), "The damaged settings are kept as " + path + aside);
    EXPECT_TRUE(ReadDisk(path + aside) == bytes);
    EXPECT_EQ(get(damaged, "GenPath"), "new");
  }
}

TEST_F(PosixSettings, FolderOrLinkInTheirPlaceStopsNothing) {
  std::filesystem::create_directories(path + "/inner");
  EXPECT_TRUE(store.Read(kApp, kApp).empty());
  EXPECT_TRUE(store.TakeNotice().ends_with(path + ": Is a directory"));
  ASSERT_TRUE(put(store, "GenPath", "new"));
  EXPECT_TRUE(std::filesystem::is_directory(path + ".damaged/inner"));

  std::filesystem::rename(path, folder / "mine");
  std::filesystem::create_symlink(folder / "mine", path);
  ASSERT_TRUE(put(store, "GenPath", "b"));
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_EQ(ReadDisk(folder / "mine"), kHead + "GenPath = b\n");
}

// Only a missing file reads as empty.
TEST_F(PosixSettings, UnreadableFileIsNeverChanged) {
  lay(kHead + "GenPath = a\nOther = b\n");
  testing::FaultyFileSystem faulty(files, 1);  // the first read fails
  PosixSettingsStore later(faulty, path);
  EXPECT_TRUE(later.Read(kApp, kApp).empty());
  EXPECT_TRUE(Holds(later.TakeNotice(), "the defaults are in use: " + path));
  EXPECT_FALSE(put(later, "GenPath", "default")) << "the settings of the user were not read";
  EXPECT_EQ(get(later, "Other"), "b");
  EXPECT_TRUE(put(later, "GenPath", "c"));
  testing::FaultyFileSystem again(files, 1);
  PosixSettingsStore blind(again, path);
  EXPECT_TRUE(put(blind, "GenPath", "d")) << "the second reading, under the lock, counts";
  EXPECT_EQ(ReadDisk(path), kHead + "GenPath = d\nOther = b\n");
  testing::FaultyFileSystem broken(files, 1, true);
  PosixSettingsStore never(broken, path);
  EXPECT_FALSE(put(never, "GenPath", "e"));
  EXPECT_EQ(ReadDisk(path), kHead + "GenPath = d\nOther = b\n");

  std::filesystem::remove(path);
  std::filesystem::create_symlink("settings", path);
  const Result<> looped = put(store, "GenPath", "b");
  ASSERT_FALSE(looped);
  EXPECT_EQ(looped.ErrorText(), path + ": Too many levels of symbolic links");
  EXPECT_TRUE(std::filesystem::is_symlink(path));
}

// Each call to the disk fails in turn: the old content stays or the new content is whole, no other
// file is left, and a damaged file is never lost.
TEST_F(PosixSettings, FailingDiskLosesNothing) {
  const std::string before = kHead + "GenPath = a\n";
  for (const std::string& old : {before, std::string("\0\1", 2)}) {
    bool failed = true;
    for (int failAt = 1; failed; ++failAt) {
      SCOPED_TRACE(failAt);
      ASSERT_LT(failAt, 30);
      std::filesystem::remove_all(folder / "config");
      lay(old);
      testing::FaultyFileSystem faulty(files, failAt);
      PosixSettingsStore broken(faulty, path);
      const Result<> written = put(broken, "GenPath", "b");
      failed = faulty.Calls() >= failAt;
      EXPECT_TRUE(written || written.ErrorText().starts_with(folder / "config/ostrand/"));
      std::set<std::string> kept;
      for (const auto& entry : std::filesystem::directory_iterator(folder / "config/ostrand")) {
        const std::string name = entry.path().filename();
        if (name == ".settings.lock") continue;
        EXPECT_TRUE(name == "settings" || name == "settings.damaged") << name;
        kept.insert(ReadDisk(entry.path()));
      }
      const bool newThere = kept.contains(kHead + "GenPath = b\n");
      EXPECT_TRUE(kept.contains(old) || (newThere && old == before));
      EXPECT_TRUE(newThere || !written);
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

TEST_F(PosixSettings, ReadOnlyFolderGivesAClearError) {
  ASSERT_TRUE(put(store, "GenPath", "a"));
  for (const char* name : {"", "config", "config/ostrand"}) {
    ASSERT_EQ(::chmod((folder / name).c_str(), 0555), 0);
  }
  ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
  EXPECT_EQ(testing::EndOf(inChild([&] {
              if (::geteuid() == 0 && ::seteuid(65534) != 0) return 9;  // not as superuser
              const Result<> changed = put(store, "GenPath", "b");
              if (changed || changed.ErrorText() != path + ": Permission denied") return 1;
              return put(store, "GenPath", "a") ? 0 : 2;  // an unchanged value needs no write
            })),
            0);
  for (const char* name : {"", "config", "config/ostrand"}) {
    ASSERT_EQ(::chmod((folder / name).c_str(), 0755), 0);
  }
  PosixSettingsStore nowhere(files, "");
  EXPECT_TRUE(nowhere.Read(kApp, kApp).empty());
  EXPECT_FALSE(put(nowhere, "GenPath", "b"));
}

TEST_F(PosixSettings, ConcurrentWritersLoseAndMixNothing) {
  std::vector<pid_t> writers;
  for (int writer = 0; writer < 4; ++writer) {
    writers.push_back(inChild([&] {
      PosixSettingsStore own(files, path);
      for (int round = 1; round <= 25; ++round) {
        const std::string value = NumberText(writer * 1000 + round);
        // The three belong together; a reader must never see those of two writers.
        const Setting rows[] = {
            {"One", value}, {"Own" + NumberText(writer), NumberText(round)}, {"Two", value}};
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
  for (const pid_t writer : writers) EXPECT_EQ(testing::EndOf(writer), 0);
  EXPECT_EQ(mixed, 0);
  EXPECT_EQ(store.TakeNotice(), "");
  for (const char* own : {"Own0", "Own1", "Own2", "Own3"}) EXPECT_EQ(get(store, own), "25");
  EXPECT_EQ(store.Read(kApp, kApp).size(), 6U);
}

class PosixRegistry : public ::testing::Test {
 protected:
  TempFolder folder;
  PosixFileSystem files;
  PosixMachineRegistry registry{files, folder / "registry", folder / "settings"};
};

TEST_F(PosixRegistry, ReturnsTextsNumbersAndFailures) {
  WriteDisk(folder / "registry",
            "[HKLM\\SOFTWARE\\Fernhollow Instruments\\ProgGen]\n"
            "WorkDir = /var/tmp/vk\nCount = 12\nWide = 4294967296\n"
            "Raw = bytes: 01 02\n"
            "[HKCU\\Elsewhere]\nx = 1\n");
  WriteDisk(folder / "settings", "[HKCU\\Software\\Fernhollow Instruments\\ProgGen]\nSize = 9\n");
  constexpr std::string_view kKey = "software\\fernhollow instruments\\PROGGEN";
  const std::tuple<std::string_view, std::string_view, std::string_view, RegistryReading> cases[] =
      {
          {"HKLM", kKey, "workdir", {"/var/tmp/vk", {}}},
          {"hklm", kKey, "Count", {12, {}}},
          {"HKLM", kKey, "Wide", {"", RegistryFailure::kDataType}},
          {"HKLM", kKey, "Raw", {"", RegistryFailure::kDataType}},
          {"HKLM", kKey, "Size", {"", RegistryFailure::kReadValue}},
          {"HKLM",
           "SOFTWARE\\Fernhollow Instruments",
           "Compilers",
           {"", RegistryFailure::kReadValue}},
          {"HKLM", "SOFTWARE\\Fernhollow", "Compilers", {"", RegistryFailure::kOpenKey}},
          {"HKCU", kKey, "Size", {9, {}}},
          {"HKCU", "Elsewhere", "x", {"", RegistryFailure::kOpenKey}},
          {"HKXX", kKey, "WorkDir", {"", RegistryFailure::kOpenKey}},
      };
  for (const auto& [hive, key, name, expected] : cases) {
    const RegistryReading reading = registry.Read(hive, key, name);
    EXPECT_EQ(reading.value, expected.value) << key << " " << name;
    EXPECT_EQ(reading.failure, expected.failure) << key << " " << name;
  }
  EXPECT_EQ(registry.TakeNotice(), "");
}

TEST_F(PosixRegistry, ReportsADamagedButNotAMissingFile) {
  EXPECT_EQ(registry.Read("HKLM", "A", "b").failure, RegistryFailure::kOpenKey);
  EXPECT_EQ(registry.TakeNotice(), "");
  std::filesystem::create_directory(folder / "registry");
  EXPECT_EQ(registry.Read("HKLM", "A", "b").failure, RegistryFailure::kOpenKey);
  EXPECT_EQ(registry.TakeNotice(), "The keys of this machine cannot be read: " +
                                       (folder / "registry") + ": Is a directory");
}

// In a child process, which has a separate environment.
TEST(Environment, SetsTheFolders) {
  const auto isNamed = [](std::string_view expected, std::string (*path)(), const char* variable,
                          const char* value) {
    return testing::EndOf(inChild([&] {
             ::setenv("HOME", "/m", 1);
             ::setenv(variable, value == nullptr ? "" : value, 1);
             if (value == nullptr) ::unsetenv(variable);
             return path() == expected ? 0 : 1;
           })) == 0;
  };
  const char* config = "XDG_CONFIG_HOME";
  EXPECT_TRUE(isNamed("/etc/m/ostrand/settings", UserSettingsPath, config, "/etc/m//"));
  EXPECT_TRUE(isNamed("/m/.config/ostrand/settings", UserSettingsPath, config, ""));
  EXPECT_TRUE(isNamed("/m/.config/ostrand/settings", UserSettingsPath, config, "relative"));
  EXPECT_TRUE(isNamed("/etc/ostrand/registry", MachineRegistryPath, "OSTRAND_REGISTRY", nullptr));
  EXPECT_TRUE(isNamed("keys.txt", MachineRegistryPath, "OSTRAND_REGISTRY", "keys.txt"));
  EXPECT_TRUE(isNamed("/tmp", TemporaryFolder, "TMPDIR", nullptr));
  EXPECT_TRUE(isNamed("/var/tmp", TemporaryFolder, "TMPDIR", "/var/tmp/"));
}

using Kind = SettingsValue::Kind;
using namespace std::string_view_literals;

SettingsText parsed(std::string_view bytes) {
  auto text = SettingsText::FromBytes(bytes);
  EXPECT_TRUE(text) << bytes;
  return text ? text.Value() : SettingsText();
}

TEST(SettingsText, ReadsHandwrittenLines) {
  constexpr std::tuple<std::string_view, Kind, std::string_view> cases[] = {
      {"  A \t=  two words \t\r", Kind::kText, "two words"},
      {"a = 8191", Kind::kWhole, "8191"},
      {"a = -2147483648", Kind::kWhole, "-2147483648"},
      {"a = 2147483648", Kind::kTooWide, "2147483648"},
      {"a = 1.5", Kind::kText, "1.5"},
      {"a = \"8191\"", Kind::kText, "8191"},
      {"a = \"the \"\"big\"\" one \"", Kind::kText, "the \"big\" one "},
      {"a = bytes: 41 0d0A", Kind::kBytes, "A\r\n"},
      {"a =", Kind::kText, ""},
      {"a = x = y ; z", Kind::kText, "x = y ; z"},
      {"a = 1\na = \xC3\xA9", Kind::kText, "\xC3\xA9"},  // the last one counts
      {"a = 1\n[other]\na = 2\n[S]", Kind::kWhole, "1"},
  };
  for (const auto& [row, kind, shown] : cases) {
    const SettingsText text = parsed("\xEF\xBB\xBF# mine\n\n [ s ]\n" + std::string(row));
    EXPECT_EQ(text.StrangeLine(), 0) << row;
    const auto value = text.Find("s", "a");
    ASSERT_TRUE(value) << row;
    EXPECT_EQ(value->kind, kind) << row;
    EXPECT_EQ(value->text, shown);
  }
}

TEST(SettingsText, IgnoresInvalidLinesAndReportsTheFirst) {
  constexpr std::pair<std::string_view, int> cases[] = {
      {"a = 1\n[s]\n", 1},       {"[s]\nb = 1\na\n", 3},     {"[s]\n = 1\n", 2},
      {"[s]\n\n[t\na = 1\n", 3}, {"[s]\n[ ]\na = 1\n", 2},   {"[s]\na = \"open\n", 2},
      {"[s]\na = \"x\" y\n", 2}, {"[s]\na = bytes: 4\n", 2}, {"[s]\na = bytes: 4g\n", 2},
  };
  for (const auto& [bytes, line] : cases) {
    SettingsText text = parsed(bytes);
    EXPECT_EQ(text.StrangeLine(), line) << bytes;
    EXPECT_FALSE(text.Find("s", "a")) << bytes;
    // The old content stays unchanged.
    ASSERT_TRUE(text.Set("u", "n", "v"));
    EXPECT_EQ(text.Bytes(), std::string(bytes) + "\n[u]\nn = v\n");
  }
}

TEST(SettingsText, ChangesOneRowOnly) {
  SettingsText text = parsed("; top\r\n[S]\r\nOld = 1\r\nMine=kept  \r\n\r\n[t]\nx = 1");
  ASSERT_TRUE(text.Set("s", "OLD", "2"));
  ASSERT_TRUE(text.Set("s", "mine", "kept"));
  ASSERT_TRUE(text.Set("S", "new", " 3"));
  ASSERT_TRUE(text.Set("t", "y", "4"));
  EXPECT_EQ(text.Bytes(),
            "; top\r\n[S]\r\nOLD = 2\r\nMine=kept  \r\nnew = \" 3\"\n\r\n[t]\nx = 1\ny = 4\n");
}

TEST(SettingsText, EveryValueSurvivesWritingAndReading) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::string values[] = {"",         " ",    "\t",  "\"",           "\"\"", "\"a\"",
                                "bytes: x", "a\nb", "x\r", "[section]",    "= 1",  "# no",
                                "C:\\a\\",  " \" ", "-5",  "\xC3\xA9\x80", all};
  for (const std::string& value : values) {
    SettingsText text;
    ASSERT_TRUE(text.Set("QUILLON\\QUILLON", "Form Background", value));
    ASSERT_TRUE(text.Set("QUILLON\\QUILLON", "Next", "5"));
    const SettingsText again = parsed(text.Bytes());
    EXPECT_EQ(again.StrangeLine(), 0);
    ASSERT_TRUE(again.Find("QUILLON\\QUILLON", "Form Background")) << text.Bytes();
    EXPECT_EQ(again.Find("QUILLON\\QUILLON", "Form Background")->text, value);
    EXPECT_EQ(again.Rows("quillon\\quillon").size(), 2U);
  }
}

TEST(SettingsText, RefusesAmbiguousNames) {
  SettingsText text;
  for (const std::string_view name : {"", " a", "a ", "a=b", "#a", ";a", "[a", "a\nb"}) {
    EXPECT_FALSE(text.Set("s", name, "1")) << name;
  }
  for (const std::string_view section : {"", " s", "s]\n[t", "s\r"}) {
    EXPECT_FALSE(text.Set(section, "a", "1")) << section;
  }
  EXPECT_EQ(text.Bytes(), "");
  EXPECT_TRUE(text.Set("s]", "a]", "1"));
  EXPECT_TRUE(parsed(text.Bytes()).Find("s]", "a]"));
}

}  // namespace
}  // namespace ostrand::platform
