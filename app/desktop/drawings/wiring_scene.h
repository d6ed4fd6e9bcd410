// The panel of the logger and its multiplexers as a picture.
#pragma once

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPalette>
#include <vector>

#include "documents/wiring.h"

namespace ostrand::desktop {

// One terminal: what is wired to it, its screw, and its printed name.
class TerminalItem final : public QGraphicsItem {
 public:
  // `strip` and `place` count from 0.
  TerminalItem(WireTerminal terminal, int strip, int place, const QPalette& palette);

  [[nodiscard]] const WireTerminal& Terminal() const { return terminal_; }
  [[nodiscard]] int Strip() const { return strip_; }
  [[nodiscard]] int Place() const { return place_; }
  // Frames it as the terminal that the keyboard is at.
  void Marked(bool marked);

  [[nodiscard]] QRectF boundingRect() const override;
  void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

 private:
  void paintUsers(QPainter& painter, const QRectF& box) const;
  void paintScrew(QPainter& painter) const;
  void paintName(QPainter& painter) const;

  WireTerminal terminal_;
  int strip_;
  int place_;
  QPalette palette_;
  bool marked_ = false;
};

class WiringScene final : public QGraphicsScene {
 public:
  using QGraphicsScene::QGraphicsScene;

  // Draws it anew in these colours. Strips lie two beside each other, in the order of the diagram.
  void Show(Wiring wiring, const ProjectStore& store, const QPalette& palette);

  // All terminals, strip by strip from top to bottom.
  [[nodiscard]] const std::vector<TerminalItem*>& Terminals() const { return terminals_; }
  // Pairs of strips beside each other, with their heads: the parts that are printed on one page.
  [[nodiscard]] const std::vector<QRectF>& Pairs() const { return pairs_; }
  [[nodiscard]] QRectF Legend() const { return legend_; }
  [[nodiscard]] int Conflicts() const { return conflicts_; }
  // The terminals in use, one a line: the terminal and its users, separated by tabs.
  [[nodiscard]] QString Words() const;

 private:
  void addLegend(const QPalette& palette);
  qreal addStrip(const TerminalStrip& strip, int number, QPointF at, const ProjectStore& store,
                 const QPalette& palette);

  std::vector<TerminalItem*> terminals_;
  std::vector<QRectF> pairs_;
  QRectF legend_;
  int conflicts_ = 0;
};

// What a terminal is and all its users, for a person who points at it.
QString ExplainTerminal(const ProjectStore& store, const WireTerminal& terminal);

}  // namespace ostrand::desktop
