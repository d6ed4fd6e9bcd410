// The user's settings on a POSIX machine: one plain text file.
#pragma once

#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/posix/settings_file.h"
#include "platform/settings_store.h"

namespace ostrand::platform {

// A section stands in the file as "[application\section]". The file is read at each call, so that
// programs side by side see each other's values; a write holds a lock beside the file while it
// reads, changes and replaces it whole. Rows and lines of others are kept.
//
// A file that is of no use (no text, too large, not to be read, a folder) counts as empty and is
// told in a notice. A write renames it to "settings.damaged" first.
class PosixSettingsStore : public SettingsStore {
 public:
  // `files` is to create files that only their owner may read (Readers::kOwner). An empty `path`
  // stands for no place: nothing to read, and an error of each write.
  PosixSettingsStore(FileSystem& files, std::string path);

  std::vector<Setting> Read(std::string_view application, std::string_view section) override;
  Result<> Write(std::string_view application, std::string_view section,
                 std::span<const Setting> values) override;
  std::string TakeNotice() override { return notices_.Take(); }

 private:
  SettingsFile load();
  bool stand(std::string_view section, std::span<const Setting> values);
  Result<> replace(std::string_view section, std::span<const Setting> values);
  Result<> moveAside(const std::string& path);

  FileSystem& files_;
  std::string path_;
  Notices notices_;
};

}  // namespace ostrand::platform
