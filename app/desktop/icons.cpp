#include "icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

namespace ostrand::desktop {
namespace {

constexpr char kDrawn[] = "#000";  // the colour of the drawings

class Drawing final : public QIconEngine {
 public:
  explicit Drawing(QByteArray svg) : svg_(std::move(svg)) {}

  [[nodiscard]] QIconEngine* clone() const override { return new Drawing(svg_); }

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    const QPalette::ColorGroup group =
        mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor color = QApplication::palette().color(
        group, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
    QByteArray colored = svg_;
    QSvgRenderer(colored.replace(kDrawn, color.name().toLatin1())).render(painter, QRectF(place));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap image(size);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(&painter, image.rect(), mode, state);
    return image;
  }

 private:
  QByteArray svg_;
};

}  // namespace

QIcon SystemIcon(const char* name) {
  QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new Drawing(file.readAll()));
}

}  // namespace ostrand::desktop
