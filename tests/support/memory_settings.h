// Settings and machine keys in memory.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/machine_registry.h"
#include "platform/settings_store.h"

namespace ostrand::testing {

class MemorySettingsStore : public platform::SettingsStore {
 public:
  std::map<std::string, std::map<std::string, std::string>> sections;  // "application\section"
  std::string failure;                                                 // of all writes, if any
  std::string notice;
  int writes = 0;

  std::vector<platform::Setting> Read(std::string_view application,
                                      std::string_view section) override {
    std::vector<platform::Setting> rows;
    for (const auto& [name, value] : sections[place(application, section)]) {
      rows.push_back({name, value});
    }
    return rows;
  }
  Result<> Write(std::string_view application, std::string_view section,
                 std::span<const platform::Setting> values) override {
    ++writes;
    if (!failure.empty()) return Error{failure};
    for (const auto& row : values) sections[place(application, section)][row.name] = row.value;
    return Done{};
  }
  std::string TakeNotice() override { return std::exchange(notice, {}); }

 private:
  static std::string place(std::string_view application, std::string_view section) {
    return std::string(application) + "\\" + std::string(section);
  }
};

// Keys are "HIVE\key
// ame"; any other cannot be opened.
class MemoryRegistry : public platform::MachineRegistry {
 public:
  std::map<std::string, platform::RegistryReading> values;

  platform::RegistryReading Read(std::string_view hive, std::string_view key,
                                 std::string_view name) override {
    const auto found =
        values.find(std::string(hive) + "\\" + std::string(key) + "\\" + std::string(name));
    if (found == values.end()) return {{}, platform::RegistryFailure::kOpenKey};
    return found->second;
  }
  std::string TakeNotice() override { return {}; }
};

}  // namespace ostrand::testing
