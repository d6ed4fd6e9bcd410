#include "drawings/channels_scene.h"

#include <QFontMetricsF>
#include <QGraphicsItem>
#include <algorithm>
#include <array>

#include "drawings/scene_style.h"
#include "drawings/wire_looks.h"
#include "drawings/wiring_scene.h"
#include "model/channels.h"
#include "model/intervals.h"
#include "text/mask.h"
#include "text/number.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// Measures in pixels at a zoom of 100 %.
constexpr qreal kRow = 20;
constexpr qreal kNames = 150;                    // column of the names
constexpr qreal kChart = 376;                    // beside them
constexpr qreal kInput = kChart / PanelSEChans;  // of the chart of inputs
constexpr qreal kTile = 134;                     // of another terminal
constexpr qreal kMuxInput = 19;                  // of a multiplexer
constexpr qreal kAfterChart = kNames + kChart + 8;
constexpr int kSmall = 9;
constexpr int kTilesInARow = 4;

QString grouped(double number) { return FromProject(FormatNumber(number, "#,##0")); }

QString micros(double number) { return grouped(number) + QStringLiteral(" µs"); }

// The kind of wire of a share's family; the battery and the panel have none.
const WireLook* lookOf(OutputFamily family) {
  switch (family) {
    case OutputFamily::kTemp:
      return &LookOf(WireKind::kThermocouple);
    case OutputFamily::kVolt:
      return &LookOf(WireKind::kVoltage);
    case OutputFamily::kBridge:
      return &LookOf(WireKind::kBridge);
    case OutputFamily::kPulse:
      return &LookOf(WireKind::kPulse);
    case OutputFamily::kTK40M:
      return &LookOf(WireKind::kMultiplexed);
    default:
      return nullptr;
  }
}

WireUse useOf(WireKind kind, int number) {
  WireUse use;
  use.kind = kind;
  use.number = number;
  return use;
}

}  // namespace

QString ShareText(const ScanShare& share) {
  const WireLook* look = lookOf(share.family);
  if (look == nullptr) {
    return share.family == OutputFamily::kBattery ? QStringLiteral("Battery")
                                                  : QStringLiteral("Panel temperature");
  }
  return QString::fromLatin1(look->item) + u' ' + QString::number(share.block);
}

void ChannelsScene::Show(const Wiring& wiring, const ProjectStore& store, const QPalette& palette) {
  clear();
  places_.clear();
  sections_.clear();
  words_.clear();
  palette_ = palette;
  y_ = sectionTop_ = 0;
  setBackgroundBrush(palette.color(QPalette::Base));
  drawTimes(store);
  drawInputs(wiring);
  drawOthers(wiring, store);
  drawMultiplexers(wiring, store);
  setSceneRect(-10, -10, kSceneWidth + 20, y_ + 20);
}

const ScreenPlace* ChannelsScene::PlaceOf(const QGraphicsItem* item) const {
  const auto found = places_.find(item);
  return found == places_.end() ? nullptr : &found->second;
}

// ---- The scan -----------------------------------------------------------------------------------

void ChannelsScene::drawTimes(const ProjectStore& store) {
  heading(QStringLiteral("Time of a scan"));
  const std::vector<ScanShare> shares = LongestFirst(store);
  const double interval = ORVUS_COMMON::ScanIntervalMicros(store);
  drawTotal(store, shares);
  const double longest = shares.empty() ? 0 : std::max<double>(shares.front().micros, 1);
  for (const ScanShare& share : shares) {
    const WireLook* look = lookOf(share.family);
    const QString name = ShareText(share);
    text(look == nullptr ? name : QString(look->letter) + u' ' + name, {0, y_ + 2});
    const QString value = share.micros <= 0 ? QStringLiteral("not known yet")
                                            : micros(share.micros) + QStringLiteral("  ") +
                                                  FromProject(PercentText(share.micros, interval));
    const qreal width = kChart * std::max<double>(share.micros, 0) / longest;
    if (share.micros > 0) {
      const WireUse use = look == nullptr ? WireUse{} : useOf(look->kind, share.block);
      QGraphicsRectItem* bar =
          box({kNames, y_ + 2, width, kRow - 4}, look == nullptr ? nullptr : &use);
      bar->setToolTip(name + QStringLiteral(": ") + value);
      if (look == nullptr) fillGray(*bar);
    }
    text(value, {share.micros > 0 ? kAfterChart : kNames, y_ + 2});
    words_ << name + QStringLiteral(": ") + value.simplified();
    y_ += kRow;
  }
  text(QStringLiteral("Times are estimates until a test compile has measured them."), {0, y_ + 4},
       false, kSceneFontSize - 1);
  y_ += kRow + 2;
  endSection();
}

// All measurements in one bar, against the scan interval.
void ChannelsScene::drawTotal(const ProjectStore& store, const std::vector<ScanShare>& shares) {
  const double interval = ORVUS_COMMON::ScanIntervalMicros(store);
  const double total = ORVUS_COMMON::EstMeasTime(store);
  double sum = 0;  // may exceed the total, which is limited
  for (const ScanShare& share : shares) sum += std::max<double>(share.micros, 0);
  const double whole = std::max({interval, sum, 1.0});
  const bool isTooLong = interval < total;
  text(QStringLiteral("All measurements"), {0, y_ + 4}, true);
  qreal x = kNames;
  for (const ScanShare& share : shares) {
    if (share.micros <= 0) continue;
    const WireLook* look = lookOf(share.family);
    const WireUse use = look == nullptr ? WireUse{} : useOf(look->kind, share.block);
    const qreal width = kChart * share.micros / whole;
    QGraphicsRectItem* part = box({x, y_ + 3, width, kRow}, look == nullptr ? nullptr : &use);
    part->setToolTip(ShareText(share) + QStringLiteral(": ") + micros(share.micros));
    if (look == nullptr) fillGray(*part);
    x += width;
  }
  const qreal end = kNames + kChart * interval / whole;
  addLine(end, y_, end, y_ + kRow + 6,
          QPen(isTooLong ? kSceneConflict : palette_.color(QPalette::WindowText), 3));
  const QString value =
      micros(total) + QStringLiteral("  ") + FromProject(PercentText(total, interval));
  text(value, {kAfterChart, y_ + 4}, true);
  y_ += kRow + 8;
  QString sentence =
      QStringLiteral("The scan interval is %1, at the thick line.").arg(micros(interval));
  text(sentence, {kNames, y_}, isTooLong);
  if (isTooLong) {
    const QString warning = QStringLiteral("THE MEASUREMENTS TAKE LONGER.");
    y_ += kRow;
    text(warning, {kNames, y_}, true);
    sentence += u' ' + warning;
  }
  words_ << QStringLiteral("All measurements: ") + value.simplified() << sentence;
  y_ += kRow + 4;
}

// ---- The inputs ---------------------------------------------------------------------------------

void ChannelsScene::drawInputs(const Wiring& wiring) {
  heading(QStringLiteral("Analog inputs"));
  text(QStringLiteral("Differential"), {0, y_}, false, kSmall + 1);
  text(QStringLiteral("Single-ended"), {0, y_ + kSmall + 5}, false, kSmall + 1);
  const QColor ink = palette_.color(QPalette::WindowText);
  for (int input = 1; input <= PanelSEChans; ++input) {
    const qreal x = kNames + (input - 1) * kInput;
    if (input % 2 == 0) continue;  // the numbers of every second one are enough
    textIn({x, y_, 2 * kInput, kSmall + 4}, QString::number((input + 1) / 2), ink, false, kSmall);
    text(QString::number(input), {x + 1, y_ + kSmall + 5}, false, kSmall - 1);
  }
  y_ += 2 * kSmall + 9;
  const InputUse use = InputUseOf(wiring);
  for (const InputUser& user : use.users) {
    const WireUse shown = useOf(user.kind, user.number);
    drawRow(UserText(shown), &shown, user.runs);
  }
  if (!use.conflicts.empty()) {
    words_ << QStringLiteral("Conflict: inputs ") + FromProject(RunsText(use.conflicts));
    text(QStringLiteral("! Conflict"), {0, y_ + 2}, true);
    for (const InputRun& run : use.conflicts) {
      const QRectF rect(kNames + (run.first - 1) * kInput, y_ + 2,
                        (run.last - run.first + 1) * kInput, kRow - 4);
      addRect(rect, QPen(kSceneConflict, 3), QBrush(kSceneConflict, Qt::BDiagPattern));
    }
    y_ += kRow;
  }
  drawRow(QStringLiteral("Free"), nullptr, use.free);
  endSection();
}

void ChannelsScene::drawRow(const QString& name, const WireUse* user,
                            const std::vector<InputRun>& runs) {
  const QString letter = user == nullptr ? QString() : QString(LookOf(user->kind).letter);
  text(letter.isEmpty() ? name : letter + u' ' + name, {0, y_ + 2});
  const QString inputs = FromProject(RunsText(runs));
  for (const InputRun& run : runs) {
    const int count = run.last - run.first + 1;
    const QRectF rect(kNames + (run.first - 1) * kInput, y_ + 2, count * kInput, kRow - 4);
    box(rect, user)->setToolTip(name + QStringLiteral(": ") + inputs);
    const QString label =
        user == nullptr ? QString::number(count) : letter + QString::number(user->number);
    const QColor ink = user == nullptr ? palette_.color(QPalette::WindowText) : QColor(Qt::black);
    if (count > 1) textIn(rect, label, ink, user != nullptr, kSceneFontSize - 1);
  }
  const InputCount count = CountOf(runs);
  const QString counted =
      user != nullptr
          ? QStringLiteral("%1 inputs").arg(count.singleEnded)
          : QStringLiteral("%1 SE, %2 Diff free").arg(count.singleEnded).arg(count.differential);
  text(counted, {kAfterChart, y_ + 2});
  words_ << name + QStringLiteral(": inputs ") + inputs;
  y_ += kRow;
}

// ---- Other terminals, multiplexers --------------------------------------------------------------

void ChannelsScene::drawOthers(const Wiring& wiring, const ProjectStore& store) {
  heading(QStringLiteral("Excitation, outputs, pulses and ports"));
  for (const TerminalGroup& group : OtherTerminalsOf(wiring)) {
    text(FromProject(group.title), {0, y_ + 8});
    int column = 0;
    for (const WireTerminal* terminal : group.terminals) {
      if (column == kTilesInARow) {
        column = 0;
        y_ += kRow + 16;
      }
      const QRectF rect(kNames + column++ * (kTile + 2), y_, kTile, kRow + 12);
      const bool isFree = terminal->users.empty();
      const WireUse* user = isFree ? nullptr : &terminal->users.front();
      box(rect, user, IsConflict(terminal->users))->setToolTip(ExplainTerminal(store, *terminal));
      const QColor ink = isFree ? palette_.color(QPalette::WindowText) : QColor(Qt::black);
      QString name = FromProject(terminal->name);
      if (!isFree) name = QString(LookOf(user->kind).letter) + u' ' + name;
      const QString what = isFree ? QStringLiteral("free") : FromProject(user->source);
      textIn(rect.adjusted(4, 0, -4, -rect.height() / 2), name, ink, true, kSceneFontSize);
      textIn(rect.adjusted(4, rect.height() / 2, -4, 0), what, ink, false, kSceneFontSize - 1);
      words_ << FromProject(terminal->name) + QStringLiteral(": ") + what;
    }
    y_ += kRow + 18;
  }
  endSection();
}

void ChannelsScene::drawMultiplexers(const Wiring& wiring, const ProjectStore& store) {
  if (wiring.multiplexers.empty()) return;
  heading(QStringLiteral("Multiplexers"));
  for (const TerminalStrip& strip : wiring.multiplexers) {
    text(QStringLiteral("M ") + FromProject(strip.title), {0, y_ + 8});
    int free = 0;
    qreal x = kNames;
    for (const WireTerminal& input : strip.places) {
      const bool isFree = input.users.empty();
      const WireUse* user = isFree ? nullptr : &input.users.front();
      const QRectF rect(x, y_, kMuxInput - 1, kRow + 12);
      box(rect, user)->setToolTip(ExplainTerminal(store, input));
      const QColor ink = isFree ? palette_.color(QPalette::WindowText) : QColor(Qt::black);
      textIn(rect.adjusted(0, 0, 0, -rect.height() / 2), QString::number(input.differential), ink,
             false, kSmall);
      if (!isFree) {
        textIn(rect.adjusted(0, rect.height() / 2, 0, 0), u'A' + QString::number(user->number), ink,
               true, kSmall);
      }
      free += isFree ? 1 : 0;
      x += kMuxInput;
    }
    text(QStringLiteral("%1 free").arg(free), {x + 8, y_ + 8});
    words_ << FromProject(strip.title) + QStringLiteral(": %1 free").arg(free);
    y_ += kRow + 18;
  }
  endSection();
}

// ---- Pieces -------------------------------------------------------------------------------------

void ChannelsScene::heading(const QString& text) {
  sectionTop_ = y_;
  this->text(text, {0, y_}, true, kSceneFontSize + 3);
  y_ += kRow + 8;
}

void ChannelsScene::endSection() {
  sections_.emplace_back(0, sectionTop_, kSceneWidth, y_ - sectionTop_);
  y_ += kRow;
}

QGraphicsSimpleTextItem* ChannelsScene::text(const QString& text, QPointF at, bool bold, int size) {
  QGraphicsSimpleTextItem* item =
      addSimpleText(text, SceneFont(bold, size == 0 ? kSceneFontSize : size));
  item->setBrush(palette_.color(QPalette::WindowText));
  item->setPos(at);
  return item;
}

// Centered, condensed where it does not fit. It lets the pointer through to the box.
void ChannelsScene::textIn(const QRectF& box, const QString& text, const QColor& color, bool bold,
                           int size) {
  QGraphicsSimpleTextItem* item = addSimpleText(text, SceneFont(bold, size));
  item->setBrush(color);
  const QRectF bounds = item->boundingRect();
  const qreal stretch = std::min(1.0, box.width() / bounds.width());
  item->setTransform(QTransform::fromScale(stretch, 1));
  const QPointF center = bounds.center();
  item->setPos(box.center() - QPointF(center.x() * stretch, center.y()));
  item->setAcceptedMouseButtons(Qt::NoButton);
  item->setZValue(1);
}

// A measurement without a kind of block.
void ChannelsScene::fillGray(QGraphicsRectItem& item) const {
  item.setPen(QPen(palette_.color(QPalette::WindowText)));
  item.setBrush(Qt::gray);
}

QGraphicsRectItem* ChannelsScene::box(const QRectF& rect, const WireUse* user, bool conflict) {
  if (user == nullptr) return addRect(rect, FreePen(palette_));
  const QPen pen = conflict ? QPen(kSceneConflict, 3) : QPen(palette_.color(QPalette::WindowText));
  QGraphicsRectItem* item = addRect(rect, pen, QColor(LookOf(user->kind).color));
  places_.emplace(item, PlaceOfUse(*user));
  return item;
}

}  // namespace ostrand::desktop
