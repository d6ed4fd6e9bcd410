// Ways from the main row to what the project tree and the program show.
#pragma once

#include <QString>

#include "controls/screen.h"
#include "places/key_places.h"
#include "programcheck/outline.h"

namespace ostrand::desktop {

// The screen of a main button.
ScreenPlace PlaceOfButton(int button);
// A block's setup screen, a table, a CAN item, a calculated field, a flag, a port or an analog
// output, counted from 1.
ScreenPlace PlaceOfItem(int button, int item);
// The alias of a sensor of a block, both counted from 1.
ScreenPlace PlaceOfSensor(int button, int block, int sensor);
// The block of the program that an item of a main button makes; of kind 0 for tables, flags, ports
// and analog outputs.
ProgramBlock BlockOfItem(int button, int item);
// Where a block of the program is edited.
ScreenPlace PlaceOfBlock(ProgramBlock block);

// "Voltage block 2" for the setup screen of a block, whose caption begins with its number; empty
// for any other screen.
QString BlockOf(const Screen& screen);

}  // namespace ostrand::desktop
