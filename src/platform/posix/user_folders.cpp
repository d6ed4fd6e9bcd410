#include "platform/posix/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "platform/paths.h"

namespace ostrand::platform {
namespace {

std::string withoutSeparator(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

// The value of the environment variable; empty when it is not set.
std::string fromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// The absolute folder that an environment variable names; empty for none.
std::string namedFolder(const char* variable) {
  std::string folder = fromEnvironment(variable);
  return folder.starts_with('/') ? withoutSeparator(std::move(folder)) : "";
}

std::string home() {
  std::string folder = namedFolder("HOME");
  if (!folder.empty()) return folder;
  const passwd* account = ::getpwuid(::geteuid());
  if (account == nullptr || account->pw_dir == nullptr || *account->pw_dir != '/') return {};
  return withoutSeparator(account->pw_dir);
}

// A path in the program's own folder: in the folder that the variable names, or in one of the home.
std::string ownPath(const char* variable, const char* inHome, const char* name) {
  std::string folder = namedFolder(variable);
  if (folder.empty()) {
    folder = home();
    if (folder.empty()) return {};
    folder += inHome;
  }
  return folder + "/ostrand" + name;
}

}  // namespace

std::string UserSettingsPath() { return ownPath("XDG_CONFIG_HOME", "/.config", "/settings"); }

std::string UserStateFolder() { return ownPath("XDG_STATE_HOME", "/.local/state", ""); }

std::string MachineRegistryPath() {
  const std::string named = fromEnvironment("OSTRAND_REGISTRY");
  return named.empty() ? "/etc/ostrand/registry" : named;
}

std::string TemporaryFolder() {
  const std::string named = namedFolder("TMPDIR");
  return named.empty() ? "/tmp" : named;
}

std::string ModuleFolder() {
  std::string path(PATH_MAX, '\0');
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return Split(path).folder;
}

}  // namespace ostrand::platform
