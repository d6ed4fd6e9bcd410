#include "support/saved_keys.h"

#include <set>

#include "text/strings.h"

namespace ostrand::testing {

SavedKeys KeysOf(std::string_view file) {
  SavedKeys keys;
  std::string section;
  while (!file.empty()) {
    const std::string_view line = TakeLine(file);
    if (line.starts_with("[")) section = std::string(line) + " ";
    const std::size_t equal = line.find('=');
    if (equal == std::string::npos) continue;
    keys[section + std::string(line.substr(0, equal))] = Trim(line.substr(equal + 1));
  }
  return keys;
}

std::vector<KeyChange> ChangedKeys(const SavedKeys& before, const SavedKeys& after) {
  const auto valueOf = [](const SavedKeys& keys, const std::string& key) {
    const auto found = keys.find(key);
    if (found == keys.end()) return std::string("none");
    return found->second.empty() ? "blank" : found->second;
  };
  std::set<std::string> names;
  for (const SavedKeys* keys : {&before, &after}) {
    for (const auto& [key, value] : *keys) names.insert(key);
  }
  std::vector<KeyChange> changes;
  for (const std::string& key : names) {
    KeyChange change = {key, valueOf(before, key), valueOf(after, key)};
    if (change.before != change.after) changes.push_back(std::move(change));
  }
  return changes;
}

}  // namespace ostrand::testing
