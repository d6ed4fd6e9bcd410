#include "platform/posix/file_lock.h"

#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

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
    // Without locks whole files are still the better part of what is wanted.
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || IsNoLock(errno)) return Done{};
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return Error{path + ": " + std::strerror(errno)};
    std::this_thread::sleep_for(kBetweenTries);
  }
  return Error{path + ": " + held};
}

}  // namespace ostrand::platform
