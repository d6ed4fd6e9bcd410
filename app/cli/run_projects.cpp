// Runs a command for all files of a line, in this process or by several.
#include <algorithm>
#include <chrono>
#include <map>

#include "depfile.h"
#include "find_files.h"
#include "jobs.h"
#include "json_documents.h"
#include "model/store.h"
#include "output_report.h"
#include "platform/paths.h"
#include "platform/posix/terminal_forms.h"
#include "project_run.h"
#include "text/codepage.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kProgressAfter{2};
constexpr std::string_view kStandardInput = "-";

// What all files of a run have in common.
struct Run {
  const CommandLine& line;
  ProjectCommand command;
  CliHost& host;
  std::vector<std::string> files;
  Clock::time_point start = Clock::now();
};

// The result of some files.
struct Handled {
  ExitCode code = kDone;
  std::vector<std::string> pieces;
  std::string rules;  // of the depfile
};

void showProgress(const Run& run, std::size_t done) {
  if (run.line.quiet || run.files.size() < 2 || Clock::now() - run.start < kProgressAfter) return;
  ShowProgress(NumberText(static_cast<int>(done)) + " of " +
               NumberText(static_cast<int>(run.files.size())) + " files");
}

std::string secondsSince(Clock::time_point start) {
  const std::chrono::duration<double> time = Clock::now() - start;
  return FormatNumber(time.count(), "0.000") + " s";
}

// One file; false on a fault.
bool handle(const Run& run, ProjectRun& project, const std::string& file, std::string& rules) {
  CliHost& host = run.host;
  const Clock::time_point start = run.line.verbose ? Clock::now() : Clock::time_point();
  host.forms.Subject(file);
  OstrandEvents noEvents;
  Ostrand session(TheStore(), host.Around(host.forms), noEvents);
  session.HostApp(run.line.hostApp);
  session.OverwriteChanged(run.line.force);
  const std::size_t before = project.written.size();
  bool worked = run.command(project, session, file);
  for (const std::string& fault : session.ProgramFaults()) {
    ReportError(file + ": the program is not complete: " + Utf8FromWindows1252(fault));
  }
  if (!ReportOutputs(run.line, project.files.TakeMade(), worked)) worked = false;
  if (!run.line.depfile.empty() && worked) {
    rules += MakeRule(std::span(project.written).subspan(before), session.CurrentFileName());
  }
  if (run.line.verbose) {
    PrintHint(platform::TerminalText(file + ": done in " + secondsSince(start) + "\n"));
  }
  return worked && host.forms.TakeBoxesShown().empty();
}

// The files of these numbers, one after the other.
Handled handleAll(const Run& run, std::span<const std::size_t> numbers, bool progress) {
  Handled done;
  ProjectRun project{run.line, run.host.files, run.host.forms};
  std::size_t handled = 0;
  for (const std::size_t number : numbers) {
    if (progress) showProgress(run, handled++);
    if (!handle(run, project, run.files[number], done.rules)) done.code = kFault;
  }
  ClearProgress();
  done.pieces = std::move(project.pieces);
  return done;
}

// ---- By several processes -----------------------------------------------------------------------

// Projects of one name can have the same outputs: one process handles them in their order.
std::vector<std::vector<std::size_t>> jobsOf(const std::vector<std::string>& files) {
  std::vector<std::vector<std::size_t>> jobs;
  std::map<std::string, std::size_t> jobOfTitle;
  for (std::size_t number = 0; number < files.size(); ++number) {
    const std::string title = platform::Split(files[number]).title;
    const auto [job, added] =
        jobOfTitle.emplace(Upper(Ostrand::WithoutExtension(Upper(title))), jobs.size());
    if (added) jobs.emplace_back();
    jobs[job->second].push_back(number);
  }
  return jobs;
}

// "5:hello" for each text.
std::string packed(const std::vector<std::string>& texts) {
  std::string bytes;
  for (const std::string& text : texts) {
    bytes.append(NumberText(static_cast<int>(text.size()))).append(":").append(text);
  }
  return bytes;
}

std::vector<std::string> unpacked(std::string_view bytes) {
  std::vector<std::string> texts;
  while (!bytes.empty()) {
    const auto size = static_cast<std::size_t>(ToInt32(Before(bytes, ":")).value_or(0));
    bytes = After(bytes, ":");
    texts.emplace_back(bytes.substr(0, size));
    bytes.remove_prefix(std::min(size, bytes.size()));
  }
  return texts;
}

// Adds what a job passed back: its rules and its pieces.
void add(Handled& all, const JobEnd& end) {
  std::vector<std::string> texts = unpacked(end.result);
  if (texts.empty()) return;
  all.rules += texts.front();
  all.pieces.insert(all.pieces.end(), std::make_move_iterator(texts.begin() + 1),
                    std::make_move_iterator(texts.end()));
}

Handled handleByJobs(const Run& run, int atOnce) {
  const std::vector<std::vector<std::size_t>> jobs = jobsOf(run.files);
  Handled all;
  std::size_t handled = 0;
  const auto body = [&](std::size_t job, int descriptor) {
    const Handled done = handleAll(run, jobs[job], false);
    std::vector<std::string> texts = {done.rules};
    texts.insert(texts.end(), done.pieces.begin(), done.pieces.end());
    return platform::WriteTerminal(descriptor, packed(texts)) ? int{done.code} : int{kFault};
  };
  const auto done = [&](std::size_t job, const JobEnd& end) {
    if (!end.err.empty()) PrintHint(end.err);
    if (!end.out.empty() && !Print(end.out)) all.code = kFault;
    if (end.code < 0 || end.code > kWrongUsage) {
      ReportError(run.files[jobs[job].front()] + ": its process ended early");
    }
    if (end.code != kDone) all.code = end.code == kWrongUsage ? kWrongUsage : kFault;
    add(all, end);
    handled += jobs[job].size();
    showProgress(run, handled);
  };
  RunJobs(jobs.size(), atOnce, body, done);
  ClearProgress();
  return all;
}

// ---- The whole line -----------------------------------------------------------------------------

// Standard input becomes a project of a fixed name. False if it cannot be read, which has been
// reported then.
bool takeStandardInput(Run& run) {
  const auto word = std::find(run.files.begin(), run.files.end(), kStandardInput);
  if (word == run.files.end()) return true;
  auto bytes = ReadInput();
  if (bytes) {
    *word = kStandardInputName;
    run.host.files.TakeStandardInput(std::move(bytes.Value()));
  } else {
    ReportError(bytes.ErrorText());
  }
  return static_cast<bool>(bytes);
}

RunResult runAll(const Run& run) {
  const int jobs = run.line.jobs == 0 ? ProcessorCount() : run.line.jobs;
  Handled handled;
  if (jobs > 1 && run.files.size() > 1) {
    handled = handleByJobs(run, jobs);
  } else {
    std::vector<std::size_t> numbers(run.files.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = i;
    handled = handleAll(run, numbers, true);
  }
  if (!WriteDepfile(run.line, handled.rules)) handled.code = kFault;
  return {handled.code, std::move(handled.pieces)};
}

RunResult runWords(const CommandLine& line, std::span<const std::string_view> words,
                   ProjectCommand command) {
  FoundFiles found = FilesOf(line, words, ".VKG");
  CommandLine adjusted = line;
  const bool fromInput =
      std::find(found.files.begin(), found.files.end(), kStandardInput) != found.files.end();
  if (fromInput && line.outputFolder.empty() && line.OutputsAre() == Outputs::kWritten) {
    adjusted.toStandardOutput = true;
  }
  if (adjusted.toStandardOutput && found.files.size() > 1) {
    return {WrongUsage("standard output takes one file", line.command), {}};
  }
  RunResult result;
  result.code = kFault;
  const auto host = HostOf(adjusted, result.code);
  if (!host) return result;
  Run run{adjusted, command, *host, std::move(found.files)};
  if (!takeStandardInput(run)) return result;
  result = runAll(run);
  if (!found.complete && result.code == kDone) result.code = kFault;
  return result;
}

}  // namespace

RunResult RunProjects(const CommandLine& line, ProjectCommand command) {
  return runWords(line, line.words, command);
}

ExitCode ForProject(const CommandLine& line, ProjectCommand command) {
  return runWords(line, std::span(line.words).first(1), command).code;
}

ExitCode PrintArray(const CommandLine& line, ProjectCommand command) {
  const RunResult result = RunProjects(line, command);
  return Print(JsonArray(result.pieces)) ? result.code : kFault;
}

}  // namespace ostrand::cli
