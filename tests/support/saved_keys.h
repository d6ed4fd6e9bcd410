// What a project file holds, key by key.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::testing {

// Values by section and key: "[SCAN SETUP] ScanMode".
using SavedKeys = std::map<std::string, std::string>;
SavedKeys KeysOf(std::string_view file);

struct KeyChange {
  std::string key;
  std::string before;  // "blank" for an empty value, "none" for a key that the file does not have
  std::string after;
};
std::vector<KeyChange> ChangedKeys(const SavedKeys& before, const SavedKeys& after);

}  // namespace ostrand::testing
