// A file that appears whole or not at all.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/filesystem.h"

namespace ostrand::platform {

// Writes to a hidden neighbour of `path`; Commit checks every step, syncs and renames it over the
// target. What was not committed is removed by the destructor. A target that may not be changed is
// an error, though a rename could replace it. Errors name the target. Two writers at once would
// share the neighbour: the caller holds the lock of the folder.
class AtomicFile {
 public:
  // The new file takes the rights of the file `rightsOf`, or of the target itself.
  AtomicFile(FileSystem& files, std::string_view path, std::string_view rightsOf = {});
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  Result<> Write(std::string_view bytes);
  Result<> Commit();

 private:
  Result<> write(std::string_view bytes);
  Result<> commit();
  // An error of the neighbour, told of the file that the user knows; the disk may spell the folder
  // in its own way.
  [[nodiscard]] Result<> ofTarget(Result<> result) const;

  FileSystem& files_;
  std::string path_;
  std::string rightsOf_;
  std::string title_;        // of the target, without its folder
  std::string hiddenTitle_;  // of the neighbour
  std::string hidden_;
  std::unique_ptr<OutputFile> file_;
  bool created_ = false;  // the neighbour stands on the disk
};

}  // namespace ostrand::platform
