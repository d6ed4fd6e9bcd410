// Colours that can be read.
#pragma once

#include <QColor>

namespace ostrand::desktop {

// The ratio of the luminance of two colours, from 1 for equal ones to 21 for black on white.
double Contrast(const QColor& one, const QColor& other);

inline constexpr double kMinContrast = 4.5;  // of text

// The colour itself if a text in it can be read on the background; otherwise the nearest lighter
// or darker one that can.
QColor Readable(const QColor& text, const QColor& background);

}  // namespace ostrand::desktop
