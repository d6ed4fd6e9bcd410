#include "output_files.h"

#include <algorithm>
#include <array>

#include "moments.h"
#include "platform/paths.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

constexpr std::array<std::string_view, 4> kExtensions = {".VKG", ".VKP", ".VKD", ".VKW"};

// Of a project's old file that a save left behind.
constexpr std::string_view kOldProject = "._KG";

// The program under test and its neighbour while it is written.
constexpr std::string_view kTestedProgram = "TEMP$$$$";

bool isTested(std::string_view path) { return Holds(platform::Split(path).title, kTestedProgram); }

bool isOutput(std::string_view path) {
  return std::any_of(kExtensions.begin(), kExtensions.end(), [&](std::string_view extension) {
    return path.size() > extension.size() && EndsWithText(path, extension);
  });
}

}  // namespace

bool OutputFiles::isGiven(std::string_view path) const {
  return given_ && path == kStandardInputName;
}

bool OutputFiles::Exists(std::string_view path) {
  return isGiven(path) || PosixFileSystem::Exists(path);
}

bool OutputFiles::Taken(std::string_view path) {
  return isGiven(path) || PosixFileSystem::Taken(path);
}

std::string OutputFiles::Find(std::string_view path) {
  return isGiven(path) ? std::string(path) : PosixFileSystem::Find(path);
}

platform::Entry OutputFiles::LookAt(std::string_view path) {
  return isGiven(path) ? platform::Entry::kFile : PosixFileSystem::LookAt(path);
}

std::optional<platform::FileStamp> OutputFiles::Stamp(std::string_view path) {
  if (isGiven(path)) return std::nullopt;
  return PosixFileSystem::Stamp(path);
}

Result<std::string> OutputFiles::Read(std::string_view path) {
  if (isGiven(path)) return *given_;
  return PosixFileSystem::Read(path);
}

Result<> OutputFiles::ClearReadOnly(std::string_view path) {
  if (!writes() || isGiven(path)) return Done{};
  return PosixFileSystem::ClearReadOnly(path);
}

bool OutputFiles::Stays(const std::string& path, std::string_view bytes, bool replaces) {
  if (isTested(path)) return false;
  if (!isOutput(path)) return !writes();
  Output output{.path = path, .exists = replaces};
  if (replaces && outputs_ != Outputs::kPrinted && !(writes() && force_)) {
    auto present = PosixFileSystem::Read(path);
    if (present) {
      std::string content = WithMomentOf(path, bytes, present.Value());
      output.unchanged = content == present.Value();
      if (!writes()) {
        output.present = std::move(present.Value());
        output.content = std::move(content);
      }
    }
  }
  if (!writes() && output.content.empty()) output.content = bytes;
  made_.push_back(std::move(output));
  return !writes() || made_.back().unchanged;
}

bool OutputFiles::LeftAlone(std::string_view path) const {
  const std::string title = platform::Split(path).title;
  const auto found = std::find_if(made_.rbegin(), made_.rend(), [&](const Output& output) {
    return SameText(platform::Split(output.path).title, title);
  });
  return found != made_.rend() && found->unchanged;
}

// The only one of a project's files that is renamed before it is written is a project that gets
// another spelling.
Result<> OutputFiles::Rename(std::string_view from, std::string_view to) {
  if (!writes() && !isTested(to)) return Done{};
  return PosixFileSystem::Rename(from, to);
}

Result<> OutputFiles::SyncFolder(std::string_view path) {
  if (!writes() && !isTested(path)) return Done{};
  return PosixFileSystem::SyncFolder(path);
}

Result<> OutputFiles::RenameNew(std::string_view from, std::string_view to) {
  return writes() ? PosixFileSystem::RenameNew(from, to) : Result<>(Done{});
}

Result<> OutputFiles::Link(std::string_view from, std::string_view to) {
  return writes() ? PosixFileSystem::Link(from, to) : Result<>(Done{});
}

// What a test compile makes is removed also if nothing is written.
Result<> OutputFiles::Delete(std::string_view path) {
  if (!writes() && path.ends_with(kOldProject)) return Done{};
  return PosixFileSystem::Delete(path);
}

Result<std::unique_ptr<platform::ProjectLock>> OutputFiles::LockProject(
    std::string_view path, const platform::Waiting& waiting) {
  if (!writes()) return std::unique_ptr<platform::ProjectLock>();
  return PosixFileSystem::LockProject(path, waiting);
}

Result<std::unique_ptr<platform::FolderLock>> OutputFiles::LockFolder(std::string_view path) {
  if (!writes()) return std::unique_ptr<platform::FolderLock>();
  return PosixFileSystem::LockFolder(path);
}

}  // namespace ostrand::cli
