// Lays out a report on pages.
#pragma once

#include <QFont>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>
#include <functional>
#include <utility>
#include <vector>

class QGraphicsScene;

namespace ostrand::desktop {

// All measures are in tenths of a point, the pixels of kReportResolution.
inline constexpr int kReportPoint = 10;
inline constexpr int kReportResolution = 72 * kReportPoint;

struct ReportColumn {
  QString head;
  qreal width;  // as a share of the sum
  bool right = false;
};

// Texts, tables and pictures follow each other, on as many pages as they need. A heading stays with
// what follows it, and no page begins or ends with a few lines of what is on another page.
class ReportPages {
 public:
  // `head` and `headRight` are at the top of each page.
  ReportPages(QSizeF page, QString head, QString headRight);

  // Draws from now on, from the first page; the device has been begun by the painter. The numbers
  // of pages count up to `total`. Without it, pages are only counted.
  void DrawOn(QPagedPaintDevice& device, QPainter& painter, int total);

  // A part of the report, on a new page if `onNewPage`, or if little space is left.
  void Part(const QString& title, bool onNewPage);
  void Heading(const QString& text);
  void BigTitle(const QString& text);
  // Wraps at words; line feeds stay.
  void Paragraph(const QString& text, bool bold = false);
  // Lines in a fixed font, wrapped where they are too long. Bold ones by their index.
  void Lines(const std::vector<QString>& lines,
             const std::function<bool(std::size_t)>& isBold = {});
  // `text` gives the cell of a row and a column, `isBold` those that stand out. Without heads there
  // is no line of them. A text that is too wide is condensed.
  void Table(const std::vector<ReportColumn>& columns, std::size_t rows,
             const std::function<QString(std::size_t row, std::size_t column)>& text,
             const std::function<bool(std::size_t row, std::size_t column)>& isBold = {});
  // A part of a scene in the width of the page, smaller if the page is not high enough.
  void Picture(QGraphicsScene& scene, const QRectF& source);
  void Gap(qreal height);
  // Keeps so many lines of paragraphs that follow on one page.
  void Together(int lines) { need(lines * kParagraphLine); }
  void EndPage();

  struct PartPage {
    QString title;
    int page;
  };
  [[nodiscard]] const std::vector<PartPage>& Parts() const { return parts_; }
  // Pages begun so far.
  [[nodiscard]] int Pages() const { return page_; }

 private:
  static constexpr qreal kParagraphLine = 12.7 * kReportPoint;

  [[nodiscard]] qreal bottom() const;
  [[nodiscard]] qreal left() const { return bottom() - y_; }
  [[nodiscard]] bool isFresh() const;
  void need(qreal height);
  void paintFrame();
  // Rows of this height that go on the present page of so many that remain; 0 for none.
  [[nodiscard]] std::size_t rowsHere(std::size_t remaining, qreal height) const;
  void tableRow(const std::vector<ReportColumn>& columns,
                const std::function<QString(std::size_t)>& text,
                const std::function<const QFont&(std::size_t)>& font);
  void cell(const QRectF& box, const QFont& font, const QString& text, bool right);

  QSizeF size_;
  QString head_;
  QString headRight_;
  QPagedPaintDevice* device_ = nullptr;
  QPainter* painter_ = nullptr;
  int total_ = 0;
  int page_ = 1;
  qreal y_;
  QString part_;
  std::vector<PartPage> parts_;
};

}  // namespace ostrand::desktop
