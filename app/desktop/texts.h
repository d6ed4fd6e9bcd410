// Texts between the project, in Windows-1252, and Qt.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::desktop {

// A text of the project, or of the system itself.
QString FromProject(std::string_view text);
// Nothing for a text with a character that no project can hold.
std::optional<std::string> ToProject(const QString& text);

// A text that is UTF-8, as file names are, or else Windows-1252; line ends become LF.
QString FromSystem(std::string_view text);
std::string PathOf(const QString& path);
// The same path for Qt.
QString PathText(std::string_view path);

// The first digit of a caption or heading, as of "State 2 value"; blank for none.
QChar DigitIn(const QString& text);

// A caption without the marks of access keys: "Fill && Stop" is "Fill & Stop".
QString PlainCaption(std::string_view caption);

}  // namespace ostrand::desktop
