// The commands for the setup screens.
#include "commands.h"
#include "project_run.h"
#include "script/screen_catalog.h"
#include "script/screen_script.h"
#include "session/settings.h"

namespace ostrand::cli {
ExitCode PlayScreens(const CommandLine& line) {
  ExitCode result = kFault;
  const auto host = HostOf(line, result);
  if (!host) return result;
  const std::string_view file = line.words[0];
  const std::string_view path = line.words[1];
  const auto script = host->files.Read(path);
  if (!script) {
    ReportError(script.ErrorText());
    return kFault;
  }
  ScriptForms forms(host->forms);
  OstrandEvents noEvents;
  Ostrand session(TheStore(), host->Around(forms), noEvents);
  session.OverwriteChanged(line.force);
  ScreenScript player(session, forms, script.Value());
  bool cancelled = false;
  session.OpenFile(file, cancelled);
  const auto reportBox = [&] {
    const std::string box = forms.Unforeseen();
    if (!box.empty()) ReportError(std::string(file) + ": " + box);
    return !box.empty();
  };
  if (reportBox() || cancelled) {
    ReportInterrupted(session);
    return kFault;
  }
  if (const Result<> played = player.Run(); !played) {
    ReportError(std::string(path) + ": " + played.ErrorText());
    return kFault;
  }
  ProjectRun run{line, host->files, host->forms, {}, 0};
  if (!WriteProject(run, session)) {
    reportBox();
    return kFault;
  }
  Settings& settings = session.UserSettings();
  if (!player.OpenedOptions() && !settings.ViewChanged()) return kDone;
  const Result<> kept = settings.SaveSettings();
  if (!kept) ReportError(kept.ErrorText());
  return kept ? kDone : kFault;
}

ExitCode ListScreens(const CommandLine& line) {
  ExitCode result = kFault;
  const auto host = HostOf(line, result);
  if (!host) return result;
  ScriptForms forms(host->forms);
  OstrandEvents noEvents;
  Ostrand session(TheStore(), host->Around(forms), noEvents);
  MakeCatalogProject(session.Store());
  const std::string text =
      std::string(ScriptHelp()) + "\n" + platform::TerminalText(ScreenCatalog(session));
  return Print(text) ? kDone : kFault;
}

}  // namespace ostrand::cli
