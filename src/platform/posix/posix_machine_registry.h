// The registry on a POSIX machine: plain text files.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/machine_registry.h"
#include "platform/posix/settings_file.h"

namespace ostrand::platform {

// The hive "HKLM" is in the machine's file, "HKCU" among the user's settings; a key is the
// section "[HKLM\SOFTWARE\...]". A value of digits is a number, one in double quotes or of
// anything else a text, and "bytes:" data that no reader understands.
class PosixMachineRegistry : public MachineRegistry {
 public:
  PosixMachineRegistry(FileSystem& files, std::string machinePath, std::string userPath);

  RegistryReading Read(std::string_view hive, std::string_view key, std::string_view name) override;
  std::string TakeNotice() override { return notices_.Take(); }

 private:
  SettingsReader machine_;
  SettingsReader user_;
  Notices notices_;
};

}  // namespace ostrand::platform
