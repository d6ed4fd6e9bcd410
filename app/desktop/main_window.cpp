#include "main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QSplitter>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTimer>

#include "colors.h"
#include "compare.h"
#include "contrast.h"
#include "guided_screens.h"
#include "icons.h"
#include "model/new_store.h"
#include "model/warnings.h"
#include "pages/channels_page.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "pages/tables_page.h"
#include "pages/wiring_page.h"
#include "project_bytes.h"
#include "projectfile/genfile.h"
#include "projectfile/read_report.h"
#include "report/print_panel.h"
#include "report/report.h"
#include "screens/setup_screens.h"
#include "search.h"
#include "session/settings.h"
#include "session/user_action.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Of a new project, until it is saved.
const std::string kNewName = "NoName";

// The folder of a new project; the user's own if the one of the settings does not exist.
std::string folderOfNew(const std::string& set) {
  if (QDir(QString::fromStdString(set)).exists()) return set;
  return PathOf(QStandardPaths::writableLocation(QStandardPaths::HomeLocation)) + "/";
}

QString absolute(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).absoluteFilePath();
}

// The one file that is dropped; empty for anything else.
QString fileOf(const QMimeData* dropped) {
  const QList<QUrl> urls = dropped->urls();
  return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

}  // namespace

// ---- Projects -----------------------------------------------------------------------------------

bool MainWindow::Open(const std::string& path) {
  if (!MayAct()) return false;
  bool cancelled = true;
  act(QStringLiteral("Open"), [&] { session_.OpenFile(path, cancelled); });
  if (cancelled) {
    const InterruptedProject& found = session_.Interrupted();
    if (!found.left.empty()) {
      notice_->Show(QStringLiteral("An earlier save was interrupted: %1 holds the project. To "
                                   "restore it: ostrand recover %2")
                        .arg(FromSystem(found.left), FromSystem(found.project)));
    }
    settings_.recent.removeAll(absolute(path));
    showRecent();
    return false;
  }
  named_ = true;
  settings_.AddRecent(absolute(session_.CurrentFileName()));
  showRecent();
  projectReplaced();
  noteWhatWasRead();
  return true;
}

bool MainWindow::OpenInstead(const std::string& path) {
  return MayAct() && mayLeaveProject() && Open(path);
}

void MainWindow::StartNew() {
  if (!MayAct()) return;
  bool started = false;
  act(QStringLiteral("New"), [&] {
    session_.RegistryApp(session_.RegistryApp());  // loads the user's folder
    started = session_.NewProject(folderOfNew(session_.GenFilePath()) + kNewName + ".VKG");
  });
  if (!started) return;
  named_ = false;
  projectReplaced();
}

void MainWindow::projectReplaced() {
  notice_->Show({});
  keeper_.Opened();
  takeSaved();
  showAll();
}

void MainWindow::takeSaved() {
  savedBytes_ = BytesToSave(session_, store_);
  if (program_ != nullptr) program_->Saved(savedBytes_);
}

void MainWindow::projectSaved() {
  named_ = true;
  keeper_.Saved();
  takeSaved();
  settings_.AddRecent(absolute(session_.CurrentFileName()));
  showRecent();
  QString text = QStringLiteral("Saved %1.").arg(FromSystem(session_.CurrentFileName()));
  if (!session_.OldFileKept().empty()) {
    text += QStringLiteral(" The old file is kept as %1.").arg(FromSystem(session_.OldFileKept()));
  }
  notice_->Show(text);
}

void MainWindow::noteWhatWasRead() {
  const int skipped = session_.SkippedLines().skipped;
  if (skipped == 0) return;
  notice_->Show(
      QStringLiteral("%1 of the file could not be read, and the next save drops %2; it "
                     "keeps the old file. See the page Checks.")
          .arg(skipped == 1 ? QStringLiteral("A line") : QStringLiteral("%1 lines").arg(skipped),
               skipped == 1 ? QStringLiteral("it") : QStringLiteral("them")));
}

bool MainWindow::hasFile() const {
  return named_ && around_.files.Exists(session_.CurrentFileName());
}

// The session asks about its own edits. It does not know of texts in the two boxes, has no name for
// a new project, and would save over one that another window has.
bool MainWindow::mayLeaveProject() {
  if (!HasEdits()) return true;
  if (hasFile() && session_.DirtyFlag() && !keeper_.InUse()) {
    bool cancelled = true;
    act({}, [&] { session_.AskToSaveAll(false, cancelled); });
    if (!cancelled && !session_.DirtyFlag()) projectSaved();
    return !cancelled;
  }
  using platform::Answer;
  const std::string& name = hasFile() ? session_.CurrentFileName() : session_.BaseName();
  forms_.Beep();
  const Answer answer =
      around_.forms.ShowBox({.title = "QUIT GENERATOR",
                             .text = "Do you want to save changes made to " + name + "?",
                             .icon = platform::Icon::kQuestion,
                             .buttons = platform::Buttons::kYesNoCancel});
  if (answer != Answer::kYes) return answer == Answer::kNo;
  save();
  return !HasEdits();
}

void MainWindow::askOpen() { OpenInstead({}); }

void MainWindow::askNew() {
  if (MayAct() && mayLeaveProject()) StartNew();
}

// ---- What the user does -------------------------------------------------------------------------

bool MainWindow::MayAct() const {
  return ready_ && !acting_ && !screenOpen_ && !session_.Busy() && !session_.Working();
}

void MainWindow::act(const QString& name, const std::function<void()>& action) {
  if (!MayAct()) return;
  KeptProject before = keeper_.Now();
  processes_.Begin();
  cancelled_ = false;
  namedNow_ = false;
  Finally(
      [&] {
        const Marked acting(acting_);
        showCommands();
        action();
      },
      [&] {
        const QString block = screens_.Block();
        if (!name.isEmpty()) keeper_.Record(block.isEmpty() ? name : block, std::move(before));
        if (namedNow_ && session_.Saved()) projectSaved();
        showAll();
      });
  checkDisk();
}

// ---- Print and export ---------------------------------------------------------------------------

void MainWindow::askPrint() {
  act({}, [this] {
    session_.PrintSelect();
    Finally(
        [this] {
          PrintPanel panel(this);
          const PrintPanel::Choice choice = panel.Ask();
          if (choice == PrintPanel::Choice::kPrint) print(panel.Options());
          if (choice != PrintPanel::Choice::kExport) return;
          const QString path = QFileDialog::getSaveFileName(
              this, QStringLiteral("Export"),
              PathText(session_.GenFilePath() + session_.BaseName() + ".pdf"),
              QStringLiteral("Report (*.pdf);;Wiring (*.svg);;Wiring (*.png);;"
                             "Columns of the tables (*.csv)"));
          if (!path.isEmpty()) exportTo(path, panel.Options());
        },
        [this] { session_.CancelPrint(); });
  });
}

void MainWindow::print(const ReportOptions& options) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageLayout(ReportLayout(options));
  printer.setDocName(FromSystem(session_.BaseName()));
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  const bool printed = DrawReport(printer, session_, store_, options);
  notice_->Show(printed ? QStringLiteral("Printed.")
                        : QStringLiteral("Not printed: the printer could not be used."));
}

void MainWindow::exportTo(const QString& path, const ReportOptions& options) {
  const std::optional<std::string> bytes = ExportOf(path, session_, store_, options);
  if (!bytes) {
    return notice_->Show(
        QStringLiteral("Not written: the name of the file must end in .pdf, "
                       ".svg, .png or .csv."));
  }
  const Result<> written = platform::WriteWhole(around_.files, PathOf(path), *bytes);
  notice_->Show(written ? QStringLiteral("Written: %1").arg(path)
                        : QStringLiteral("Not written. %1").arg(FromSystem(written.ErrorText())));
}

void MainWindow::undo() {
  if (MayAct() && keeper_.Undo()) statePutBack();
}

void MainWindow::redo() {
  if (MayAct() && keeper_.Redo()) statePutBack();
}

void MainWindow::statePutBack() {
  named_ = session_.BaseName() != kNewName;
  showAll();
}

// Not within an action: its end checks again.
void MainWindow::checkDisk() {
  if (!MayAct()) return;
  if (keeper_.CheckDisk()) return showAll();
  showTitle();  // another window may have taken the project over
}

bool MainWindow::OfferUnsavedWork() {
  if (!MayAct() || !keeper_.OfferCopies()) return false;
  statePutBack();
  return true;
}

void MainWindow::click(int button) {
  if (button == kSaveAndSendButton) return saveAndSend();
  const QString caption = PlainCaption(CaptionOf(button));
  act(button < kSaveAndSendButton ? caption : QString(), [&] { session_.Click(button); });
}

void MainWindow::clickWidget(int button) {
  click(button);
  QPushButton* widget = ButtonOf(button);
  if (button != kSaveAndSendButton && widget->isEnabled()) widget->setFocus(Qt::OtherFocusReason);
}

void MainWindow::Go(const ScreenPlace& place) {
  if (!MayAct() || place.steps.empty()) return;
  const int button = ButtonOfScreen(place.steps.front().screen);
  if (button >= 0 && !session_.MainButtons().Enabled(button)) {
    forms_.Beep();
    return forms_.SetHelpLine(WhyDisabled(button));
  }
  const QPointer<QWidget> before = QApplication::focusWidget();
  act(button >= 0 ? PlainCaption(CaptionOf(button)) : QString(),
      [&] { screens_.Guide(place, [&] { OpenFirstScreen(session_, place); }); });
  if (before != nullptr) before->setFocus(Qt::OtherFocusReason);
}

void MainWindow::search() {
  SearchWindow window(BytesToSave(session_, store_), this);
  if (window.exec() == QDialog::Accepted) Go(window.Chosen());
}

void MainWindow::askCompare() {
  const std::optional<std::string> path =
      around_.forms.AskOpen({.title = "Compare with",
                             .filter = "(*.VKG)|*.VKG|(All Files)|*.*",
                             .defaultExtension = "VKG",
                             .initialFolder = session_.GenFilePath(),
                             .fileName = {}});
  if (!path) return;
  const auto bytes = ORVUS_GENFILE::ReadProjectFile(around_.files, *path);
  if (!bytes || !bytes.Value()) {
    around_.forms.ShowBox(
        {.title = "Compare with",
         .text = bytes ? *path + ": No such file" : std::string(bytes.ErrorText()),
         .icon = platform::Icon::kExclamation});
    return;
  }
  auto* window = new CompareWindow(
      session_, BytesToSave(session_, store_), *bytes.Value(),
      QFileInfo(FromSystem(*path)).fileName(), [this](const ScreenPlace& place) { Go(place); },
      this);
  window->show();
}

// To the present file, without the dialog.
void MainWindow::save() {
  if (hasFile()) {
    if (!keeper_.MaySave()) return showAll();
    forms_.SaveAs(session_.CurrentFileName());
  }
  Finally([&] { click(kSaveButton); }, [&] { forms_.SaveAs({}); });
}

void MainWindow::testCompile() {
  act({}, [&] {
    Settings& settings = session_.UserSettings();
    const i32 mask = settings.WarningMessageMask();
    settings.WarningMessageMask(mask | kShowCompileResult);
    Finally([&] { session_.RunPreCompile(); }, [&] { settings.WarningMessageMask(mask); });
    if (!session_.CompileSkipped().empty()) notice_->Show(FromSystem(session_.CompileSkipped()));
  });
}

void MainWindow::saveAndSend() {
  const std::optional<ServerAddress> address = ServerOf(settings_.server);
  if (!address) return askServer();
  if (hasFile() && !keeper_.MaySave()) return showAll();
  act({}, [&] {
    const QString name = settings_.server;
    notice_->ShowProgress(QStringLiteral("Connecting to %1...").arg(name),
                          [this] { cancelled_ = true; });
    auto server = ServerLink::Connect(*address, [this] { return cancelled_; });
    notice_->EndProgress();
    if (!server) {
      forms_.Beep();
      return notice_->Show(QStringLiteral("Not saved and not sent. No connection: %1.")
                               .arg(FromSystem(server.ErrorText())));
    }
    ServerLink& link = *server.Value();
    runs_ = QStringLiteral("Connected to %1. ").arg(name);
    notice_->Show(runs_);
    session_.HostApp("Harrier");
    session_.SocketControl(&link);
    session_.isSocketConnected(true);
    Finally([&] { session_.Click(kSaveAndSendButton); },
            [&] {
              session_.isSocketConnected(false);
              session_.SocketControl(nullptr);
              session_.HostApp("");
              runs_.clear();
            });
    if (namedNow_ && session_.Saved()) projectSaved();
    namedNow_ = false;
    const QString saved = notice_->Text();
    notice_->Show(link.Sent() ? QStringLiteral("Compiled, saved and sent to %1.").arg(name)
                              : saved + QStringLiteral(" Not sent: ") + whyNotSent(link));
  });
}

QString MainWindow::whyNotSent(const ServerLink& server) {
  if (!server.Failure().empty()) return FromSystem(server.Failure());
  if (processes_.Cancelled()) return QStringLiteral("the test compile was cancelled.");
  if (!session_.CompileSkipped().empty()) return FromSystem(session_.CompileSkipped());
  if (processes_.Started() == 0) {
    return QStringLiteral("there was no test compile. See the page Checks.");
  }
  if (session_.CompileFailed()) return QStringLiteral("the program does not compile.");
  if (!session_.ProgramFaults().empty()) return FromProject(session_.ProgramFaults().front());
  return QStringLiteral("the project was not saved.");
}

void MainWindow::takeServer(const QString& address) {
  settings_.server = address;
  const bool usable = ServerOf(address).has_value();
  session_.isHarrierRunning(usable);
  session_.SetSaveDownload(usable);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!ready_) ended_ = true;  // nothing was opened yet
  if (ended_) return;
  event->ignore();
  if (ScreenWindow* screen = OpenScreen()) return screen->activateWindow();
  if (!MayAct()) {
    forms_.Beep();
    return forms_.SetHelpLine("Wait until the save or compile ends.");
  }
  if (!mayLeaveProject()) return;
  rememberWindow();
  session_.ForgetEdits();  // decided about
  i16 cancelled = kFalse;
  session_.CloseSession(false, cancelled);
  if (ended_) keeper_.Ended();
  event->setAccepted(ended_);
}

// ---- What the session reports -------------------------------------------------------------------

void MainWindow::NewFile(const std::string&) {
  namedNow_ = true;
  if (ready_) showTitle();
}

void MainWindow::ButtonsChanged() {
  if (ready_) showCommands();
}

void MainWindow::SummaryDrawn() {
  if (ready_ && pages_->currentIndex() == kSummaryPage) summary_->Show(session_.SummaryBox());
}

void MainWindow::ColorsChanged() {
  if (!ready_) return;
  takeColors();
  showPage();
}

void MainWindow::takeColors() {
  const Appearance& colors = session_.Colors();
  const QPalette usual = QApplication::palette();
  const auto paint = [&](QWidget* widget, i32 back, i32 text, QPalette::ColorRole backRole,
                         QPalette::ColorRole textRole) {
    QPalette palette = usual;
    palette.setColor(backRole, ColorOf(back, usual));
    palette.setColor(textRole, Readable(ColorOf(text, usual), palette.color(backRole)));
    widget->setPalette(palette);
  };
  constexpr i32 kUsualText = static_cast<i32>(0x80000012U);
  paint(centralWidget(), colors.FormBack, kUsualText, QPalette::Window, QPalette::WindowText);
  centralWidget()->setAutoFillBackground(true);
  paint(panels_, colors.PanelBack, colors.PanelText, QPalette::Window, QPalette::WindowText);
  panels_->setAutoFillBackground(true);
  paint(summary_, colors.SummaryBack, colors.SummaryText, QPalette::Base, QPalette::Text);
  for (QLineEdit* box : {operator_, number_}) paintBox(box);
}

// A box with the focus has the colour of the highlight.
void MainWindow::paintBox(QLineEdit* box) {
  QPalette palette = QApplication::palette();
  if (box->hasFocus()) {
    palette.setColor(QPalette::Base, ColorOf(session_.Colors().Highlight, palette));
    palette.setColor(QPalette::Text,
                     Readable(palette.color(QPalette::Text), palette.color(QPalette::Base)));
  }
  box->setPalette(palette);
}

void MainWindow::programsChanged() {
  if (processes_.Running()) {
    notice_->ShowProgress(runs_ + QStringLiteral("The test compile is running..."),
                          [this] { processes_.Cancel(); });
  } else {
    notice_->Show(runs_);
  }
}

// While a screen is open the pages show the project as it was before.
void MainWindow::screenOpen(bool open) {
  screenOpen_ = open;
  if (open) {
    before_ = NewStore();
    *before_ = store_;
  } else {
    before_.reset();
  }
  operator_->setReadOnly(open);
  number_->setReadOnly(open);
  if (ready_) showCommands();
}

// ---- What is shown ------------------------------------------------------------------------------

void MainWindow::showAll() {
  if (!ready_) return;
  operator_->setText(FromProject(session_.txtOper()));
  number_->setText(FromProject(session_.txtIDNum()));
  showEdited();
  showCommands();
  for (const ButtonFace& face : ButtonFaces()) {
    panels_->Button(face.button)->Count(InUse(store_, face.button));
  }
  tree_->Show(store_);
  showPage();
}

void MainWindow::showEdited() {
  edited_ = keeper_.HasEdits();
  showTitle();
}

void MainWindow::showTitle() {
  const QString readOnly = keeper_.ReadOnly() ? QStringLiteral(" (read only)") : QString();
  setWindowTitle(FromSystem(session_.BaseName()) + QStringLiteral("[*]") + readOnly +
                 QStringLiteral(" - Ostrand"));
  setWindowModified(edited_);
}

void MainWindow::showCommands() {
  const bool may = MayAct();
  const QString why = screenOpen_ ? QStringLiteral("Close the screen that is open first.")
                                  : QStringLiteral("Wait until the current action ends.");
  const auto enabled = [&](int button) {
    return may && (button < 0 || session_.MainButtons().Enabled(button));
  };
  for (const ButtonFace& face : ButtonFaces()) {
    panels_->Button(face.button)
        ->State(enabled(face.button), may ? QString::fromLatin1(WhyDisabled(face.button)) : why);
  }
  for (const Command& command : commands_) command.action->setEnabled(enabled(command.button));
  const auto step = [may](QAction* action, const QString& verb, const QString& name) {
    action->setText(name.isEmpty() ? verb : verb + u' ' + name);
    action->setEnabled(may && !name.isEmpty());
  };
  step(undo_, QStringLiteral("&Undo"), keeper_.UndoName());
  step(redo_, QStringLiteral("&Redo"), keeper_.RedoName());
}

const ProjectStore& MainWindow::shownStore() const {
  return before_ == nullptr ? store_ : *before_;
}

void MainWindow::showPage() {
  const int page = pages_->currentIndex();
  makePage(page);
  if (page == kSummaryPage) summary_->Show(session_.SummaryBox());
  if (page == kWiringPage) wiring_->Show(session_, shownStore());
  if (page == kChannelsPage) channels_->Show(session_, shownStore());
  if (page == kProgramPage) program_->Show(session_, shownStore());
  if (page == kTablesPage) tables_->Show();
  if (page == kChecksPage) checks_->Show(session_, before_ == nullptr ? store_ : *before_);
}

void MainWindow::rememberWindow() {
  settings_.geometry = saveGeometry();
  settings_.split = split_->saveState();
  settings_.page = pages_->currentIndex();
  const Result<> kept = SaveDesktopSettings(around_.settings, settings_);
  if (!kept) notice_->Show(FromSystem(kept.ErrorText()));
}

// ---- The keyboard and the pointer ---------------------------------------------------------------

void MainWindow::pointAt(const MainButton& button) {
  session_.PointAt(button.Face().button);
  if (!button.isEnabled()) {
    forms_.SetHelpLine(PathOf(button.accessibleDescription().replace(u'\n', u' ')));
  }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  const bool focused = event->type() == QEvent::FocusIn;
  auto* box =
      watched == operator_ || watched == number_ ? static_cast<QLineEdit*>(watched) : nullptr;
  if (focused || event->type() == QEvent::Enter) {
    if (const auto* button = dynamic_cast<MainButton*>(watched)) pointAt(*button);
  }
  if (focused && box != nullptr) {
    session_.SetFocus(box == operator_ ? Focus::kOper : Focus::kIDNum);
    QMetaObject::invokeMethod(box, &QLineEdit::selectAll, Qt::QueuedConnection);
  }
  if (box != nullptr && (focused || event->type() == QEvent::FocusOut)) paintBox(box);
  if (event->type() == QEvent::KeyPress && box != nullptr) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    QWidget* below =
        box == operator_ ? static_cast<QWidget*>(number_) : ButtonOf(kConfigurationButton);
    if (key == Qt::Key_Down || key == Qt::Key_Up) {
      (key == Qt::Key_Down ? below : operator_)->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QMainWindow::keyPressEvent(event);
  }
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColorsChanged();  // of the user's desktop
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
    QTimer::singleShot(0, this, [this] { checkDisk(); });
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (MayAct() && !fileOf(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::string path = PathOf(fileOf(event->mimeData()));
  if (path.empty()) return;
  event->acceptProposedAction();
  // The program that the file comes from waits for the end of the drop.
  QTimer::singleShot(0, this, [this, path] { OpenInstead(path); });
}

}  // namespace ostrand::desktop
