#include "open_lock.h"

#include <QFile>
#include <QFileInfo>
#include <utility>
#include <vector>

#include "texts.h"

namespace ostrand::desktop {
namespace {

// In lower case, as the lock of a save: a save may change the spelling of its project.
QString lockOf(const std::string& project) {
  const QFileInfo file(PathText(project));
  return file.absolutePath() + QStringLiteral("/.") + file.completeBaseName().toLower() +
         QStringLiteral(".open.lock");
}

Holder holderOf(const QLockFile& lock, const QString& path) {
  Holder holder;
  qint64 process = 0;
  QString program;
  lock.getLockInfo(&process, &holder.host, &program);
  const QFileInfo file(path);
  holder.user = file.owner();
  holder.since = file.lastModified();
  return holder;
}

// Deleting a lock would delete the file of the window that has taken it over.
void abandon(std::unique_ptr<QLockFile> lock) {
  static auto* const abandoned = new std::vector<std::unique_ptr<QLockFile>>;
  abandoned->push_back(std::move(lock));
}

}  // namespace

OpenLock::State OpenLock::Take(const std::string& project, bool takeOver) {
  const QString file = lockOf(project);
  if (state_ == State::kHeld && file == file_) return Check();
  Release();
  if (!QFileInfo::exists(PathText(project))) return state_;
  file_ = file;
  lock_ = std::make_unique<QLockFile>(file_);
  lock_->setStaleLockTime(0);  // it may be held for days
  if (takeOver) QFile::remove(file_);
  if (lock_->tryLock(0)) {
    stamp_ = files_.Stamp(PathOf(file_));
    return found(State::kHeld);
  }
  if (lock_->error() != QLockFile::LockFailedError) return found(State::kNone);
  other_ = holderOf(*lock_, file_);
  return found(State::kOther);
}

void OpenLock::Release() {
  if (state_ == State::kHeld) Check();
  lock_.reset();
  state_ = State::kNone;
}

OpenLock::State OpenLock::Check() {
  if (state_ != State::kHeld || files_.Stamp(PathOf(file_)) == stamp_) return state_;
  other_ = holderOf(*lock_, file_);
  abandon(std::exchange(lock_, nullptr));
  return found(State::kOther);
}

std::optional<Holder> OpenLock::HolderOf(const std::string& project) {
  const QString file = lockOf(project);
  if (state_ == State::kHeld && file == file_) {
    return Check() == State::kOther ? std::optional(other_) : std::nullopt;
  }
  if (!QFileInfo::exists(file)) return std::nullopt;
  QLockFile tried(file);
  tried.setStaleLockTime(0);
  if (tried.tryLock(0) || tried.error() != QLockFile::LockFailedError) return std::nullopt;
  return holderOf(tried, file);
}

}  // namespace ostrand::desktop
