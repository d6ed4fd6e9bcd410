#include "platform/file_identity.h"

#include <functional>
#include <utility>

#include "platform/paths.h"
#include "text/strings.h"

namespace ostrand::platform {

FileIdentity IdentityOf(std::string path, std::string_view bytes, std::optional<FileStamp> stamp) {
  return {std::move(path), true, stamp, bytes.size(), std::hash<std::string_view>()(bytes)};
}

std::optional<FileIdentity> IdentityNow(FileSystem& files, const std::string& path) {
  const auto stamp = files.Stamp(path);
  const auto bytes = files.Read(path);
  if (!bytes) return std::nullopt;
  return IdentityOf(path, bytes.Value(), stamp);
}

bool SameFile(FileSystem& files, std::string_view one, std::string_view other) {
  if (one == other) return true;
  const SplitPath first = Split(one);
  const SplitPath second = Split(other);
  return SameText(first.title, second.title) && files.SameFolder(first.folder, second.folder);
}

std::optional<FileIdentity> ChangedSince(FileSystem& files, const FileIdentity& known,
                                         const std::string& path) {
  if (known.stamp && files.Stamp(path) == known.stamp) return std::nullopt;
  auto now = IdentityNow(files, path);
  if (!now || (known.exists && now->size == known.size && now->hash == known.hash)) {
    return std::nullopt;
  }
  return now;
}

}  // namespace ostrand::platform
