#include "projectfile/genfile.h"

#include <utility>

#include "platform/atomic_file.h"
#include "platform/paths.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr std::string_view kExtension = ".VKG";
constexpr std::string_view kOldExtension = "._KG";

constexpr std::string_view kLastSection = "\r\n[CALCULATED FIELDS]\r\nCalcFieldCount=";
constexpr int kMaxKept = 999;

// `path` with another extension.
std::string besideIt(const std::string& path, std::string_view extension) {
  return std::string(platform::WithoutExtension(path)).append(extension);
}

// Renames an existing project to the spelling of `path`; a link keeps its name. Returns the name.
Result<std::string> spelledAs(platform::FileSystem& files, std::string_view path,
                              const std::string& target) {
  const std::string asked = platform::Split(path).title;
  const platform::SplitPath parts = platform::Split(target);
  if (parts.title == asked || !SameText(parts.title, asked) || files.Find(path) != target ||
      files.LookAt(target) != platform::Entry::kFile) {
    return target;
  }
  if (auto allowed = files.MayReplace(target); !allowed) return Error{allowed.ErrorText()};
  std::string spelled = parts.folder + asked;
  if (auto renamed = files.Rename(target, spelled); !renamed) return Error{renamed.ErrorText()};
  return spelled;
}

// Moves the only copy of a project to the first free name and returns that name.
Result<std::string> keepRemainder(platform::FileSystem& files, const std::string& old) {
  for (int number = 1; number <= kMaxKept; ++number) {
    std::string kept = old + "." + NumberText(number);
    if (files.LookAt(kept) != platform::Entry::kNone) continue;
    if (auto moved = files.RenameNew(old, kept); !moved) return Error{moved.ErrorText()};
    return kept;
  }
  return Error{old + ": Too many kept copies"};
}

// Gives the project a second name, or a copy on a disk without links. False if neither is possible,
// or if anything but a file has the name; the save continues without it.
bool putAside(platform::FileSystem& files, const std::string& project, const std::string& old) {
  switch (files.LookAt(old)) {
    case platform::Entry::kNone:
      break;
    case platform::Entry::kFile:  // of a save that died; the project beside it is whole
      if (!files.Delete(old)) return false;
      break;
    default:
      return false;
  }
  if (files.Link(project, old)) return true;
  const auto bytes = files.Read(project);
  if (!bytes) return false;
  platform::AtomicFile copy(files, old, project);
  return static_cast<bool>(copy.Write(bytes.Value())) && static_cast<bool>(copy.Commit());
}

}  // namespace

std::string PlaceOf(platform::FileSystem& files, std::string_view path) {
  return files.Target(files.Find(path));
}

Result<SavedProject> SaveProjectFile(ProjectStore& store, platform::FileSystem& files,
                                     platform::Clock& clock, std::string_view base) {
  const std::string text = ProjectFileText(store, clock.Now());
  const std::string path = std::string(base).append(kExtension);
  const std::string target = PlaceOf(files, path);
  const auto spelled = spelledAs(files, path, target);
  if (!spelled) return Error{spelled.ErrorText()};
  const std::string& project = spelled.Value();
  const std::string old = besideIt(project, kOldExtension);

  platform::AtomicFile file(files, project);
  if (auto written = file.Write(text); !written) return Error{written.ErrorText()};
  if (file.Stays()) {
    // Of a save that died, beside a project that is whole.
    if (files.LookAt(old) == platform::Entry::kFile) {
      static_cast<void>(static_cast<bool>(files.Delete(old)));
    }
    auto now = platform::IdentityNow(files, project);
    return SavedProject{now ? std::move(*now) : platform::IdentityOf(project, text), {}};
  }
  if (auto finished = file.Finish(); !finished) return Error{finished.ErrorText()};
  SavedProject saved{platform::IdentityOf(project, text), {}};
  bool aside = false;
  if (files.LookAt(project) == platform::Entry::kFile) {
    aside = putAside(files, project, old);
  } else if (files.LookAt(old) == platform::Entry::kFile) {
    auto kept = keepRemainder(files, old);
    if (!kept) return Error{kept.ErrorText()};
    saved.keptAs = std::move(kept.Value());
  }
  const auto committed = file.Commit();
  // The project exists, new or old; a second name that remains does no harm.
  if (aside) static_cast<void>(static_cast<bool>(files.Delete(old)));
  if (!committed) return Error{committed.ErrorText()};
  return saved;
}

std::optional<std::string> InterruptedSave(platform::FileSystem& files, std::string_view name) {
  const std::string project = PlaceOf(files, name);
  if (files.LookAt(project) != platform::Entry::kNone) return std::nullopt;
  for (const std::string& left :
       {besideIt(project, kOldExtension), platform::HiddenNeighbour(project)}) {
    if (files.LookAt(left) == platform::Entry::kFile) return left;
  }
  return std::nullopt;
}

Result<std::string> RecoverProjectFile(platform::FileSystem& files, std::string_view name) {
  const std::string project = PlaceOf(files, name);
  if (files.LookAt(project) != platform::Entry::kNone) {
    return Error{project + ": The project exists and was not changed"};
  }
  const auto left = InterruptedSave(files, name);
  if (!left) {
    return Error{project + ": No interrupted save found (" + besideIt(project, kOldExtension) +
                 ")"};
  }
  if (*left == platform::HiddenNeighbour(project)) {
    const auto bytes = files.Read(*left);
    if (!bytes) return Error{bytes.ErrorText()};
    const std::string& text = bytes.Value();
    if (text.find(kLastSection) == std::string::npos || !text.ends_with("\r\n")) {
      return Error{*left + ": The save was interrupted before the file was whole"};
    }
  }
  if (auto moved = files.RenameNew(*left, project); !moved) return Error{moved.ErrorText()};
  if (auto synced = files.SyncFolder(project); !synced) return Error{synced.ErrorText()};
  return *left;
}

Result<std::optional<std::string>> ReadProjectFile(platform::FileSystem& files,
                                                   std::string_view name) {
  std::string path(name);
  if (path.find('.') == std::string::npos) path.append(kExtension);
  auto bytes = files.Read(path);
  if (!bytes && !files.Exists(path)) return std::optional<std::string>();
  if (!bytes) return Error{bytes.ErrorText()};
  // A mark that remains does not prevent reading.
  static_cast<void>(static_cast<bool>(files.ClearReadOnly(path)));
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
