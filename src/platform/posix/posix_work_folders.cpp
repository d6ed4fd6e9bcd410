#include "platform/posix/posix_work_folders.h"

#include <stdlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/posix/interrupts.h"

namespace ostrand::platform {
namespace {

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
    std::error_code error;
    // A call that fails for a moment leaves nothing behind.
    for (int tries = 0; tries == 0 || (error && tries < 3); ++tries) {
      error.clear();
      std::filesystem::remove_all(path, error);
    }
    if (error) return Error{path + ": " + std::strerror(error.value())};
    return Done{};
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
    const int number = errno;
    return Error{std::string(parent) + ": " + std::strerror(number)};
  }
  return std::unique_ptr<WorkFolder>(std::move(folder));
}

}  // namespace ostrand::platform
