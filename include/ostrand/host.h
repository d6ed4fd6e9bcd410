// What a session asks of the program that embeds it, and what it reports to it.
#pragma once

#include <optional>
#include <string>

namespace ostrand {
inline namespace v1 {

enum class BoxButtons { kOk, kOkCancel, kYesNo, kYesNoCancel, kOverwriteCancel };
enum class BoxAnswer { kOk, kCancel, kYes, kNo, kOverwrite };
enum class BoxIcon { kNone, kInformation, kExclamation, kQuestion, kStop };

// A message box. The title identifies it; docs/handbook.md lists all of them. Texts are UTF-8,
// lines are separated by "\n".
struct Box {
  std::string title{};
  std::string text{};
  BoxIcon icon = BoxIcon::kNone;
  BoxButtons buttons = BoxButtons::kOk;
  BoxAnswer preselected = BoxAnswer::kOk;  // kOk means the first button, whichever it is
};

// The answer that changes and loses nothing: Cancel where there is one, otherwise No, otherwise OK.
BoxAnswer SafeAnswer(BoxButtons buttons);

// A dialog for the name of one file.
struct FileQuestion {
  std::string title{};
  std::string filter{};  // "(*.VKG)|*.VKG|(All Files)|*.*"
  std::string folder{};
  std::string name{};
  bool toSave = false;
};

// Overrides what the program needs; every routine has a default that does nothing.
//
// All routines are called on the thread of the session's call, before that call returns. Each may
// throw: the exception leaves the session's call, which ends as after a cancelled action, and the
// session can be used on. Calls of the same session from here that would change, write or compile
// something are refused, except from the events marked with (*), which come when the call is done.
class Host {
 public:
  virtual ~Host() = default;

  // ---- Questions --------------------------------------------------------------------------------

  // Shows a box and returns the button. While a script plays, its lines answer instead.
  virtual BoxAnswer Show(const Box& box) { return SafeAnswer(box.buttons); }
  // The full path chosen; nothing when the user cancelled.
  virtual std::optional<std::string> ChooseFile(const FileQuestion& /*question*/) {
    return std::nullopt;
  }

  // ---- While a call runs ------------------------------------------------------------------------

  // A line of help or progress; empty clears it.
  virtual void ShowHelpLine(const std::string& /*text*/) {}
  // A long action begins or ends.
  virtual void ShowBusy(bool /*busy*/) {}
  virtual void Beep() {}
  // Called while the session waits: about every millisecond for the compiler, about every ten for
  // another save of the project. Handle events here, but don't wait: the session pauses between two
  // calls.
  virtual void RunEvents() {}

  // ---- Events -----------------------------------------------------------------------------------

  // The session has another project file.
  virtual void ProjectNamed(const std::string& /*path*/) {}
  // The project has unsaved edits, or none any more.
  virtual void UnsavedChanged(bool /*unsaved*/) {}
  // The summary was drawn anew.
  virtual void SummaryChanged() {}
  // (*) The program at `path` was saved by Session::SaveAndSend and is ready for the logger.
  virtual void ProgramReady(const std::string& /*path*/) {}
  // (*) The session was closed.
  virtual void SessionComplete() {}
};

}  // namespace v1
}  // namespace ostrand
