// What the system asks of the disk. Tests make the n-th call fail through this seam.
#pragma once

#include <cstdint>
#include <memory>
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
  // Brings what was written to the disk itself.
  virtual Result<> Sync() = 0;
  virtual Result<> Close() = 0;
};

// Keeps other writers out of a folder while it lives.
class FolderLock {
 public:
  virtual ~FolderLock() = default;
};

// Paths are bytes. An implementation turns `\` into its own separator, and finds a name first
// exactly and then without regard to upper and lower case. Error texts name the path.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Whether a regular file of that name can be found.
  virtual bool Exists(std::string_view path) = 0;
  // Whether anything at all stands under that name, a folder or a device included.
  virtual bool Taken(std::string_view path) { return Exists(path); }
  // The name of that file as it stands on the disk; the path itself when there is none.
  virtual std::string Find(std::string_view path) = 0;
  // Folder the process stands in, with its trailing separator.
  virtual std::string WorkingFolder() = 0;

  virtual Result<std::string> Read(std::string_view path) = 0;
  // Bytes that a regular file holds at present; 0 when there is none.
  virtual std::uint64_t Size(std::string_view path) {
    const auto bytes = Read(path);
    return bytes ? bytes.Value().size() : 0;
  }
  // Creates a new file; an error when the name is taken.
  virtual Result<std::unique_ptr<OutputFile>> Create(std::string_view path) = 0;
  // Replaces `to` when it exists.
  virtual Result<> Rename(std::string_view from, std::string_view to) = 0;
  virtual Result<> Delete(std::string_view path) = 0;
  // An error when a file of that name stands and is not to be changed: it has the read-only mark or
  // is closed to this user. A look only; nothing happens on the disk.
  virtual Result<> MayReplace(std::string_view /*path*/) { return Done{}; }
  // Gives the file `to` the rights of the file `from`, so that a replaced file stays as open or as
  // closed to others as it was. Does what it can; a disk without rights does nothing.
  virtual void CopyRights(std::string_view /*from*/, std::string_view /*to*/) {}
  // Takes the read-only mark off a file.
  virtual Result<> ClearReadOnly(std::string_view path) = 0;
  // Waits until nobody else writes into the folder of `path`, and keeps others out, of this process
  // as well, until the lock is destroyed. Null on a disk without such locks.
  virtual Result<std::unique_ptr<FolderLock>> LockFolder(std::string_view /*path*/) {
    return std::unique_ptr<FolderLock>();
  }
  // Brings a rename in the folder of `path` to the disk itself.
  virtual Result<> SyncFolder(std::string_view path) = 0;
};

// Writes `bytes` as the whole content of `path`: into a hidden neighbour first, every step
// checked, synced, renamed over the target. After an error the target is as it was, or, when only
// the sync of its folder failed, stands whole with the new content. Writers of one folder take
// turns, so that two of them never share a neighbour.
// The file gets the rights of `rightsOf`, or, when none is named, of the file that it replaces.
Result<> WriteWhole(FileSystem& files, std::string_view path, std::string_view bytes,
                    std::string_view rightsOf = {});

}  // namespace ostrand::platform
