#include "work_keeper.h"

#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "model/new_store.h"
#include "platform/surroundings.h"
#include "project_bytes.h"
#include "session/user_action.h"
#include "text/codepage.h"
#include "text/unified_diff.h"
#include "text_window.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Asks until a button other than `differences` is pressed, which shows `text` instead. Returns the
// index of the button; the last one is also Escape.
std::size_t ask(QWidget* window, const QString& title, const QString& question,
                const std::vector<QString>& captions, std::size_t differences,
                const QString& text) {
  for (;;) {
    QMessageBox box(window);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    box.setIcon(QMessageBox::Question);
    std::vector<QAbstractButton*> buttons;
    buttons.reserve(captions.size());
    for (const QString& caption : captions) {
      buttons.push_back(box.addButton(caption, QMessageBox::ActionRole));
    }
    auto* last = qobject_cast<QPushButton*>(buttons.back());
    box.setDefaultButton(last);
    box.setEscapeButton(last);
    box.exec();
    const auto pressed = std::find(buttons.begin(), buttons.end(), box.clickedButton());
    const auto at = static_cast<std::size_t>(pressed - buttons.begin());
    if (at != differences) return std::min(at, captions.size() - 1);
    ShowText(window, title, text);
  }
}

QString differencesOf(const QString& name, std::string_view before, const QString& otherName,
                      std::string_view after) {
  const std::string text = UnifiedDiff(name.toStdString(), Utf8FromWindows1252(before),
                                       otherName.toStdString(), Utf8FromWindows1252(after));
  return QString::fromStdString(text).remove(u'\r');
}

QString timeText(const QDateTime& time) { return QLocale().toString(time, QLocale::ShortFormat); }

// "anna on lab-pc, since 12:30"
QString describe(const Holder& other) {
  return QStringLiteral("%1 on %2, since %3").arg(other.user, other.host, timeText(other.since));
}

}  // namespace

WorkKeeper::WorkKeeper(Ostrand& session, QWidget* window, const QString& recoveryFolder)
    : session_(session), window_(window), recovery_(recoveryFolder) {}

void WorkKeeper::notice(const QString& text) const {
  if (OnNotice) OnNotice(text);
}

// ---- Edits --------------------------------------------------------------------------------------

std::string WorkKeeper::bytesNow() const { return BytesToSave(session_, session_.Store()); }

bool WorkKeeper::HasEdits() const { return std::hash<std::string>()(bytesNow()) != saved_; }

void WorkKeeper::Opened() {
  saved_ = std::hash<std::string>()(bytesNow());
  recovery_.Remove();
  if (session_.CurrentFileName().empty()) return lock_.Release();
  if (lock_.Take(session_.CurrentFileName()) == OpenLock::State::kOther) askAboutLock();
}

void WorkKeeper::Saved() {
  session_.OverwriteChanged(false);
  Opened();
}

void WorkKeeper::Ended() {
  recovery_.Remove();
  lock_.Release();
}

void WorkKeeper::keepCopy() {
  const std::string bytes = bytesNow();
  if (std::hash<std::string>()(bytes) == saved_) return recovery_.Remove();
  if (recovery_.Keep(session_.Origin(), bytes)) return;
  notice(QStringLiteral("No recovery copy could be kept: ") + recovery_.WhyNot());
}

// ---- Undo ---------------------------------------------------------------------------------------

KeptProject WorkKeeper::Now() const {
  KeptProject kept{NewStore(), session_.Origin(), saved_};
  *kept.store = session_.Store();
  // The texts of the main window enter the project when it is saved.
  kept.store->Gen.Operator = session_.txtOper();
  kept.store->Gen.IDNumber = session_.txtIDNum();
  return kept;
}

void WorkKeeper::Record(const QString& action, KeptProject before) {
  const bool otherFile = before.origin.path != session_.CurrentFileName();
  if (!otherFile && BytesOfStore(*before.store) == bytesNow()) return;
  history_.Add(action.toStdString(), std::move(before));
  keepCopy();
}

bool WorkKeeper::putBack(const KeptProject& state) {
  const bool otherFile = state.origin.path != session_.CurrentFileName();
  if (!session_.PutBack(*state.store, state.origin)) return false;
  if (otherFile) saved_ = state.saved;
  if (otherFile && lock_.Take(session_.CurrentFileName()) == OpenLock::State::kOther) {
    askAboutLock();
  }
  keepCopy();
  return true;
}

bool WorkKeeper::Undo() {
  if (history_.UndoName().empty() || session_.Busy()) return false;
  return putBack(history_.Undo(Now()));
}

bool WorkKeeper::Redo() {
  if (history_.RedoName().empty() || session_.Busy()) return false;
  return putBack(history_.Redo(Now()));
}

// ---- Other users --------------------------------------------------------------------------------

std::string WorkKeeper::onDisk(const std::string& path) const {
  const auto bytes = session_.Around().files.Read(path);
  return bytes ? bytes.Value() : std::string();
}

void WorkKeeper::askAboutLock() {
  const QString file = FromSystem(session_.CurrentFileName());
  const std::size_t answer = ask(
      window_, QStringLiteral("PROJECT IN USE"),
      QStringLiteral("%1\nis open in another window: %2.\n\nTake it over only if that window is "
                     "not used any more.")
          .arg(file, describe(lock_.Other())),
      {QStringLiteral("&Take over"), QStringLiteral("&Read only")}, 2, {});
  if (answer == 0) lock_.Take(session_.CurrentFileName(), true);
}

WorkKeeper::DiskChoice WorkKeeper::askAboutChange() {
  constexpr std::size_t kDifferences = 2;
  const std::string path = session_.CurrentFileName();
  const std::size_t answer = ask(
      window_, QStringLiteral("PROJECT CHANGED"),
      QStringLiteral("%1\nwas changed by another program since it was read here, and there are "
                     "unsaved edits here.\n\nOverwrite: the next save replaces what the other "
                     "program wrote.\nReload: the edits made here are lost; Undo brings them back.")
          .arg(FromSystem(path)),
      {QStringLiteral("&Overwrite"), QStringLiteral("Save &as..."),
       QStringLiteral("Show &differences"), QStringLiteral("&Reload"), QStringLiteral("&Later")},
      kDifferences,
      differencesOf(QStringLiteral("file"), onDisk(path), QStringLiteral("edited here"),
                    bytesNow()));
  // By the buttons; differences are never the last word.
  constexpr std::array kChoices = {DiskChoice::kOverwrite, DiskChoice::kSaveAs, DiskChoice::kLater,
                                   DiskChoice::kReload, DiskChoice::kLater};
  return kChoices[answer];
}

// The session then has another state or another name, except after Overwrite and Later.
WorkKeeper::DiskChoice WorkKeeper::settleChange() {
  const DiskChoice choice = askAboutChange();
  switch (choice) {
    case DiskChoice::kOverwrite:
      session_.OverwriteChanged(true);
      break;
    case DiskChoice::kSaveAs:
      if (OnSaveAs) OnSaveAs();
      break;
    case DiskChoice::kReload:
      reload();
      break;
    case DiskChoice::kLater:
      break;
  }
  return choice;
}

bool WorkKeeper::reload() {
  KeptProject before = Now();
  const std::string path = session_.CurrentFileName();  // OpenFile clears the session's
  bool cancelled = true;
  session_.OpenFile(path, cancelled);
  if (cancelled) return false;
  Opened();
  Record(QStringLiteral("Reload"), std::move(before));
  return true;
}

// Takes the lock if the other window has given it up; returns whether it did.
bool WorkKeeper::takeFreedLock() {
  if (lock_.Check() != OpenLock::State::kOther) return false;
  if (lock_.Take(session_.CurrentFileName()) == OpenLock::State::kOther) return false;
  notice(QStringLiteral("No longer read only: the other window has given up the project."));
  return true;
}

bool WorkKeeper::CheckDisk() {
  if (asking_ || session_.Busy() || session_.Working()) return false;
  const bool freed = takeFreedLock();
  if (ReadOnly()) {
    notice(QStringLiteral("Read only: the project is open in another window, %1")
               .arg(describe(lock_.Other())));
  }
  if (!session_.ChangedOnDisk()) return freed;
  const Marked asking(asking_);
  if (HasEdits()) {
    const DiskChoice choice = settleChange();
    return freed || choice == DiskChoice::kSaveAs || choice == DiskChoice::kReload;
  }
  if (!reload()) return freed;
  notice(QStringLiteral("%1 was changed by another program and has been read again.")
             .arg(FromSystem(session_.CurrentFileName())));
  return true;
}

bool WorkKeeper::MaySave() {
  if (!MaySaveTo(session_.CurrentFileName())) return false;
  return !session_.ChangedOnDisk() || settleChange() == DiskChoice::kOverwrite;
}

bool WorkKeeper::MaySaveTo(const std::string& path) {
  const std::optional<Holder> other = lock_.HolderOf(path);
  if (!other) return true;
  QMessageBox::information(
      window_, QStringLiteral("READ ONLY"),
      QStringLiteral("%1\nis open in another window: %2.\n\nSave it under another name.")
          .arg(FromSystem(path), describe(*other)));
  return false;
}

// ---- After a crash ------------------------------------------------------------------------------

bool WorkKeeper::offer(const RecoveryCopy& copy) {
  if (!copy.damage.isEmpty()) {
    const std::size_t answer =
        ask(window_, QStringLiteral("RECOVERY COPY"),
            QStringLiteral("A recovery copy cannot be read: %1\n%2").arg(copy.damage, copy.file),
            {QStringLiteral("&Delete"), QStringLiteral("&Keep")}, 2, {});
    if (answer == 0) Recovery::Discard(copy);
    return false;
  }
  const QString project = FromSystem(copy.origin.path);
  const std::size_t answer = ask(
      window_, QStringLiteral("UNSAVED WORK"),
      QStringLiteral("The program ended before this project was saved:\n%1\n\nIts state of %2 is "
                     "kept in\n%3\n\nRecover opens it here; the project file stays as it is "
                     "until you save.")
          .arg(project, timeText(copy.kept), copy.file),
      {QStringLiteral("&Recover"), QStringLiteral("Show &differences"), QStringLiteral("&Delete"),
       QStringLiteral("&Later")},
      1,
      differencesOf(QStringLiteral("project file"), onDisk(copy.origin.path),
                    QStringLiteral("recovered"), copy.bytes));
  if (answer == 2) Recovery::Discard(copy);
  if (answer != 0) return false;
  if (!session_.PutBack(*StoreOf(copy.bytes), copy.origin)) return false;
  history_.Clear();
  saved_ = 0;
  if (lock_.Take(session_.CurrentFileName()) == OpenLock::State::kOther) askAboutLock();
  keepCopy();
  // Its place is taken by the copy of this window.
  if (recovery_.WhyNot().isEmpty()) Recovery::Discard(copy);
  return true;
}

bool WorkKeeper::OfferCopies() {
  for (const RecoveryCopy& copy : recovery_.LeftBehind()) {
    if (offer(copy)) return true;
  }
  return false;
}

}  // namespace ostrand::desktop
