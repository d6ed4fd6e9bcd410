#include "report/report.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>

#include "documents/rich_text.h"
#include "documents/table_columns.h"
#include "drawings/channels_scene.h"
#include "drawings/scene_style.h"
#include "drawings/wiring_scene.h"
#include "model/output_table.h"
#include "pages/checks_page.h"
#include "platform/moment_text.h"
#include "platform/surroundings.h"
#include "project_bytes.h"
#include "report/report_pages.h"
#include "report/screen_listing.h"
#include "text/mask.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kMargin = 15;  // of the paper, in millimetres

std::string paddedNumber(int number, int digits) {
  return FormatNumber(number, std::string(static_cast<std::size_t>(digits), '0'));
}

// 2026-07-01 14:30
QString momentText(const platform::Moment& moment) {
  return FromProject(paddedNumber(moment.year, 4) + "-" + paddedNumber(moment.month, 2) + "-" +
                     paddedNumber(moment.day, 2) + " " + paddedNumber(moment.hour, 2) + ":" +
                     paddedNumber(moment.minute, 2));
}

std::vector<QString> linesOf(const QString& text) {
  const QStringList lines = QString(text).remove(u'\r').split(u'\n');
  std::vector<QString> result(lines.begin(), lines.end());
  while (!result.empty() && result.back().trimmed().isEmpty()) result.pop_back();
  return result;
}

// All that the report says, made once; it is laid out twice.
class Report {
 public:
  Report(Ostrand& session, ProjectStore& store, const ReportOptions& options)
      : session_(session), store_(store), options_(options), made_(session.Around().clock.Now()) {
    if (has(ReportPart::kTitle)) checks_ = CheckLinesOf(session, store);
    const ProgramPreview preview = ProgramOf(session, store);
    if (has(ReportPart::kProgram)) program_ = numbered(QString::fromStdString(preview.text));
    if (has(ReportPart::kSettings)) {
      settings_ = ScreenSettings(session, store);
      for (ListedScreen& items : ItemSettings(store)) settings_.push_back(std::move(items));
    }
    if (has(ReportPart::kTables)) {
      for (int t = 1; t <= kTables; ++t) {
        if (store.Tables[t].TableOn != 0) columns_[t] = ColumnsOf(store, t);
      }
    }
    const Wiring wiring = WiringOf(store, preview.channels);
    if (has(ReportPart::kChannels)) channels_.Show(wiring, store, PaperPalette());
    if (has(ReportPart::kWiring)) wiring_.Show(wiring, store, PaperPalette());
  }

  [[nodiscard]] const platform::Moment& Made() const { return made_; }
  [[nodiscard]] QString Project() const { return FromSystem(session_.BaseName()); }

  void Draw(QPagedPaintDevice& device, QPainter& painter) {
    const QSizeF page = device.pageLayout().paintRectPixels(kReportResolution).size();
    ReportPages pages(page, Project(), momentText(made_));
    compose(pages);
    contents_ = pages.Parts();
    // The list of contents may have moved the parts.
    ReportPages counted(page, Project(), momentText(made_));
    compose(counted);
    contents_ = counted.Parts();
    ReportPages drawn(page, Project(), momentText(made_));
    drawn.DrawOn(device, painter, counted.Pages());
    compose(drawn);
  }

 private:
  [[nodiscard]] bool has(ReportPart part) const { return options_.Has(part); }

  static std::vector<QString> numbered(const QString& text) {
    constexpr int kDigits = 4;
    std::vector<QString> lines = linesOf(text);
    int number = 0;
    for (QString& line : lines) {
      line.prepend(QString::number(++number).rightJustified(kDigits) + QStringLiteral("  "));
    }
    return lines;
  }

  void compose(ReportPages& pages) {
    if (has(ReportPart::kTitle)) title(pages);
    for (const ReportPartRow& row : kReportParts) {
      if (row.part == ReportPart::kTitle || !has(row.part)) continue;
      pages.Part(QString::fromLatin1(row.title), !row.flows);
      part(row.part, pages);
    }
  }

  void part(ReportPart part, ReportPages& pages) {
    switch (part) {
      case ReportPart::kTitle:
        return;
      case ReportPart::kSummary:
        return summary(pages);
      case ReportPart::kWiring:
        return wiring(pages);
      case ReportPart::kChannels:
        for (const QRectF& section : channels_.Sections()) pages.Picture(channels_, section);
        return;
      case ReportPart::kTables:
        return tables(pages);
      case ReportPart::kSettings:
        return settings(pages);
      case ReportPart::kProgram:
        return pages.Lines(program_);
    }
  }

  void title(ReportPages& pages) {
    pages.Gap(24);
    pages.BigTitle(Project());
    pages.Paragraph(QStringLiteral("Report of a measurement project for the VK7300 data logger"));
    pages.Gap(12);
    const std::vector<std::pair<QString, QString>> facts = {
        {QStringLiteral("Operator"), FromProject(session_.txtOper())},
        {QStringLiteral("Identification"), FromProject(session_.txtIDNum())},
        {QStringLiteral("Date of the report"), momentText(made_)},
        {QStringLiteral("Project last saved"), FromProject(store_.Gen.PCTime)},
        {QStringLiteral("Project file"), FromSystem(session_.CurrentFileName())}};
    pages.Table({{{}, 1}, {{}, 3}}, facts.size(), [&](std::size_t row, std::size_t column) {
      const QString& text = column == 0 ? facts[row].first : facts[row].second;
      return text.isEmpty() ? QStringLiteral("-") : text;
    });
    if (!contents_.empty()) {
      pages.Heading(QStringLiteral("Contents"));
      pages.Table({{{}, 3}, {{}, 1}}, contents_.size(), [&](std::size_t row, std::size_t column) {
        return column == 0 ? contents_[row].title
                           : QStringLiteral("page %1").arg(contents_[row].page);
      });
    }
    pages.Heading(QStringLiteral("Findings of the checks"));
    for (const CheckLine& line : checks_) {
      QStringList words = line.text.split(u'\n');
      QString first = words.takeFirst();
      if (line.severity == Severity::kPreventsSaving) first += QStringLiteral(" (prevents saving)");
      if (!line.place.isEmpty()) first += QStringLiteral(" - ") + line.place;
      pages.Together(words.isEmpty() ? 1 : 3);
      pages.Paragraph(first, line.severity == Severity::kPreventsSaving);
      if (!words.isEmpty()) pages.Paragraph(words.join(u'\n'));
      pages.Gap(4);
    }
  }

  void summary(ReportPages& pages) {
    const StyledText& box = session_.SummaryBox();
    const std::string all = box.Text();
    // Headings are underlined on the page, and bold here.
    std::vector<std::size_t> headings;
    std::size_t at = 0;
    for (const StyledText::Run& run : box.Runs()) {
      if (run.look.underline) {
        const std::string_view before = std::string_view(all).substr(0, at);
        headings.push_back(
            static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')));
      }
      at += run.length;
    }
    pages.Lines(linesOf(FromProject(all)), [&](std::size_t line) {
      return std::find(headings.begin(), headings.end(), line) != headings.end();
    });
  }

  void wiring(ReportPages& pages) {
    bool first = true;
    for (const QRectF& pair : wiring_.Pairs()) {
      if (!first) pages.EndPage();
      first = false;
      pages.Picture(wiring_, wiring_.Legend());
      pages.Picture(wiring_, pair);
    }
  }

  void tables(ReportPages& pages) {
    bool any = false;
    for (int t = 1; t <= kTables; ++t) {
      if (store_.Tables[t].TableOn == 0) continue;
      table(pages, t);
      any = true;
    }
    if (!any) pages.Paragraph(QStringLiteral("No table is in use."));
  }

  void table(ReportPages& pages, int t) {
    const OutputTable& table = store_.Tables[t];
    pages.Heading(QStringLiteral("Table %1: ").arg(t) + FromProject(table.TableName));
    const auto number = [](double value) { return FromProject(FormatNumber(value, "#,##0")); };
    QString facts = QStringLiteral("Interval %1, %2 bytes a record, ")
                        .arg(FromProject(TableIntervalText(store_, t)),
                             number(ORVUS_COMMON::SizeOfRecord(store_, t).bytes));
    facts += table.AutoSize != 0
                 ? QStringLiteral("as many records as fit")
                 : QStringLiteral("%1 records, full after %2")
                       .arg(number(table.Buffer), FromProject(TimeToFillText(store_, t)));
    pages.Paragraph(facts);
    pages.Gap(2);
    const std::vector<TableColumn>& columns = columns_[t];
    if (columns.empty()) return pages.Paragraph(QStringLiteral("It stores nothing."));
    pages.Table({{QStringLiteral("No."), 6, true},
                 {QStringLiteral("Type"), 7},
                 {QStringLiteral("Processing"), 12},
                 {QStringLiteral("Field"), 21},
                 {QStringLiteral("Alias"), 20},
                 {QStringLiteral("Units"), 11},
                 {QStringLiteral("Bytes"), 7, true},
                 {QStringLiteral("  Source"), 22}},
                columns.size(),
                [&](std::size_t row, std::size_t column) { return cellOf(columns[row], column); });
  }

  static QString cellOf(const TableColumn& column, std::size_t field) {
    switch (field) {
      case 0:
        return QString::number(column.number);
      case 1:
        return FromProject(column.resolution);
      case 2:
        return FromProject(column.processing);
      case 3:
        return FromProject(column.field);
      case 4:
        return FromProject(column.alias);
      case 5:
        return FromProject(column.units);
      case 6:
        return QString::number(column.bytes);
      default:
        return QStringLiteral("  ") + FromProject(column.groupTitle);
    }
  }

  void settings(ReportPages& pages) {
    const QStringList missing = BlocksWithoutScreen(store_, settings_);
    pages.Paragraph(
        QStringLiteral("Tables, ports, flags, outputs and items are listed without what is off or "
                       "has no value. What is stored is listed with the output tables."));
    if (!missing.isEmpty()) {
      pages.Paragraph(QStringLiteral("No screen shows ") + missing.join(QStringLiteral(", ")) +
                      u'.');
    }
    for (const ListedScreen& screen : settings_) {
      pages.Heading(screen.title);
      facts(pages, screen);
      for (const ListedTable& table : screen.tables) {
        pages.Gap(4);
        std::vector<ReportColumn> columns;
        for (const QString& head : table.heads) columns.push_back({head, 1});
        pages.Table(columns, table.rows.size(), [&](std::size_t row, std::size_t column) {
          return table.rows[row].value(static_cast<qsizetype>(column));
        });
      }
    }
  }

  // Whether two groups of a screen have a caption in common, so that only their titles tell what is
  // meant: the month of power off and of power on.
  static bool needsTitles(const ListedScreen& screen) {
    QStringList captions;
    for (const ListedGroup& group : screen.groups) {
      for (const auto& [caption, value] : group.facts) captions << caption;
    }
    return captions.removeDuplicates() > 0;
  }

  // Short facts two beside each other, long ones below them.
  static void facts(ReportPages& pages, const ListedScreen& screen) {
    constexpr qsizetype kMaxShort = 28;
    constexpr qsizetype kMaxCaption = 34;
    struct Fact {
      QString caption;
      QString value;
      bool isTitle = false;
    };
    std::vector<Fact> rows;
    QStringList others;
    const bool titles = needsTitles(screen);
    for (const ListedGroup& group : screen.groups) {
      if (titles) rows.push_back({group.title, {}, true});
      for (const auto& [caption, value] : group.facts) {
        if (value.size() > kMaxShort || caption.size() > kMaxCaption) {
          others << caption + QStringLiteral(": ") + value;
        } else {
          rows.push_back({caption, value});
        }
      }
      if (titles && rows.back().isTitle) rows.pop_back();
    }
    std::size_t half = (rows.size() + 1) / 2;
    if (half < rows.size() && rows[half - 1].isTitle) ++half;  // goes with what follows it
    const auto factAt = [&](std::size_t row, std::size_t column) {
      const std::size_t at = column < 2 ? row : row + half;
      return at < rows.size() ? rows[at] : Fact();
    };
    pages.Table(
        {{{}, 7}, {{}, 6}, {{}, 7}, {{}, 6}}, half,
        [&](std::size_t row, std::size_t column) {
          const Fact fact = factAt(row, column);
          return column % 2 == 0 ? fact.caption : fact.value;
        },
        [&](std::size_t row, std::size_t column) { return factAt(row, column).isTitle; });
    for (const QString& text : others) pages.Paragraph(text);
  }

  Ostrand& session_;
  ProjectStore& store_;
  const ReportOptions& options_;
  platform::Moment made_;
  std::vector<CheckLine> checks_;
  std::vector<QString> program_;
  std::vector<ListedScreen> settings_;
  Row<std::vector<TableColumn>, 1, kTables> columns_;
  ChannelsScene channels_;
  WiringScene wiring_;
  std::vector<ReportPages::PartPage> contents_;
};

// The writer takes the time of the machine; the report has that of the session's clock.
void setCreationDate(QByteArray& pdf, const platform::Moment& moment) {
  constexpr int kDigits = 14;  // of year, month, day, hour, minute and second
  const QByteArray key = "/CreationDate (D:";
  const qsizetype at = pdf.indexOf(key);
  if (at < 0) return;
  std::string digits = paddedNumber(moment.year, 4);
  for (const int part : {moment.month, moment.day, moment.hour, moment.minute, moment.second}) {
    digits += paddedNumber(part, 2);
  }
  pdf.replace(at + key.size(), kDigits, digits.c_str(), kDigits);
}

template <class Draw>
std::string drawnWiring(const Ostrand& session, const ProjectStore& store, Draw draw) {
  WiringScene scene;
  scene.Show(WiringOf(store, ProgramOf(session, store).channels), store, PaperPalette());
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  draw(scene, buffer);
  return buffer.data().toStdString();
}

// In double quotes where it has to be.
std::string csvField(const QString& text) {
  if (!text.contains(u',') && !text.contains(u'"') && text.trimmed() == text) {
    return text.toStdString();
  }
  return '"' + QString(text).replace(QStringLiteral("\""), QStringLiteral("\"\"")).toStdString() +
         '"';
}

}  // namespace

QPageLayout ReportLayout(const ReportOptions& options) {
  return {QPageSize(options.paper), QPageLayout::Portrait,
          QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter};
}

std::string ReportPdf(Ostrand& session, ProjectStore& store, const ReportOptions& options) {
  Report report(session, store, options);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(kReportResolution);
  writer.setTitle(report.Project());
  writer.setCreator(QStringLiteral("Ostrand ") + FromProject(Ostrand::Version()));
  writer.setPageLayout(ReportLayout(options));
  QPainter painter(&writer);
  report.Draw(writer, painter);
  painter.end();
  QByteArray pdf = buffer.data();
  setCreationDate(pdf, report.Made());
  return pdf.toStdString();
}

bool DrawReport(QPagedPaintDevice& printer, Ostrand& session, ProjectStore& store,
                const ReportOptions& options) {
  Report report(session, store, options);
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  // Printers have their own resolution.
  const qreal scale = printer.logicalDpiX() / static_cast<qreal>(kReportResolution);
  painter.scale(scale, scale);
  report.Draw(printer, painter);
  return painter.end();
}

std::string WiringSvg(const Ostrand& session, const ProjectStore& store) {
  return drawnWiring(session, store, [](WiringScene& scene, QBuffer& buffer) {
    const QRectF rect(QPointF(), scene.sceneRect().size());
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(rect.size().toSize());
    generator.setViewBox(rect);
    generator.setTitle(QStringLiteral("Wiring"));
    QPainter painter(&generator);
    scene.render(&painter, rect, scene.sceneRect());
  });
}

std::string WiringPng(const Ostrand& session, const ProjectStore& store) {
  return drawnWiring(session, store, [](WiringScene& scene, QBuffer& buffer) {
    constexpr qreal kScale = 2;
    QImage image((scene.sceneRect().size() * kScale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene.render(&painter, image.rect(), scene.sceneRect());
    painter.end();
    image.save(&buffer, "PNG");
  });
}

std::string TablesCsv(const ProjectStore& store) {
  std::string text =
      "Table,Name,No.,Resolution,Processing,Field,Alias,Units,Bytes,Columns,Source\r\n";
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableOn == 0) continue;
    for (const TableColumn& column : ColumnsOf(store, t)) {
      const std::initializer_list<QString> fields = {QString::number(t),
                                                     FromProject(store.Tables[t].TableName),
                                                     QString::number(column.number),
                                                     FromProject(column.resolution),
                                                     FromProject(column.processing).trimmed(),
                                                     FromProject(column.field),
                                                     FromProject(column.alias),
                                                     FromProject(column.units),
                                                     QString::number(column.bytes),
                                                     QString::number(column.count),
                                                     FromProject(column.groupTitle)};
      bool first = true;
      for (const QString& field : fields) {
        if (!first) text += ',';
        first = false;
        text += csvField(field);
      }
      text += "\r\n";
    }
  }
  return text;
}

std::optional<std::string> ExportOf(const QString& path, Ostrand& session, ProjectStore& store,
                                    const ReportOptions& options) {
  const auto is = [&](const char* extension) {
    return path.endsWith(QLatin1String(extension), Qt::CaseInsensitive);
  };
  if (is(".pdf")) return ReportPdf(session, store, options);
  if (is(".svg")) return WiringSvg(session, store);
  if (is(".png")) return WiringPng(session, store);
  if (is(".csv")) return TablesCsv(store);
  return std::nullopt;
}

}  // namespace ostrand::desktop
