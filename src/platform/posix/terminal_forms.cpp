#include "platform/posix/terminal_forms.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <initializer_list>
#include <utility>

#include "platform/posix/interrupts.h"
#include "text/codepage.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

struct AnswerWord {
  Answer answer;
  char key;
  std::string_view prompt;
};

constexpr std::array<AnswerWord, 5> kAnswerWords = {{
    {Answer::kOk, 'o', "[o]k"},
    {Answer::kYes, 'y', "[y]es"},
    {Answer::kNo, 'n', "[n]o"},
    {Answer::kOverwrite, 'o', "[o]verwrite"},
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
      return answer == Answer::kYes || answer == Answer::kNo || answer == Answer::kCancel;
    case Buttons::kOverwriteCancel:
      return answer == Answer::kOverwrite || answer == Answer::kCancel;
  }
  return false;
}

Answer safeAnswer(Buttons buttons) {
  if (buttons == Buttons::kOk) return Answer::kOk;
  return offers(buttons, Answer::kCancel) ? Answer::kCancel : Answer::kNo;
}

// A terminal that is gone takes no text; the exit code still shows the failure.
void write(std::string_view text) { static_cast<void>(WriteTerminal(STDERR_FILENO, text)); }

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
    write(prompt(buttons));
    const std::optional<char> head = nextLineHead();
    if (!head) return safeAnswer(buttons);
    for (const AnswerWord& word : kAnswerWords) {
      if (word.key == *head && offers(buttons, word.answer)) return word.answer;
    }
  }
}

// The first letter of a text in bytes that are UTF-8 or, where they are not, Windows-1252.
struct Letter {
  std::size_t length = 1;
  int control = -1;  // its number, for a control character
  bool utf8 = true;
};

Letter letterOf(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x20 || first == 0x7F) return {.control = first};
  if (first < 0x80) return {};
  const int second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0;
  if (first == 0xC2 && second >= 0x80 && second < 0xA0) return {.length = 2, .control = second};
  const std::size_t length = Utf8Length(text);
  return length == 0 ? Letter{.utf8 = false} : Letter{.length = length};
}

std::string utf8Of(std::string_view text, const Letter& letter) {
  const std::string_view bytes = text.substr(0, letter.length);
  return letter.utf8 ? std::string(bytes) : Utf8FromWindows1252(bytes);
}

// "\n", "\x1B", "\u009B".
std::string escaped(int control) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  if (control == '\n') return "\\n";
  if (control == '\r') return "\\r";
  if (control == '\t') return "\\t";
  const auto number = static_cast<std::size_t>(control);
  std::string result = control < 0x80 ? "\\x" : "\\u00";
  return result.append(1, kDigits[number / 16]).append(1, kDigits[number % 16]);
}

// The text in UTF-8 with its control characters escaped, but for those in `kept`; CR LF as LF where
// that is kept.
std::string shown(std::string_view text, std::initializer_list<char> kept) {
  const auto isKept = [&](int control) {
    return std::find(kept.begin(), kept.end(), control) != kept.end();
  };
  std::string result;
  while (!text.empty()) {
    if (text.starts_with("\r\n") && isKept('\n')) text.remove_prefix(1);
    const Letter letter = letterOf(text);
    const bool escape = letter.control >= 0 && !isKept(letter.control);
    result += escape ? escaped(letter.control) : utf8Of(text, letter);
    text.remove_prefix(letter.length);
  }
  return result;
}

}  // namespace

bool WriteTerminal(int descriptor, std::string_view text) {
  while (!text.empty() && !InterruptGuard::Noted()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return text.empty();
}

void WriteErrorLine(std::string_view text) { write("ostrand: " + TerminalLines(text) + "\n"); }

std::string TerminalText(std::string_view text) { return shown(text, {'\n', '\t'}); }

std::string TerminalName(std::string_view name) {
  std::string result;
  while (!name.empty()) {
    const Letter letter = letterOf(name);
    result +=
        letter.control >= 0 ? escaped(letter.control) : std::string(name.substr(0, letter.length));
    name.remove_prefix(letter.length);
  }
  return result;
}

std::string TerminalLines(std::string_view text) {
  std::string result;
  while (true) {
    result += shown(Before(text, "\r\n"), {'\t'});
    if (!Holds(text, "\r\n")) return result;
    result += '\n';
    text = After(text, "\r\n");
  }
}

std::string Utf8Text(std::string_view bytes) {
  std::string result;
  while (!bytes.empty()) {
    const Letter letter = letterOf(bytes);
    result += utf8Of(bytes, letter);
    bytes.remove_prefix(letter.length);
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
  for (const Answer answer : {Answer::kYes, Answer::kOk}) {
    if (offers(box.buttons, answer)) return answer;
  }
  return std::nullopt;  // yes to everything never overwrites
}

Answer TerminalForms::ShowBox(const MessageBox& box) {
  if (box.icon != Icon::kInformation) boxesShown_.push_back(box.title);
  const std::string about = subject_.empty() ? "" : subject_ + ": ";
  if (!box.diskError.empty()) {
    WriteErrorLine((Holds(box.diskError, subject_) ? "" : about) + box.diskError);
    return Answer::kOk;
  }
  write(TerminalLines(HeadAndLines(about + box.title, box.text)));
  if (box.buttons == Buttons::kOk) return Answer::kOk;

  std::optional<Answer> answer = prepared(box);
  if (!answer && ::isatty(STDIN_FILENO) == 1) return askAtTerminal(box.buttons);
  const Answer given = answer.value_or(safeAnswer(box.buttons));
  const auto word = std::find_if(kAnswerWords.begin(), kAnswerWords.end(),
                                 [&](const AnswerWord& row) { return row.answer == given; });
  write("  answered " + std::string(word->prompt) +
        (answer ? "\n" : " (standard input is not a terminal)\n"));
  return given;
}

void TerminalForms::ShowWaiting(const std::string& text) {
  write(TerminalText((subject_.empty() ? "" : subject_ + ": ") + text + "\n"));
}

std::optional<std::string> TerminalForms::AskOpen(const FileDialog&) { return std::nullopt; }

std::optional<std::string> TerminalForms::AskSave(const FileDialog&) {
  return std::exchange(saveName_, std::nullopt);
}

}  // namespace ostrand::platform
