// What the disk has a part in: fleets of projects in one folder, and a save that waits for the
// disk.
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "machine.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "process.h"
#include "row.h"
#include "session/ostrand.h"

namespace ostrand::bench {
namespace {

namespace fs = std::filesystem;

const std::string kProject = OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG";

// An empty folder on the disk, deleted at the end.
class DiskFolder {
 public:
  DiskFolder() { Require(mkdtemp(path_.data()) != nullptr, path_); }
  ~DiskFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  DiskFolder(const DiskFolder&) = delete;
  DiskFolder& operator=(const DiskFolder&) = delete;

  [[nodiscard]] std::string operator/(std::string_view name) const {
    return fmt::format("{}/{}", path_, name);
  }

 private:
  std::string path_ = OSTRAND_OUT_DIR "/disk-XXXXXX";
};

// Projects under different names, and the folder that all of them are generated into.
class Fleet {
 public:
  explicit Fleet(int projects) : projects_(projects) {
    fs::create_directory(folder_ / "in");
    fs::create_directory(folder_ / "out");
    for (int number = 1; number <= projects; ++number) {
      fs::copy_file(kProject, folder_ / fmt::format("in/logger-{:05}.VKG", number));
    }
  }

  // Seconds for all of them, so many a process, two processes at a time.
  [[nodiscard]] double Generate(int aProcess) const {
    constexpr int kFilesOfProject = 3;
    const std::string line = fmt::format(
        "cd '{0}' && ls | HOME='{1}' XDG_CONFIG_HOME='{1}' xargs -P2 -n{2} '{3}' generate "
        "--no-sync -o '{1}' >/dev/null",
        folder_ / "in", folder_ / "out", aProcess, OSTRAND_PROGRAM);
    const double time =
        MedianTime(1, [&] { Require(std::system(line.c_str()) == 0, "a fleet without faults"); });
    const auto made = std::distance(fs::directory_iterator(folder_ / "out"), {});
    Require(made == kFilesOfProject * projects_, fmt::format("{} files of a fleet", made));
    return time;
  }

 private:
  DiskFolder folder_;
  int projects_;
};

constexpr int kFew = 1000;
constexpr int kTwiceAsMany = 2 * kFew;
constexpr int kMany = 10000;
constexpr int kBatch = 50;

// A ratio of two times that were measured once.
Figure ratioOf(double measured, double yardstick) {
  return {measured / yardstick, fmt::format("{:.2f} to {:.2f} s", measured, yardstick)};
}

Figure manyProjects() { return {Fleet(kMany).Generate(1), fmt::format("{} processes", kMany)}; }
Figure twiceAsMany() {
  const double few = Fleet(kFew).Generate(1);
  return ratioOf(Fleet(kTwiceAsMany).Generate(1), few);
}
Figure inBatches() {
  const double single = Fleet(kTwiceAsMany).Generate(1);
  return ratioOf(Fleet(kTwiceAsMany).Generate(kBatch), single);
}

// A project generated into a folder where nothing of its name is, as a new one is each time.
Figure intoFullFolder() {
  constexpr int kFiles = 30000;
  constexpr int kPairs = 101;
  const DiskFolder full;
  const DiskFolder empty;
  for (int number = 0; number < kFiles; ++number) {
    std::ofstream file(full / fmt::format("measured-{:05}.VKP", number));
    Require(file.good(), "a full folder");
  }
  const auto generate = [](const DiskFolder& folder) {
    const ProcessCosts costs =
        RunProcess({OSTRAND_PROGRAM, "generate", "--no-sync", kProject, "-o", folder / ""});
    Require(costs.status == 0, "a new file in a folder");
    for (const char* extension : {"VKP", "VKD", "VKW"}) {
      fs::remove(folder / fmt::format("vehicle-test.{}", extension));
    }
  };
  return RatioOf(
      kPairs, 0, [&] { generate(full); }, [&] { generate(empty); });
}

constexpr std::array<const char*, 4> kSaved = {"VKG", "VKP", "VKD", "VKW"};

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The least that leaves a file whole or as it was.
void replaceBare(const std::string& path, const std::string& bytes) {
  const std::string temporary = path + ".tmp";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  Require(file >= 0, temporary);
  Require(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), temporary);
  Require(fsync(file) == 0 && close(file) == 0, temporary);
  Require(std::rename(temporary.c_str(), path.c_str()) == 0, path);
}

Figure syncedSave() {
  constexpr int kPairs = 51;
  const DiskFolder folder;
  fs::copy_file(kProject, folder / "saved.VKG");
  Machine machine;
  platform::PosixFileSystem files;
  platform::Surroundings around = machine.Around();
  platform::Surroundings onDisk{
      files,           around.clock,    around.forms,          around.processes,
      around.settings, around.registry, around.temporaryFolder};
  const auto store = NewStore();
  OstrandEvents nobodyListens;
  Ostrand control(*store, onDisk, nobodyListens);
  bool cancelled = false;
  control.OpenFile(folder / "saved.VKG", cancelled);
  Require(!cancelled && control.SavePipeline(), "a save");
  std::array<std::string, kSaved.size()> bytes;
  for (std::size_t at = 0; at < kSaved.size(); ++at) {
    bytes[at] = bytesOf(folder / fmt::format("saved.{}", kSaved[at]));
    Require(!bytes[at].empty(), kSaved[at]);
  }
  return RatioOf(
      kPairs, 0, [&] { Require(control.SavePipeline(), "a save"); },
      [&] {
        for (std::size_t at = 0; at < kSaved.size(); ++at) {
          replaceBare(folder / fmt::format("bare.{}", kSaved[at]), bytes[at]);
        }
      });
}

}  // namespace

std::vector<Row> DiskRows() {
  return {{"synced", "save of four files, to temporary file, sync, rename", 1.15, syncedSave},
          {"crowd", "generate into 30,000 files, to an empty folder", 1.2, intoFullFolder},
          {"fleet", "10,000 projects, a process each, one folder, s", 60, manyProjects, true},
          {"fleet-twice", "2,000 projects, to 1,000", 2.1, twiceAsMany, true},
          {"fleet-batch", "2,000 projects, 50 a process, to one a process", 0.5, inBatches, true}};
}

}  // namespace ostrand::bench
