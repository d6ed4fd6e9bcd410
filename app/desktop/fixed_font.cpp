#include "fixed_font.h"

#include <QApplication>
#include <QFontDatabase>

namespace ostrand::desktop {

QFont FixedFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(QApplication::font().pointSizeF());
  return font;
}

}  // namespace ostrand::desktop
