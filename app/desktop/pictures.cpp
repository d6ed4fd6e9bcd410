#include "pictures.h"

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStyle>
#include <QTabWidget>
#include <array>
#include <cstdio>
#include <set>
#include <string>

#include "script/screen_catalog.h"

namespace ostrand::desktop {
namespace {

struct Theme {
  const char* folder;
  QRgb window, base, other, text, faint, mark, marked;
};
constexpr std::array<Theme, 2> kThemes = {{
    {"light", 0xFFEFEFEF, 0xFFFFFFFF, 0xFFF7F7F7, 0xFF000000, 0xFF8C8C8C, 0xFF2A6FB0, 0xFFFFFFFF},
    {"dark", 0xFF2B2B2B, 0xFF1E1E1E, 0xFF262626, 0xFFE6E6E6, 0xFF8A8A8A, 0xFF2A6FB0, 0xFFFFFFFF},
}};

QPalette paletteOf(const Theme& theme) {
  QPalette palette(QColor(theme.window), QColor(theme.window));
  const auto set = [&](QRgb color, std::initializer_list<QPalette::ColorRole> roles) {
    for (const QPalette::ColorRole role : roles) palette.setColor(role, QColor(color));
  };
  set(theme.text,
      {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText});
  set(theme.base, {QPalette::Base, QPalette::ToolTipBase});
  set(theme.other, {QPalette::AlternateBase});
  set(theme.faint, {QPalette::PlaceholderText});
  set(theme.mark, {QPalette::Highlight, QPalette::Link});
  set(theme.marked, {QPalette::HighlightedText});
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(theme.faint));
  }
  return palette;
}

class Painter {
 public:
  explicit Painter(const QString& folder) : folder_(folder) {
    for (const Theme& theme : kThemes) {
      written_ = folder_.mkpath(QLatin1String(theme.folder)) && written_;
    }
  }
  // In the present theme.
  void Write(QWidget& window, const Theme& theme, const QString& name) {
    window.show();
    QApplication::processEvents();
    const QString path = QStringLiteral("%1/%2.png").arg(QLatin1String(theme.folder), name);
    written_ = window.grab().save(folder_.filePath(path)) && written_;
  }
  [[nodiscard]] bool Written() const { return written_; }

 private:
  QDir folder_;
  bool written_ = true;
};

}  // namespace

bool WritePictures(MainWindow& window, QtForms& forms, const QString& folder) {
  QApplication::setStyle(QStringLiteral("Fusion"));  // the same everywhere
  Painter painter(folder);
  for (const Theme& theme : kThemes) {
    QApplication::setPalette(paletteOf(theme));
    for (int page = 0; page < window.Pages()->count(); ++page) {
      window.Pages()->setCurrentIndex(page);
      const QString name = QStringLiteral("main-") + window.Pages()->tabText(page).toLower();
      painter.Write(window, theme, name);
    }
  }
  std::set<std::string> seen;
  const auto drawScreens = [&] {
    VisitScreens(window.Session(), [&](Screen& screen) {
      if (!seen.insert(screen.Name()).second) return;
      for (const Theme& theme : kThemes) {
        QApplication::setPalette(paletteOf(theme));
        ScreenWindow shown(screen, forms, nullptr);
        painter.Write(shown, theme, QString::fromStdString(screen.Name()));
      }
    });
  };
  drawScreens();
  if (!window.Session().NewProject("sample.VKG")) return false;
  MakeCatalogProject(window.Session().Store());
  drawScreens();
  return painter.Written();
}

void LeaveOutPlatformMessages(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (text.startsWith(QStringLiteral("This plugin does not support")) ||
      text.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR not set"))) {
    return;
  }
  std::fprintf(stderr, "ostrand-desktop: %s\n", text.toUtf8().constData());
}

}  // namespace ostrand::desktop
