#include "platform/atomic_file.h"

#include "platform/paths.h"

namespace ostrand::platform {
namespace {

// Of a very long title, so that the neighbour's name stays one that a disk takes.
constexpr std::size_t kMostOfTitle = 240;

}  // namespace

AtomicFile::AtomicFile(FileSystem& files, std::string_view path, std::string_view rightsOf)
    : files_(files), path_(files.Find(path)), rightsOf_(rightsOf.empty() ? path_ : rightsOf) {
  const SplitPath parts = Split(path_);
  title_ = parts.title;
  hiddenTitle_ = "." + title_.substr(0, kMostOfTitle) + ".writing";
  hidden_ = parts.folder + hiddenTitle_;
}

AtomicFile::~AtomicFile() {
  file_.reset();
  // Nobody is left to hear of a failure here, and the target is untouched either way.
  if (created_) static_cast<void>(static_cast<bool>(files_.Delete(hidden_)));
}

Result<> AtomicFile::Write(std::string_view bytes) { return ofTarget(write(bytes)); }

Result<> AtomicFile::Commit() { return ofTarget(commit()); }

Result<> AtomicFile::ofTarget(Result<> result) const {
  if (result) return result;
  std::string text = result.ErrorText();
  const std::size_t at = text.find(hiddenTitle_);
  if (at != std::string::npos) text.replace(at, hiddenTitle_.size(), title_);
  return Error{std::move(text)};
}

Result<> AtomicFile::write(std::string_view bytes) {
  if (!file_) {
    if (auto allowed = files_.MayReplace(path_); !allowed) return allowed;
    // A remainder of a process that died is of no use to anybody.
    if (files_.Exists(hidden_)) {
      if (auto removed = files_.Delete(hidden_); !removed) return removed;
    }
    auto created = files_.Create(hidden_);
    if (!created) return Error{created.ErrorText()};
    file_ = std::move(created.Value());
    created_ = true;
  }
  return file_->Write(bytes);
}

Result<> AtomicFile::commit() {
  if (auto synced = file_->Sync(); !synced) return synced;
  auto closed = file_->Close();
  file_.reset();
  if (!closed) return closed;
  files_.CopyRights(rightsOf_, hidden_);
  if (auto renamed = files_.Rename(hidden_, path_); !renamed) return renamed;
  created_ = false;
  return files_.SyncFolder(path_);
}

Result<> WriteWhole(FileSystem& files, std::string_view path, std::string_view bytes,
                    std::string_view rightsOf) {
  const auto lock = files.LockFolder(path);
  if (!lock) return Error{lock.ErrorText()};
  AtomicFile file(files, path, rightsOf);
  if (auto written = file.Write(bytes); !written) return written;
  return file.Commit();
}

}  // namespace ostrand::platform
