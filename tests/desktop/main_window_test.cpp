// The window of the program.
#include "main_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <QWheelEvent>
#include <csignal>

#include "contrast.h"
#include "documents/rich_text.h"
#include "model/new_store.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "platform/posix/posix_filesystem.h"
#include "recovery.h"
#include "report/print_panel.h"
#include "report/report.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "texts.h"
#include "window_session.h"

namespace ostrand {
namespace {

const std::string kProject = "/house.VKG";

class Main : public testing::WindowTest {
 protected:
  Main() {
    files_.files[kProject] = testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG");
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  // What happens in the window of the screen that a main button opens.
  void openBy(int button, const std::function<void(desktop::ScreenWindow&)>& act) {
    bool opened = false;
    QTimer::singleShot(0, &window_, [&] {
      desktop::ScreenWindow* screen = window_.OpenScreen();
      ASSERT_NE(screen, nullptr);
      opened = true;
      act(*screen);
      if (screen->isVisible()) screen->reject();
    });
    QTest::mouseClick(window_.ButtonOf(button), Qt::LeftButton);
    EXPECT_TRUE(opened);
  }
};

TEST_F(Main, ShowsAProject) {
  EXPECT_FALSE(window_.ButtonOf(kConfigurationButton)->isEnabled());
  ASSERT_TRUE(window_.Open(kProject));
  EXPECT_EQ(window_.windowTitle(), "house[*] - Ostrand");
  EXPECT_EQ(window_.OperatorBox()->text(), "H. Quist");
  for (int button = 0; button <= kLastButton; ++button) {
    const QPushButton* shown = window_.ButtonOf(button);
    if (shown == nullptr) continue;
    EXPECT_EQ(shown->isEnabled(), window_.Session().MainButtons().Enabled(button)) << button;
  }
  const auto* summary = window_.findChild<QTextEdit*>();
  QString all = desktop::FromProject(window_.Session().SummaryBox().Text());
  EXPECT_EQ(summary->toPlainText(), all.remove('\r'));
  EXPECT_EQ(window_.findChild<QPlainTextEdit*>(), nullptr) << "not seen yet";
  window_.Pages()->setCurrentIndex(3);
  EXPECT_TRUE(window_.findChild<QPlainTextEdit*>()->toPlainText().contains("BeginProg"));
  window_.Pages()->setCurrentIndex(5);
  EXPECT_GT(window_.Checks()->topLevelItemCount(), 0);
}

// "**File > Save** (Ctrl+S)" is a command of the menu File with that key.
TEST_F(Main, HasTheCommandsThatTheGuideNames) {
  const QString guide =
      QString::fromStdString(testing::ReadDisk(OSTRAND_SOURCE_DIR "/docs/desktop.md")).simplified();
  static const QRegularExpression named("\\*\\*([^*]+)\\*\\*(?: \\((Ctrl[^)]*|F[0-9]+)\\))?");
  int commands = 0;
  for (auto found = named.globalMatch(guide); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    const QStringList path = match.captured(1).split(" > ");
    if (path.size() == 1 && match.captured(2).isEmpty()) continue;
    ++commands;
    bool there = false;
    for (const QAction* action : window_.findChildren<QAction*>()) {
      const auto* menu = qobject_cast<const QMenu*>(action->parent());
      const QString text = action->text().remove('&').remove("...");
      const bool isNamed = text == path.last();
      const bool inMenu =
          path.size() == 1 || (menu != nullptr && menu->title().remove('&') == path.first());
      const bool hasKey =
          match.captured(2).isEmpty() || action->shortcut() == QKeySequence(match.captured(2));
      there = there || (isNamed && inMenu && hasKey);
    }
    EXPECT_TRUE(there) << match.captured(0).toStdString();
  }
  EXPECT_GT(commands, 7);
  EXPECT_EQ(window_.ButtonOf(kSaveAndSendButton)->text().indexOf("&D"), 12);
}

// From a page, by the search, and with a screen open already.
TEST_F(Main, GoesToTheFieldOfAFinding) {
  ASSERT_TRUE(window_.Open(kProject));
  store_->VoltBlock[2].Alias[1].AliasName = "HallRH";
  window_.Pages()->setCurrentIndex(5);
  bool came = false;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    desktop::ScreenWindow* screen = window_.OpenScreen();
    if (screen == nullptr || window_.IsGuiding()) return;
    const Control* focused = screen->Shown().Focused();
    came = came || (focused != nullptr && focused->Name() == "AliasName1" &&
                    screen->Shown().Name() == "frmFldName");
    if (came) window_.Go({{{"frmFlags"}}, {}});  // does nothing
    screen->reject();
  });
  timer.start(0);
  QTreeWidget* checks = window_.Checks();
  checks->setFocus();
  checks->setCurrentItem(checks->topLevelItem(0));
  QTest::keyClick(checks, Qt::Key_Return);
  EXPECT_TRUE(came);
  EXPECT_EQ(window_.OpenScreen(), nullptr);
}

TEST_F(Main, LeadsFromABlockInTheTreeToItsLinesAndBack) {
  ASSERT_TRUE(window_.Open(kProject));
  window_.Pages()->setCurrentIndex(3);
  auto* text = dynamic_cast<desktop::ProgramText*>(window_.findChild<QPlainTextEdit*>());
  ASSERT_NE(text, nullptr);
  window_.Pages()->setCurrentIndex(0);
  const auto line = [&] { return text->document()->findBlockByNumber(text->Line() - 1).text(); };
  const auto select = [&](const char* name) {
    const auto found = window_.Tree()->findItems(name, Qt::MatchContains | Qt::MatchRecursive);
    ASSERT_FALSE(found.isEmpty()) << name;
    window_.Tree()->setCurrentItem(found.last());
  };
  window_.Tree()->Select({'V', 2});
  QMenu menu;
  window_.Tree()->Offer(menu);
  ASSERT_EQ(menu.actions().size(), 2);
  menu.actions()[1]->trigger();
  EXPECT_EQ(window_.Pages()->currentIndex(), 3);
  EXPECT_TRUE(line().contains("VRNG2") || line().contains("VREP2")) << line().toStdString();
  select("HallRH");
  EXPECT_TRUE(line().startsWith("Const VRNG1")) << line().toStdString();
  for (int at = 1; at <= text->blockCount(); ++at) {
    text->GoTo(at);
    if (line().startsWith("Const VRNG2")) break;
  }
  EXPECT_EQ(window_.Tree()->Selected(), (ProgramBlock{'V', 2}));
  EXPECT_TRUE(window_.Tree()->currentItem()->text(0).startsWith("Block 2: "));
  EXPECT_TRUE(line().startsWith("Const VRNG2")) << "the cursor stays where the user has set it";
}

TEST_F(Main, MarksLinesOfTheProgramUntilTheProjectIsReadAgain) {
  ASSERT_TRUE(window_.Open(kProject));
  window_.Pages()->setCurrentIndex(3);
  const auto* text = dynamic_cast<desktop::ProgramText*>(window_.findChild<QPlainTextEdit*>());
  ASSERT_NE(text, nullptr);
  const auto marks = [&] {
    window_.Pages()->setCurrentIndex(0);
    window_.Pages()->setCurrentIndex(3);
    int count = 0;
    for (int line = 1; line <= text->blockCount(); ++line) {
      if (text->MarkOf(line) != desktop::LineMark::kNone) ++count;
    }
    return count;
  };
  EXPECT_EQ(marks(), 0);
  store_->VoltBlock[2].SettleTime = 350;
  EXPECT_EQ(marks(), 1);
  ASSERT_TRUE(window_.Open(kProject));
  EXPECT_EQ(marks(), 0);
}

TEST_F(Main, MarksOnlyWhatASaveWouldChange) {
  ASSERT_TRUE(window_.Open(kProject));
  EXPECT_FALSE(window_.isWindowModified());
  for (int page = 0; page < window_.Pages()->count(); ++page) {
    window_.Pages()->setCurrentIndex(page);
  }
  openBy(kVoltageButton, [](desktop::ScreenWindow& screen) { screen.reject(); });
  EXPECT_FALSE(window_.isWindowModified());
  openBy(kVoltageButton, [](desktop::ScreenWindow& screen) {
    QTest::mouseClick(screen.DoneButton(), Qt::LeftButton);
  });
  EXPECT_FALSE(window_.isWindowModified());
  window_.OperatorBox()->setFocus();
  QTest::keyClick(window_.OperatorBox(), Qt::Key_End);
  QTest::keyClick(window_.OperatorBox(), Qt::Key_X, {});
  EXPECT_TRUE(window_.isWindowModified());
  QTest::keyClick(window_.OperatorBox(), Qt::Key_Backspace);
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(Main, CanBeReadButNotUsedWhileAScreenIsOpen) {
  ASSERT_TRUE(window_.Open(kProject));
  const auto enabled = [&] {
    QStringList texts;
    for (const QAction* action : window_.findChildren<QAction*>()) {
      const bool inMenu = qobject_cast<QMenu*>(action->parent()) != nullptr;
      const bool isCommand = inMenu && action->isEnabled() && !action->shortcut().isEmpty();
      if (isCommand) texts.append(action->text().remove('&'));
    }
    texts.sort();
    return texts;
  };
  const QStringList usual = enabled();
  openBy(kVoltageButton, [&](desktop::ScreenWindow& screen) {
    EXPECT_EQ(enabled(),
              QStringList({"Channels", "Checks", "Copy from the page", "Larger text", "Program",
                           "Quit", "Smaller text", "Summary", "Tables", "User guide", "Wiring"}));
    EXPECT_FALSE(window_.ButtonOf(kSaveButton)->isEnabled());
    EXPECT_TRUE(window_.OperatorBox()->isReadOnly());
    EXPECT_FALSE(window_.close());
    EXPECT_TRUE(screen.isVisible());
    window_.Pages()->setCurrentIndex(3);
    auto* program = window_.findChild<QPlainTextEdit*>();
    EXPECT_TRUE(program->isEnabled());
    program->verticalScrollBar()->setValue(0);
    const QPoint center = program->viewport()->rect().center();
    QWheelEvent down(center, program->viewport()->mapToGlobal(center), {}, QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(program->viewport(), &down);
    EXPECT_GT(program->verticalScrollBar()->value(), 0);
    QTest::mouseDClick(program->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
    QTest::keyClick(program, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), program->textCursor().selectedText());
    EXPECT_NE(QApplication::clipboard()->text(), "");
    EXPECT_TRUE(screen.isVisible());
  });
  EXPECT_TRUE(window_.ButtonOf(kVoltageButton)->hasFocus()) << "where it was";
  EXPECT_EQ(enabled(), usual);
  EXPECT_FALSE(window_.OperatorBox()->isReadOnly());
}

TEST_F(Main, PaintsTheBoxWithTheFocusInTheColourOfTheHighlight) {
  ASSERT_TRUE(window_.Open(kProject));
  const auto backOf = [](const QLineEdit* box) { return box->palette().color(QPalette::Base); };
  const QColor usual = QApplication::palette().color(QPalette::Base);
  window_.OperatorBox()->setFocus();
  EXPECT_EQ(backOf(window_.OperatorBox()), QColor(192, 192, 192));
  EXPECT_EQ(backOf(window_.NumberBox()), usual);
  window_.NumberBox()->setFocus();
  EXPECT_EQ(backOf(window_.OperatorBox()), usual);
  ColorTable colors;
  window_.Session().GetSelectedColors(colors);
  colors.back()[1] = "64";  // of the highlight
  window_.Session().SetSelectedColors(colors);
  EXPECT_EQ(backOf(window_.NumberBox()), QColor(64, 64, 64));
  EXPECT_GE(
      desktop::Contrast(window_.NumberBox()->palette().color(QPalette::Text), QColor(64, 64, 64)),
      desktop::kMinContrast);
}

QAction* actionOf(const QWidget& window, const QString& text) {
  for (QAction* action : window.findChildren<QAction*>()) {
    if (action->text().remove('&') == text) return action;
  }
  ADD_FAILURE() << "no action " << text.toStdString();
  return nullptr;
}

// The panel of File, Print and export; the session shows it and takes it away.
TEST_F(Main, ExportsFromThePrintPanel) {
  ASSERT_TRUE(window_.Open(kProject));
  int step = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    QWidget* top = QApplication::activeModalWidget();
    if (auto* panel = dynamic_cast<desktop::PrintPanel*>(top); panel != nullptr && step == 0) {
      ++step;
      EXPECT_TRUE(window_.Session().PrintPanelShown());
      EXPECT_FALSE(window_.MayAct());
      panel->ExportButton()->click();
    } else if (auto* dialog = qobject_cast<QFileDialog*>(top); dialog != nullptr && step == 1) {
      ++step;
      dialog->findChild<QLineEdit*>()->setText(QStringLiteral("/report.csv"));
      static_cast<QDialog*>(dialog)->accept();
    }
  });
  timer.start(0);
  actionOf(window_, QStringLiteral("Print and export..."))->trigger();
  EXPECT_EQ(step, 2);
  EXPECT_EQ(window_.Notice()->Text(), "Written: /report.csv");
  EXPECT_TRUE(files_.files["/report.csv"].starts_with("Table,Name,No.,"));
  EXPECT_FALSE(window_.Session().PrintPanelShown());
  EXPECT_TRUE(window_.MayAct());
  EXPECT_TRUE(window_.ButtonOf(kVoltageButton)->isEnabled());
  EXPECT_FALSE(window_.isWindowModified());
}

// As a user without a printer does, into a file.
TEST_F(Main, PrintsFromThePrintPanel) {
  ASSERT_TRUE(window_.Open(kProject));
  const testing::TempFolder folder;
  const QString path = QString::fromStdString(folder / "printed.pdf");
  int step = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    QWidget* top = QApplication::activeModalWidget();
    if (auto* panel = dynamic_cast<desktop::PrintPanel*>(top); panel != nullptr && step == 0) {
      ++step;
      panel->Paper()->setCurrentText("Letter");
      panel->PrintButton()->click();
    } else if (auto* dialog = qobject_cast<QPrintDialog*>(top); dialog != nullptr && step == 1) {
      ++step;
      auto* name = dialog->findChild<QLineEdit*>("filename");
      if (name == nullptr) return dialog->reject();
      name->setText(path);
      dialog->accept();
    }
  });
  timer.start(0);
  actionOf(window_, QStringLiteral("Print and export..."))->trigger();
  ASSERT_EQ(step, 2);
  EXPECT_EQ(window_.Notice()->Text(), "Printed.");
  ASSERT_TRUE(QFile::exists(path));
  const std::string printed = testing::ReadDisk(path.toStdString());
  EXPECT_TRUE(printed.starts_with("%PDF-"));
  EXPECT_NE(printed.find("/MediaBox [0 0 612"), std::string::npos);
  desktop::ReportOptions options;
  options.paper = QPageSize::Letter;
  const std::string exported = desktop::ReportPdf(window_.Session(), *store_, options);
  const auto pages = [](const std::string& pdf) { return pdf.substr(pdf.find("/Count "), 10); };
  EXPECT_EQ(pages(printed), pages(exported));
  if (const char* kept = std::getenv("OSTRAND_KEEP_PRINT")) QFile::copy(path, kept);
}

// Presses a button of the next box with that title.
void answerNext(const QString& title, const QString& caption, bool& asked) {
  auto* timer = new QTimer;
  QObject::connect(timer, &QTimer::timeout, [=, &asked] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    timer->deleteLater();
    timer->stop();
    EXPECT_EQ(box->windowTitle(), title);
    asked = true;
    for (QAbstractButton* button : box->buttons()) {
      if (button->text().remove('&') == caption) return button->click();
    }
    ADD_FAILURE() << "no button " << caption.toStdString();
    box->reject();
  });
  timer->start(0);
}

// Adds a block and leaves by Done.
void addBlock(desktop::ScreenWindow& screen) {
  QTest::keyClick(screen.Find(*screen.Shown().Find("BlockCount"))->Stop(), Qt::Key_Up);
  QTest::mouseClick(screen.DoneButton(), Qt::LeftButton);
}

TEST_F(Main, UndoesAScreenByItsName) {
  ASSERT_TRUE(window_.Open(kProject));
  const int blocks = store_->VoltBlock.BlockCount;
  openBy(kVoltageButton, addBlock);
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks + 1);
  EXPECT_TRUE(window_.isWindowModified());
  actionOf(window_, "Undo Voltages")->trigger();
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks);
  EXPECT_FALSE(window_.isWindowModified());
  actionOf(window_, "Redo Voltages")->trigger();
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks + 1);
  EXPECT_TRUE(window_.isWindowModified());
  bool asked = false;
  answerNext("QUIT GENERATOR", "No", asked);
  actionOf(window_, "New")->trigger();
  EXPECT_TRUE(asked);
  EXPECT_EQ(store_->VoltBlock.BlockCount, 0);
  EXPECT_FALSE(window_.isWindowModified());
  actionOf(window_, "Undo New")->trigger();
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks + 1);
  EXPECT_EQ(window_.windowTitle(), "house[*] - Ostrand");
  EXPECT_TRUE(window_.isWindowModified());
}

TEST_F(Main, ReadsAFileAgainThatAnotherProgramHasChanged) {
  ASSERT_TRUE(window_.Open(kProject));
  const std::string before = files_.files[kProject];
  std::string changed = before;
  changed.replace(changed.find("H. Quist"), 8, "A. Other");
  struct Case {
    bool edited;
    const char* answer;  // none without edits
    const char* user;    // afterwards
  };
  for (const Case& row : {Case{false, "", "A. Other"}, Case{true, "Reload", "A. Other"},
                          Case{true, "Overwrite", "H. Quist"}, Case{true, "Later", "H. Quist"}}) {
    SCOPED_TRACE(row.answer);
    files_.files[kProject] = before;
    window_.Session().ForgetEdits();
    ASSERT_TRUE(window_.Open(kProject));
    if (row.edited) openBy(kVoltageButton, addBlock);
    files_.files[kProject] = changed;
    bool asked = false;
    if (row.edited) answerNext("PROJECT CHANGED", row.answer, asked);
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(&window_, &activated);
    QCoreApplication::processEvents();
    EXPECT_EQ(asked, row.edited);
    EXPECT_EQ(window_.OperatorBox()->text(), row.user);
    EXPECT_EQ(files_.files[kProject], changed) << "nothing is written";
  }
}

TEST_F(Main, AsksOnlyForEditsBeforeItCloses) {
  ASSERT_TRUE(window_.Open(kProject));
  openBy(kFlagsButton, [](desktop::ScreenWindow& screen) { screen.reject(); });
  EXPECT_TRUE(window_.close());
}

TEST_F(Main, StaysUsableAfterAProjectThatIsNotThere) {
  ASSERT_TRUE(window_.Open(kProject));
  bool asked = false;
  QTimer::singleShot(0, &window_, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    asked = box->windowTitle() == "FILE NOT FOUND";
    QTest::keyClick(box, Qt::Key_Return);
  });
  EXPECT_FALSE(window_.Open("/missing.VKG"));
  EXPECT_TRUE(asked);
  EXPECT_TRUE(window_.ButtonOf(kVoltageButton)->isEnabled());
}

TEST_F(Main, MovesBetweenItsBoxesByTheArrows) {
  ASSERT_TRUE(window_.Open(kProject));
  window_.OperatorBox()->setFocus();
  QTest::keyClick(window_.OperatorBox(), Qt::Key_Down);
  EXPECT_TRUE(window_.NumberBox()->hasFocus());
  QTest::keyClick(window_.NumberBox(), Qt::Key_Up);
  EXPECT_TRUE(window_.OperatorBox()->hasFocus());
  QTest::keyClick(window_.OperatorBox(), Qt::Key_Down);
  QTest::keyClick(window_.NumberBox(), Qt::Key_Down);
  EXPECT_TRUE(window_.ButtonOf(kConfigurationButton)->hasFocus());
}

TEST_F(Main, HasADifferentKeyForEachCommand) {
  QSet<QString> keys;
  for (const QAction* action : window_.findChildren<QAction*>()) {
    const QString key = action->shortcut().toString();
    EXPECT_FALSE(!key.isEmpty() && keys.contains(key)) << key.toStdString();
    keys.insert(key);
  }
}

TEST_F(Main, FollowsADarkDesktop) {
  ASSERT_TRUE(window_.Open(kProject));
  const QPalette usual = QApplication::palette();
  QApplication::setPalette(QPalette(QColor(40, 40, 40)));
  QCoreApplication::processEvents();
  const auto* summary = window_.findChild<desktop::SummaryPage*>();
  EXPECT_LT(summary->palette().color(QPalette::Base).lightness(), 100);
  QApplication::setPalette(usual);
}

// As a user with these settings starts it.
TEST(StartedWindow, TakesTheSettingsOfItsUser) {
  const QTemporaryDir folder;
  testing::MemoryFileSystem files;
  testing::FixedClock clock;
  desktop::QtForms forms;
  testing::TestSurroundings around{files, clock, forms, "/tmp/"};
  const std::string path = desktop::PathOf(folder.path()) + "/";
  around.settings.sections["QUILLON\\QUILLON"] = {{"GenPath", path}};
  around.settings.sections["ostrand-desktop\\Window"] = {{"TextSize", "200"}};
  const std::unique_ptr<ProjectStore> store = NewStore();
  desktop::MainWindow window(*store, around.all, forms);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  window.StartNew();
  EXPECT_EQ(window.Session().GenFilePath(), path);
  for (const desktop::ButtonFace& face : desktop::ButtonFaces()) {
    const QPushButton* button = window.ButtonOf(face.button);
    EXPECT_GE(button->width(), button->sizeHint().width()) << face.caption;
    EXPECT_GE(button->height(), button->sizeHint().height()) << face.caption;
  }
}

// ---- After a crash ------------------------------------------------------------------------------

// A window on the project in the current folder, with its recovery copies beside it.
struct RealWindow {
  explicit RealWindow(const QString& folder)
      : project(desktop::PathOf(folder + "/house.VKG")),
        window(*store, around.all, forms, folder + "/recovery") {}

  std::string project;
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  desktop::QtForms forms;
  testing::TestSurroundings around{files, clock, forms, "/tmp/"};
  std::unique_ptr<ProjectStore> store = NewStore();
  desktop::MainWindow window;
};

// Adds blocks, one with each Done, and is killed after the last one.
TEST(KilledWindow, DISABLED_AddsBlocks) {
  const QString path = qEnvironmentVariable("OSTRAND_KILLED_FOLDER");
  RealWindow real(path);
  real.window.show();
  ASSERT_TRUE(real.window.Open(real.project));
  for (int n = qEnvironmentVariableIntValue("OSTRAND_KILLED_AFTER"); n > 0; --n) {
    QTimer::singleShot(0, [&] { addBlock(*real.window.OpenScreen()); });
    QTest::mouseClick(real.window.ButtonOf(kVoltageButton), Qt::LeftButton);
  }
  std::raise(SIGKILL);
}

TEST(KilledWindow, OffersItsWorkAtTheNextStart) {
  const std::string saved = testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/building-climate.VKG");
  for (int dones = 1; dones <= 3; ++dones) {
    const QTemporaryDir folder;
    RealWindow next(folder.path());
    QFile file(QString::fromStdString(next.project));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(saved));
    file.close();
    QProcess killed;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("OSTRAND_KILLED_FOLDER", folder.path());
    environment.insert("OSTRAND_KILLED_AFTER", QString::number(dones));
    killed.setProcessEnvironment(environment);
    killed.start(
        QCoreApplication::applicationFilePath(),
        {"--gtest_filter=KilledWindow.DISABLED_AddsBlocks", "--gtest_also_run_disabled_tests"});
    ASSERT_TRUE(killed.waitForFinished(-1));
    ASSERT_EQ(killed.exitStatus(), QProcess::CrashExit) << killed.readAll().toStdString();

    bool asked = false;
    answerNext("UNSAVED WORK", "Recover", asked);
    EXPECT_TRUE(next.window.OfferUnsavedWork());
    EXPECT_TRUE(asked);
    EXPECT_EQ(next.store->VoltBlock.BlockCount, 4 + dones);
    EXPECT_TRUE(next.window.isWindowModified());
    EXPECT_EQ(next.window.windowTitle(), "house[*] - Ostrand");
    EXPECT_EQ(testing::ReadDisk(next.project), saved) << "the project is not replaced";
    EXPECT_EQ(desktop::Recovery(folder.filePath("recovery")).LeftBehind().size(), 0U);
  }
}

}  // namespace
}  // namespace ostrand
