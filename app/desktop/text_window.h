// A text in a separate window.
#pragma once

#include <QString>

class QWidget;

namespace ostrand::desktop {

// Shows a text, in letters of equal width, until the user closes it.
void ShowText(QWidget* over, const QString& title, const QString& text);

}  // namespace ostrand::desktop
