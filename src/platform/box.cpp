#include "platform/box.h"

#include <utility>

namespace ostrand {
namespace {

constexpr std::string_view kBreak = "\r\n";

}  // namespace

std::string JoinLines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (const std::string_view& line : lines) {
    if (&line != lines.begin()) text += kBreak;
    text += line;
  }
  return text;
}

void ShowWarning(platform::Forms& forms, std::string_view title, std::string text) {
  platform::MessageBox box;
  box.title = title;
  box.text = std::move(text);
  box.icon = platform::Icon::kExclamation;
  forms.ShowBox(box);
}

platform::Answer Ask(platform::Forms& forms, std::string_view title, std::string text,
                     platform::Buttons buttons, platform::Answer preselected) {
  platform::MessageBox box;
  box.title = title;
  box.text = std::move(text);
  box.icon = platform::Icon::kQuestion;
  box.buttons = buttons;
  box.preselected = preselected;
  return forms.ShowBox(box);
}

}  // namespace ostrand
