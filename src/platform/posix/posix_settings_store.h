// The user's settings on a POSIX machine: one plain text file.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/filesystem.h"
#include "platform/posix/settings_file.h"
#include "platform/settings_store.h"

namespace ostrand::platform {

// A section is in the file as "[application\section]". Each call looks whether the file has
// changed, so that programs running at the same time see each other's values; a write holds a lock
// beside the file while it reads, changes and replaces it whole. Other rows and lines are kept.
//
// A file that is of no use (no text, too large, a folder) counts as empty, with a notice.
// A write renames it to "settings.damaged" first. A file that cannot be read counts as
// empty too, but is left as it is: each write is an error until it can be read, and so is a write
// of a section whose last Read failed in this way, since its values may be mere defaults.
class PosixSettingsStore : public SettingsStore {
 public:
  // `files` must create files that only their owner may read (Readers::kOwner). With an
  // empty `path` nothing is read and each write is an error.
  PosixSettingsStore(FileSystem& files, std::string path);

  std::vector<Setting> Read(std::string_view application, std::string_view section) override;
  Result<> Write(std::string_view application, std::string_view section,
                 std::span<const Setting> values) override;
  std::string TakeNotice() override { return notices_.Take(); }

 private:
  const SettingsFile& load();
  Result<> replace(SettingsFile& file, std::string_view section, std::span<const Setting> values);
  Result<> moveAside(const std::string& path);

  FileSystem& files_;
  std::string path_;
  SettingsReader reader_;
  std::map<std::string, std::string> unread_;  // why the last Read of a section failed
  Notices notices_;
};

}  // namespace ostrand::platform
