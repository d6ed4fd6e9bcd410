// A temporary folder of a test, deleted at its end.
#pragma once

#include <string>
#include <string_view>

namespace ostrand::testing {

class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }  // with its separator
  std::string operator/(std::string_view name) const { return path_ + std::string(name); }

 private:
  std::string path_;
};

// The bytes of a file on the disk; fails the test if it cannot be read.
std::string ReadDisk(const std::string& path);
void WriteDisk(const std::string& path, std::string_view bytes);

}  // namespace ostrand::testing
