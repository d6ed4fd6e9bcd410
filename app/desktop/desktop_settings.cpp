#include "desktop_settings.h"

#include <algorithm>
#include <vector>

#include "text/strings.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr std::string_view kApplication = "ostrand-desktop";
constexpr std::string_view kSection = "Window";
constexpr std::string_view kGeometry = "Geometry";
constexpr std::string_view kSplit = "Split";
constexpr std::string_view kPage = "Page";
constexpr std::string_view kTextSize = "TextSize";
constexpr std::string_view kServer = "LoggerServer";

std::string recentName(int number) { return "Recent" + std::to_string(number); }

}  // namespace

std::optional<ServerAddress> ServerOf(const QString& text) {
  const std::string address = text.trimmed().toStdString();
  const std::size_t at = address.rfind(':');
  if (at == std::string::npos || at == 0 || at + 1 == address.size()) return std::nullopt;
  std::string host = address.substr(0, at);
  if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
  if (host.empty() || host.find(' ') != std::string::npos) return std::nullopt;
  return ServerAddress{std::move(host), address.substr(at + 1)};
}

void DesktopSettings::AddRecent(const QString& path) {
  recent.removeAll(path);
  recent.prepend(path);
  while (recent.size() > kMaxRecent) recent.removeLast();
}

DesktopSettings LoadDesktopSettings(platform::SettingsStore& store) {
  const std::vector<platform::Setting> rows = store.Read(kApplication, kSection);
  const auto find = [&](std::string_view name) {
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const platform::Setting& row) {
      return SameText(row.name, name);
    });
    return found == rows.end() ? QString() : QString::fromStdString(found->value);
  };
  DesktopSettings settings;
  settings.geometry = QByteArray::fromHex(find(kGeometry).toLatin1());
  settings.split = QByteArray::fromHex(find(kSplit).toLatin1());
  settings.page = std::max(0, find(kPage).toInt());
  const int size = find(kTextSize).toInt();
  if (std::find(kTextSizes.begin(), kTextSizes.end(), size) != kTextSizes.end()) {
    settings.textSize = size;
  }
  if (ServerOf(find(kServer))) settings.server = find(kServer);
  for (int number = 1; number <= kMaxRecent; ++number) {
    const QString path = find(recentName(number));
    if (!path.isEmpty()) settings.recent.append(path);
  }
  return settings;
}

Result<> SaveDesktopSettings(platform::SettingsStore& store, const DesktopSettings& settings) {
  std::vector<platform::Setting> rows = {
      {std::string(kGeometry), settings.geometry.toHex().toStdString()},
      {std::string(kSplit), settings.split.toHex().toStdString()},
      {std::string(kPage), std::to_string(settings.page)},
      {std::string(kTextSize), std::to_string(settings.textSize)},
      {std::string(kServer), settings.server.toStdString()},
  };
  for (int number = 1; number <= kMaxRecent; ++number) {
    const bool used = number <= settings.recent.size();
    rows.push_back({recentName(number), used ? settings.recent[number - 1].toStdString() : ""});
  }
  return store.Write(kApplication, kSection, rows);
}

}  // namespace ostrand::desktop
