#include "report/report_pages.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGraphicsScene>
#include <algorithm>

namespace ostrand::desktop {
namespace {

constexpr qreal kPoint = kReportPoint;
constexpr qreal kTop = 34 * kPoint;   // below the head of a page
constexpr qreal kFoot = 24 * kPoint;  // above its lower end
constexpr qreal kHeading = 13 * kPoint;
constexpr qreal kPart = 18 * kPoint;
constexpr qreal kBig = 26 * kPoint;
constexpr qreal kText = 9 * kPoint;
constexpr qreal kTableText = 8 * kPoint;
constexpr qreal kCode = 7 * kPoint;
constexpr qreal kLeading = 1.3;      // height of a line, of its font
constexpr std::size_t kMinRows = 6;  // together on a page
constexpr qreal kMinPart = 0.33;     // of a page, for a part to begin on it
constexpr qreal kCellGap = 6 * kPoint;
constexpr qreal kMinStretch = 0.5;

QFont fontOf(qreal size, bool bold = false) {
  QFont font = QApplication::font();
  font.setPixelSize(static_cast<int>(size));
  font.setBold(bold);
  return font;
}

QFont codeFont(bool bold = false) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPixelSize(static_cast<int>(kCode));
  font.setBold(bold);
  return font;
}

// With places to break words that are wider than a page.
QString breakable(const QString& text) {
  constexpr int kMaxWord = 60;
  QString result;
  int letters = 0;
  for (const QChar letter : text) {
    letters = letter == u' ' ? 0 : letters + 1;
    result += letter;
    if (letters % kMaxWord == kMaxWord - 1) result += QChar(0x200B);
  }
  return result;
}

// Cut into lines of at most so many letters; what continues a line is indented.
std::vector<std::pair<QString, std::size_t>> wrapped(const std::vector<QString>& lines,
                                                     qsizetype letters) {
  constexpr qsizetype kIndent = 8;
  std::vector<std::pair<QString, std::size_t>> result;
  result.reserve(lines.size());
  for (std::size_t at = 0; at < lines.size(); ++at) {
    QString rest = lines[at];
    while (rest.size() > letters) {
      result.emplace_back(rest.left(letters), at);
      rest = QString(kIndent, u' ') + rest.mid(letters);
    }
    result.emplace_back(rest, at);
  }
  return result;
}

}  // namespace

ReportPages::ReportPages(QSizeF page, QString head, QString headRight)
    : size_(page), head_(std::move(head)), headRight_(std::move(headRight)), y_(kTop) {}

void ReportPages::DrawOn(QPagedPaintDevice& device, QPainter& painter, int total) {
  device_ = &device;
  painter_ = &painter;
  total_ = total;
  page_ = 1;
  y_ = kTop;
  part_.clear();
  parts_.clear();
  paintFrame();
}

// ---- Pages --------------------------------------------------------------------------------------

qreal ReportPages::bottom() const { return size_.height() - kFoot; }

bool ReportPages::isFresh() const { return y_ <= kTop; }

void ReportPages::EndPage() {
  if (isFresh()) return;
  ++page_;
  y_ = kTop;
  if (painter_ == nullptr) return;
  device_->newPage();
  paintFrame();
}

void ReportPages::need(qreal height) {
  if (left() < height) EndPage();
}

void ReportPages::paintFrame() {
  painter_->setPen(Qt::black);
  painter_->setFont(fontOf(kTableText));
  const QRectF head(0, 0, size_.width(), 14 * kPoint);
  painter_->drawText(head, Qt::AlignLeft | Qt::AlignVCenter, head_);
  painter_->drawText(head, Qt::AlignRight | Qt::AlignVCenter, headRight_);
  painter_->setPen(QPen(Qt::gray, kPoint / 2));
  painter_->drawLine(head.bottomLeft(), head.bottomRight());
  painter_->setPen(Qt::black);
  const QRectF foot(0, size_.height() - 14 * kPoint, size_.width(), 14 * kPoint);
  painter_->drawText(foot, Qt::AlignHCenter | Qt::AlignVCenter,
                     QStringLiteral("Page %1 of %2").arg(page_).arg(total_));
}

void ReportPages::Gap(qreal height) { y_ = std::min(y_ + height * kPoint, bottom()); }

// ---- Texts --------------------------------------------------------------------------------------

void ReportPages::Part(const QString& title, bool onNewPage) {
  if (onNewPage || left() < kMinPart * (bottom() - kTop)) EndPage();
  if (!isFresh()) Gap(16);
  part_ = title;
  parts_.push_back({title, page_});
  if (painter_ != nullptr) {
    painter_->setFont(fontOf(kPart, true));
    painter_->drawText(QRectF(0, y_, size_.width(), kPart * kLeading), Qt::AlignVCenter, title);
  }
  y_ += kPart * kLeading + 6 * kPoint;
}

void ReportPages::BigTitle(const QString& text) {
  const QRectF box(0, y_, size_.width(), kBig * kLeading);
  if (painter_ != nullptr) cell(box, fontOf(kBig, true), text, false);
  y_ += box.height() + 4 * kPoint;
}

void ReportPages::Heading(const QString& text) {
  need(kHeading * kLeading + 6 * kPoint + (2 * kMinRows + 2) * kTableText * kLeading);
  if (!isFresh()) y_ += 8 * kPoint;
  if (painter_ != nullptr) {
    cell(QRectF(0, y_, size_.width(), kHeading * kLeading), fontOf(kHeading, true), text, false);
  }
  y_ += kHeading * kLeading + 2 * kPoint;
}

void ReportPages::Paragraph(const QString& text, bool bold) {
  const QFont font = fontOf(kText, bold);
  const QFontMetricsF metrics(font);
  for (const QString& given : text.split(u'\n')) {
    const QString line = breakable(given);
    const QRectF asked(0, 0, size_.width(), bottom() - kTop);
    const qreal height =
        std::max(metrics.boundingRect(asked, Qt::TextWordWrap, line).height(), kText * kLeading);
    need(height);
    if (painter_ != nullptr) {
      painter_->setFont(font);
      painter_->drawText(QRectF(0, y_, size_.width(), height), Qt::TextWordWrap, line);
    }
    y_ += height + kPoint;
  }
}

std::size_t ReportPages::rowsHere(std::size_t remaining, qreal height) const {
  const auto capacity = static_cast<std::size_t>(std::max(0.0, left() / height + 1e-6));
  if (remaining <= capacity) return remaining;
  const std::size_t kept = std::min(kMinRows, remaining);
  // What goes to the next page must not be too little, and neither what stays here.
  const std::size_t here = std::min(capacity, remaining - kept);
  return here < kMinRows && !isFresh() ? 0 : std::max<std::size_t>(here, 1);
}

void ReportPages::Lines(const std::vector<QString>& lines,
                        const std::function<bool(std::size_t)>& isBold) {
  const QFont font = codeFont();
  const QFont bold = codeFont(true);
  const auto letters =
      static_cast<qsizetype>(size_.width() / QFontMetricsF(font).horizontalAdvance(u'M'));
  const qreal height = kCode * kLeading;
  const auto all = wrapped(lines, letters);
  std::size_t at = 0;
  while (at < all.size()) {
    const std::size_t here = rowsHere(all.size() - at, height);
    for (const std::size_t end = at + here; at < end; ++at) {
      if (painter_ != nullptr && !all[at].first.isEmpty()) {
        painter_->setFont(isBold && isBold(all[at].second) ? bold : font);
        painter_->drawText(QPointF(0, y_ + kCode), all[at].first);
      }
      y_ += height;
    }
    if (at < all.size()) EndPage();
  }
}

// ---- Tables -------------------------------------------------------------------------------------

void ReportPages::Table(const std::vector<ReportColumn>& columns, std::size_t rows,
                        const std::function<QString(std::size_t row, std::size_t column)>& text,
                        const std::function<bool(std::size_t row, std::size_t column)>& isBold) {
  const bool heads = std::any_of(columns.begin(), columns.end(),
                                 [](const ReportColumn& column) { return !column.head.isEmpty(); });
  const qreal height = kTableText * kLeading;
  const QFont font = fontOf(kTableText);
  const QFont bold = fontOf(kTableText, true);
  std::size_t at = 0;
  while (at < rows) {
    const qreal before = y_;
    if (heads) y_ += height + 2 * kPoint;
    const std::size_t here = rowsHere(rows - at, height);
    y_ = before;
    if (here == 0) {
      EndPage();
      continue;
    }
    if (heads) {
      tableRow(
          columns, [&](std::size_t column) { return columns[column].head; },
          [&](std::size_t) -> const QFont& { return bold; });
      if (painter_ != nullptr) {
        painter_->setPen(QPen(Qt::black, kPoint / 2));
        painter_->drawLine(QPointF(0, y_), QPointF(size_.width(), y_));
      }
      y_ += 2 * kPoint;
    }
    for (const std::size_t end = at + here; at < end; ++at) {
      if (painter_ == nullptr) {
        y_ += height;
      } else {
        tableRow(
            columns, [&](std::size_t column) { return text(at, column); },
            [&](std::size_t column) -> const QFont& {
              return isBold && isBold(at, column) ? bold : font;
            });
      }
    }
    if (at < rows) EndPage();
  }
}

void ReportPages::tableRow(const std::vector<ReportColumn>& columns,
                           const std::function<QString(std::size_t)>& text,
                           const std::function<const QFont&(std::size_t)>& font) {
  const qreal height = kTableText * kLeading;
  if (painter_ != nullptr) {
    qreal sum = 0;
    for (const ReportColumn& column : columns) sum += column.width;
    qreal x = 0;
    for (std::size_t column = 0; column < columns.size(); ++column) {
      const qreal width = columns[column].width / sum * size_.width();
      cell(QRectF(x, y_, width - kCellGap, height), font(column), text(column),
           columns[column].right);
      x += width;
    }
  }
  y_ += height;
}

void ReportPages::cell(const QRectF& box, const QFont& font, const QString& text, bool right) {
  if (text.isEmpty()) return;
  painter_->setFont(font);
  painter_->setPen(Qt::black);
  const QFontMetricsF metrics(font);
  // A letter is at most about as wide as it is high, so that a short text need not be measured.
  const bool fits = !right && static_cast<qreal>(text.size()) * metrics.maxWidth() < box.width();
  const qreal width = fits ? 0 : metrics.horizontalAdvance(text);
  const qreal baseline = box.top() + (box.height() + metrics.ascent() - metrics.descent()) / 2;
  if (width <= box.width()) {
    return painter_->drawText(QPointF(right ? box.right() - width : box.left(), baseline), text);
  }
  const qreal stretch = std::max(box.width() / width, kMinStretch);
  painter_->save();
  painter_->translate(box.left(), baseline);
  painter_->scale(stretch, 1);
  painter_->drawText(QPointF(),
                     metrics.elidedText(text, Qt::ElideRight, box.width() / stretch + 1));
  painter_->restore();
}

// ---- Pictures -----------------------------------------------------------------------------------

void ReportPages::Picture(QGraphicsScene& scene, const QRectF& source) {
  const qreal scale =
      std::min(size_.width() / source.width(), (bottom() - kTop) * 0.94 / source.height());
  const QSizeF target = source.size() * scale;
  need(target.height());
  if (painter_ != nullptr) {
    painter_->save();
    scene.render(painter_, QRectF(QPointF(0, y_), target), source);
    painter_->restore();
  }
  y_ += target.height() + 8 * kPoint;
}

}  // namespace ostrand::desktop
