#include "platform/posix/settings_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

#include "text/number.h"

namespace ostrand::platform {
namespace {

// Asked before the file is read, since reading alone takes anything up to a gigabyte.
bool isTooLarge(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
         info.st_size > static_cast<off_t>(SettingsText::kMostBytes);
}

}  // namespace

SettingsFile LoadSettingsFile(FileSystem& files, const std::string& path) {
  SettingsFile file;
  if (path.empty() || !files.Taken(path)) return file;
  const std::string name = files.Find(path);
  if (isTooLarge(name)) {
    file.damage = name + ": File too large";
    return file;
  }
  const auto bytes = files.Read(name);
  if (!bytes) {
    file.damage = bytes.ErrorText();
    return file;
  }
  auto text = SettingsText::FromBytes(bytes.Value());
  if (!text) {
    file.damage = name + ": " + text.ErrorText();
    return file;
  }
  file.text = std::move(text.Value());
  if (const int line = file.text.StrangeLine(); line > 0) {
    file.strange = name + ", line " + NumberText(line);
  }
  return file;
}

void Notices::Add(const std::string& text) {
  if (std::find(told_.begin(), told_.end(), text) != told_.end()) return;
  told_.push_back(text);
  if (!waiting_.empty()) waiting_ += "\r\n";
  waiting_ += text;
}

std::string Notices::Take() { return std::exchange(waiting_, {}); }

}  // namespace ostrand::platform
