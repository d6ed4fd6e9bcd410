// How each kind of user of a terminal is drawn: a colour and a letter.
#pragma once

#include <QColor>
#include <QString>
#include <span>

#include "documents/wiring.h"
#include "places/key_places.h"

namespace ostrand::desktop {

struct WireLook {
  WireKind kind;
  char16_t letter;
  const char* name;  // in the plural
  const char* item;  // one of it
  QRgb color;        // light enough for black letters, distinct for colour-blind people
};
std::span<const WireLook> WireLooks();
const WireLook& LookOf(WireKind kind);

// "Voltage block 2, sensor 3", "Control port 4".
QString UserText(const WireUse& use);
// All that is known of a use, one fact a line: the user, its wire, its range, its excitation.
QString ExplainUse(const ProjectStore& store, const WireUse& use);
// The screen in which a user is set up.
ScreenPlace PlaceOfUse(const WireUse& use);

}  // namespace ostrand::desktop
