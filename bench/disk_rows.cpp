// Rows that depend on the disk: fleets of projects in one folder, and a synced save.
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "documents/makewire.h"
#include "documents/table_description.h"
#include "generator/savedld.h"
#include "machine.h"
#include "model/new_store.h"
#include "platform/posix/posix_filesystem.h"
#include "process.h"
#include "projectfile/genfile.h"
#include "row.h"
#include "session/ostrand.h"

namespace ostrand::bench {
namespace {

namespace fs = std::filesystem;

const std::string kProject = OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG";

const std::string kDisk = OSTRAND_OUT_DIR;

// The place for many files: in memory if possible. A disk that has just deleted files, from this or
// any other run, is slow to create new ones.
std::string placeForMany() { return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : kDisk; }

// An empty folder, deleted at the end.
class Folder {
 public:
  explicit Folder(const std::string& place) : path_(place + "/bench-XXXXXX") {
    Require(mkdtemp(path_.data()) != nullptr, path_);
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  [[nodiscard]] std::string operator/(std::string_view name) const {
    return fmt::format("{}/{}", path_, name);
  }

 private:
  std::string path_;
};

constexpr int kFew = 1000;
constexpr int kTwiceAsMany = 2 * kFew;
constexpr int kMany = 10000;
constexpr int kBatch = 50;

// Projects under different names.
class Fleet {
 public:
  Fleet() {
    fs::create_directory(folder_ / "in");
    for (int number = 1; number <= kMany; ++number) {
      fs::copy_file(kProject, folder_ / fmt::format("in/logger-{:05}.VKG", number));
    }
  }

  // Seconds to generate `projects` into one empty folder, `aProcess` each, two processes at a time.
  double Generate(int projects, int aProcess) {
    constexpr int kFilesOfProject = 3;
    const Folder folder(placeForMany());
    const std::string out = folder / "";
    const std::string line = fmt::format(
        "cd '{}' && ls | head -n {} | HOME='{}' XDG_CONFIG_HOME='{}' xargs -P2 -n{} '{}' generate "
        "--no-sync -o '{}' >/dev/null",
        folder_ / "in", projects, out, out, aProcess, OSTRAND_PROGRAM, out);
    const double time =
        MedianTime(1, [&] { Require(std::system(line.c_str()) == 0, "a fleet without faults"); });
    const auto made = std::distance(fs::directory_iterator(out), {});
    Require(made == kFilesOfProject * projects, fmt::format("{} files of a fleet", made));
    return time;
  }

 private:
  Folder folder_{placeForMany()};
};

Fleet& fleet() {
  static Fleet all;
  return all;
}

Figure manyProjects() { return {fleet().Generate(kMany, 1), fmt::format("{} processes", kMany)}; }

constexpr int kFleetPairs = 5;

Figure twiceAsMany() {
  return RatioOf(
      kFleetPairs, 0, [] { fleet().Generate(kTwiceAsMany, 1); }, [] { fleet().Generate(kFew, 1); });
}
Figure inBatches() {
  return RatioOf(
      kFleetPairs, 0, [] { fleet().Generate(kTwiceAsMany, kBatch); },
      [] { fleet().Generate(kTwiceAsMany, 1); });
}

// Generates a project whose output does not yet exist into a full and an empty folder.
Figure intoFullFolder() {
  constexpr int kFiles = 30000;
  constexpr int kPairs = 101;
  const Folder full(placeForMany());
  const Folder empty(placeForMany());
  for (int number = 0; number < kFiles; ++number) {
    std::ofstream file(full / fmt::format("measured-{:05}.VKP", number));
    Require(file.good(), "a full folder");
  }
  const auto generate = [](const Folder& folder) {
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

// The fewest steps that leave a file either new or unchanged.
void replaceBare(const std::string& path, const std::string& bytes) {
  const std::string temporary = path + ".tmp";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  Require(file >= 0, temporary);
  Require(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), temporary);
  Require(fsync(file) == 0 && close(file) == 0, temporary);
  Require(std::rename(temporary.c_str(), path.c_str()) == 0, path);
}

void syncFolder(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  Require(folder >= 0 && fsync(folder) == 0 && close(folder) == 0, path);
}

// kSynced: the folder is synced as in a save, so a power cut afterwards loses nothing. kLeft: the
// system decides when the names reach the disk.
enum class Names { kSynced, kLeft };
// Whether the bare loop has its texts from the start or makes each before it writes it, as a save.
enum class Texts { kThere, kMade };

// Makes the text of one of the files in kSaved; the program before the wiring.
std::string textOf(std::size_t file, ProjectStore& store, SAVEDLD& generator,
                   const platform::Moment& now) {
  switch (file) {
    case 0:
      return ORVUS_GENFILE::ProjectFileText(store, now);
    case 1:
      return generator.ProgramText();
    case 2:
      return TableDescriptionText(store, {"saved", now});
    default:
      return WiringText(store, generator.Channels(), {"saved", now});
  }
}

Figure syncedSave(Names names, Texts texts = Texts::kThere) {
  constexpr int kPairs = 101;
  const Folder folder(kDisk);
  fs::copy_file(kProject, folder / "saved.VKG");
  Machine machine;
  platform::PosixFileSystem files;
  const platform::Surroundings around = machine.Around();
  const platform::Surroundings onDisk{
      files,           around.clock,    around.forms,          around.processes,
      around.settings, around.registry, around.temporaryFolder};
  const auto store = NewStore();
  OstrandEvents nobodyListens;
  Ostrand control(*store, onDisk, nobodyListens);
  bool cancelled = false;
  control.OpenFile(folder / "saved.VKG", cancelled);
  // Making the program may lengthen a timeout of the project, which the second save stores.
  Require(!cancelled && control.SavePipeline() && control.SavePipeline(), "two saves");
  std::array<std::string, kSaved.size()> bytes;
  for (std::size_t at = 0; at < kSaved.size(); ++at) {
    bytes[at] = bytesOf(folder / fmt::format("saved.{}", kSaved[at]));
    Require(!bytes[at].empty(), kSaved[at]);
  }
  SAVEDLD generator(*store, files, around.clock, around.forms);
  generator.BaseName("saved");
  for (std::size_t at = 0; at < kSaved.size(); ++at) {
    Require(textOf(at, *store, generator, around.clock.Now()) == bytes[at], kSaved[at]);
  }
  const auto bareLoop = [&] {
    for (std::size_t at = 0; at < kSaved.size(); ++at) {
      if (texts == Texts::kMade) bytes[at] = textOf(at, *store, generator, around.clock.Now());
      replaceBare(folder / fmt::format("bare.{}", kSaved[at]), bytes[at]);
      const bool ofProjectOrLast = at == 0 || at + 1 == kSaved.size();
      if (names == Names::kSynced && ofProjectOrLast) syncFolder(folder / "");
    }
  };
  return RatioOf(
      kPairs, 0, [&] { Require(control.SavePipeline(), "a save"); }, bareLoop);
}

}  // namespace

std::vector<Row> DiskRows() {
  return {{"synced", "save of four files, to a bare loop, names synced", 1.15,
           [] { return syncedSave(Names::kSynced); }},
          {"synced-made", "the same, to a loop that makes the texts too, listed", 0,
           [] { return syncedSave(Names::kSynced, Texts::kMade); }},
          {"synced-left", "save of four files, to a loop that syncs no names, listed", 0,
           [] { return syncedSave(Names::kLeft); }},
          {"crowd", "generate into 30,000 files, to an empty folder", 1.2, intoFullFolder},
          {"fleet", "10,000 projects, a process each, one folder, s", 60, manyProjects, true},
          {"fleet-twice", "2,000 projects, to 1,000", 2.1, twiceAsMany, true},
          {"fleet-batch", "2,000 projects, 50 a process, to one a process", 0.5, inBatches, true}};
}

}  // namespace ostrand::bench
