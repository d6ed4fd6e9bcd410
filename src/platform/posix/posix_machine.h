// All of a POSIX machine that a session needs, but the user.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_machine_registry.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/posix_settings_store.h"
#include "platform/posix/posix_work_folders.h"
#include "platform/posix/user_folders.h"
#include "platform/surroundings.h"

namespace ostrand::platform {

// Where the user's settings and the machine's keys are kept.
struct SettingsPlaces {
  explicit SettingsPlaces(Syncing syncing, const std::string& path = UserSettingsPath())
      : ownFiles(syncing, Readers::kOwner),
        settings(ownFiles, path),
        registry(ownFiles, MachineRegistryPath(), path) {}
  // Members refer to each other.
  SettingsPlaces(const SettingsPlaces&) = delete;
  SettingsPlaces& operator=(const SettingsPlaces&) = delete;

  PosixFileSystem ownFiles;
  PosixSettingsStore settings;
  PosixMachineRegistry registry;
};

// `Files` is the disk: a PosixFileSystem or one based on it.
template <typename Files>
struct PosixMachineOn {
  // `epoch` is a fixed time in seconds, in place of the clock's; `forDisk` is what the disk needs
  // but `syncing`.
  template <typename... ForDisk>
  PosixMachineOn(Syncing syncing, std::optional<std::int64_t> epoch,
                 const std::string& settingsPath = UserSettingsPath(), ForDisk... forDisk)
      : files(syncing, forDisk...), clock(epoch), places(syncing, settingsPath) {}

  // For a session that shows its boxes through `forms`.
  Surroundings Around(Forms& forms) {
    return {files,
            clock,
            forms,
            processes,
            places.settings,
            places.registry,
            TemporaryFolder(),
            ModuleFolder(),
            &workFolders};
  }

  Files files;
  PosixClock clock;
  PosixProcesses processes;
  PosixWorkFolders workFolders{files};
  SettingsPlaces places;
};

using PosixMachine = PosixMachineOn<PosixFileSystem>;

}  // namespace ostrand::platform
