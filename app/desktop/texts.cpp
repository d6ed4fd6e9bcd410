#include "texts.h"

#include <algorithm>

#include "platform/posix/terminal_forms.h"
#include "text/codepage.h"

namespace ostrand::desktop {

QString FromProject(std::string_view text) {
  return QString::fromStdString(Utf8FromWindows1252(text));
}

std::optional<std::string> ToProject(const QString& text) {
  std::string bytes = Windows1252FromUtf8(text.toStdString());
  if (FromProject(bytes) != text) return std::nullopt;
  return bytes;
}

QString FromSystem(std::string_view text) {
  QString shown = QString::fromStdString(platform::Utf8Text(text));
  return shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

std::string PathOf(const QString& path) { return path.toStdString(); }

QString PathText(std::string_view path) {
  return QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
}

QChar DigitIn(const QString& text) {
  const auto* digit =
      std::find_if(text.begin(), text.end(), [](QChar letter) { return letter.isDigit(); });
  return digit == text.end() ? QChar(u' ') : *digit;
}

QString PlainCaption(std::string_view caption) {
  std::string plain;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (caption[at] == '&' && ++at == caption.size()) break;
    plain += caption[at];
  }
  return FromProject(plain);
}

}  // namespace ostrand::desktop
