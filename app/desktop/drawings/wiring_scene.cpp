#include "drawings/wiring_scene.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <algorithm>

#include "drawings/scene_style.h"
#include "drawings/wire_looks.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Measures in the units of the scene, which are pixels at a zoom of 100 %.
constexpr qreal kRow = 22;
constexpr qreal kBox = 222;    // the users
constexpr qreal kLetter = 18;  // in the box
constexpr qreal kScrew = 24;
constexpr qreal kName = 68;
constexpr qreal kStrip = kBox + kScrew + kName;
constexpr qreal kGap = 28;      // between strips
constexpr qreal kGroupGap = 6;  // between groups of terminals
constexpr qreal kHead = 30;     // of a strip
constexpr qreal kEdge = 10;     // of the panel around its terminals

constexpr qreal kMinStretch = 0.5;

// In one line, condensed where it is too wide, and cut only if even that does not help.
void drawFitted(QPainter& painter, const QRectF& box, const QFont& font, const QString& text) {
  const QFontMetricsF metrics(font);
  const qreal width = std::max(metrics.horizontalAdvance(text), 1.0);
  const qreal stretch = std::clamp(box.width() / width, kMinStretch, 1.0);
  painter.save();
  painter.setFont(font);
  painter.translate(box.left(), box.top());
  painter.scale(stretch, 1);
  painter.drawText(QRectF(0, 0, box.width() / stretch + 1, box.height()), Qt::AlignVCenter,
                   metrics.elidedText(text, Qt::ElideRight, box.width() / stretch + 1));
  painter.restore();
}

QString sourcesOf(const WireUses& users) {
  QStringList sources;
  for (const WireUse& use : users) {
    const QString source = FromProject(use.source);
    if (!sources.contains(source)) sources << source;
  }
  return sources.join(QStringLiteral(" + "));
}

}  // namespace

// ---- A terminal ---------------------------------------------------------------------------------

TerminalItem::TerminalItem(WireTerminal terminal, int strip, int place, const QPalette& palette)
    : terminal_(std::move(terminal)), strip_(strip), place_(place), palette_(palette) {
  setAcceptHoverEvents(true);
  if (!terminal_.users.empty()) setCursor(Qt::PointingHandCursor);
}

void TerminalItem::Marked(bool marked) {
  marked_ = marked;
  update();
}

QRectF TerminalItem::boundingRect() const { return {0, 0, kStrip, kRow}; }

void TerminalItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
  const QRectF box(1, 1.5, kBox - 2, kRow - 3);
  if (terminal_.users.empty()) {
    painter->setPen(FreePen(palette_));
    painter->drawRect(box);
  } else {
    paintUsers(*painter, box);
  }
  paintScrew(*painter);
  paintName(*painter);
  if (!marked_) return;
  painter->setPen(QPen(palette_.color(QPalette::Highlight), 2));
  painter->drawRect(boundingRect().adjusted(1, 1, -1, -1));
}

void TerminalItem::paintUsers(QPainter& painter, const QRectF& box) const {
  const WireUses& users = terminal_.users;
  const WireUse& use = users.front();
  const WireLook& look = LookOf(use.kind);
  const bool conflict = IsConflict(users);
  painter.fillRect(box, QColor(look.color));
  painter.setPen(conflict ? QPen(kSceneConflict, 3)
                          : QPen(palette_.color(QPalette::WindowText), 1));
  painter.drawRect(box);

  painter.setPen(Qt::black);
  const QFont bold = SceneFont(true);
  painter.setFont(bold);
  const QRectF letter(box.left(), box.top(), kLetter, box.height());
  painter.drawText(letter, Qt::AlignCenter, conflict ? QStringLiteral("!") : QString(look.letter));
  painter.drawLine(letter.topRight(), letter.bottomRight());

  const QRectF rest = box.adjusted(kLetter + 4, 0, -4, 0);
  if (conflict) return drawFitted(painter, rest, bold, sourcesOf(users));
  QString source = FromProject(use.source);
  if (!use.input.empty()) source += u' ' + FromProject(use.input);
  if (use.alias.empty()) return drawFitted(painter, rest, bold, source);
  painter.setFont(SceneFont());
  const qreal width = QFontMetricsF(painter.font()).horizontalAdvance(source);
  painter.drawText(rest, Qt::AlignVCenter | Qt::AlignRight, source);
  drawFitted(painter, rest.adjusted(0, 0, -width - 6, 0), bold, FromProject(use.alias));
}

void TerminalItem::paintScrew(QPainter& painter) const {
  painter.setPen(QPen(palette_.color(QPalette::WindowText), 1));
  painter.setBrush(terminal_.users.empty() ? palette_.color(QPalette::Base)
                                           : palette_.color(QPalette::WindowText));
  const QPointF center(kBox + kScrew / 2, kRow / 2);
  painter.drawEllipse(center, 6, 6);
  if (!terminal_.users.empty()) painter.drawLine(QPointF(kBox - 1, kRow / 2), center);
  painter.setBrush(Qt::NoBrush);
}

void TerminalItem::paintName(QPainter& painter) const {
  painter.setPen(palette_.color(QPalette::WindowText));
  painter.setFont(SceneFont(!terminal_.users.empty()));
  painter.drawText(QRectF(kBox + kScrew, 0, kName, kRow), Qt::AlignVCenter,
                   FromProject(TerminalText(terminal_)));
}

// ---- All of them --------------------------------------------------------------------------------

void WiringScene::Show(Wiring wiring, const ProjectStore& store, const QPalette& palette) {
  clear();
  terminals_.clear();
  pairs_.clear();
  conflicts_ = 0;
  setBackgroundBrush(palette.color(QPalette::Base));
  std::vector<TerminalStrip> strips(std::make_move_iterator(wiring.panel.begin()),
                                    std::make_move_iterator(wiring.panel.end()));
  for (TerminalStrip& strip : wiring.multiplexers) strips.push_back(std::move(strip));

  addLegend(palette);
  qreal top = legend_.bottom() + kGap;
  for (std::size_t at = 0; at < strips.size(); at += 2) {
    qreal bottom = top;
    for (std::size_t side = 0; side < 2 && at + side < strips.size(); ++side) {
      const auto number = static_cast<int>(at + side);
      const QPointF corner(static_cast<qreal>(side) * (kStrip + 2 * kEdge + kGap), top);
      bottom = std::max(bottom, addStrip(strips[at + side], number, corner, store, palette));
    }
    pairs_.emplace_back(-1, top - 1, 2 * (kStrip + 2 * kEdge) + kGap + 2, bottom - top + 2);
    top = bottom + kGap;
  }
  setSceneRect(itemsBoundingRect().adjusted(-kEdge, -kEdge, kEdge, kEdge));
}

qreal WiringScene::addStrip(const TerminalStrip& strip, int number, QPointF at,
                            const ProjectStore& store, const QPalette& palette) {
  QGraphicsRectItem* panel = addRect({}, QPen(palette.color(QPalette::WindowText), 1),
                                     palette.color(QPalette::AlternateBase));
  QGraphicsSimpleTextItem* title = addSimpleText(FromProject(strip.title), SceneFont(true));
  title->setBrush(palette.color(QPalette::WindowText));
  title->setPos(at + QPointF(kEdge + kBox + kScrew, 7));
  const bool analog = !strip.places.empty() && strip.places.front().singleEnded > 0;
  QGraphicsSimpleTextItem* sensor = addSimpleText(
      analog ? QStringLiteral("Sensor (beside the screw: Diff, SE)") : QStringLiteral("Sensor"),
      SceneFont());
  sensor->setBrush(palette.color(QPalette::WindowText));
  sensor->setPos(at + QPointF(kEdge, 7));
  qreal y = at.y() + kHead;
  int place = 0;
  for (const WireTerminal& terminal : strip.places) {
    if (!terminal.name.empty()) {
      auto* item = new TerminalItem(terminal, number, place, palette);
      item->setPos(at.x() + kEdge, y);
      item->setToolTip(ExplainTerminal(store, terminal));
      addItem(item);
      terminals_.push_back(item);
      if (IsConflict(terminal.users)) ++conflicts_;
    }
    ++place;
    y += kRow + (terminal.endsGroup ? kGroupGap : 0);
  }
  y += kEdge / 2;
  panel->setRect(QRectF(at, QPointF(at.x() + kStrip + 2 * kEdge, y)));
  return y;
}

void WiringScene::addLegend(const QPalette& palette) {
  const auto caption = [&](const QString& text, QPointF at, bool bold, const QColor& color) {
    QGraphicsSimpleTextItem* item = addSimpleText(text, SceneFont(bold));
    item->setBrush(color);
    item->setPos(at + QPointF(0, 2));
    return item->boundingRect().width();
  };
  const QColor ink = palette.color(QPalette::WindowText);
  const qreal wide = 2 * (kStrip + 2 * kEdge) + kGap;
  QPointF at(0, 0);
  const auto entry = [&](const QString& letter, const QColor& fill, const QPen& pen,
                         const QString& name) {
    const qreal width = kLetter + 6 + QFontMetricsF(SceneFont()).horizontalAdvance(name) + 14;
    if (at.x() + width > wide) at = QPointF(0, at.y() + kRow);
    addRect(QRectF(at, QSizeF(kLetter, kRow - 4)), pen, fill);
    caption(letter, at + QPointF(5, 0), true, Qt::black);
    caption(name, at + QPointF(kLetter + 6, 0), false, ink);
    at.rx() += width;
  };
  for (const WireLook& look : WireLooks()) {
    entry(QString(look.letter), QColor(look.color), QPen(ink), QString::fromLatin1(look.name));
  }
  entry(QStringLiteral("!"), Qt::white, QPen(kSceneConflict, 3), QStringLiteral("conflict"));
  entry({}, Qt::transparent, FreePen(palette), QStringLiteral("free"));
  legend_ = QRectF(-1, -1, wide + 2, at.y() + kRow + 2);
}

QString WiringScene::Words() const {
  QStringList lines;
  for (const TerminalItem* item : terminals_) {
    QString line = FromProject(TerminalText(item->Terminal()));
    for (const WireUse& use : item->Terminal().users) {
      line += u'\t' + FromProject(use.source) + u'\t' + FromProject(use.alias);
    }
    if (!item->Terminal().users.empty()) lines << line;
  }
  return lines.join(u'\n');
}

QString ExplainTerminal(const ProjectStore& store, const WireTerminal& terminal) {
  QString text = QStringLiteral("Terminal ") + FromProject(TerminalText(terminal));
  if (terminal.singleEnded > 0) {
    text = QStringLiteral("Differential channel %1, single-ended channel %2, %3")
               .arg(terminal.differential)
               .arg(terminal.singleEnded)
               .arg(FromProject(terminal.name));
  } else if (terminal.differential > 0) {
    text = QStringLiteral("Multiplexer input %1").arg(terminal.differential);
  }
  if (terminal.users.empty()) return text + QStringLiteral(": free");
  if (IsConflict(terminal.users)) {
    text += QStringLiteral("\nConflict: several users cannot share a terminal.");
  }
  for (const WireUse& use : terminal.users) text += u'\n' + ExplainUse(store, use);
  return text;
}

}  // namespace ostrand::desktop
