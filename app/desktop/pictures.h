// Pictures of all windows, for documents and to be looked at.
#pragma once

#include <QString>

#include "main_window.h"

namespace ostrand::desktop {

// Writes a PNG of the main window with each page, and of each screen by its name, on the project
// that the window has. False when one could not be written.
bool WritePictures(MainWindow& window, QtForms& forms, const QString& folder);

}  // namespace ostrand::desktop
