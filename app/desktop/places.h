// Ways from the main row to what the project tree shows.
#pragma once

#include <QString>

#include "controls/screen.h"
#include "places/key_places.h"

namespace ostrand::desktop {

// The screen of a main button.
ScreenPlace PlaceOfButton(int button);
// The setup screen of a block, or the alias of a sensor; both counted from 1, and `sensor` is 0 for
// the block itself.
ScreenPlace PlaceOfBlock(int button, int block, int sensor = 0);
// A table, an item of CAN, a calculated field, a flag, a port or an analog output, counted from 1.
ScreenPlace PlaceOfItem(int button, int item);

// "Voltage block 2" for the setup screen of a block, whose caption begins with its number; empty
// for any other screen.
QString BlockOf(const Screen& screen);

}  // namespace ostrand::desktop
