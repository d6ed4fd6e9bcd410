// The scripts of tests/scripts, which the tests of the screens and of the windows play.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace ostrand::testing {

// Their names without the extension, in order.
inline std::vector<std::string> KeptScripts() {
  std::vector<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/tests/scripts")) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::string KeptScript(const std::string& name) {
  return ReadDisk(OSTRAND_SOURCE_DIR "/tests/scripts/" + name + ".txt");
}

}  // namespace ostrand::testing
