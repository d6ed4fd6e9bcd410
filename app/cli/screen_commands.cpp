// The commands for the setup screens.
#include "commands.h"
#include "find_files.h"
#include "model/new_store.h"
#include "output_report.h"
#include "project_run.h"
#include "projectfile/genfile.h"
#include "script/screen_catalog.h"
#include "script/screen_script.h"
#include "script/script_pruner.h"
#include "script/script_writer.h"
#include "script/unset_reasons.h"
#include "session/settings.h"
#include "text/codepage.h"
#include "text/nearest.h"
#include "text/strings.h"
#include "unchanged_settings.h"

namespace ostrand::cli {
namespace {

Result<std::string> scriptOf(CliHost& host, std::string_view path) {
  return path == "-" ? ReadInput() : host.files.Read(path);
}

// What the script changes in the project file.
bool showChanges(Ostrand& session, const std::string& before) {
  const std::string after = ORVUS_GENFILE::ProjectFileText(session.Store(), {});
  const std::string name = session.BaseName() + ".VKG";
  return Print(DifferenceText("a/" + name, before, "b/" + name, after));
}

std::string scriptHead(const std::string& name) {
  const std::string file = Utf8FromWindows1252(name) + ".VKG";
  return "# Makes the project " + file + " from a new one:\n#   ostrand new " + file +
         "\n#   ostrand screen " + file + " SCRIPT\n\n";
}

// What the script does not set and why, one key a line.
std::string unsetComments(const WrittenScript& script) {
  if (script.unset.empty()) return {};
  std::string text =
      "\n# The script does not set these keys as in the project; the reason follows each:\n";
  for (const UnsetKey& key : script.unset) {
    const auto value = [](const std::optional<std::string>& of) {
      return of ? Quoted(Utf8FromWindows1252(Trim(*of))) : std::string("no such key");
    };
    text += "#   " + Utf8FromWindows1252(key.key) + ": " + value(key.wanted) + " here, " +
            value(key.made) + " by the script; " + Utf8FromWindows1252(key.why) + "\n";
  }
  return text;
}

ExitCode keepSettings(const ScreenScript& player, Ostrand& session) {
  Settings& settings = session.UserSettings();
  if (!player.OpenedOptions() && !settings.ViewChanged()) return kDone;
  const Result<> kept = settings.SaveSettings();
  if (!kept) ReportError(kept.ErrorText());
  return kept ? kDone : kFault;
}

}  // namespace

ExitCode PlayScreens(const CommandLine& line) {
  ExitCode result = kFault;
  const auto host = HostOf(line, result);
  if (!host) return result;
  const std::string_view file = line.words[0];
  const std::string_view path = line.words[1];
  if (RefuseFolder(file)) return kFault;
  const auto script = scriptOf(*host, path);
  if (!script) {
    ReportError(script.ErrorText());
    return kFault;
  }
  ScriptForms forms(host->forms);
  OstrandEvents noEvents;
  const platform::Surroundings machine = host->Around(forms);
  const bool writes = line.OutputsAre() == Outputs::kWritten;
  UnchangedSettings settings(machine.settings);
  Ostrand session(TheStore(), writes ? machine : machine.With(settings), noEvents);
  session.OverwriteChanged(line.force);
  ScreenScript player(session, forms, script.Value());
  if (line.lenient) player.Lenient();
  player.OnShow = [](const std::string& text) {
    static_cast<void>(Print(platform::TerminalText(text)));
  };
  bool cancelled = false;
  session.OpenFile(file, cancelled);
  const auto reportBox = [&] {
    // No line of the script raised it.
    constexpr std::string_view kOfScripts = "unexpected box ";
    std::string box = forms.Unforeseen();
    if (box.starts_with(kOfScripts)) box.erase(0, kOfScripts.size());
    if (!box.empty()) ReportError(std::string(file) + ": " + box);
    return !box.empty();
  };
  if (reportBox() || cancelled) {
    ReportInterrupted(session);
    return kFault;
  }
  const std::string before =
      line.dryRun ? ORVUS_GENFILE::ProjectFileText(session.Store(), {}) : std::string();
  if (const Result<> played = player.Run(); !played) {
    ReportError(std::string(path == "-" ? "standard input" : path) + ": " + played.ErrorText());
    return kFault;
  }
  if (line.dryRun) return showChanges(session, before) ? kDone : kFault;
  ProjectRun run{line, host->files, host->forms};
  const bool written = WriteProject(run, session);
  if (!written) reportBox();
  if (!ReportOutputs(line, host->files.TakeMade(), written) || !written) return kFault;
  return writes ? keepSettings(player, session) : kDone;
}

ExitCode WriteScript(const CommandLine& line) {
  ExitCode result = kFault;
  const auto host = HostOf(line, result);
  if (!host || RefuseFolder(line.words.front())) return result;
  WriterForms wantedForms(false);
  WriterForms builtForms(true);
  OstrandEvents noEvents;
  Ostrand wanted(TheStore(), host->Around(wantedForms), noEvents);
  const auto store = NewStore();
  Ostrand built(*store, host->Around(builtForms), noEvents);
  ScriptWriter writer(wanted, wantedForms, built, builtForms);
  bool cancelled = false;
  wanted.OpenFile(line.words[0], cancelled);
  if (cancelled) {
    for (const WriterForms::Box& box : wantedForms.Boxes()) {
      ReportError(std::string(line.words.front()) + ": " + box.title + ": " + box.text);
    }
    ReportInterrupted(wanted);
    return kFault;
  }
  if (!built.NewProject("new.VKG")) return kFault;
  WrittenScript script = writer.Write();

  // The lines must do what was done to make them.
  const auto again = NewStore();
  ScriptForms forms(host->forms);
  Ostrand played(*again, host->Around(forms), noEvents);
  bool started = played.NewProject("new.VKG");
  if (started) script.lines = PruneScript(script.lines, played, forms, host->forms);
  started = started && played.NewProject("new.VKG");
  forms = ScriptForms(host->forms);
  ScreenScript player(played, forms, script.lines);
  const Result<> ran = player.Run();
  if (!started || !ran ||
      ORVUS_GENFILE::ProjectFileText(*again, {}) != ORVUS_GENFILE::ProjectFileText(*store, {})) {
    ReportError(std::string(line.words[0]) + ": the script would not make this project" +
                (ran ? "" : ": " + ran.ErrorText()));
    return kFault;
  }
  ExplainUnset(wanted, built, script.unset);
  const std::string text = scriptHead(wanted.BaseName()) + script.lines + unsetComments(script);
  return Print(platform::TerminalText(text)) ? kDone : kFault;
}

ExitCode ListScreens(const CommandLine& line) {
  ExitCode result = kFault;
  const auto host = HostOf(line, result);
  if (!host) return result;
  ScriptForms forms(host->forms);
  OstrandEvents noEvents;
  Ostrand session(TheStore(), host->Around(forms), noEvents);
  MakeCatalogProject(session.Store());
  Catalog catalog(session);
  if (!line.words.empty() && !catalog.Keep(line.words[0])) {
    ReportError("no screen " + std::string(line.words[0]) +
                DidYouMean(line.words[0], catalog.Names()));
    return kFault;
  }
  if (line.format == Format::kJson) return Print(catalog.Json()) ? kDone : kFault;
  const std::string lead =
      line.words.empty() ? std::string(ScriptHelp()) + "\n" + platform::TerminalText(CatalogLead())
                         : "";
  return Print(lead + platform::TerminalText(catalog.Text())) ? kDone : kFault;
}

}  // namespace ostrand::cli
