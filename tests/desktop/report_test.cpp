// The report, and what is exported alone.
#include "report/report.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>

#include "desktop_session.h"
#include "documents/table_columns.h"
#include "project_bytes.h"
#include "report/report_pages.h"
#include "report/screen_listing.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "texts.h"

namespace ostrand {
namespace {

using desktop::ReportOptions;
using desktop::ReportPages;
using desktop::ReportPart;

// ---- The layout of pages ------------------------------------------------------------------------

constexpr QSizeF kPage(4000, 6000);

// The rows that a table of so many rows has on each page, after some lines on the first one.
std::vector<int> rowsByPage(std::size_t before, std::size_t rows) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  QPainter painter(&writer);
  ReportPages pages(kPage, {}, {});
  pages.DrawOn(writer, painter, 9);
  pages.Lines(std::vector<QString>(before, QStringLiteral("x")));
  std::vector<int> counts;
  pages.Heading(QStringLiteral("Heading"));
  const auto headed = static_cast<std::size_t>(pages.Pages());
  pages.Table({{QStringLiteral("Head"), 1}}, rows, [&](std::size_t, std::size_t) {
    counts.resize(static_cast<std::size_t>(pages.Pages()));
    ++counts.back();
    return QStringLiteral("y");
  });
  EXPECT_TRUE(counts.size() >= headed && counts[headed - 1] > 0) << "a heading alone";
  return counts;
}

TEST(ReportPages, NeverLeaveAFewRowsAlone) {
  for (std::size_t before = 0; before < 70; before += 17) {
    for (std::size_t rows = 1; rows < 130; rows += 3) {
      SCOPED_TRACE(::testing::Message() << before << ' ' << rows);
      const std::vector<int> counts = rowsByPage(before, rows);
      int sum = 0;
      for (const int count : counts) {
        EXPECT_TRUE(count == 0 || count >= std::min(6, static_cast<int>(rows))) << count;
        sum += count;
      }
      EXPECT_EQ(sum, static_cast<int>(rows));
    }
  }
}

TEST(ReportPages, CountAsManyPagesAsTheyDraw) {
  const auto compose = [](ReportPages& pages) {
    pages.BigTitle(QStringLiteral("Title"));
    for (int part = 0; part < 5; ++part) {
      pages.Part(QStringLiteral("Part %1").arg(part), part % 2 == 0);
      pages.Paragraph(QString(3000, u'w') + u'\n' + QStringLiteral("some words ").repeated(300));
      pages.Lines(std::vector<QString>(57, QString(200, u'z')));
      pages.Heading(QStringLiteral("Heading"));
      pages.Table({{{}, 1}, {{}, 1}}, 33, [](auto, auto) { return QStringLiteral("cell"); });
    }
  };
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  QPainter painter(&writer);
  ReportPages counted(kPage, {}, {});
  compose(counted);
  ReportPages drawn(kPage, {}, {});
  drawn.DrawOn(writer, painter, counted.Pages());
  compose(drawn);
  EXPECT_GT(counted.Pages(), 5);
  EXPECT_EQ(drawn.Pages(), counted.Pages());
  ASSERT_EQ(drawn.Parts().size(), 5U);
  for (std::size_t part = 0; part < 5; ++part) {
    EXPECT_EQ(drawn.Parts()[part].page, counted.Parts()[part].page);
  }
}

// ---- The whole report ---------------------------------------------------------------------------

class Report : public testing::PageTest {
 protected:
  Report() { open("engine-test-cell"); }
  std::string pdf(const ReportOptions& options = {}) {
    return desktop::ReportPdf(session_.control, store(), options);
  }
  static int pagesOf(const std::string& pdf) {
    const std::size_t at = pdf.find("/Count ");
    return at == std::string::npos ? 0 : std::stoi(pdf.substr(at + 7));
  }
};

TEST_F(Report, HasThePartsThatAreWanted) {
  const std::string before = session_.Text();
  const bool dirty = session_.control.DirtyFlag();
  const std::string whole = pdf();
  EXPECT_EQ(session_.Text(), before);
  EXPECT_EQ(session_.control.DirtyFlag(), dirty);
  EXPECT_NE(whole.find("/CreationDate (D:20030310140500"), std::string::npos);
  const int all = pagesOf(whole);
  EXPECT_GT(all, 10);
  int sum = 0;
  for (const desktop::ReportPartRow& row : desktop::kReportParts) {
    ReportOptions one;
    one.parts = {row.part};
    const int pages = pagesOf(pdf(one));
    EXPECT_GE(pages, 1) << row.word;
    sum += pages;
  }
  EXPECT_GE(sum, all);
  EXPECT_LE(sum, all + 2);
}

// ---- Settings -----------------------------------------------------------------------------------

TEST_F(Report, ListsEachBlockAsItsScreenShowsIt) {
  const auto listed = desktop::ScreenSettings(session_.control, store());
  QStringList titles;
  for (const desktop::ListedScreen& screen : listed) titles << screen.title;
  EXPECT_EQ(titles, QStringList({"Configuration", "Execution intervals", "Thermocouple block 1",
                                 "Thermocouple block 2", "Voltage block 1", "Voltage block 2",
                                 "Voltage block 3"}));
  const auto value = [](const desktop::ListedScreen& screen, const char* caption) {
    for (const desktop::ListedGroup& group : screen.groups) {
      for (const auto& fact : group.facts) {
        if (fact.first == QString::fromUtf8(caption)) return fact.second;
      }
    }
    return QStringLiteral("missing");
  };
  const VoltBlockData& block = store().VoltBlock[1];
  EXPECT_EQ(value(listed[4], "Sensors"), QString::number(block.Reps));
  EXPECT_EQ(value(listed[4], "Range"), desktop::FromProject(block.Range));
  EXPECT_EQ(value(listed[4], "Settling time (µs)"), QString::number(block.SettleTime));
  EXPECT_EQ(value(listed[2], "Open input detect"), "yes");
  EXPECT_EQ(value(listed[4], "Output table"), "missing") << "one table of six at a time";
  ASSERT_EQ(listed[4].tables.size(), 1U);
  const desktop::ListedTable& sensors = listed[4].tables[0];
  EXPECT_EQ(sensors.heads.mid(0, 3), QStringList({"FIELD NAME", "ALIAS", "UNITS"}));
  ASSERT_EQ(sensors.rows.size(), static_cast<std::size_t>(block.Reps));
  EXPECT_EQ(sensors.rows[1][0], "VBlk1(2)");
  EXPECT_EQ(sensors.rows[1][1], desktop::FromProject(block.Alias[2].AliasName));
}

TEST_F(Report, ListsBlocksOfRandomProjectsWithoutAChange) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(store(), seed);
    const std::string before = session_.Text();
    const auto listed = desktop::ScreenSettings(session_.control, store());
    const QStringList missing = desktop::BlocksWithoutScreen(store(), listed);
    int blocks = 2 + store().TempBlock.BlockCount + store().VoltBlock.BlockCount +
                 store().BridgeBlock.BlockCount + store().TK40MBlock.BlockCount;
    for (const PulseBlockGroup& group : store().PulseBlock) blocks += group.BlockCount;
    EXPECT_EQ(static_cast<int>(listed.size()) + missing.size(), blocks);
    for (const QString& block : missing) {
      const bool known = block.startsWith("Bridge block") || block.startsWith("Second slot") ||
                         store().Config.TK40MQty == 0;
      EXPECT_TRUE(known) << block.toStdString();
    }
    EXPECT_EQ(session_.Text(), before);
  }
}

// ---- Exports ------------------------------------------------------------------------------------

TEST_F(Report, ExportsByTheNameOfTheFile) {
  const auto exported = [this](const char* name) {
    return desktop::ExportOf(QString::fromLatin1(name), session_.control, store(), {});
  };
  EXPECT_FALSE(exported("a.txt"));
  EXPECT_FALSE(exported("pdf"));
  QImage png;
  ASSERT_TRUE(png.loadFromData(QByteArray::fromStdString(*exported("a.png"))));
  EXPECT_GT(png.height(), 2000);
  const QByteArray svg = QByteArray::fromStdString(*exported("a.svg"));
  EXPECT_TRUE(QSvgRenderer(svg).isValid());
  for (const char* word : {"OilTemp", "ExhBackPress", "SDI-12"}) {
    EXPECT_TRUE(svg.contains(word)) << word;
  }
}

TEST_F(Report, WritesTheColumnsOfTheTables) {
  store().VoltBlock[1].Alias[1].AliasName = "Oil,P";
  store().VoltBlock[1].Alias[2].AliasName = "3\"pipe";
  const std::string csv = *desktop::ExportOf("a.csv", session_.control, store(), {});
  const QStringList lines = QString::fromStdString(csv).split("\r\n");
  std::size_t columns = 0;
  for (int t = 1; t <= kTables; ++t) {
    if (store().Tables[t].TableOn != 0) columns += ColumnsOf(store(), t).size();
  }
  ASSERT_EQ(static_cast<std::size_t>(lines.size()), columns + 2);  // the heading, the last end
  EXPECT_EQ(lines[0],
            "Table,Name,No.,Resolution,Processing,Field,Alias,Units,Bytes,Columns,Source");
  EXPECT_EQ(lines[1], "1,EngFast,1,FP2,Sample,TBlk1(1),OilTemp,Deg_C,2,1,Thermocouple Block 1");
  EXPECT_FALSE(lines.filter("VBlk1(1),\"Oil,P\",").isEmpty());
  EXPECT_FALSE(lines.filter("VBlk1(2),\"3\"\"pipe\",").isEmpty());
}

}  // namespace
}  // namespace ostrand
