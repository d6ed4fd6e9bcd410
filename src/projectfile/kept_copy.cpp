#include "projectfile/kept_copy.h"

#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/atomic_file.h"
#include "projectfile/genfile.h"
#include "text/number.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

constexpr std::string_view kBackupExtension = ".bak";
constexpr int kMaxCopies = 999;

bool skipsLines(std::string_view bytes) {
  const auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  return ReadProjectText(*store, bytes).skipped > 0;
}

// A file with the same bytes counts as free. It is written all the same: it may be a link to the
// very file that is about to be replaced.
bool isFreeFor(platform::FileSystem& files, const std::string& name, const std::string& bytes) {
  if (!files.Taken(name)) return true;
  if (!files.Exists(name) || !files.MayReplace(name)) return false;
  const auto held = files.Read(name);
  return held && held.Value() == bytes;
}

}  // namespace

Result<std::string> KeepOldFile(platform::FileSystem& files, std::string_view path) {
  if (!files.Exists(path)) return std::string();
  const auto bytes = files.Read(path);
  if (!bytes) return Error{bytes.ErrorText()};
  if (!skipsLines(bytes.Value())) return std::string();
  const auto lock = files.LockFolder(path);
  if (!lock) return Error{lock.ErrorText()};
  std::string name = std::string(path).append(kBackupExtension);
  for (int number = 1; !isFreeFor(files, name, bytes.Value()); ++number) {
    if (number > kMaxCopies) return Error{name + ": Too many kept copies"};
    name = std::string(path).append(kBackupExtension).append(".").append(NumberText(number));
  }
  platform::AtomicFile copy(files, name, files.Find(path));
  if (auto written = copy.Write(bytes.Value()); !written) return Error{written.ErrorText()};
  if (auto kept = copy.Commit(); !kept) return Error{kept.ErrorText()};
  return name;
}

}  // namespace ostrand::ORVUS_GENFILE
