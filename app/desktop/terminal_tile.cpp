#include "terminal_tile.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <algorithm>
#include <string_view>

#include "drawings/wire_looks.h"

namespace ostrand::desktop {
namespace {

// Of the users of an input.
constexpr std::u16string_view kKinds = u"TVBAM";

const WireLook* lookOf(QChar letter) {
  if (kKinds.find(letter.unicode()) == kKinds.npos) return nullptr;
  const std::span<const WireLook> looks = WireLooks();
  const auto found = std::find_if(looks.begin(), looks.end(),
                                  [&](const WireLook& look) { return letter == look.letter; });
  return found == looks.end() ? nullptr : &*found;
}

constexpr int kLetters = 4;  // of the widest line
constexpr int kLines = 3;

bool isFree(const QString& use) { return use.isEmpty() || use == QStringLiteral("free"); }

}  // namespace

TileText TileTextOf(const QString& use) {
  if (isFree(use)) return {};
  if (use.contains(u','))
    return {QString(use.front()) + u'+', QString::number(use.count(u',') + 1) + u'×'};
  if (use.startsWith(QStringLiteral("TK40M"))) return {u'M' + use.section(u' ', 1), {}};
  const QString block = use.section(u'(', 0, 0);
  return {block.front() + block.mid(block.indexOf(QStringLiteral("Blk")) + 3),
          use.section(u'(', 1).remove(u')')};
}

QColor TileColor(QChar letter, const QPalette& palette) {
  const WireLook* look = lookOf(letter);
  return look == nullptr ? palette.color(QPalette::Window) : QColor(look->color);
}

QWidget* TileLegend() {
  auto* legend = new QWidget;
  auto* grid = new QGridLayout(legend);
  grid->setContentsMargins(0, 0, 0, 0);
  constexpr int kColumns = 3;  // of a letter and its meaning
  int at = 0;
  for (const char16_t letter : kKinds) {
    const WireLook& row = *lookOf(letter);
    auto* sample = new QLabel(QStringLiteral(" %1 ").arg(QChar(row.letter)));
    QPalette palette = sample->palette();
    palette.setColor(QPalette::Window, QColor(row.color));
    palette.setColor(QPalette::WindowText, Qt::black);
    sample->setPalette(palette);
    sample->setAutoFillBackground(true);
    const int line = at / kColumns;
    const int column = at++ % kColumns * 2;
    grid->addWidget(sample, line, column);
    grid->addWidget(new QLabel(QString::fromLatin1(row.name)), line, column + 1);
  }
  grid->setColumnStretch(kColumns * 2, 1);
  return legend;
}

void TerminalTile::Show(int number, const QString& use) {
  number_ = number;
  if (text() != use) setText(use);
}

QSize TerminalTile::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  return {metrics.averageCharWidth() * (kLetters + 2),
          metrics.lineSpacing() * kLines + metrics.height() / 2};
}

void TerminalTile::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const TileText lines = TileTextOf(text());
  const bool used = !lines.block.isEmpty();
  const int width = text().contains(u',') ? 3 : 1;
  const QRect box = rect().adjusted(width, width, -width, -width);
  if (used) painter.fillRect(box, TileColor(lines.block.front(), palette()));
  painter.setPen(QPen(palette().color(used ? QPalette::WindowText : QPalette::Mid), width,
                      used ? Qt::SolidLine : Qt::DashLine));
  painter.drawRect(box);
  painter.setPen(used ? QColor(Qt::black) : palette().color(QPalette::WindowText));
  const int line = fontMetrics().lineSpacing();
  QRect row(box.left(), box.top() + line / 4, box.width(), line);
  painter.drawText(row, Qt::AlignCenter, QString::number(number_));
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  row.translate(0, line);
  painter.drawText(row, Qt::AlignCenter, used ? lines.block : QStringLiteral("free"));
  painter.setFont(font());
  row.translate(0, line);
  painter.drawText(row, Qt::AlignCenter, lines.sensor);
}

}  // namespace ostrand::desktop
