#include "platform/box.h"

#include <array>
#include <utility>

#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kBreak = "\r\n";

struct AnswerName {
  std::string_view word;
  platform::Answer answer;
};
constexpr std::array<AnswerName, 5> kAnswers = {{
    {"yes", platform::Answer::kYes},
    {"no", platform::Answer::kNo},
    {"cancel", platform::Answer::kCancel},
    {"ok", platform::Answer::kOk},
    {"overwrite", platform::Answer::kOverwrite},
}};

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

std::optional<platform::Answer> AnswerNamed(std::string_view word) {
  for (const AnswerName& row : kAnswers) {
    if (SameText(row.word, word)) return row.answer;
  }
  return std::nullopt;
}

}  // namespace ostrand
