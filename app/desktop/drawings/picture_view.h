// A picture that can be zoomed and moved.
#pragma once

#include <QGraphicsView>

class QBoxLayout;

namespace ostrand::desktop {

// Zoomed by Ctrl and the wheel or by + and -, moved by dragging.
class PictureView : public QGraphicsView {
 public:
  PictureView(QGraphicsScene* picture, const QString& name, QWidget* parent);

  void Fit();
  // Texts as large as those of the program.
  void UsualSize();
  void Zoom(qreal factor);
  [[nodiscard]] qreal Scale() const { return transform().m11(); }
  // Buttons for all of these.
  void AddTools(QBoxLayout* row);

 protected:
  // A click, not the end of a drag, on the item, which may be null.
  virtual void clicked(QGraphicsItem* item) = 0;

  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  QPoint pressed_;
};

}  // namespace ostrand::desktop
