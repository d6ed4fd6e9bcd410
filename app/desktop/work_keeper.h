// Keeps the user's work: what is edited, undo, recovery copies, and other users of the project.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>

#include "open_lock.h"
#include "recovery.h"
#include "session/ostrand.h"
#include "undo.h"

class QWidget;

namespace ostrand::desktop {

class WorkKeeper {
 public:
  // The session must outlive it; boxes are shown over `window`. `recoveryFolder` is empty where no
  // copies are to be kept.
  WorkKeeper(Ostrand& session, QWidget* window, const QString& recoveryFolder);

  // Reports of the window: the session has another project, or one that has just been saved.
  void Opened();
  void Saved();
  // The window closes, and its user has decided about all edits.
  void Ended();

  // Whether a save would write something else than the project file holds.
  [[nodiscard]] bool HasEdits() const;

  // ---- Undo -------------------------------------------------------------------------------------

  // The present state, to be kept before an action.
  [[nodiscard]] KeptProject Now() const;
  // Records an action that may have changed the project: "Voltage block 2" becomes the step "Undo
  // Voltage block 2". Without a change there is nothing to undo, and nothing is recorded.
  void Record(const QString& action, KeptProject before);
  [[nodiscard]] QString UndoName() const { return QString::fromStdString(history_.UndoName()); }
  [[nodiscard]] QString RedoName() const { return QString::fromStdString(history_.RedoName()); }
  // False while the session is busy, and when nothing is left to undo or redo.
  bool Undo();
  bool Redo();

  // ---- Other users of the project ---------------------------------------------------------------

  // Whether the project is only read here, since another window has it.
  [[nodiscard]] bool ReadOnly() const { return lock_.Now() == OpenLock::State::kOther; }
  // Compares the project with its file; call it when the window gets the focus and after a screen.
  // Without edits a changed file is read again; with edits the user decides. A project that was
  // only read is this window's as soon as the other one has given it up. True when the session has
  // another state, may save again, or has been asked to save under another name.
  bool CheckDisk();
  // Whether another window has the present file at this moment.
  [[nodiscard]] bool InUse() { return lock_.HolderOf(session_.CurrentFileName()).has_value(); }
  // To be asked before a save to the present file. False if it must not be done.
  bool MaySave();
  // The same for a file of any name; false, after a message, for one that another window has.
  bool MaySaveTo(const std::string& path);
  // Saves under another name; set by the window.
  std::function<void()> OnSaveAs;
  // A line for the user; set by the window.
  std::function<void(const QString&)> OnNotice;

  // ---- After a crash ----------------------------------------------------------------------------

  // Offers what windows that no longer run have left. True when the session has one of them.
  bool OfferCopies();

 private:
  // The answer to a question about a changed file; kLater leaves everything as it is.
  enum class DiskChoice { kOverwrite, kSaveAs, kReload, kLater };

  [[nodiscard]] std::string bytesNow() const;  // of the project file that a save would write
  [[nodiscard]] std::string onDisk(const std::string& path) const;  // empty if it can't be read
  void keepCopy();
  bool putBack(const KeptProject& state);
  bool reload();
  bool takeFreedLock();
  bool offer(const RecoveryCopy& copy);
  DiskChoice askAboutChange();
  DiskChoice settleChange();
  void askAboutLock();
  void notice(const QString& text) const;

  Ostrand& session_;
  QWidget* window_;
  UndoHistory history_;
  Recovery recovery_;
  OpenLock lock_;
  std::size_t saved_ = 0;  // hash of what a save would have written when it was opened or saved
  bool asking_ = false;
};

}  // namespace ostrand::desktop
