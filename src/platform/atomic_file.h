// A file that appears whole or not at all.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/filesystem.h"

namespace ostrand::platform {

// Writes to a hidden neighbour of `path`; Commit checks every step, syncs and renames it over the
// target. What was not committed is removed by the destructor. Errors name the target.
class AtomicFile {
 public:
  AtomicFile(FileSystem& files, std::string_view path);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  Result<> Write(std::string_view bytes);
  Result<> Commit();

 private:
  Result<> write(std::string_view bytes);
  Result<> commit();
  // An error of the neighbour, told of the file that the user knows.
  [[nodiscard]] Result<> ofTarget(Result<> result) const;

  FileSystem& files_;
  std::string path_;
  std::string hidden_;
  std::unique_ptr<OutputFile> file_;
  bool created_ = false;  // the neighbour stands on the disk
};

}  // namespace ostrand::platform
