// The icons of the program, in the colours of the user's desktop.
#pragma once

#include <QIcon>

namespace ostrand::desktop {

// By the name of a drawing in `icons/`. Drawn in the text colour of buttons each time it is shown,
// so that it reads on light and dark; paler where it is disabled.
QIcon SystemIcon(const char* name);

}  // namespace ostrand::desktop
