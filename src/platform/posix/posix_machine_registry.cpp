#include "platform/posix/posix_machine_registry.h"

#include <optional>
#include <utility>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand::platform {

PosixMachineRegistry::PosixMachineRegistry(FileSystem& files, std::string machinePath,
                                           std::string userPath)
    : machine_(files, std::move(machinePath)), user_(files, std::move(userPath)) {}

RegistryReading PosixMachineRegistry::Read(std::string_view hive, std::string_view key,
                                           std::string_view name) {
  const bool machine = SameText(hive, "HKLM");
  if (!machine && !SameText(hive, "HKCU")) return {{}, RegistryFailure::kOpenKey};
  const SettingsFile& file = (machine ? machine_ : user_).Now();
  // Damage of the user's file is reported by the store that owns it.
  for (const std::string& why : {file.damage, file.unread}) {
    if (machine && !why.empty()) notices_.Add("The keys of this machine cannot be read: " + why);
  }
  if (machine && !file.strange.empty()) {
    notices_.Add("A line of the machine's keys is not understood and is ignored: " + file.strange);
  }
  const std::string section = std::string(hive).append("\\").append(key);
  if (!file.text.HasSection(section)) return {{}, RegistryFailure::kOpenKey};
  const std::optional<SettingsValue> value = file.text.Find(section, name);
  if (!value) return {{}, RegistryFailure::kReadValue};
  switch (value->kind) {
    case SettingsValue::Kind::kText:
      return {value->text, std::nullopt};
    case SettingsValue::Kind::kWhole:
      return {ToInt32(value->text).value_or(0), std::nullopt};
    case SettingsValue::Kind::kTooWide:
    case SettingsValue::Kind::kBytes:
      break;
  }
  return {{}, RegistryFailure::kDataType};
}

}  // namespace ostrand::platform
