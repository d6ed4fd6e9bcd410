#include "platform/posix/settings_file.h"

#include <algorithm>
#include <utility>

#include "text/number.h"

namespace ostrand::platform {

SettingsFile LoadSettingsFile(FileSystem& files, const std::string& path) {
  SettingsFile file;
  if (path.empty() || !files.Taken(path)) return file;
  const std::string name = files.Find(path);
  // Asked before the file is read, since reading alone takes anything up to a gigabyte.
  if (files.Size(name) > SettingsText::kMostBytes) {
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
