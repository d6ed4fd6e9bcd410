// What all pictures share: their fonts, their colours on paper.
#pragma once

#include <QApplication>
#include <QFont>
#include <QPalette>

namespace ostrand::desktop {

inline constexpr int kSceneFontSize = 12;  // in pixels at a zoom of 100 %
inline constexpr qreal kSceneWidth = 696;  // of every picture, in the same pixels

inline const QColor kSceneConflict(0xD0, 0x00, 0x20);

inline QFont SceneFont(bool bold = false, int size = kSceneFontSize) {
  QFont font = QApplication::font();
  font.setPixelSize(size);
  font.setBold(bold);
  return font;
}

// Black on white.
inline QPalette PaperPalette() {
  QPalette palette;
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Window, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xF2, 0xF2, 0xF2));
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::Text, Qt::black);
  return palette;
}

// The frame of what is free.
inline QPen FreePen(const QPalette& palette) {
  QColor color = palette.color(QPalette::WindowText);
  color.setAlphaF(0.6F);
  return {color, 1, Qt::DotLine};
}

}  // namespace ostrand::desktop
