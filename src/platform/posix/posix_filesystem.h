// The disk of a POSIX machine.
#pragma once

#include <sys/stat.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "platform/filesystem.h"

namespace ostrand::platform {

// Whether writes wait until they are on the disk itself. Benchmarks leave that out.
enum class Syncing { kOn, kOff };
// Who may read the files that are written: whom the umask or the replaced file lets, or their owner
// alone.
enum class Readers { kAll, kOwner };

// `\` separates folders as `/` does. A path to be read is looked up exactly, and only then each
// part of it without regard to case (ASCII letters; names on this disk have no known code page),
// the first of several in the order of their bytes. Error texts are the path as it is on the disk
// and the reason: "/x/y.VKG: Permission denied". Only regular files are read, none above kMaxBytes.
class PosixFileSystem : public FileSystem {
 public:
  static constexpr std::size_t kMaxBytes = std::size_t{64} << 20;

  explicit PosixFileSystem(Syncing syncing = Syncing::kOn, Readers readers = Readers::kAll);
  ~PosixFileSystem() override;
  PosixFileSystem(const PosixFileSystem&) = delete;
  PosixFileSystem& operator=(const PosixFileSystem&) = delete;

  bool Exists(std::string_view path) override;
  bool Taken(std::string_view path) override;
  std::string Find(std::string_view path) override;
  std::string Target(std::string_view path) override;
  Entry LookAt(std::string_view path) override;
  std::optional<FileStamp> Stamp(std::string_view path) override;
  bool SameFolder(std::string_view one, std::string_view other) override;
  std::string WorkingFolder() override;
  Result<std::string> Read(std::string_view path) override;
  std::uint64_t Size(std::string_view path) override;
  Result<std::unique_ptr<OutputFile>> Create(std::string_view path,
                                             std::string_view rightsOf) override;
  Result<> Rename(std::string_view from, std::string_view to) override;
  Result<> RenameNew(std::string_view from, std::string_view to) override;
  Result<> Link(std::string_view from, std::string_view to) override;
  Result<> Delete(std::string_view path) override;
  Result<bool> MayReplace(std::string_view path) override;
  Result<> ClearReadOnly(std::string_view path) override;
  Result<std::unique_ptr<ProjectLock>> LockProject(std::string_view path,
                                                   const Waiting& waiting) override;
  Result<std::unique_ptr<FolderLock>> LockFolder(std::string_view path) override;
  Result<> SyncFolder(std::string_view path) override;

  // Whether a folder of that name can be found.
  bool IsFolder(std::string_view path);

 private:
  // Projects whose lock is held through this object, without extension.
  using Locked = std::multiset<std::string, std::less<>>;
  class HeldLock;
  class FolderNames;

  std::string onDisk(std::string_view path);
  std::string lookUp(std::string_view path, struct stat& info, bool& there);
  bool isKind(std::string_view path, mode_t kind);

  std::unique_ptr<FolderNames> names_;
  std::string folder_;  // that Target found last
  std::shared_ptr<Locked> locked_ = std::make_shared<Locked>();
  Syncing syncing_;
  Readers readers_;
};

}  // namespace ostrand::platform
