// Reads a settings text from the disk; any content gives a result.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/filesystem.h"
#include "platform/settings_text.h"

namespace ostrand::platform {

struct SettingsFile {
  SettingsText text;    // empty when the file is missing or unusable
  std::string damage;   // why the file is unusable, with its path; empty for none
  std::string unread;   // why the file could not be read, with its path; empty for none
  std::string strange;  // first line that is not understood: path and line; empty for none
};

// An empty path, and one where nothing exists, give an empty text.
SettingsFile LoadSettingsFile(FileSystem& files, const std::string& path);

// One settings text, which is read again only after it has changed.
class SettingsReader {
 public:
  SettingsReader(FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}
  // As it is on the disk now.
  const SettingsFile& Now();

 private:
  FileSystem& files_;
  std::string path_;
  bool loaded_ = false;
  std::optional<FileStamp> stamp_;
  SettingsFile file_;
};

// Texts for the user, each one once.
class Notices {
 public:
  void Add(const std::string& text);
  // What was added since the last call, separated by CR LF.
  std::string Take();

 private:
  std::vector<std::string> shown_;
  std::string waiting_;
};

}  // namespace ostrand::platform
