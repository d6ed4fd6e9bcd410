#include "platform/posix/posix_work_folders.h"

#include <ftw.h>
#include <stdlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/posix/interrupts.h"
#include "platform/posix/system_error.h"

namespace ostrand::platform {
namespace {

constexpr int kTries = 3;        // to remove a folder
constexpr int kOpenFolders = 8;  // at a time, while it is emptied

// By the C library: <filesystem> would bring streams and locales into each start of the command.
int removeEntry(const char* path, const struct stat* /*status*/, int /*kind*/, FTW* /*place*/) {
  return std::remove(path);
}

class PosixWorkFolder : public WorkFolder {
 public:
  // Creates the folder from `pattern`; an empty path, and errno, when that fails.
  explicit PosixWorkFolder(std::string pattern) : path_(std::move(pattern)) {
    if (::mkdtemp(path_.data()) == nullptr) path_.clear();
  }
  ~PosixWorkFolder() override { static_cast<void>(PosixWorkFolder::Remove()); }
  PosixWorkFolder(const PosixWorkFolder&) = delete;
  PosixWorkFolder& operator=(const PosixWorkFolder&) = delete;

  [[nodiscard]] const std::string& Path() const override { return path_; }

  Result<> Remove() override {
    if (path_.empty()) return Done{};
    const std::string path = std::exchange(path_, {});
    // A call that fails only for a moment is tried again.
    for (int tries = 0; tries < kTries; ++tries) {
      if (::nftw(path.c_str(), removeEntry, kOpenFolders, FTW_DEPTH | FTW_PHYS) == 0 ||
          errno == ENOENT) {
        return Done{};
      }
    }
    return SystemError(path, errno);
  }

 private:
  InterruptGuard guard_;  // destroyed last
  std::string path_;
};

}  // namespace

Result<std::unique_ptr<WorkFolder>> PosixWorkFolders::Create(std::string_view parent) {
  std::string place = files_.Find(parent);
  std::replace(place.begin(), place.end(), '\\', '/');
  if (!place.empty() && !place.ends_with('/')) place += '/';
  auto folder = std::make_unique<PosixWorkFolder>(place + "ostrand-XXXXXX");
  if (folder->Path().empty()) {
    return SystemError(std::string(parent), errno);
  }
  return std::unique_ptr<WorkFolder>(std::move(folder));
}

}  // namespace ostrand::platform
