#include "platform/posix/terminal_forms.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <utility>

#include "text/codepage.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

struct AnswerWord {
  Answer answer;
  char key;
  std::string_view prompt;
};

constexpr std::array<AnswerWord, 4> kAnswerWords = {{
    {Answer::kOk, 'o', "[o]k"},
    {Answer::kYes, 'y', "[y]es"},
    {Answer::kNo, 'n', "[n]o"},
    {Answer::kCancel, 'c', "[c]ancel"},
}};

bool offers(Buttons buttons, Answer answer) {
  switch (buttons) {
    case Buttons::kOk:
      return answer == Answer::kOk;
    case Buttons::kOkCancel:
      return answer == Answer::kOk || answer == Answer::kCancel;
    case Buttons::kYesNo:
      return answer == Answer::kYes || answer == Answer::kNo;
    case Buttons::kYesNoCancel:
      return answer != Answer::kOk;
  }
  return false;
}

Answer safeAnswer(Buttons buttons) {
  if (buttons == Buttons::kOk) return Answer::kOk;
  return offers(buttons, Answer::kCancel) ? Answer::kCancel : Answer::kNo;
}

// A terminal that is gone takes no text; the exit code still tells.
void tell(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string prompt(Buttons buttons) {
  std::string result;
  for (const AnswerWord& word : kAnswerWords) {
    if (!offers(buttons, word.answer)) continue;
    result += result.empty() ? "  " : ", ";
    result += word.prompt;
  }
  return result + ": ";
}

// The first letter of the next line; nothing at the end of the input.
std::optional<char> nextLineHead() {
  std::optional<char> head;
  for (;;) {
    char letter = 0;
    const ssize_t got = ::read(STDIN_FILENO, &letter, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return head;
    if (letter == '\n') return head ? head : ' ';
    if (!head && letter != ' ') head = static_cast<char>(letter | 0x20);
  }
}

Answer askAtTerminal(Buttons buttons) {
  for (;;) {
    tell(prompt(buttons));
    const std::optional<char> head = nextLineHead();
    if (!head) return safeAnswer(buttons);
    for (const AnswerWord& word : kAnswerWords) {
      if (word.key == *head && offers(buttons, word.answer)) return word.answer;
    }
  }
}

}  // namespace

std::string TerminalText(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const auto letter = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    if (text.starts_with("\r\n")) {
      length = 2;
      result += '\n';
    } else if (letter == 0x7F || (letter < 0x20 && letter != '\n' && letter != '\t')) {
      result += '?';
    } else if (letter < 0x80) {
      result += text.front();
    } else if (const std::size_t sequence = Utf8Length(text); sequence != 0) {
      length = sequence;
      result += text.substr(0, sequence);
    } else {
      result += Utf8FromWindows1252(text.substr(0, 1));
    }
    text.remove_prefix(length);
  }
  return result;
}

std::string HeadAndLines(std::string_view head, std::string_view text) {
  std::string result = std::string(head) + "\r\n";
  for (std::string_view rest = text; !rest.empty(); rest = After(rest, "\r\n")) {
    const std::string_view line = Before(rest, "\r\n");
    if (!line.empty()) result.append("  ").append(line);
    result += "\r\n";
  }
  return result;
}

std::vector<std::string> TerminalForms::TakeBoxesShown() { return std::exchange(boxesShown_, {}); }

std::optional<Answer> TerminalForms::prepared(const MessageBox& box) const {
  const auto found = std::find_if(
      answers_.byTitle.rbegin(), answers_.byTitle.rend(),
      [&](const PreparedAnswer& candidate) { return SameText(candidate.title, box.title); });
  if (found != answers_.byTitle.rend() && offers(box.buttons, found->answer)) return found->answer;
  if (!answers_.yes) return std::nullopt;
  return offers(box.buttons, Answer::kYes) ? Answer::kYes : Answer::kOk;
}

Answer TerminalForms::ShowBox(const MessageBox& box) {
  if (box.icon != Icon::kInformation) boxesShown_.push_back(box.title);
  const std::string about = subject_.empty() ? "" : subject_ + ": ";
  tell(TerminalText(HeadAndLines(about + box.title, box.text)));
  if (box.buttons == Buttons::kOk) return Answer::kOk;

  std::optional<Answer> answer = prepared(box);
  if (!answer && ::isatty(STDIN_FILENO) == 1) return askAtTerminal(box.buttons);
  const Answer given = answer.value_or(safeAnswer(box.buttons));
  const auto word = std::find_if(kAnswerWords.begin(), kAnswerWords.end(),
                                 [&](const AnswerWord& row) { return row.answer == given; });
  tell("  answered " + std::string(word->prompt) + (answer ? "\n" : ", nobody being asked\n"));
  return given;
}

void TerminalForms::DoEvents() {
  const timespec rest{0, 1'000'000};
  ::nanosleep(&rest, nullptr);
}

std::optional<std::string> TerminalForms::AskOpen(const FileDialog&) { return std::nullopt; }

std::optional<std::string> TerminalForms::AskSave(const FileDialog&) {
  return std::exchange(saveName_, std::nullopt);
}

}  // namespace ostrand::platform
