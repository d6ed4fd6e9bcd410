#include "support/stand_ins.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace ostrand::testing {
namespace {

// Processes started by this one have the mark from the start.
const std::string kMark = [] {
  const std::string owner = std::to_string(::getpid());
  ::setenv("STAND_IN_OWNER", owner.c_str(), 1);
  return "STAND_IN_OWNER=" + owner + '\0';
}();

}  // namespace

int StandInsAlive() {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (error || program != OSTRAND_STAND_IN) continue;
    std::ifstream file(entry.path() / "environ", std::ios::binary);  // may have ended
    const std::string environment{std::istreambuf_iterator<char>(file), {}};
    if (environment.find(kMark) != std::string::npos) ++count;
  }
  return count;
}

}  // namespace ostrand::testing
