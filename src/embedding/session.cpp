#include <ostrand/session.h>

#include <thread>
#include <utility>

#include "documents/makewire.h"
#include "documents/rich_text.h"
#include "embedding/host_forms.h"
#include "model/defaults.h"
#include "model/store.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "platform/posix/posix_machine.h"
#include "platform/posix/terminal_forms.h"
#include "projectfile/read_report.h"
#include "screens/setup_screens.h"
#include "script/screen_script.h"
#include "session/settings.h"
#include "session/user_action.h"
#include "text/codepage.h"
#include "verify/verify_before_save.h"

namespace ostrand {
inline namespace v1 {
namespace {

constexpr std::string_view kOtherThread = "Refused: a session is used on the thread that made it.";
constexpr std::string_view kRunning = "Refused: a call of this session is running.";

// Lines of LF.
std::string plainLines(std::string text) {
  std::erase(text, '\r');
  return text;
}

std::string utf8(std::string_view windows1252) {
  return plainLines(Utf8FromWindows1252(windows1252));
}

// For the time when no script plays: no screen opens.
class NoScreens : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override { screen.End(ModalResult::kCancel); }
};

std::string settingsPath(const SessionOptions& options) {
  return options.settingsFile.empty() ? platform::UserSettingsPath() : options.settingsFile;
}

}  // namespace

std::string_view Version() { return ORVUS_COMMON::kModuleVersion; }

struct Session::State {
  State(Host& host, const SessionOptions& theOptions)
      : options(theOptions),
        machine(platform::Syncing::kOn, theOptions.fixedTime, settingsPath(theOptions)),
        hostForms(host),
        forms(hostForms),
        events(host),
        control(store, machine.Around(forms), events) {
    control.HostApp(options.hostName);
    ConnectSetupScreens(control, noScreens);  // a main button without a screen is disabled
  }

  // Why a call is refused; empty for one that may run.
  [[nodiscard]] std::string_view Refused() const {
    if (std::this_thread::get_id() != thread) return kOtherThread;
    return running ? kRunning : std::string_view();
  }

  void UseCompiler() {
    if (!options.compiler.empty()) control.UserSettings().CompilerPath(options.compiler);
  }
  [[nodiscard]] std::string BaseIn(std::string_view folder) const;
  [[nodiscard]] std::string ProgramFaults() const;
  Reply<Paths> SaveBy(int button, std::string_view path);
  [[nodiscard]] std::string WhyNotSent() const;

  const SessionOptions options;
  const std::thread::id thread = std::this_thread::get_id();
  bool running = false;

  ProjectStore store;
  platform::PosixMachine machine;
  embedding::HostForms hostForms;
  embedding::ExchangedForms forms;
  embedding::HostEvents events;
  NoScreens noScreens;
  Ostrand control;
};

namespace {

// Runs one call of a session, unless it is refused; a Fault in it is reported under `routine`.
// `state` is a copy of the session's pointer: a handler may destroy the session.
template <class T, class State, class Body>
Reply<T> call(std::shared_ptr<State> state, std::string_view routine, Body&& body) {
  Reply<T> reply;
  reply.error = state->Refused();
  if (!reply) return reply;
  {
    const Marked running(state->running);
    state->hostForms.StartCall();
    state->events.StartCall();
    if (!Guarded(state->forms, routine, [&] { body(*state, reply); })) {
      reply.error = state->hostForms.LastBoxOr("The call failed.");
    }
  }
  state->events.EndCall();
  return reply;
}

}  // namespace

Session::Session(Host& host, const SessionOptions& options)
    : state_(std::make_shared<State>(host, options)) {}

Session::~Session() = default;

// ---- The project --------------------------------------------------------------------------------

Reply<> Session::New(std::string_view path) {
  return call<Nothing>(state_, "Session.New", [&](State& state, Reply<>& reply) {
    if (!state.control.NewProject(path)) {
      reply.error = state.hostForms.LastBoxOr("The project was not started.");
    } else if (state.control.BaseName().empty()) {
      reply.error = std::string(path) + ": no file name";
    }
  });
}

Reply<> Session::Open(std::string_view path) {
  return call<Nothing>(state_, "Session.Open", [&](State& state, Reply<>& reply) {
    bool cancelled = false;
    // An empty name would ask the user.
    if (!path.empty()) state.control.OpenFile(path, cancelled);
    if (path.empty()) {
      reply.error = "No file name";
    } else if (cancelled) {
      reply.error = state.hostForms.LastBoxOr(std::string(path) + ": not opened");
    }
  });
}

Reply<> Session::Play(std::string_view script, Playing playing) {
  return call<Nothing>(state_, "Session.Play", [&](State& state, Reply<>& reply) {
    ScriptForms scripted(state.hostForms);
    platform::Forms& usual = state.forms.Exchange(scripted);
    const auto play = [&] {
      ScreenScript player(state.control, scripted, script);
      if (playing == Playing::kLenient) player.Lenient();
      const auto played = player.Run();
      if (!played) {
        reply.error = platform::Utf8Text(played.ErrorText());
      } else if (player.OpenedOptions() || state.control.UserSettings().ViewChanged()) {
        const auto kept = state.control.UserSettings().SaveSettings();
        if (!kept) reply.error = kept.ErrorText();
      }
    };
    Finally(play, [&] {
      state.forms.Exchange(usual);
      ConnectSetupScreens(state.control, state.noScreens);  // they were connected to the script
    });
  });
}

std::string Session::File() const { return state_->control.CurrentFileName(); }
std::string Session::Name() const { return state_->control.BaseName(); }
bool Session::Unsaved() const { return state_->control.DirtyFlag(); }
bool Session::Running() const { return state_->running; }

std::string Session::Skipped() const {
  const auto& skipped = state_->control.SkippedLines();
  return skipped.skipped == 0 ? std::string() : utf8(ORVUS_GENFILE::SkippedText(skipped));
}

// ---- Reports ------------------------------------------------------------------------------------

Reply<std::vector<Problem>> Session::Check() {
  return call<std::vector<Problem>>(
      state_, "Session.Check", [&](State& state, Reply<std::vector<Problem>>& reply) {
        for (const Finding& finding : CheckAll(state.control.Checks())) {
          reply.value.push_back({.title = utf8(finding.title),
                                 .text = utf8(finding.text),
                                 .section = std::string(finding.section),
                                 .key = finding.key,
                                 .preventsSaving = finding.againstSaving});
        }
      });
}

Reply<std::string> Session::Summary() {
  return call<std::string>(state_, "Session.Summary", [&](State& state, Reply<std::string>& reply) {
    reply.value = utf8(state.control.SummaryBox().Text());
  });
}

Reply<std::string> Session::Wiring() {
  return call<std::string>(state_, "Session.Wiring", [&](State& state, Reply<std::string>& reply) {
    reply.value = plainLines(WiringUtf8(state.control.WiringText()));
    reply.error = state.ProgramFaults();
  });
}

// ---- Files --------------------------------------------------------------------------------------

std::string Session::State::BaseIn(std::string_view folder) const {
  const platform::SplitPath parts = platform::Split(control.CurrentFileName());
  const std::string in = folder.empty() ? parts.folder : platform::WithSeparator(folder);
  return in + std::string(Ostrand::WithoutExtension(parts.title));
}

std::string Session::State::ProgramFaults() const {
  std::string text;
  for (const std::string& fault : control.ProgramFaults()) {
    text += (text.empty() ? "The program is not complete: " : "\n") + utf8(fault);
  }
  return text;
}

Reply<Paths> Session::Generate(std::string_view folder) {
  return call<Paths>(state_, "Session.Generate", [&](State& state, Reply<Paths>& reply) {
    Ostrand& control = state.control;
    if (control.CurrentFileName().empty()) {
      reply.error = "The project has no file name";
      return;
    }
    const std::string base = state.BaseIn(folder);
    const auto wrote = [&](bool written, std::string_view extension) {
      if (written) reply.value.push_back(state.machine.files.Find(base + std::string(extension)));
      return written;
    };
    const bool done = control.UnderLock(base, [&] {
      return wrote(control.WriteProgram(base), ".VKP") &&
             wrote(control.WriteTableDescription(base), ".VKD") &&
             wrote(control.WriteWiringDiagram(base), ".VKW");
    });
    reply.error = state.ProgramFaults();
    if (!done && reply) reply.error = state.hostForms.LastBoxOr(base + ": not written");
  });
}

// Presses a save button. The name is known, so that its dialog does not come.
Reply<Paths> Session::State::SaveBy(int button, std::string_view path) {
  Reply<Paths> reply;
  const std::string name(path.empty() ? control.CurrentFileName() : path);
  if (name.empty()) {
    reply.error = "The project has no file name";
    return reply;
  }
  UseCompiler();
  hostForms.SaveAs(name);
  bool reached = false;  // the point where a save begins to write
  Finally([&] { control.Click(button); }, [&] { reached = !hostForms.ForgetName(); });
  if (reached) reply.value = control.SavedFiles();
  if (!reached || !control.Saved()) {
    reply.error = hostForms.LastBoxOr(name + ": not saved");
  } else {
    reply.error = ProgramFaults();
  }
  return reply;
}

std::string Session::State::WhyNotSent() const {
  if (!control.CompileSkipped().empty()) return control.CompileSkipped();
  return hostForms.LastBoxOr("The program was not test-compiled.");
}

Reply<Paths> Session::Save(std::string_view path) {
  return call<Paths>(state_, "Session.Save", [&](State& state, Reply<Paths>& reply) {
    reply = state.SaveBy(kSaveButton, path);
  });
}

Reply<Paths> Session::SaveAndSend(std::string_view path) {
  return call<Paths>(state_, "Session.SaveAndSend", [&](State& state, Reply<Paths>& reply) {
    state.control.SetSaveDownload(true);
    reply = state.SaveBy(kSaveAndSendButton, path);
    if (reply && !state.events.HasProgram()) reply.error = "Not sent. " + state.WhyNotSent();
  });
}

void Session::OverwriteChanged(bool overwrite) { state_->control.OverwriteChanged(overwrite); }

Reply<> Session::Compile() {
  return call<Nothing>(state_, "Session.Compile", [&](State& state, Reply<>& reply) {
    state.UseCompiler();
    state.control.RunPreCompile();
    if (!state.control.CompileFailed()) return;
    reply.error = state.control.CompileSkipped();
    if (reply) reply.error = state.hostForms.LastBoxOr("The program does not compile.");
  });
}

Reply<> Session::Close() {
  return call<Nothing>(state_, "Session.Close", [&](State& state, Reply<>& reply) {
    i16 cancelled = kFalse;
    state.control.CloseSession(false, cancelled);
    if (cancelled != kFalse) reply.error = state.hostForms.LastBoxOr("The session goes on.");
  });
}

}  // namespace v1
}  // namespace ostrand
