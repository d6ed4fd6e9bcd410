// What the windows remember of a user, beside the settings of the session.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <string>

#include "platform/settings_store.h"

namespace ostrand::desktop {

inline constexpr std::array<int, 5> kTextSizes = {100, 125, 150, 175, 200};  // percent
inline constexpr int kMaxRecent = 8;

struct ServerAddress {
  std::string host;
  std::string port;
};
// "HOST:PORT", an IPv6 address in brackets; nothing for any other text.
std::optional<ServerAddress> ServerOf(const QString& text);

struct DesktopSettings {
  QByteArray geometry;  // of the main window
  QByteArray split;     // between the main row and the pages
  int page = 0;
  int textSize = kTextSizes.front();
  QString server;      // of the logger, "HOST:PORT"; empty for none
  QStringList recent;  // paths of projects, the latest first

  void AddRecent(const QString& path);
};

// Invalid values are replaced by defaults.
DesktopSettings LoadDesktopSettings(platform::SettingsStore& store);
Result<> SaveDesktopSettings(platform::SettingsStore& store, const DesktopSettings& settings);

}  // namespace ostrand::desktop
