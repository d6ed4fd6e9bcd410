#include "platform/posix/file_lock.h"

#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/posix/system_error.h"

namespace ostrand::platform {
namespace {

constexpr std::chrono::milliseconds kBetweenTries{10};
constexpr int kTries = 1000;

}  // namespace

bool IsNoLock(int number) {
  return number == ENOLCK || number == EOPNOTSUPP || number == ENOSYS || number == EBADF ||
         number == EINVAL;
}

Result<> LockOpened(int descriptor, const std::string& path, const std::string& held) {
  for (int tries = 0; tries < kTries; ++tries) {
    // A disk without locks still gets whole files.
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || IsNoLock(errno)) return Done{};
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return SystemError(path, errno);
    std::this_thread::sleep_for(kBetweenTries);
  }
  return Error{path + ": " + held};
}

}  // namespace ostrand::platform
