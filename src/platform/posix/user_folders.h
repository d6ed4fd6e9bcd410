// Folders of the user and for temporary files on a POSIX machine.
#pragma once

#include <string>

namespace ostrand::platform {

// The file of the user's settings: ostrand/settings in the folder that XDG_CONFIG_HOME names, or
// in .config of the user's home. Empty when neither is known; relative paths do not count.
std::string UserSettingsPath();

// The folder of what the program keeps between its runs: ostrand in the folder that XDG_STATE_HOME
// names, or in .local/state of the user's home, without a trailing separator. Empty as above.
std::string UserStateFolder();

// The file of the machine's keys: the one that OSTRAND_REGISTRY names, or /etc/ostrand/registry.
std::string MachineRegistryPath();

// Folder for temporary files, without a trailing separator: the one that TMPDIR names, or /tmp.
std::string TemporaryFolder();

// Folder of the running program; empty when it is unknown.
std::string ModuleFolder();

}  // namespace ostrand::platform
