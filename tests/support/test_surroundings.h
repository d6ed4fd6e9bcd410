// Surroundings of a session under test: settings and machine keys in memory, real processes.
#pragma once

#include <string>

#include "platform/posix/posix_process.h"
#include "platform/surroundings.h"
#include "support/memory_settings.h"

namespace ostrand::testing {

struct TestSurroundings {
  TestSurroundings(platform::FileSystem& files, platform::Clock& clock, platform::Forms& forms,
                   std::string workDir, std::string moduleFolder = {})
      : all{files,
            clock,
            forms,
            processes,
            settings,
            registry,
            std::move(workDir),
            std::move(moduleFolder)} {}

  MemorySettingsStore settings;
  MemoryRegistry registry;
  platform::PosixProcesses processes;
  platform::Surroundings all;
};

}  // namespace ostrand::testing
