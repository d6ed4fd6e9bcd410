// A picture that can be zoomed and moved.
#pragma once

#include <QGraphicsView>

class QBoxLayout;

namespace ostrand::desktop {

// Zoomed by Ctrl and the wheel or by + and -, moved by dragging. Until the user zooms, it is as
// wide as the window if its texts can be read then.
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
  // To be called when the picture has been drawn.
  void drawn();
  // A click, not the end of a drag, on the item, which may be null.
  virtual void clicked(QGraphicsItem* item) = 0;

  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] qreal usualScale() const;
  void scaleTo(qreal scale);
  void fitWidth();

  QPoint pressed_;
  bool seen_ = false;
  bool zoomed_ = false;  // by the user
};

}  // namespace ostrand::desktop
