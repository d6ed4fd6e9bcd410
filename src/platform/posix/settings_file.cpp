#include "platform/posix/settings_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/posix/system_error.h"
#include "text/number.h"

namespace ostrand::platform {

SettingsFile LoadSettingsFile(FileSystem& files, const std::string& path) {
  SettingsFile file;
  if (path.empty()) return file;
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) {
    // Any other error may be temporary; the content of the file is unknown then.
    if (errno != ENOENT && errno != ENOTDIR) file.unread = SystemError(path, errno).text;
    return file;
  }
  if (S_ISREG(info.st_mode) && info.st_size > static_cast<off_t>(SettingsText::kMaxBytes)) {
    file.damage = path + ": File too large";
    return file;
  }
  const auto bytes = files.Read(path);
  if (!bytes) {
    (S_ISREG(info.st_mode) ? file.unread : file.damage) = bytes.ErrorText();
    return file;
  }
  auto text = SettingsText::FromBytes(bytes.Value());
  if (!text) {
    file.damage = path + ": " + text.ErrorText();
    return file;
  }
  file.text = std::move(text.Value());
  if (const int line = file.text.StrangeLine(); line > 0) {
    file.strange = path + ", line " + NumberText(line);
  }
  return file;
}

const SettingsFile& SettingsReader::Now() {
  // Before the file is read, so that a change from then on shows.
  auto stamp = loaded_ ? files_.Stamp(path_) : std::nullopt;
  // Without a stamp there is no file, or a failure that may be temporary.
  if (!loaded_ || stamp != stamp_ || !file_.unread.empty()) {
    file_ = LoadSettingsFile(files_, path_);
  }
  loaded_ = true;
  stamp_ = stamp;
  return file_;
}

void Notices::Add(const std::string& text) {
  if (std::find(shown_.begin(), shown_.end(), text) != shown_.end()) return;
  shown_.push_back(text);
  if (!waiting_.empty()) waiting_ += "\r\n";
  waiting_ += text;
}

std::string Notices::Take() { return std::exchange(waiting_, {}); }

}  // namespace ostrand::platform
