// Colours of the system as Qt has them.
#pragma once

#include <QColor>
#include <QPalette>

#include "model/scalars.h"

namespace ostrand::desktop {

// 0x00BBGGRR, or with the top bit set the number of a colour of the user's desktop.
QColor ColorOf(i32 color, const QPalette& palette);

}  // namespace ostrand::desktop
