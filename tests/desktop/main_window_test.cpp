// The window of the program.
#include "main_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include "documents/rich_text.h"
#include "model/new_store.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "texts.h"

namespace ostrand {
namespace {

const std::string kProject = "/house.VKG";

class Main : public ::testing::Test {
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

  testing::MemoryFileSystem files_;
  testing::FixedClock clock_;
  desktop::QtForms forms_;
  testing::TestSurroundings around_{files_, clock_, forms_, "/tmp/"};
  std::unique_ptr<ProjectStore> store_ = NewStore();
  desktop::MainWindow window_{*store_, around_.all, forms_};
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
  EXPECT_EQ(window_.findChild<QPlainTextEdit*>()->toPlainText(), "") << "made, but not seen";
  window_.Pages()->setCurrentIndex(1);
  EXPECT_TRUE(window_.findChild<QPlainTextEdit*>()->toPlainText().contains("BeginProg"));
  window_.Pages()->setCurrentIndex(3);
  EXPECT_GT(window_.Checks()->topLevelItemCount(), 0);
}

// From a page, by the search, and with a screen open already.
TEST_F(Main, GoesToTheFieldOfAFinding) {
  ASSERT_TRUE(window_.Open(kProject));
  store_->VoltBlock[2].Alias[1].AliasName = "HallRH";
  window_.Pages()->setCurrentIndex(3);
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

TEST_F(Main, MarksLinesOfTheProgramUntilTheProjectIsReadAgain) {
  ASSERT_TRUE(window_.Open(kProject));
  const auto* page = dynamic_cast<desktop::ProgramView*>(window_.Pages()->widget(1));
  ASSERT_NE(page, nullptr);
  const auto marks = [&] {
    window_.Pages()->setCurrentIndex(0);
    window_.Pages()->setCurrentIndex(1);
    int count = 0;
    for (int line = 1; line <= page->Text()->blockCount(); ++line) {
      if (page->Text()->MarkOf(line) != desktop::LineMark::kNone) ++count;
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
  const auto enabledActions = [&] {
    const QList<QAction*> all = window_.findChildren<QAction*>();
    return std::count_if(all.begin(), all.end(), [](const QAction* action) {
      const bool inMenu = qobject_cast<QMenu*>(action->parent()) != nullptr;
      return inMenu && action->isEnabled() && !action->shortcut().isEmpty();
    });
  };
  const auto usual = enabledActions();
  openBy(kVoltageButton, [&](desktop::ScreenWindow& screen) {
    EXPECT_EQ(enabledActions(), 0);
    EXPECT_FALSE(window_.ButtonOf(kSaveButton)->isEnabled());
    EXPECT_TRUE(window_.OperatorBox()->isReadOnly());
    EXPECT_FALSE(window_.close());
    EXPECT_TRUE(screen.isVisible());
    window_.Pages()->setCurrentIndex(1);
    EXPECT_TRUE(window_.findChild<QPlainTextEdit*>()->isEnabled());
  });
  EXPECT_EQ(enabledActions(), usual);
  EXPECT_FALSE(window_.OperatorBox()->isReadOnly());
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

}  // namespace
}  // namespace ostrand
