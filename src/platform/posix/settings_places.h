// Where the user's settings and the machine's keys are kept.
#pragma once

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_machine_registry.h"
#include "platform/posix/posix_settings_store.h"
#include "platform/posix/user_folders.h"

namespace ostrand::platform {

struct SettingsPlaces {
  explicit SettingsPlaces(Syncing syncing)
      : ownFiles(syncing, Readers::kOwner),
        settings(ownFiles, UserSettingsPath()),
        registry(ownFiles, MachineRegistryPath(), UserSettingsPath()) {}
  // Members refer to each other.
  SettingsPlaces(const SettingsPlaces&) = delete;
  SettingsPlaces& operator=(const SettingsPlaces&) = delete;

  PosixFileSystem ownFiles;
  PosixSettingsStore settings;
  PosixMachineRegistry registry;
};

}  // namespace ostrand::platform
