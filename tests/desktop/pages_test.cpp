// The pages of the main window with the program, the tables and the findings.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTextBlock>
#include <ctime>

#include "desktop_session.h"
#include "documents/table_description.h"
#include "pages/checks_page.h"
#include "pages/program_page.h"
#include "pages/tables_page.h"
#include "search.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "text/letters.h"
#include "text/strings.h"
#include "texts.h"

namespace ostrand {
namespace {

using desktop::LineMark;

class Pages : public testing::PageTest {
 protected:
  Pages() { open("engine-test-cell"); }
};

// ---- Program ------------------------------------------------------------------------------------

class ProgramPage : public Pages {
 protected:
  ProgramPage() {
    page_.Saved(desktop::BytesToSave(session_.control, store()));
    page_.Show(session_.control, store());
    show(page_);
  }
  [[nodiscard]] QString line(int number) const {
    return page_.Text()->document()->findBlockByNumber(number - 1).text();
  }
  int lineOf(const QString& text) const {
    for (int number = 1; number <= page_.Text()->blockCount(); ++number) {
      if (line(number).startsWith(text)) return number;
    }
    ADD_FAILURE() << text.toStdString();
    return 0;
  }
  // The program as the page shows it is the one that a save would write.
  void expectShown() {
    const std::string program = desktop::ProgramOf(session_.control, store()).text;
    EXPECT_EQ(page_.Text()->toPlainText(), QString::fromStdString(program).remove('\r'));
  }

  desktop::ProgramView page_{open_, nullptr};
};

TEST_F(ProgramPage, MarksWhatChangedSinceTheLastSave) {
  expectShown();
  for (int number = 1; number <= page_.Text()->blockCount(); ++number) {
    ASSERT_EQ(page_.Text()->MarkOf(number), LineMark::kNone) << number;
  }
  store().VoltBlock[2].SettleTime = 350;
  store().TempBlock[1].Alias[8].AliasName = "Sump";
  page_.Show(session_.control, store());
  expectShown();
  EXPECT_EQ(page_.Text()->MarkOf(lineOf("Const VSETL2")), LineMark::kChanged);
  EXPECT_EQ(page_.Text()->MarkOf(lineOf("Alias TBlk1(8)")), LineMark::kChanged);
  EXPECT_EQ(page_.Text()->MarkOf(lineOf("Units Sump")), LineMark::kAdded);
  EXPECT_EQ(page_.Text()->MarkOf(lineOf("Const VSETL1")), LineMark::kNone);

  const int before = lineOf("Const VSETL3");
  store().VoltBlock.BlockCount = 2;
  page_.Show(session_.control, store());
  expectShown();
  EXPECT_FALSE(page_.Text()->toPlainText().contains("VSETL3"));
  EXPECT_EQ(page_.Text()->MarkOf(before - 3), LineMark::kRemoved) << line(before - 3).toStdString();

  page_.Saved(desktop::BytesToSave(session_.control, store()));
  page_.Show(session_.control, store());
  EXPECT_EQ(page_.Text()->MarkOf(lineOf("Const VSETL2")), LineMark::kNone);
}

TEST_F(ProgramPage, StaysWhereItIsWhileTheProgramChanges) {
  page_.Text()->GoTo(150);
  const int top = page_.Text()->verticalScrollBar()->value();
  const QString seen = line(top + 1);
  store().VoltBlock[1].SettleTime = 350;
  store().TempBlock[1].Alias[8].AliasName = "Sump";  // one line more
  page_.Show(session_.control, store());
  EXPECT_EQ(page_.Text()->verticalScrollBar()->value(), top + 1);
  EXPECT_EQ(line(top + 2), seen);
  EXPECT_EQ(page_.Text()->Line(), 151);
}

TEST_F(ProgramPage, LeadsFromASectionAndABlockToItsLinesAndBack) {
  page_.Sections()->setCurrentRow(5);
  EXPECT_TRUE(line(page_.Text()->Line()).contains("Volt Block 1"));
  std::vector<ProgramBlock> reported;
  page_.OnBlock = [&](ProgramBlock block) { reported.push_back(block); };
  page_.ShowBlock({'V', 2});
  EXPECT_EQ(page_.Text()->Line(), lineOf("Const VRNG2"));
  EXPECT_TRUE(reported.empty()) << "the block was asked for";
  for (const int number : page_.Text()->Highlighted()) {
    EXPECT_TRUE(line(number).contains("Block2") || line(number).contains("VBlk2") ||
                line(number).contains("Tq"))
        << line(number).toStdString();
  }
  page_.Text()->GoTo(lineOf("Const TREP1"));
  ASSERT_EQ(reported.size(), 1U);
  EXPECT_EQ(reported[0], (ProgramBlock{'T', 1}));
  const QRect cursor = page_.Text()->cursorRect();
  QTest::mouseDClick(page_.Text()->viewport(), Qt::LeftButton, {}, cursor.center());
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_[0].steps.at(1).screen, "frmTempSetup");
  EXPECT_EQ(opened_[0].steps.at(1).which, "1");
}

TEST_F(ProgramPage, FindsTextRoundTheEnd) {
  QTest::keyClick(page_.Text(), Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(page_.FindBox()->isVisible());
  EXPECT_TRUE(page_.FindBox()->hasFocus());
  QTest::keyClicks(page_.FindBox(), "beginprog");
  for (int round = 0; round < 2; ++round) {
    QTest::keyClick(page_.FindBox(), Qt::Key_Return);
    EXPECT_TRUE(line(page_.Text()->Line()).startsWith("BeginProg"));
  }
  page_.FindBox()->setText("VREP");
  QTest::keyClick(page_.FindBox(), Qt::Key_Return, Qt::ShiftModifier);
  const int last = page_.Text()->Line();
  EXPECT_LT(last, lineOf("BeginProg"));
  QTest::keyClick(page_.FindBox(), Qt::Key_Escape);
  EXPECT_FALSE(page_.FindBox()->isVisible());
}

TEST_F(ProgramPage, MarksWhatACompilerWouldRefuse) {
  EXPECT_FALSE(page_.Faults()->isVisible());
  store().Flags[2].FlagInclude = kTrue;
  store().Flags[2].State[1].FlagVar = "Lost";
  store().Flags[2].State[1].FlagExpression = "Lost > 3";
  store().Flags[2].State[2].FlagVar = "Flag(1)";
  store().Flags[2].State[2].FlagExpression = "Flag(1) = True";
  page_.Show(session_.control, store());
  ASSERT_EQ(page_.Faults()->count(), 1);
  EXPECT_TRUE(page_.Faults()->isVisible());
  page_.Faults()->setCurrentRow(0);
  EXPECT_TRUE(line(page_.Text()->Line()).contains("Lost"))
      << line(page_.Text()->Line()).toStdString();
}

// ---- Tables -------------------------------------------------------------------------------------

using TablesPage = Pages;

TEST_F(TablesPage, SortsByNumbersAndCopiesAsATable) {
  desktop::TablesPage page([this]() -> const ProjectStore& { return store(); }, nullptr);
  page.Show();
  show(page);
  EXPECT_EQ(page.Tables()->item(0, 6)->text(), "0 Days, 0 Hours, 10 Mins, 0.00000 Secs");
  EXPECT_EQ(page.Tables()->item(0, 4)->text(), "66");
  page.Columns()->sortByColumn(desktop::ColumnsModel::kNumber, Qt::DescendingOrder);
  page.Columns()->setFocus();
  QTest::keyClick(page.Columns(), Qt::Key_C, Qt::ControlModifier);
  const QStringList lines = QApplication::clipboard()->text().split('\n');
  ASSERT_EQ(lines.size(), 24);
  EXPECT_EQ(lines[0], "No.\tResolution\tProcessing\tField\tAlias\tUnits\tBytes\tColumns\tSource");
  EXPECT_EQ(lines[1], "22\tIEEE4\tSample\tVBlk3(2)\tKnockRear\tg\t4\t1\tVoltage Block 3");
  EXPECT_EQ(lines[22], "1\tFP2\tSample\tTBlk1(1)\tOilTemp\tDeg_C\t2\t1\tThermocouple Block 1");
  page.Columns()->selectRow(2);
  page.Columns()->selectionModel()->select(page.Columns()->model()->index(4, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
  const QStringList two = page.AsText().split('\n');
  ASSERT_EQ(two.size(), 4);
  EXPECT_TRUE(two[1].startsWith("20\t"));
  EXPECT_TRUE(two[2].startsWith("18\t"));
}

// ---- Checks -------------------------------------------------------------------------------------

class ChecksPage : public Pages {
 protected:
  std::vector<int> programLines_;
  desktop::FindingsPage page_{open_, [this](int line) { programLines_.push_back(line); }, nullptr};
};

TEST_F(ChecksPage, ListsWhatPreventsSavingFirstAndLeadsToTheField) {
  store().Tables[2].OutInt = 7;  // milliseconds; the scan has 100
  store().Tables[2].OutIntUnits = ORVUS_TBLTIME_MSECS;
  store().VoltBlock[2].Alias[3].AliasName = store().TempBlock[1].Alias[1].AliasName;
  store().Config.MonitorPower[2] = store().Config.EnablePowerOff = kTrue;
  store().Config.PowerOffMeasVar = "Lost";
  store().Config.PowerOffLine = "If Lost > 3 Then";
  store().Config.MonitorPower[5] = kTrue;  // its flag controls a table
  store().Config.StatusMonCount = 1;
  store().Config.Status[1][4] = "1 T";
  page_.Show(session_.control, store());
  show(page_);
  using desktop::Severity;
  const auto& lines = page_.Lines();
  ASSERT_EQ(page_.topLevelItemCount(), static_cast<int>(lines.size()));
  EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end(), [](const auto& left, const auto& right) {
    return left.severity < right.severity;
  }));
  EXPECT_EQ(page_.topLevelItem(0)->text(0), "Prevents saving");
  EXPECT_EQ(page_.topLevelItem(0)->text(2), "Voltage block 2, sensor 3: alias");
  EXPECT_EQ(page_.Findings(), lines.size());
  page_.resize(520, 600);  // so that texts are wrapped
  QApplication::processEvents();
  for (int row = 0; row < page_.topLevelItemCount(); ++row) {
    const QString text = page_.topLevelItem(row)->text(1);
    const QRect needed = page_.fontMetrics().boundingRect(QRect(0, 0, page_.columnWidth(1), 9999),
                                                          Qt::TextWordWrap, text);
    const int height = page_.visualItemRect(page_.topLevelItem(row)).height();
    EXPECT_GE(height, needed.height()) << text.toStdString();
  }

  const QRect first = page_.visualItemRect(page_.topLevelItem(0));
  QTest::mouseClick(page_.viewport(), Qt::LeftButton, {}, first.center());
  QTest::mouseDClick(page_.viewport(), Qt::LeftButton, {}, first.center());
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_[0].steps.back().screen, "frmFldName");
  EXPECT_EQ(opened_[0].control, "AliasName3");
  page_.setCurrentItem(page_.topLevelItem(page_.topLevelItemCount() - 1));
  QTest::keyClick(&page_, Qt::Key_Return);
  ASSERT_EQ(programLines_.size(), 1U) << "a fault of the program leads to its line";
  EXPECT_EQ(programLines_[0], lines.back().programLine);
}

TEST_F(ChecksPage, SaysThatAllIsFine) {
  ORVUS_GENFILE::ReadProjectText(store(), "");
  session_.OpenNew();
  page_.Show(session_.control, store());
  ASSERT_EQ(page_.topLevelItemCount(), 1);
  EXPECT_EQ(page_.topLevelItem(0)->text(1), "All checks passed.");
  EXPECT_EQ(page_.Findings(), 0U);
  QTest::keyClick(&page_, Qt::Key_Return);
  EXPECT_TRUE(opened_.empty());
}

}  // namespace
}  // namespace ostrand
