// The font of programs and of texts in columns.
#pragma once

#include <QFont>

namespace ostrand::desktop {

// Letters of equal width, in the size of the program's font.
QFont FixedFont();

}  // namespace ostrand::desktop
