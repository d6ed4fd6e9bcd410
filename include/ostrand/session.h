// A session with one project.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ostrand/host.h"

namespace ostrand {
inline namespace v1 {

// The version of the library: "6.1.0.07".
std::string_view Version();

struct Nothing {};

// The value of a call, or why there is none. A call that fails halfway can have both.
template <class T = Nothing>
struct [[nodiscard]] Reply {
  T value{};
  std::string error;  // for a user to read, in UTF-8; empty on success
  explicit operator bool() const { return error.empty(); }
};

using Paths = std::vector<std::string>;

// What the checks found.
struct Problem {
  std::string title{};  // of the box that a save would show
  std::string text{};   // lines are separated by "\n"
  // The place in the project file: "[TABLE SETUP]" and "OutInt(2)". Empty without a single place.
  std::string section{};
  std::string key{};
  bool preventsSaving = false;  // a save asks about it
};

// What a script does about a refused key, a changed value, a spin without effect or a screen that
// stays open, when its next lines do not expect just that.
enum class Playing {
  kStrict,   // ends at that line, like `ostrand screen`
  kLenient,  // goes on, like `ostrand screen --lenient`
};

struct SessionOptions {
  // The name of the program; "Harrier", in any case, switches some behaviours.
  std::string hostName{};
  // File of the settings. Empty: that of the user, which the command `ostrand` uses too.
  std::string settingsFile{};
  // The logger's compiler, instead of that of the settings.
  std::string compiler{};
  // Seconds since 1970: every date written is this moment in UTC, so that equal projects give equal
  // files. Nothing: the local time.
  std::optional<std::int64_t> fixedTime{};
};

// Paths are bytes as the system has them; `/` and `\` both separate folders. All other texts are
// UTF-8; characters that the project's code page, Windows-1252, lacks become "?".
//
// A session belongs to the thread that made it. Calls from other threads are refused, and so are
// calls from a handler while one of this session runs: nothing happens, and the error says so. The
// routines that only report (File, Name, Unsaved, Running, Skipped) can be called at any time on
// that thread. A handler may even destroy the session: the running call still ends in order.
class Session {
 public:
  // A session with a new project without a file. The host must outlive it.
  explicit Session(Host& host, const SessionOptions& options = {});
  // Ends the session without a question; unsaved edits are lost.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // ---- The project ------------------------------------------------------------------------------

  // Starts a new project with the user's defaults, to be saved at `path`. Writes nothing.
  Reply<> New(std::string_view path);
  // Opens a project file. On failure the present project stays.
  Reply<> Open(std::string_view path);
  // Plays a script on the setup screens (docs/screens.md): lines of UTF-8. The error has the number
  // of the line that failed; the edits of the lines before it stay in the project, unsaved.
  Reply<> Play(std::string_view script, Playing playing = Playing::kStrict);

  // Path of the project file, empty for none, and its name.
  [[nodiscard]] std::string File() const;
  [[nodiscard]] std::string Name() const;
  [[nodiscard]] bool Unsaved() const;
  // Whether a call of this session is running; true in most handlers.
  [[nodiscard]] bool Running() const;
  // The lines of the project file that were not read, and that a save drops after it has kept the
  // old file; empty for none.
  [[nodiscard]] std::string Skipped() const;

  // ---- Reports ----------------------------------------------------------------------------------

  // All checks. Asks nothing and changes nothing.
  Reply<std::vector<Problem>> Check();
  // The summary and the wiring diagram, lines ending in "\n".
  Reply<std::string> Summary();
  Reply<std::string> Wiring();

  // ---- Files ------------------------------------------------------------------------------------

  // Writes program (.VKP), table description (.VKD) and wiring diagram (.VKW) into `folder`, or
  // beside the project file; the same bytes as `ostrand generate`. The paths written. A program
  // with a section that failed is written, and the error says so.
  Reply<Paths> Generate(std::string_view folder = {});
  // Checks, test-compiles and writes all four files, like the button "Save": what the checks find
  // is asked of the host. `path` names the project file; empty keeps its name. The paths written.
  Reply<Paths> Save(std::string_view path = {});
  // The same, followed by the event ProgramReady if the program compiled. Otherwise the error says
  // why there was none.
  Reply<Paths> SaveAndSend(std::string_view path = {});
  // A save that finds the project file changed by another program asks the host; `true` overwrites
  // without asking.
  void OverwriteChanged(bool overwrite);

  // Has the logger's compiler test the program; the measured times become part of the project. A
  // bad program shows the box "COMPILE RESULT".
  Reply<> Compile();

  // Ends the session as a user does: asks about unsaved edits, keeps the settings and raises
  // SessionComplete. An error when the user cancelled.
  Reply<> Close();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace v1
}  // namespace ostrand
