// The search of a project, and two projects side by side.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextBlock>
#include <QTreeWidget>

#include "compare.h"
#include "desktop_session.h"
#include "pages/program_page.h"
#include "project_bytes.h"
#include "search.h"
#include "support/temp_folder.h"
#include "texts.h"

namespace ostrand {
namespace {

std::string example(const std::string& name) {
  return testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + name + ".VKG");
}

TEST(Search, ListsAsTheUserTypesAndJumps) {
  desktop::SearchWindow window(example("engine-test-cell"), nullptr);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClicks(window.Box(), "coolant");
  ASSERT_EQ(window.List()->count(), 3) << "two sensors and a condition that names them";
  EXPECT_TRUE(window.List()->item(1)->text().startsWith("CoolantOut"));
  QTest::keyClick(window.Box(), Qt::Key_Down);
  QTest::keyClick(window.Box(), Qt::Key_Return);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.result(), QDialog::Accepted);
  EXPECT_EQ(window.Chosen().control, "AliasName3");
  EXPECT_EQ(window.Chosen().steps.at(1).screen, "frmTempSetup");

  window.show();
  window.Box()->setText("nothing at all");
  EXPECT_EQ(window.List()->count(), 0);
  QTest::keyClick(window.Box(), Qt::Key_Return);
  EXPECT_TRUE(window.isVisible());
  window.Box()->setText("\u4e2d");
  EXPECT_EQ(window.List()->count(), 0);
}

class Compare : public testing::PageTest {
 protected:
  Compare() { session_.OpenNew(); }
  std::unique_ptr<desktop::CompareWindow> compare(const std::string& present,
                                                  const std::string& other) {
    auto window = std::make_unique<desktop::CompareWindow>(session_.control, present, other,
                                                           "other.VKG", open_, nullptr);
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    return window;
  }
};

TEST_F(Compare, SaysNothingOfAProjectAndItselfButWhatItCouldNotRead) {
  const auto window = compare(example("engine-test-cell"), example("engine-test-cell"));
  EXPECT_EQ(window->List()->topLevelItemCount(), 0);
  EXPECT_EQ(window->Present()->toPlainText(), window->Other()->toPlainText());
  for (int line = 1; line <= window->Present()->blockCount(); ++line) {
    EXPECT_EQ(window->Present()->MarkOf(line), desktop::LineMark::kNone);
  }
  EXPECT_FALSE(window->Summary()->text().contains("Not read"));
  const auto broken = compare(example("engine-test-cell"), "no project\r\nat all=1\r\n");
  EXPECT_TRUE(broken->Summary()->text().contains("Not read from other.VKG: "));
}

TEST_F(Compare, SaysWhatDiffersAndShowsItInTheProgram) {
  const auto store = desktop::StoreOf(example("engine-test-cell"));
  store->VoltBlock[2].Range = "5000 mV";
  store->VoltBlock[2].RangeNo = 0;
  const auto window = compare(desktop::BytesOfStore(*store), example("engine-test-cell"));
  ASSERT_EQ(window->List()->topLevelItemCount(), 1);
  EXPECT_EQ(InWords(window->Differences()[0]), "Voltage block 2: range 5000 mV, was 1000 mV");
  QTreeWidgetItem* item = window->List()->topLevelItem(0);
  EXPECT_EQ(item->text(2), "5000 mV");
  EXPECT_EQ(item->text(3), "1000 mV");
  window->show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  window->List()->setCurrentItem(item);
  QTest::keyClick(window->List(), Qt::Key_Return);
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_[0].control, "Range");

  int changed = 0;
  for (int line = 1; line <= window->Present()->blockCount(); ++line) {
    const auto text = [line](const desktop::ProgramText* side) {
      return side->document()->findBlockByNumber(line - 1).text();
    };
    if (window->Present()->MarkOf(line) == desktop::LineMark::kNone) continue;
    ++changed;
    EXPECT_TRUE(text(window->Present()).startsWith("Const VRNG2 = 0"));
    EXPECT_TRUE(text(window->Other()).startsWith("Const VRNG2 = 1"));
  }
  EXPECT_EQ(changed, 1);
}

TEST_F(Compare, HoldsBothProgramsWithEqualLinesBesideEachOther) {
  const auto window = compare(example("engine-test-cell"), example("vehicle-test"));
  const auto lineOf = [](const desktop::ProgramText* side, int line) {
    return side->document()->findBlockByNumber(line - 1).text();
  };
  int equal = 0;
  ASSERT_EQ(window->Present()->blockCount(), window->Other()->blockCount());
  for (int line = 1; line <= window->Present()->blockCount(); ++line) {
    const QString one = lineOf(window->Present(), line);
    const QString other = lineOf(window->Other(), line);
    const bool marked = window->Present()->MarkOf(line) != desktop::LineMark::kNone ||
                        window->Other()->MarkOf(line) != desktop::LineMark::kNone;
    const bool isMoment = one.contains(" written:");
    const bool isAdded = one.isEmpty() || other.isEmpty();
    EXPECT_TRUE(marked ? isAdded || one != other : isMoment || one == other) << line;
    equal += marked ? 0 : 1;
  }
  EXPECT_GT(equal, 20);
}

}  // namespace
}  // namespace ostrand
