// Values that belong to the machine or the user's account, read only, by hive, key and name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace ostrand::platform {

enum class RegistryFailure {
  kOpenKey,    // no such key, or nothing can be read at all
  kDataType,   // neither a text nor a 32-bit number
  kReadValue,  // the key has no such value
  kCloseKey    // the value was read, and then the key could not be closed
};

// The value, or why there is none. After kCloseKey there are both.
struct RegistryReading {
  std::variant<std::string, std::int32_t> value;
  std::optional<RegistryFailure> failure;
};

class MachineRegistry {
 public:
  virtual ~MachineRegistry() = default;

  // `hive` is "HKLM", the machine, or "HKCU", the present user; any other has no keys. Parts of
  // `key` are separated by `\`. Names are compared without regard to case.
  virtual RegistryReading Read(std::string_view hive, std::string_view key,
                               std::string_view name) = 0;
  // Notices for the user about the state of the registry, as in SettingsStore.
  virtual std::string TakeNotice() = 0;
};

}  // namespace ostrand::platform
