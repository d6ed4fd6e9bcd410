#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace ostrand::testing {

TempFolder::TempFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "ostrand-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
  path_ = pattern + "/";
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadDisk(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

void WriteDisk(const std::string& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  EXPECT_TRUE(file.flush().good()) << path;
}

}  // namespace ostrand::testing
