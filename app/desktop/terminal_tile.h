// One input of the panel or of a multiplexer in the picture of all of them.
#pragma once

#include <QLabel>

namespace ostrand::desktop {

// A box with the number of the input, and the block and sensor that use it: a colour and a letter
// for each kind of block, so that the colour alone means nothing. A free input is an empty frame;
// one with several users has a thick frame.
class TerminalTile final : public QLabel {
 public:
  // `use` is "VBlk1(3)", several of these separated by commas, "TK40M 2" or "free".
  void Show(int number, const QString& use);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int number_ = 0;
};

// What a tile has as its second and third line: "V1" and "3" of "VBlk1(3)".
struct TileText {
  QString block;
  QString sensor;
};
TileText TileTextOf(const QString& use);

// The colour of a kind, by the letter of its blocks; the window's colour for any other letter.
QColor TileColor(QChar letter, const QPalette& palette);

// The letters and the kinds they mean, in their colours.
QWidget* TileLegend();

}  // namespace ostrand::desktop
