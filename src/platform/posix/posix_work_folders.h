// Private folders for temporary files on a POSIX machine.
#pragma once

#include "platform/filesystem.h"
#include "platform/work_folders.h"

namespace ostrand::platform {

// The folders are named "ostrand-" and six random letters, and have the mode 0700. A signal that
// ends the process takes effect only after the last of them was removed (InterruptGuard).
class PosixWorkFolders : public WorkFolders {
 public:
  explicit PosixWorkFolders(FileSystem& files) : files_(files) {}
  Result<std::unique_ptr<WorkFolder>> Create(std::string_view parent) override;

 private:
  FileSystem& files_;
};

}  // namespace ostrand::platform
