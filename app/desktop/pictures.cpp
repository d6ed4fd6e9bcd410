#include "pictures.h"

#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <set>
#include <string>

#include "script/screen_catalog.h"

namespace ostrand::desktop {
namespace {

bool write(QWidget& window, const QDir& folder, const QString& name) {
  window.show();
  QApplication::processEvents();
  return window.grab().save(folder.filePath(name + QStringLiteral(".png")));
}

}  // namespace

bool WritePictures(MainWindow& window, QtForms& forms, const QString& folder) {
  const QDir dir(folder);
  bool written = dir.mkpath(QStringLiteral("."));
  for (int page = 0; page < window.Pages()->count(); ++page) {
    window.Pages()->setCurrentIndex(page);
    const QString name = QStringLiteral("main-") + window.Pages()->tabText(page).toLower();
    written = write(window, dir, name) && written;
  }
  std::set<std::string> seen;
  VisitScreens(window.Session(), [&](Screen& screen) {
    if (!seen.insert(screen.Name()).second) return;
    ScreenWindow shown(screen, forms, nullptr);
    written = write(shown, dir, QString::fromStdString(screen.Name())) && written;
  });
  return written;
}

}  // namespace ostrand::desktop
