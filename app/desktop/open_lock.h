// Who has a project open.
#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <memory>
#include <optional>
#include <string>

#include "platform/posix/posix_filesystem.h"

namespace ostrand::desktop {

// The window that has a project open.
struct Holder {
  QString user;
  QString host;
  QDateTime since;
};

// A hidden file beside the project: `.pump.open.lock` for pump.VKG. It ends with its process; one
// whose process is gone is taken over. Saves by the command are not kept out.
class OpenLock {
 public:
  enum class State {
    kNone,   // no project file, or a folder that cannot be written
    kHeld,   // by this window
    kOther,  // by another one
  };

  // Takes the lock of `project`, an absolute path, and gives up the present one. `takeOver` takes
  // it from another window.
  State Take(const std::string& project, bool takeOver = false);
  void Release();
  // Checks that another window has not taken the lock over.
  State Check();
  // The other window that has `project` now; nothing when none has it.
  std::optional<Holder> HolderOf(const std::string& project);
  [[nodiscard]] State Now() const { return state_; }
  // Of the other window, with kOther.
  [[nodiscard]] const Holder& Other() const { return other_; }
  [[nodiscard]] const QString& File() const { return file_; }

 private:
  State found(State state) { return state_ = state; }

  platform::PosixFileSystem files_;
  std::unique_ptr<QLockFile> lock_;
  QString file_;
  std::optional<platform::FileStamp> stamp_;  // of the lock's file
  State state_ = State::kNone;
  Holder other_;
};

}  // namespace ostrand::desktop
