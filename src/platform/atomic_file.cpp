#include "platform/atomic_file.h"

#include <utility>

#include "platform/paths.h"
#include "text/number.h"

namespace ostrand::platform {
namespace {

// Cuts very long titles, so that the neighbour's name is not too long for a disk.
constexpr std::size_t kMaxTitle = 240;
constexpr int kMaxNeighbours = 9;

}  // namespace

std::string HiddenNeighbour(std::string_view path) {
  const SplitPath parts = Split(path);
  return parts.folder + "." + parts.title.substr(0, kMaxTitle) + ".writing";
}

AtomicFile::AtomicFile(FileSystem& files, std::string path, std::string_view rightsOf)
    : files_(files), path_(std::move(path)), rightsOf_(rightsOf.empty() ? path_ : rightsOf) {}

AtomicFile::~AtomicFile() {
  file_.reset();
  // There is no caller to report a failure to, and the target is untouched either way.
  if (created_) static_cast<void>(static_cast<bool>(files_.Delete(hidden_)));
}

Result<> AtomicFile::Write(std::string_view bytes) { return ofTarget(write(bytes)); }

void AtomicFile::StartSync() {
  if (file_) file_->StartSync();
}

Result<> AtomicFile::Finish() { return ofTarget(finish()); }

Result<> AtomicFile::Commit(FolderSync sync) { return ofTarget(commit(sync)); }

Result<> AtomicFile::ofTarget(Result<> result) const {
  if (result) return result;
  std::string text = result.ErrorText();
  const std::string hidden = Split(hidden_).title;
  const std::size_t at = hidden.empty() ? std::string::npos : text.find(hidden);
  if (at != std::string::npos) text.replace(at, hidden.size(), Split(path_).title);
  return Error{std::move(text)};
}

Result<> AtomicFile::open(std::string_view bytes) {
  const auto replaces = files_.MayReplace(path_);
  if (!replaces) return Error{replaces.ErrorText()};
  stays_ = files_.Stays(path_, bytes, replaces.Value());
  if (stays_) return Done{};
  if (!replaces.Value() && rightsOf_ == path_) rightsOf_.clear();
  const std::string first = HiddenNeighbour(path_);
  hidden_ = first;
  for (int number = 1;; ++number) {
    Result<> created = create();
    if (created || number > kMaxNeighbours || files_.LookAt(hidden_) == Entry::kNone) {
      return created;
    }
    hidden_ = first + "." + NumberText(number);
  }
}

Result<> AtomicFile::create() {
  for (bool again = false;; again = true) {
    auto created = files_.Create(hidden_, rightsOf_);
    if (created) {
      file_ = std::move(created.Value());
      created_ = true;
      return Done{};
    }
    // The remainder of a process that died is of no use.
    const bool remainder = !again && files_.LookAt(hidden_) == Entry::kFile;
    if (!remainder || !files_.Delete(hidden_)) return Error{created.ErrorText()};
  }
}

Result<> AtomicFile::write(std::string_view bytes) {
  if (!file_) {
    if (auto opened = open(bytes); !opened || stays_) return opened;
  }
  return file_->Write(bytes);
}

Result<> AtomicFile::finish() {
  if (!file_) return Done{};
  if (auto synced = file_->Sync(); !synced) return synced;
  auto closed = file_->Close();
  file_.reset();
  return closed;
}

Result<> AtomicFile::commit(FolderSync sync) {
  if (auto finished = finish(); !finished || stays_) return finished;
  if (auto renamed = files_.Rename(hidden_, path_); !renamed) return renamed;
  created_ = false;
  return sync == FolderSync::kLater ? Result<>(Done{}) : files_.SyncFolder(path_);
}

Result<> WriteWhole(FileSystem& files, std::string_view path, std::string_view bytes,
                    FolderSync sync) {
  const std::string target = files.Target(path);
  // By the name that was asked for, since that is the one a project's lock is held for.
  const auto lock = files.LockFolder(path);
  if (!lock) return Error{lock.ErrorText()};
  auto file = std::make_unique<AtomicFile>(files, target);
  if (auto written = file->Write(bytes); !written) return written;
  if (target != path) sync = FolderSync::kNow;
  if (files.Batch() == nullptr || sync == FolderSync::kNow || lock.Value() != nullptr) {
    return file->Commit(sync);
  }
  files.Batch()->Join(path, std::move(file));
  return Done{};
}

void WriteBatch::Join(std::string_view path, std::unique_ptr<AtomicFile> file) {
  file->StartSync();
  written_.push_back({std::string(path), std::move(file)});
}

std::optional<WriteBatch::Failure> WriteBatch::Commit() {
  const std::vector<Written> all = std::exchange(written_, {});
  std::size_t synced = 0;
  std::optional<Failure> failure;
  for (; synced < all.size(); ++synced) {
    const Result<> finished = all[synced].file->Finish();
    if (finished) continue;
    failure = {all[synced].path, finished.ErrorText()};
    break;
  }
  for (std::size_t at = 0; at < synced; ++at) {
    const Result<> placed = all[at].file->Commit(FolderSync::kLater);
    if (!placed) return Failure{all[at].path, placed.ErrorText()};
  }
  return failure;
}

}  // namespace ostrand::platform
