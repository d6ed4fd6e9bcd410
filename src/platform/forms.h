// How the user is asked and informed. A host implements it with windows, a terminal or a script.
#pragma once

#include <optional>
#include <string>

namespace ostrand::platform {

enum class Icon { kNone, kInformation, kExclamation, kQuestion, kStop };
enum class Buttons { kOk, kOkCancel, kYesNo, kYesNoCancel, kOverwriteCancel };
enum class Answer { kOk, kCancel, kYes, kNo, kOverwrite };
enum class Pointer { kNormal, kBusy };

// A message box. Lines of `text` are separated by CR LF.
struct MessageBox {
  std::string title;
  std::string text;
  Icon icon = Icon::kNone;
  Buttons buttons = Buttons::kOk;
  Answer preselected = Answer::kOk;  // kOk means the first button, whichever it is
  // Path and reason of a failure of the disk, for a host that shows an error line instead of a box.
  // Empty for any other box.
  std::string diskError = {};
};

// An open or save dialog for one file.
struct FileDialog {
  std::string title;
  std::string filter;
  std::string defaultExtension;
  std::string initialFolder;
  std::string fileName;
  int helpContext = 0;
};

class Forms {
 public:
  virtual ~Forms() = default;

  virtual Answer ShowBox(const MessageBox& box) = 0;
  // The full name chosen; nothing when the user cancelled.
  virtual std::optional<std::string> AskOpen(const FileDialog& dialog) = 0;
  virtual std::optional<std::string> AskSave(const FileDialog& dialog) = 0;
  // Sets the text of the panel "Help" of the status line and repaints it.
  virtual void SetHelpLine(const std::string& text) = 0;
  // What the session waits for at present; on the help line where a host has no other place.
  virtual void ShowWaiting(const std::string& text) { SetHelpLine(text); }
  virtual void SetPointer(Pointer shape) = 0;
  virtual void Beep() = 0;
  // Shows a help file at a context. A host without a viewer shows none.
  virtual void ShowHelp(const std::string& /*file*/, int /*context*/) {}
  // Lets the host's events run; for loops that wait, which rest themselves.
  virtual void DoEvents() = 0;
};

}  // namespace ostrand::platform
