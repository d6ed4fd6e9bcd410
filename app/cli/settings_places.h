// Where the user's settings and the machine's keys are kept.
#pragma once

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_machine_registry.h"
#include "platform/posix/posix_settings_store.h"
#include "platform/posix/user_folders.h"

namespace ostrand::cli {

struct SettingsPlaces {
  explicit SettingsPlaces(platform::Syncing syncing)
      : ownFiles(syncing, platform::Readers::kOwner),
        settings(ownFiles, platform::UserSettingsPath()),
        registry(ownFiles, platform::MachineRegistryPath(), platform::UserSettingsPath()) {}
  // Members refer to each other.
  SettingsPlaces(const SettingsPlaces&) = delete;
  SettingsPlaces& operator=(const SettingsPlaces&) = delete;

  platform::PosixFileSystem ownFiles;
  platform::PosixSettingsStore settings;
  platform::PosixMachineRegistry registry;
};

}  // namespace ostrand::cli
