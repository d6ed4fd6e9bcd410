#include "platform/posix/posix_filesystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/paths.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/project_lock.h"
#include "platform/posix/system_error.h"

namespace ostrand::platform {
namespace {

constexpr std::chrono::milliseconds kTick{20};  // the longest tick of a disk's clock

// Closes a descriptor at the end of its scope.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { static_cast<void>(Close()); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Number() const { return number_; }
  // The error number, 0 for none. An interrupted close has closed all the same.
  int Close() {
    if (number_ < 0) return 0;
    const int result = ::close(std::exchange(number_, -1));
    return result == 0 || errno == EINTR ? 0 : errno;
  }

 private:
  int number_;
};

bool exists(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0;
}

char lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool sameName(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return lower(a) == lower(b); });
}

std::string slashed(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

// A name with a NUL inside would be cut by a C call, which would then touch another file.
bool isName(std::string_view path) { return path.find('\0') == std::string_view::npos; }

class PosixFile : public OutputFile {
 public:
  PosixFile(std::string path, int descriptor, Syncing syncing)
      : path_(std::move(path)), descriptor_(descriptor), syncing_(syncing) {}

  Result<> Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(descriptor_.Number(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return SystemError(path_, errno);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return Done{};
  }

  // A hint; other systems than Linux begin at Sync.
  void StartSync() override {
#ifdef SYNC_FILE_RANGE_WRITE
    if (syncing_ == Syncing::kOn) {
      ::sync_file_range(descriptor_.Number(), 0, 0, SYNC_FILE_RANGE_WRITE);
    }
#endif
  }

  Result<> Sync() override {
    if (syncing_ == Syncing::kOn && ::fsync(descriptor_.Number()) != 0) {
      return SystemError(path_, errno);
    }
    return Done{};
  }

  Result<> Close() override {
    if (const int number = descriptor_.Close(); number != 0) return SystemError(path_, number);
    return Done{};
  }

 private:
  std::string path_;
  Descriptor descriptor_;
  Syncing syncing_;
};

std::string folderOf(std::string_view path) {
  std::string folder = Split(path).folder;
  return folder.empty() ? "./" : folder;
}

// The target of a symbolic link, all links followed. A path that is not a link, or leads round in a
// circle, is returned unchanged.
std::string linkTarget(const std::string& path) {
  constexpr int kMaxSteps = 40;
  std::string name = path;
  for (int step = 0; step < kMaxSteps; ++step) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(name.c_str(), target.data(), target.size());
    if (length < 0) return name;
    const std::string_view text(target.data(), static_cast<std::size_t>(length));
    name = text.starts_with('/') ? std::string(text) : Split(name).folder.append(text);
  }
  return path;
}

FileStamp stampOf(const struct stat& info) {
  return {static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino),
          static_cast<std::uint64_t>(info.st_size),
          std::int64_t{info.st_mtim.tv_sec} * 1'000'000'000 + info.st_mtim.tv_nsec};
}

// Only root can give the owner. The rights of a group that this user cannot give are dropped.
void giveRights(int descriptor, const struct stat& old) {
  const bool sameGroup = ::fchown(descriptor, old.st_uid, old.st_gid) == 0 ||
                         ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
  static_cast<void>(::fchmod(descriptor, old.st_mode & (sameGroup ? 0777U : 0707U)));
}

class PosixFolderLock : public FolderLock {
 public:
  explicit PosixFolderLock(int descriptor) : descriptor_(descriptor) {}
  [[nodiscard]] const Descriptor& Folder() const { return descriptor_; }

 private:
  Descriptor descriptor_;
};

int openFolder(const std::string& folder) {
  return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

}  // namespace

// Names of one folder as they are on the disk. Cached while the folder does not change.
class PosixFileSystem::FolderNames {
 public:
  // The entry of `folder` that equals `name` without regard to case; empty when there is none.
  std::string Like(const std::string& folder, std::string_view name) {
    read(folder.empty() ? "." : folder);
    std::string best;
    for (const std::string& found : names_) {
      if (sameName(found, name) && (best.empty() || found < best)) best = found;
    }
    return best;
  }

 private:
  void read(const std::string& folder) {
    struct stat info {};
    const bool known = ::stat(folder.c_str(), &info) == 0;
    const FileStamp stamp = stampOf(info);
    if (known && folder == folder_ && stamp == stamp_) return;
    names_.clear();
    folder_.clear();
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    DIR* entries = ::opendir(folder.c_str());
    if (entries == nullptr) return;
    while (const dirent* entry = ::readdir(entries)) names_.emplace_back(entry->d_name);
    ::closedir(entries);
    // A later change within the same tick of the disk's clock would not show.
    if (!known || std::chrono::nanoseconds(stamp.modified) + kTick > now) return;
    folder_ = folder;
    stamp_ = stamp;
  }

  std::string folder_;
  FileStamp stamp_;
  std::vector<std::string> names_;
};

PosixFileSystem::PosixFileSystem(Syncing syncing, Readers readers)
    : syncing_(syncing), readers_(readers) {}

PosixFileSystem::~PosixFileSystem() = default;

// The path as it is on the disk; from the first part that cannot be found on, as given.
std::string PosixFileSystem::onDisk(std::string_view path) {
  std::string given = slashed(path);
  if (exists(given)) return given;
  if (names_ == nullptr) names_ = std::make_unique<FolderNames>();
  std::string result;
  std::size_t at = 0;
  while (at < given.size()) {
    const std::size_t end = std::min(given.find('/', at), given.size());
    const std::string part = given.substr(at, end - at);
    if (part.empty() || exists(result + part)) {
      result += part;
    } else {
      std::string found = names_->Like(result, part);
      // A save may have renamed its project to the new spelling during the search.
      if (found.empty() && exists(result + part)) found = part;
      if (found.empty()) return result + given.substr(at);
      result += found;
    }
    if (end < given.size()) result += '/';
    at = end + 1;
  }
  return result;
}

// The name on the disk of what `info` then describes, links followed. When nothing is there, errno
// is the reason and the name is as far as it could be resolved.
std::string PosixFileSystem::lookUp(std::string_view path, struct stat& info, bool& there) {
  std::string name = slashed(path);
  there = ::stat(name.c_str(), &info) == 0;
  if (there) return name;
  name = onDisk(path);
  there = ::stat(name.c_str(), &info) == 0;
  return name;
}

bool PosixFileSystem::isKind(std::string_view path, mode_t kind) {
  if (!isName(path)) return false;
  struct stat info {};
  bool there = false;
  lookUp(path, info, there);
  return there && (info.st_mode & S_IFMT) == kind;
}

bool PosixFileSystem::Exists(std::string_view path) { return isKind(path, S_IFREG); }

bool PosixFileSystem::Taken(std::string_view path) {
  return isName(path) && (exists(slashed(path)) || exists(onDisk(path)));
}

bool PosixFileSystem::IsFolder(std::string_view path) { return isKind(path, S_IFDIR); }

std::string PosixFileSystem::Find(std::string_view path) {
  std::string found = slashed(path);
  if (exists(found)) return found;
  found = onDisk(path);
  return exists(found) ? found : std::string(path);
}

std::string PosixFileSystem::Target(std::string_view path) {
  if (!isName(path)) return std::string(path);
  const std::string name = slashed(path);
  struct stat info {};
  if (::lstat(name.c_str(), &info) == 0) return S_ISLNK(info.st_mode) ? linkTarget(name) : name;
  const SplitPath parts = Split(name);
  if (parts.folder != folder_) folder_ = onDisk(parts.folder);
  return folder_ + parts.title;
}

Entry PosixFileSystem::LookAt(std::string_view path) {
  struct stat info {};
  if (!isName(path) || ::lstat(slashed(path).c_str(), &info) != 0) return Entry::kNone;
  if (S_ISREG(info.st_mode)) return Entry::kFile;
  if (S_ISDIR(info.st_mode)) return Entry::kFolder;
  return S_ISLNK(info.st_mode) ? Entry::kLink : Entry::kOther;
}

std::optional<FileStamp> PosixFileSystem::Stamp(std::string_view path) {
  struct stat info {};
  if (!isName(path) || ::stat(slashed(path).c_str(), &info) != 0) return std::nullopt;
  return stampOf(info);
}

bool PosixFileSystem::SameFolder(std::string_view one, std::string_view other) {
  if (one == other) return true;
  struct stat first {};
  struct stat second {};
  return ::stat(one.empty() ? "." : slashed(one).c_str(), &first) == 0 &&
         ::stat(other.empty() ? "." : slashed(other).c_str(), &second) == 0 &&
         first.st_ino == second.st_ino && first.st_dev == second.st_dev;
}

std::string PosixFileSystem::WorkingFolder() {
  // With no buffer given, one of any length is made.
  const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
  if (folder == nullptr) return {};
  std::string result = folder.get();
  if (result.back() != '/') result += '/';
  return result;
}

Result<std::string> PosixFileSystem::Read(std::string_view path) {
  if (!isName(path)) return SystemError(std::string(path), EINVAL);
  // Checked before it is opened: opening alone can affect a device.
  struct stat info {};
  bool there = false;
  const std::string name = lookUp(path, info, there);
  if (!there) return SystemError(name, errno);
  if (S_ISDIR(info.st_mode)) return SystemError(name, EISDIR);
  if (!S_ISREG(info.st_mode)) return Error{name + ": Not a regular file"};
  if (info.st_size > static_cast<off_t>(kMaxBytes)) return SystemError(name, EFBIG);
  const Descriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  if (!file.IsOpen()) return SystemError(name, errno);

  // One byte more than the size, so that the end is found without another round.
  std::string bytes(static_cast<std::size_t>(info.st_size) + 1, '\0');
  std::size_t length = 0;
  for (;;) {
    const ssize_t got = ::read(file.Number(), bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return SystemError(name, errno);
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
    if (length > kMaxBytes) return SystemError(name, EFBIG);
    if (length == bytes.size()) bytes.resize(2 * length);
  }
  bytes.resize(length);
  return bytes;
}

std::uint64_t PosixFileSystem::Size(std::string_view path) {
  if (!isName(path)) return 0;
  struct stat info {};
  bool there = false;
  lookUp(path, info, there);
  return there && S_ISREG(info.st_mode) ? static_cast<std::uint64_t>(info.st_size) : 0;
}

Result<std::unique_ptr<OutputFile>> PosixFileSystem::Create(std::string_view path,
                                                            std::string_view rightsOf) {
  if (!isName(path)) return SystemError(std::string(path), EINVAL);
  const std::string name = slashed(path);
  struct stat old {};
  const bool replaces = readers_ == Readers::kAll && !rightsOf.empty() && isName(rightsOf) &&
                        ::stat(slashed(rightsOf).c_str(), &old) == 0 && S_ISREG(old.st_mode);
  mode_t mode = readers_ == Readers::kOwner ? 0600 : 0666;
  // The rights of a group are given only with that group, which the new file does not have yet.
  if (replaces) mode = old.st_mode & 0707U;
  const int descriptor =
      ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
  if (descriptor < 0) return SystemError(name, errno);
  auto file = std::make_unique<PosixFile>(name, descriptor, syncing_);
  if (replaces) giveRights(descriptor, old);
  return std::unique_ptr<OutputFile>(std::move(file));
}

Result<> PosixFileSystem::Rename(std::string_view from, std::string_view to) {
  if (!isName(from) || !isName(to)) return SystemError(std::string(to), EINVAL);
  const std::string name = slashed(to);
  if (::rename(slashed(from).c_str(), name.c_str()) != 0) return SystemError(name, errno);
  return Done{};
}

Result<> PosixFileSystem::RenameNew(std::string_view from, std::string_view to) {
  if (!isName(from) || !isName(to)) return SystemError(std::string(to), EINVAL);
  const std::string source = slashed(from);
  const std::string name = slashed(to);
  if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) {
    return Done{};
  }
  if (errno != EINVAL && errno != ENOSYS) return SystemError(name, errno);
  // Not every disk can do it in one step.
  if (exists(name)) return SystemError(name, EEXIST);
  return Rename(from, to);
}

Result<> PosixFileSystem::Link(std::string_view from, std::string_view to) {
  if (!isName(from) || !isName(to)) return SystemError(std::string(to), EINVAL);
  const std::string name = slashed(to);
  if (::link(slashed(from).c_str(), name.c_str()) != 0) return SystemError(name, errno);
  return Done{};
}

Result<> PosixFileSystem::Delete(std::string_view path) {
  if (!isName(path)) return SystemError(std::string(path), EINVAL);
  std::string name = slashed(path);
  if (::unlink(name.c_str()) == 0) return Done{};
  if (errno == ENOENT) {
    name = onDisk(path);
    if (::unlink(name.c_str()) == 0) return Done{};
  }
  return SystemError(name, errno);
}

Result<bool> PosixFileSystem::MayReplace(std::string_view path) {
  if (!isName(path)) return SystemError(std::string(path), EINVAL);
  const std::string name = slashed(path);
  struct stat info {};
  if (::stat(name.c_str(), &info) != 0) {
    return errno == ENOENT ? Result<bool>(false) : SystemError(name, errno);
  }
  if (S_ISDIR(info.st_mode)) return SystemError(name, EISDIR);
  if (!S_ISREG(info.st_mode)) return Error{name + ": Not a regular file"};
  // The mark also binds a user whom access() lets write anywhere.
  if ((info.st_mode & S_IWUSR) == 0) return SystemError(name, EACCES);
  if (::access(name.c_str(), W_OK) != 0) return SystemError(name, errno);
  return true;
}

Result<> PosixFileSystem::ClearReadOnly(std::string_view path) {
  if (!isName(path)) return SystemError(std::string(path), EINVAL);
  struct stat info {};
  bool there = false;
  const std::string name = lookUp(path, info, there);
  if (!there) return SystemError(name, errno);
  const mode_t mode = info.st_mode & 07777;
  if ((mode & S_IWUSR) == 0 && ::chmod(name.c_str(), mode | S_IWUSR) != 0) {
    return SystemError(name, errno);
  }
  return Done{};
}

// A project's lock that is registered with its file system.
class PosixFileSystem::HeldLock : public ProjectLock {
 public:
  HeldLock(std::unique_ptr<ProjectLock> inner, std::shared_ptr<Locked> locked,
           std::string_view path)
      : inner_(std::move(inner)),
        locked_(std::move(locked)),
        place_(locked_->emplace(WithoutExtension(path))) {}
  ~HeldLock() override { locked_->erase(place_); }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

  Result<> Keep() override { return inner_->Keep(); }

 private:
  std::unique_ptr<ProjectLock> inner_;
  std::shared_ptr<Locked> locked_;
  Locked::iterator place_;
};

Result<std::unique_ptr<ProjectLock>> PosixFileSystem::LockProject(std::string_view path,
                                                                  const Waiting& waiting) {
  if (!isName(path)) return std::unique_ptr<ProjectLock>();
  auto lock = LockProjectFile(Target(path), waiting);
  if (!lock || lock.Value() == nullptr) return lock;
  return std::unique_ptr<ProjectLock>(
      std::make_unique<HeldLock>(std::move(lock.Value()), locked_, path));
}

Result<std::unique_ptr<FolderLock>> PosixFileSystem::LockFolder(std::string_view path) {
  if (!isName(path) || locked_->contains(WithoutExtension(path))) {
    return std::unique_ptr<FolderLock>();
  }
  const std::string folder = folderOf(Target(path));
  auto lock = std::make_unique<PosixFolderLock>(openFolder(folder));
  // A folder that cannot be read may still be writable; the write reports one that does not exist.
  if (!lock->Folder().IsOpen()) return std::unique_ptr<FolderLock>();
  const auto locked =
      LockOpened(lock->Folder().Number(), folder, "Another program keeps the folder locked");
  if (!locked) return Error{locked.ErrorText()};
  return std::unique_ptr<FolderLock>(std::move(lock));
}

Result<> PosixFileSystem::SyncFolder(std::string_view path) {
  if (syncing_ == Syncing::kOff) return Done{};
  const std::string folder = folderOf(slashed(path));
  const Descriptor descriptor(openFolder(folder));
  // A folder that may be written but not read cannot be synced; the rename itself has happened.
  if (!descriptor.IsOpen()) return errno == EACCES ? Result<>(Done{}) : SystemError(folder, errno);
  // Some file systems cannot sync a folder and return EINVAL.
  if (::fsync(descriptor.Number()) != 0 && errno != EINVAL) return SystemError(folder, errno);
  return Done{};
}

}  // namespace ostrand::platform
