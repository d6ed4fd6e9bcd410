#include "projectfile/genfile.h"

#include <utility>

#include "platform/atomic_file.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr std::string_view kExtension = ".VKG";
constexpr std::string_view kOldExtension = "._KG";

// In one piece, as WriteWhole does, but under a lock that is held already.
Result<> write(platform::FileSystem& files, const std::string& path, const std::string& text,
               const std::string& rightsOf) {
  platform::AtomicFile file(files, path, rightsOf);
  if (auto written = file.Write(text); !written) return written;
  return file.Commit();
}

// A remainder that stands already is the last good content of a save that died: it is not replaced.
bool putAside(platform::FileSystem& files, const std::string& project, const std::string& old) {
  if (!files.Exists(project) || files.Exists(old)) return false;
  return static_cast<bool>(files.Rename(project, old));
}

}  // namespace

Result<> SaveProjectFile(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
                         std::string_view base) {
  const std::string text = ProjectFileText(store, clock.Now());
  const std::string path = std::string(base).append(kExtension);
  const std::string old = std::string(base).append(kOldExtension);
  // Another save of this project would take its old content for a remainder of this one.
  const auto lock = files.LockFolder(path);
  if (!lock) return Error{lock.ErrorText()};
  const std::string found = files.Find(path);  // the name to go back to, in its own spelling
  if (auto allowed = files.MayReplace(found); !allowed) return allowed;
  const bool aside = putAside(files, found, old);
  if (auto written = write(files, path, text, aside ? old : ""); !written) {
    // When even this fails, the old content stays where a dead save would leave it.
    if (aside) static_cast<void>(static_cast<bool>(files.Rename(old, found)));
    return written;
  }
  // The project stands. A remainder that can't be deleted takes nothing from it.
  if (files.Exists(old)) static_cast<void>(static_cast<bool>(files.Delete(old)));
  return Done{};
}

Result<std::optional<std::string>> ReadProjectFile(platform::FileSystem& files,
                                                   std::string_view name) {
  std::string path(name);
  if (path.find('.') == std::string::npos) path.append(kExtension);
  if (!files.Exists(path)) return std::optional<std::string>();
  // A mark that stays is no hindrance to reading.
  static_cast<void>(static_cast<bool>(files.ClearReadOnly(path)));
  auto bytes = files.Read(path);
  if (!bytes) return Error{bytes.ErrorText()};
  return std::optional(std::move(bytes.Value()));
}

Result<bool> LoadProjectFile(ProjectStore& store, platform::FileSystem& files,
                             std::string_view name) {
  const auto bytes = ReadProjectFile(files, name);
  if (!bytes) return Error{bytes.ErrorText()};
  if (!bytes.Value()) return false;
  ReadProjectText(store, *bytes.Value());
  return true;
}

}  // namespace ostrand::ORVUS_GENFILE
