// What the system asks of the disk. Tests make the n-th call fail through this seam.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "text/result.h"

namespace ostrand::platform {

// A file being written. Destroyed without Close, it is closed without a report.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  // Writes all bytes or reports why it could not.
  virtual Result<> Write(std::string_view bytes) = 0;
  // Lets the disk begin with what was written; Sync waits for it.
  virtual void StartSync() {}
  // Brings what was written to the disk itself.
  virtual Result<> Sync() = 0;
  virtual Result<> Close() = 0;
};

// Keeps other writers out of a folder while it lives.
class FolderLock {
 public:
  virtual ~FolderLock() = default;
};

// Keeps other saves of a project out while it lives.
class ProjectLock {
 public:
  virtual ~ProjectLock() = default;
  // Called between the files of a save: shows other machines that this save lives, and is an error
  // once another one has taken the lock over.
  virtual Result<> Keep() = 0;
};

// Called while a lock is waited for, with its holder: "anna on lab-pc, process 4711".
using Waiting = std::function<void(const std::string& holder)>;

// The kind of a directory entry; symbolic links are not followed.
enum class Entry { kNone, kFile, kFolder, kLink, kOther };

// Distinguishes the states of a file without reading its bytes.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  // of the file on that device
  std::uint64_t size = 0;
  std::int64_t modified = 0;  // nanoseconds
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

class WriteBatch;

// Paths are bytes. An implementation turns `\` into its own separator, and finds a name to be read
// first exactly and then without regard to upper and lower case. Error texts name the path.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Whether a regular file of that name can be found.
  virtual bool Exists(std::string_view path) = 0;
  // Whether anything at all is under that name, a folder or a device included.
  virtual bool Taken(std::string_view path) { return Exists(path); }
  // The name of that file as it is on the disk; the path itself when there is none.
  virtual std::string Find(std::string_view path) = 0;
  // The name that a write of `path` replaces or creates: exactly this one in its folder, symbolic
  // links followed. Only the folder is looked up without regard to case.
  virtual std::string Target(std::string_view path) { return std::string(path); }
  // What is under exactly this name, in this spelling.
  virtual Entry LookAt(std::string_view path) { return Exists(path) ? Entry::kFile : Entry::kNone; }
  // Of exactly this name; nothing if no such file exists, or if the disk gives none.
  virtual std::optional<FileStamp> Stamp(std::string_view /*path*/) { return std::nullopt; }
  // Whether two folders, with their separators, are one.
  virtual bool SameFolder(std::string_view one, std::string_view other) { return one == other; }
  // The current folder of the process, with its trailing separator; empty when it is unknown.
  virtual std::string WorkingFolder() = 0;

  virtual Result<std::string> Read(std::string_view path) = 0;
  // Bytes that a regular file holds at present; 0 when there is none.
  virtual std::uint64_t Size(std::string_view path) {
    const auto bytes = Read(path);
    return bytes ? bytes.Value().size() : 0;
  }
  // Creates a new file of exactly this name; an error when it is taken, by a link too. The file has
  // the rights of the file `rightsOf`, if there is one, from the first moment, so that a replaced
  // file stays accessible to the same users; it also gets owner and group where the system lets
  // this user set them.
  virtual Result<std::unique_ptr<OutputFile>> Create(std::string_view path,
                                                     std::string_view rightsOf) = 0;
  // Both by their exact names. Rename replaces `to` when it exists; for RenameNew that is an error.
  virtual Result<> Rename(std::string_view from, std::string_view to) = 0;
  virtual Result<> RenameNew(std::string_view from, std::string_view to) {
    if (LookAt(to) != Entry::kNone) return Error{std::string(to) + ": File exists"};
    return Rename(from, to);
  }
  // Asked before `bytes` become the whole content of `path`, a name that Target gave; `replaces` is
  // whether there is such a file. Whether the file stays as it is and counts as written.
  virtual bool Stays(const std::string& /*path*/, std::string_view /*bytes*/, bool /*replaces*/) {
    return false;
  }
  // Gives the file `from` a second name. An error when `to` is taken, and on a disk without links.
  virtual Result<> Link(std::string_view from, std::string_view to) = 0;
  virtual Result<> Delete(std::string_view path) = 0;
  // Whether there is a file to be replaced. An error when what is there under that name must stay:
  // no regular file, or one that has the read-only mark or is closed to this user. Changes
  // nothing on the disk.
  virtual Result<bool> MayReplace(std::string_view path) { return LookAt(path) != Entry::kNone; }
  // Takes the read-only mark off a file.
  virtual Result<> ClearReadOnly(std::string_view path) = 0;
  // Keeps other saves of the project file `path` out, of this process as well, until the lock is
  // destroyed. Waits for one that runs, calling `waiting` all the while, and gives up after ten
  // seconds with an error that names its holder. Takes over a dead holder's lock. Null on a disk
  // without such locks, and in a folder that cannot be written.
  virtual Result<std::unique_ptr<ProjectLock>> LockProject(std::string_view /*path*/,
                                                           const Waiting& /*waiting*/) {
    return std::unique_ptr<ProjectLock>();
  }
  // Waits until nobody else writes into the folder of `path`, and keeps others out, of this process
  // as well, until the lock is destroyed. Null on a disk without such locks, and for a file of a
  // project whose lock is held.
  virtual Result<std::unique_ptr<FolderLock>> LockFolder(std::string_view /*path*/) {
    return std::unique_ptr<FolderLock>();
  }
  // Brings a rename in the folder of `path` to the disk itself.
  virtual Result<> SyncFolder(std::string_view path) = 0;

  // The batch that files written with FolderSync::kLater join; null for none.
  [[nodiscard]] WriteBatch* Batch() const { return batch_; }
  void Batch(WriteBatch* batch) { batch_ = batch; }

 private:
  WriteBatch* batch_ = nullptr;
};

// Whether a write waits for its folder to be on the disk, or leaves that to its caller, who writes
// more files there. The bytes of the file are synced before its name changes either way.
enum class FolderSync { kNow, kLater };

// Writes `bytes` as the whole content of `path`: into a hidden neighbour first, every step
// checked, synced, renamed over the target. After an error the target is as it was, or, when only
// the sync of its folder failed, is whole with the new content. Writers of one folder take
// turns, so that two of them never share a neighbour. The file gets the rights of the file that it
// replaces; a symbolic link stays, and the file it leads to is replaced, its folder synced at once.
// In a batch the file is only written; WriteBatch::Commit puts it into its place.
Result<> WriteWhole(FileSystem& files, std::string_view path, std::string_view bytes,
                    FolderSync sync = FolderSync::kNow);

}  // namespace ostrand::platform
