// The user at a terminal, or a script in their place.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"

namespace ostrand::platform {

// A file name for a text that goes to the terminal: control characters escaped ("\n", "\x1B",
// "\u009B").
std::string TerminalName(std::string_view name);

// A prepared answer to every box of a title, in any case.
struct PreparedAnswer {
  std::string title;
  Answer answer = Answer::kOk;
};

struct PreparedAnswers {
  std::vector<PreparedAnswer> byTitle;  // the last one of a title counts
  bool yes = false;                     // Yes or OK to every other question
};

// Boxes go to standard error: the subject and the title in one line, the text below it, in UTF-8;
// a failure of the disk is an error line with path and reason, and the subject unless it is in the
// path.
// A question is answered by what was prepared, else by the user when standard input is a terminal,
// else in the way that writes nothing: Cancel where there is one, or No. There are no file dialogs
// on a command line, which names its files itself: except for a prepared name to save under they
// count as cancelled.
class TerminalForms : public Forms {
 public:
  explicit TerminalForms(PreparedAnswers answers) : answers_(std::move(answers)) {}

  // The subject of the boxes from now on, for example the project file.
  void Subject(std::string_view name) { subject_ = TerminalName(name); }
  // The answer to the next dialog that asks where to save.
  void SaveAs(std::string name) { saveName_ = std::move(name); }
  // Titles of the boxes since the last call, in their order; except those that only inform.
  std::vector<std::string> TakeBoxesShown();

  Answer ShowBox(const MessageBox& box) override;
  std::optional<std::string> AskOpen(const FileDialog& dialog) override;
  std::optional<std::string> AskSave(const FileDialog& dialog) override;
  void SetHelpLine(const std::string&) override {}
  void ShowWaiting(const std::string& text) override;
  void SetPointer(Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}

 private:
  std::optional<Answer> prepared(const MessageBox& box) const;

  PreparedAnswers answers_;
  std::string subject_;
  std::optional<std::string> saveName_;
  std::vector<std::string> boxesShown_;
};

// The lines of a text of CR LF below its head, indented by two blanks.
std::string HeadAndLines(std::string_view head, std::string_view text);

// What a terminal shows is UTF-8: bytes that are not UTF-8 already, as file names are, are taken as
// Windows-1252, as project texts are. Control characters are escaped ("\n", "\x1B", "\u009B"), so
// that neither a project nor a file name can control the terminal.

// A text whose lines end in CR LF or LF, and may hold tabs.
std::string TerminalText(std::string_view text);
// A text whose lines end in CR LF. LF alone can only be in a file name.
std::string TerminalLines(std::string_view text);
// Bytes in UTF-8, control characters as they are.
std::string Utf8Text(std::string_view bytes);

// Writes an error of the command to standard error: "ostrand: " and the text, as TerminalLines
// shows it.
void WriteErrorLine(std::string_view text);

// Writes all bytes. False when they cannot be written, or a signal is to end the process.
bool WriteTerminal(int descriptor, std::string_view text);

}  // namespace ostrand::platform
