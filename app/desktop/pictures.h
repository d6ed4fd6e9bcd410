// Pictures of all windows, for documents and to look at.
#pragma once

#include <QString>

#include "main_window.h"

namespace ostrand::desktop {

// Writes pictures of the main window with each page and of every screen into the folders `light`
// and `dark` of `folder`. Screens that the open project does not lead to are drawn from a sample
// project, which is then the project of the session. False when a picture could not be written.
bool WritePictures(MainWindow& window, QtForms& forms, const QString& folder);

// A handler of Qt's messages that leaves out what the platform without a display says about itself.
void LeaveOutPlatformMessages(QtMsgType type, const QMessageLogContext& context,
                              const QString& text);

}  // namespace ostrand::desktop
