// The window of the program.
#include "main_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <csignal>

#include "contrast.h"
#include "documents/rich_text.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "platform/posix/posix_filesystem.h"
#include "recovery.h"
#include "report/print_panel.h"
#include "report/report.h"
#include "support/temp_folder.h"
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
TEST_F(Main, HasTheCommandsOfTheGuideEachWithItsOwnKey) {
  const QString guide =
      QString::fromStdString(testing::ReadDisk(OSTRAND_SOURCE_DIR "/docs/desktop.md")).simplified();
  static const QRegularExpression named("\\*\\*([^*]+)\\*\\*(?: \\((Ctrl[^)]*|F[0-9]+)\\))?");
  QSet<QString> taken;  // no two commands have the same key, or letter of a menu
  for (const QAction* action : window_.findChildren<QAction*>()) {
    const auto* menu = qobject_cast<const QMenu*>(action->parent());
    const qsizetype at = action->text().indexOf('&');
    QStringList names = {action->shortcut().toString()};
    if (menu != nullptr && at >= 0) names += menu->title() + action->text()[at + 1].toUpper();
    for (const QString& name : names) {
      EXPECT_TRUE(name.isEmpty() || !taken.contains(name)) << name.toStdString();
      taken.insert(name);
    }
  }
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

TEST_F(Main, LeadsFromABlockInTheTreeToItsLinesAndBackAndMarksThem) {
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
  for (int row = 1; !line().startsWith("Const VRNG2"); ++row) text->GoTo(row);
  EXPECT_EQ(window_.Tree()->Selected(), (ProgramBlock{'V', 2}));
  EXPECT_TRUE(window_.Tree()->currentItem()->text(0).startsWith("Block 2: "));
  EXPECT_TRUE(line().startsWith("Const VRNG2")) << "the cursor stays where the user has set it";
  const int at = text->Line();
  EXPECT_EQ(text->MarkOf(at), desktop::LineMark::kNone);
  store_->VoltBlock[2].RangeNo = 7;
  window_.Pages()->setCurrentIndex(0);
  window_.Pages()->setCurrentIndex(3);
  EXPECT_EQ(text->MarkOf(at), desktop::LineMark::kChanged);
  ASSERT_TRUE(window_.Open(kProject));
  EXPECT_EQ(text->MarkOf(at), desktop::LineMark::kNone);
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
  EXPECT_TRUE(window_.close()) << "asks only for edits";
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
    QTest::keyClick(program, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(program, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), program->toPlainText());
    EXPECT_TRUE(screen.isVisible());
  });
  EXPECT_TRUE(window_.ButtonOf(kVoltageButton)->hasFocus()) << "where it was";
  EXPECT_EQ(enabled(), usual);
  EXPECT_FALSE(window_.OperatorBox()->isReadOnly());
}

TEST_F(Main, MovesBetweenItsBoxesAndPaintsTheOneWithTheFocus) {
  ASSERT_TRUE(window_.Open(kProject));
  const auto backOf = [](const QLineEdit* box) { return box->palette().color(QPalette::Base); };
  const QColor usual = QApplication::palette().color(QPalette::Base);
  window_.OperatorBox()->setFocus();
  QTest::keyClick(window_.OperatorBox(), Qt::Key_Down);
  QTest::keyClick(window_.NumberBox(), Qt::Key_Up);
  EXPECT_EQ(backOf(window_.OperatorBox()), QColor(192, 192, 192));
  EXPECT_EQ(backOf(window_.NumberBox()), usual);
  QTest::keyClick(window_.OperatorBox(), Qt::Key_Down);
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

// The panel of File, Print and export; the session shows it and takes it away. Prints as a user
// without a printer does, into a file.
TEST_F(Main, PrintsAndExportsFromThePrintPanel) {
  ASSERT_TRUE(window_.Open(kProject));
  const testing::TempFolder folder;
  const std::string printed = folder / "printed.pdf";
  for (const bool prints : {false, true}) {
    int step = 0;
    const testing::EachTurn user([&] {
      QWidget* top = QApplication::activeModalWidget();
      auto* panel = dynamic_cast<desktop::PrintPanel*>(top);
      auto* dialog = qobject_cast<QDialog*>(top);
      if (panel != nullptr && step == 0) {
        ++step;
        EXPECT_TRUE(window_.Session().PrintPanelShown());
        EXPECT_FALSE(window_.MayAct());
        panel->Paper()->setCurrentText("Letter");
        for (const desktop::ReportPartRow& row : desktop::kReportParts)
          panel->Box(row.part)->click();
        EXPECT_FALSE(panel->PrintButton()->isEnabled() || panel->ExportButton()->isEnabled());
        panel->Box(desktop::ReportPart::kProgram)->click();
        (prints ? panel->PrintButton() : panel->ExportButton())->click();
      } else if (panel == nullptr && dialog != nullptr && step == 1) {
        ++step;
        auto* name = dialog->findChild<QLineEdit*>(prints ? "filename" : "fileNameEdit");
        if (name == nullptr) return dialog->reject();
        name->setText(prints ? QString::fromStdString(printed) : QStringLiteral("/report.csv"));
        dialog->accept();
      }
    });
    testing::Trigger(window_, "Print and export...");
    EXPECT_EQ(step, 2);
    EXPECT_EQ(window_.Notice()->Text(), prints ? "Printed." : "Written: /report.csv");
    EXPECT_FALSE(window_.Session().PrintPanelShown());
    EXPECT_TRUE(window_.MayAct());
    EXPECT_TRUE(window_.ButtonOf(kVoltageButton)->isEnabled());
    EXPECT_FALSE(window_.isWindowModified());
  }
  EXPECT_TRUE(files_.files["/report.csv"].starts_with("Table,Name,No.,"));
  const std::string pdf = testing::ReadDisk(printed);
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_NE(pdf.find("/MediaBox [0 0 612"), std::string::npos);
  desktop::ReportOptions options;
  options.paper = QPageSize::Letter;
  options.parts = {desktop::ReportPart::kProgram};
  const std::string exported = desktop::ReportPdf(window_.Session(), *store_, options);
  const auto pages = [](const std::string& file) { return file.substr(file.find("/Count "), 10); };
  EXPECT_EQ(pages(pdf), pages(exported));
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
  testing::Trigger(window_, "Undo Voltages");
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks);
  EXPECT_FALSE(window_.isWindowModified());
  testing::Trigger(window_, "Redo Voltages");
  EXPECT_EQ(store_->VoltBlock.BlockCount, blocks + 1);
  EXPECT_TRUE(window_.isWindowModified());
  {
    const testing::Answers answers({"No"});
    testing::Trigger(window_, "New");
    EXPECT_EQ(answers.titles, QStringList("QUIT GENERATOR"));
  }
  EXPECT_EQ(store_->VoltBlock.BlockCount, 0);
  EXPECT_FALSE(window_.isWindowModified());
  testing::Trigger(window_, "Undo New");
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
    const testing::Answers answers(row.edited ? QStringList(row.answer) : QStringList());
    QEvent activated(QEvent::ActivationChange);
    QApplication::sendEvent(&window_, &activated);
    QCoreApplication::processEvents();
    EXPECT_EQ(answers.titles, row.edited ? QStringList("PROJECT CHANGED") : QStringList());
    EXPECT_EQ(window_.OperatorBox()->text(), row.user);
    EXPECT_EQ(files_.files[kProject], changed) << "nothing is written";
  }
}

TEST(StartingWindow, ClosesBeforeItIsComplete) {
  testing::MemoryFileSystem files;
  testing::FixedClock clock;
  desktop::QtForms forms;
  const testing::TestSurroundings around{files, clock, forms, "/tmp/"};
  const std::unique_ptr<ProjectStore> store = NewStore();
  desktop::MainWindow window(*store, around.all, forms);
  window.OnComplete = [] { ADD_FAILURE() << "a closed window opens nothing"; };
  window.show();
  EXPECT_TRUE(window.close());
  QCoreApplication::processEvents();
  window.Complete();
  EXPECT_FALSE(window.MayAct());
}

// ---- After a crash ------------------------------------------------------------------------------

// A window on the project in the current folder, with its recovery copies beside it.
struct RealWindow {
  explicit RealWindow(const QString& folder)
      : project(desktop::PathOf(folder + "/house.VKG")),
        window(*store, around.all, forms, folder + "/recovery") {
    window.Complete();
  }

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
  for (const int dones : {1, 3}) {
    const QTemporaryDir folder;
    RealWindow next(folder.path());
    testing::WriteDisk(next.project, saved);
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

    const testing::Answers answers({"Recover"});
    EXPECT_TRUE(next.window.OfferUnsavedWork());
    EXPECT_EQ(answers.titles, QStringList("UNSAVED WORK"));
    EXPECT_EQ(next.store->VoltBlock.BlockCount, 4 + dones);
    EXPECT_TRUE(next.window.isWindowModified());
    EXPECT_EQ(next.window.windowTitle(), "house[*] - Ostrand");
    EXPECT_EQ(testing::ReadDisk(next.project), saved) << "the project is not replaced";
    EXPECT_EQ(desktop::Recovery(folder.filePath("recovery")).LeftBehind().size(), 0U);
  }
}

}  // namespace
}  // namespace ostrand
