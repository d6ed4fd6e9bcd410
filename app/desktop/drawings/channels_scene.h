// The use of the logger's channels and of the scan as a picture.
#pragma once

#include <QGraphicsScene>
#include <QPalette>
#include <map>
#include <vector>

#include "drawings/channel_facts.h"
#include "places/key_places.h"

namespace ostrand::desktop {

class ChannelsScene final : public QGraphicsScene {
 public:
  using QGraphicsScene::QGraphicsScene;

  // Draws in these colours: the time of the scan, the inputs by block, the other terminals, the
  // multiplexers.
  void Show(const Wiring& wiring, const ProjectStore& store, const QPalette& palette);

  // The parts that are printed without a break, from top to bottom.
  [[nodiscard]] const std::vector<QRectF>& Sections() const { return sections_; }
  // The screen of what an item shows; null for none.
  [[nodiscard]] const ScreenPlace* PlaceOf(const QGraphicsItem* item) const;
  // All that is drawn, in words; a line for each fact.
  [[nodiscard]] QString Words() const { return words_.join(u'\n'); }

 private:
  void drawTimes(const ProjectStore& store);
  void drawTotal(const ProjectStore& store, const std::vector<ScanShare>& shares);
  void drawInputs(const Wiring& wiring);
  void drawRow(const QString& name, const WireUse* user, const std::vector<InputRun>& runs);
  void drawOthers(const Wiring& wiring, const ProjectStore& store);
  void drawMultiplexers(const Wiring& wiring, const ProjectStore& store);

  void heading(const QString& text);
  void endSection();
  QGraphicsSimpleTextItem* text(const QString& text, QPointF at, bool bold = false, int size = 0);
  void textIn(const QRectF& box, const QString& text, const QColor& color, bool bold, int size);
  // A box of a user, or a free one without `user`.
  QGraphicsRectItem* box(const QRectF& rect, const WireUse* user, bool conflict = false);

  void fillGray(QGraphicsRectItem& item) const;

  QPalette palette_;
  qreal y_ = 0;
  qreal sectionTop_ = 0;
  std::vector<QRectF> sections_;
  std::map<const QGraphicsItem*, ScreenPlace> places_;
  QStringList words_;
};

// "Voltage block 2", "Panel temperature".
QString ShareText(const ScanShare& share);

}  // namespace ostrand::desktop
