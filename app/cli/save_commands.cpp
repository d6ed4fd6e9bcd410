// The commands that take a project through the logger's compiler and to the logger.
#include <algorithm>
#include <memory>

#include "commands.h"
#include "json_documents.h"
#include "model/warnings.h"
#include "platform/guarded.h"
#include "platform/posix/posix_socket.h"
#include "project_run.h"
#include "session/settings.h"
#include "text/number.h"

namespace ostrand::cli {
namespace {

// ---- Saving -------------------------------------------------------------------------------------

// Passes messages on and notes whether the last one was sent.
class NotedSocket : public SocketObject {
 public:
  explicit NotedSocket(SocketObject& socket) : socket_(socket) {}
  Result<> SendData(std::string_view bytes) override {
    auto result = socket_.SendData(bytes);
    sent_ = static_cast<bool>(result);
    return result;
  }
  [[nodiscard]] bool Sent() const { return sent_; }

 private:
  SocketObject& socket_;
  bool sent_ = false;
};

// Warnings that did not prevent saving were shown and are not failures; trouble is one.
bool noTrouble(platform::TerminalForms& forms) {
  const std::vector<std::string> titles = forms.TakeBoxesShown();
  return std::find(titles.begin(), titles.end(), kTroubleTitle) == titles.end();
}

// Presses the button; whether all files were written.
bool saveBy(int button, ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  UseCompiler(run, session);
  run.forms.SaveAs(run.line.outputFolder.empty() ? session.CurrentFileName()
                                                 : OutputBase(run, session) + ".VKG");
  session.Click(button);
  bool printed = true;
  if (!session.SavedFiles().empty()) WarnOfSkippedLines(session, session.SavedFiles().front());
  for (const std::string& name : session.SavedFiles())
    printed = ReportWritten(run, name) && printed;
  if (!session.CompileSkipped().empty()) ReportError(session.CompileSkipped());
  if (session.ChangedOutside()) ReportChanged(session.CurrentFileName());
  if (!session.Saved()) ReportError(std::string(file) + ": not saved");
  return noTrouble(run.forms) && printed && session.Saved();
}

bool saveAndSend(ProjectRun& run, Ostrand& session, std::string_view file) {
  const CommandLine& line = run.line;
  auto server = platform::TcpSocket::Connect(line.sendHost, line.sendPort);
  if (!server) {
    ReportError(server.ErrorText() + "; " + std::string(file) + " was not saved");
    return false;
  }
  NotedSocket socket(*server.Value());
  session.HostApp("Harrier");
  session.SocketControl(&socket);
  session.isSocketConnected(true);
  session.isHarrierRunning(true);
  const bool saved = saveBy(kSaveAndSendButton, run, session, file);
  if (!socket.Sent()) {
    ReportError(std::string(file) + ": not sent");
    return false;
  }
  return Print("sent to " + line.sendHost + ":" + line.sendPort + "\n") && saved;
}

bool save(ProjectRun& run, Ostrand& session, std::string_view file) {
  return run.line.sendHost.empty() ? saveBy(kSaveButton, run, session, file)
                                   : saveAndSend(run, session, file);
}

// ---- The test compile ---------------------------------------------------------------------------

void addTime(std::string& text, std::string name, i32 time) {
  if (time == 0) return;
  name.resize(std::max<std::size_t>(name.size() + 1, 24), ' ');
  const std::string number = NumberText(time);
  text.append("  ").append(name);
  text.append(number.size() < 10 ? 10 - number.size() : 0, ' ').append(number).append(" uSec\n");
}

template <class Group>
void addTimes(std::string& text, const std::string& name, const Group& group) {
  for (int block = 1; block <= group.BlockCount; ++block) {
    addTime(text, name + " block " + NumberText(block), group[block].BlockTime);
  }
}

// What the compiler measured, one line for each time.
std::string measuredTimes(const ProjectStore& store) {
  std::string text;
  addTime(text, "Battery", store.Config.BatteryTime);
  addTime(text, "Panel temperature", store.Config.PanelTime);
  addTimes(text, "Thermocouple", store.TempBlock);
  addTimes(text, "Voltage", store.VoltBlock);
  addTimes(text, "Bridge", store.BridgeBlock);
  addTimes(text, "Pulse", store.PulseBlock[0]);
  addTimes(text, "TK40M", store.TK40MBlock);
  return text;
}

bool compile(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  UseCompiler(run, session);
  Settings& settings = session.UserSettings();
  settings.WarningMessageMask(settings.WarningMessageMask() | kShowCompileResult);
  session.RunPreCompile();
  if (session.CompileFailed()) {
    const bool skipped = !session.CompileSkipped().empty();
    if (skipped) ReportError(session.CompileSkipped());
    ReportError(std::string(file) + (skipped ? ": not compiled" : ": does not compile"));
    return false;
  }
  if (run.line.format == Format::kJson) {
    run.pieces.push_back(TimesJson(file, session.Store()));
    return !run.line.store || WriteProject(run, session);
  }
  const std::string result = platform::TerminalName(file) + ": test compiled OK\n";
  return Print(platform::TerminalText(result + measuredTimes(session.Store()))) &&
         (!run.line.store || WriteProject(run, session));
}

}  // namespace

ExitCode Save(const CommandLine& line) {
  if (!line.sendHost.empty() && line.OutputsAre() != Outputs::kWritten) {
    return WrongUsage("--send needs a program that is written", "save");
  }
  return ForEachProject(line, save);
}

ExitCode Compile(const CommandLine& line) {
  return line.format == Format::kJson ? PrintArray(line, compile) : ForEachProject(line, compile);
}

}  // namespace ostrand::cli
