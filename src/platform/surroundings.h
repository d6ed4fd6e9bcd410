// Everything that a session asks of the machine and the host it runs on.
#pragma once

#include <string>

#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/forms.h"
#include "platform/machine_registry.h"
#include "platform/process.h"
#include "platform/settings_store.h"
#include "platform/work_folders.h"

namespace ostrand::platform {

// All of it must outlive the session.
struct Surroundings {
  FileSystem& files;
  Clock& clock;
  Forms& forms;
  Processes& processes;
  SettingsStore& settings;
  MachineRegistry& registry;
  std::string temporaryFolder;    // where the machine names no folder for temporary files
  std::string moduleFolder = {};  // where the program and its help file are installed
  // Makes the folder of each test compile private; without it all share the one for temporary
  // files.
  WorkFolders* workFolders = nullptr;

  // The same with another one of its parts.
  [[nodiscard]] Surroundings With(Forms& other) const {
    return {files,    clock,           other,        processes,  settings,
            registry, temporaryFolder, moduleFolder, workFolders};
  }
  [[nodiscard]] Surroundings With(Processes& other) const {
    return {files,    clock,           forms,        other,      settings,
            registry, temporaryFolder, moduleFolder, workFolders};
  }
  [[nodiscard]] Surroundings With(SettingsStore& other) const {
    return {files,    clock,           forms,        processes,  other,
            registry, temporaryFolder, moduleFolder, workFolders};
  }
};

}  // namespace ostrand::platform
