#include "drawings/picture_view.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFontInfo>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "drawings/scene_style.h"

namespace ostrand::desktop {
namespace {

constexpr qreal kZoomStep = 1.25;
constexpr qreal kMinScale = 0.2;
constexpr qreal kMaxScale = 8;
constexpr qreal kMinReadable = 0.65;  // of the usual size

}  // namespace

PictureView::PictureView(QGraphicsScene* picture, const QString& name, QWidget* parent)
    : QGraphicsView(picture, parent) {
  setDragMode(QGraphicsView::ScrollHandDrag);
  setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
  setRenderHint(QPainter::Antialiasing);
  setMouseTracking(true);
  setAccessibleName(name);
}

void PictureView::scaleTo(qreal scale) { setTransform(QTransform::fromScale(scale, scale)); }

qreal PictureView::usualScale() const {
  return static_cast<qreal>(QFontInfo(font()).pixelSize()) / kSceneFontSize;
}

void PictureView::fitWidth() {
  const qreal usual = usualScale();
  const qreal wide = viewport()->width() / std::max(sceneRect().width(), 1.0);
  scaleTo(std::clamp(wide, kMinReadable * usual, usual));
}

void PictureView::Fit() {
  zoomed_ = true;
  fitInView(sceneRect(), Qt::KeepAspectRatio);
}

void PictureView::UsualSize() {
  zoomed_ = true;
  scaleTo(usualScale());
}

void PictureView::Zoom(qreal factor) {
  zoomed_ = true;
  scaleTo(std::clamp(Scale() * factor, kMinScale, kMaxScale));
}

void PictureView::drawn() {
  if (!zoomed_) fitWidth();
  if (std::exchange(seen_, true)) return;
  horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
  verticalScrollBar()->setValue(verticalScrollBar()->minimum());
}

void PictureView::AddTools(QBoxLayout* row) {
  const auto tool = [&](const char* text, const char* tip, auto run) {
    auto* button = new QToolButton;
    button->setText(QString::fromLatin1(text));
    button->setToolTip(QString::fromLatin1(tip));
    button->setAccessibleName(QString::fromLatin1(tip));
    QObject::connect(button, &QToolButton::clicked, this, run);
    row->addWidget(button);
  };
  tool("Fit", "Show all of it", [this] { Fit(); });
  tool("100 %", "Usual size", [this] { UsualSize(); });
  tool("+", "Zoom in", [this] { Zoom(kZoomStep); });
  tool("-", "Zoom out", [this] { Zoom(1 / kZoomStep); });
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QGraphicsView::resizeEvent(event);
  if (!zoomed_) fitWidth();
}

void PictureView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) return QGraphicsView::wheelEvent(event);
  if (event->angleDelta().y() != 0) Zoom(event->angleDelta().y() > 0 ? kZoomStep : 1 / kZoomStep);
  event->accept();
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return Zoom(kZoomStep);
    case Qt::Key_Minus:
      return Zoom(1 / kZoomStep);
    default:
      QGraphicsView::keyPressEvent(event);
  }
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->pos();
  QGraphicsView::mousePressEvent(event);
}

void PictureView::mouseReleaseEvent(QMouseEvent* event) {
  QGraphicsView::mouseReleaseEvent(event);
  const bool moved =
      (event->pos() - pressed_).manhattanLength() >= QApplication::startDragDistance();
  if (!moved && event->button() == Qt::LeftButton) clicked(itemAt(event->pos()));
}

}  // namespace ostrand::desktop
