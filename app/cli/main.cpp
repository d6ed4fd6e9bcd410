// The command `ostrand`: a host on a terminal.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/defaults.h"
#include "platform/paths.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/terminal_forms.h"
#include "session/ostrand.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::Answer;

enum ExitCode : int { kDone = 0, kFault = 1, kWrongUsage = 2 };

// ---- What can be said on the command line -------------------------------------------------------

enum OptionId : unsigned {
  kOutput = 1U << 0,
  kHostApp = 1U << 1,
  kForce = 1U << 2,
  kAnswer = 1U << 3,
  kYes = 1U << 4,
  kNoSync = 1U << 5,
  kHelp = 1U << 6,
};

struct OptionRow {
  OptionId id;
  std::string_view name;
  std::string_view shortName;
  std::string_view value;  // what the help calls the value; empty for a switch
  std::string_view help;
};

constexpr std::array<OptionRow, 7> kOptions = {{
    {kOutput, "--output", "-o", "DIR", "write into the folder DIR, which must exist"},
    {kHostApp, "--host-app", "", "NAME", "write for the host NAME, \"Harrier\" for one"},
    {kForce, "--force", "", "", "replace the file when it exists"},
    {kAnswer, "--answer", "", "TITLE=yes|no|cancel|ok", "answer the message box TITLE so"},
    {kYes, "--yes", "", "", "answer every other question with yes or ok"},
    {kNoSync, "--no-sync", "", "", "do not wait until the disk has the files (for benchmarks)"},
    {kHelp, "--help", "-h", "", "show this help"},
}};

struct CommandLine {
  std::vector<std::string_view> files;
  std::string outputFolder;  // with its separator; empty for beside the project
  std::string_view hostApp;
  bool force = false;
  platform::PreparedAnswers answers;
  platform::Syncing syncing = platform::Syncing::kOn;
  bool help = false;
};

// What a command works with, and what has happened so far.
struct Run {
  const CommandLine& line;
  platform::PosixFileSystem& files;
  platform::TerminalForms& forms;
  std::vector<std::string> written;  // names as they stand on the disk
};

// A command handles one file in a session of its own; false when the user must see to something.
using Command = bool (*)(Run& run, Ostrand& session, std::string_view file);

bool generate(Run& run, Ostrand& session, std::string_view file);
bool resave(Run& run, Ostrand& session, std::string_view file);
bool startNew(Run& run, Ostrand& session, std::string_view file);

constexpr unsigned kCommonOptions = kAnswer | kYes | kNoSync | kHelp;

struct CommandRow {
  std::string_view name;
  std::string_view arguments;
  std::string_view help;
  unsigned options;
  bool manyFiles;
  Command command;
};

constexpr std::array<CommandRow, 3> kCommands = {{
    {"generate", "FILE.VKG...", "write the logger program (.VKP) of each project",
     kCommonOptions | kOutput | kHostApp, true, generate},
    {"resave", "FILE.VKG...", "load each project and write its project file again",
     kCommonOptions | kOutput, true, resave},
    {"new", "FILE.VKG", "write a project file with the defaults of a new project",
     kCommonOptions | kForce, false, startNew},
}};

struct AnswerName {
  std::string_view name;
  Answer answer;
};

constexpr std::array<AnswerName, 4> kAnswerNames = {{
    {"yes", Answer::kYes},
    {"no", Answer::kNo},
    {"cancel", Answer::kCancel},
    {"ok", Answer::kOk},
}};

// ---- Talking ------------------------------------------------------------------------------------

bool put(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void complain(std::string_view text) {
  put(STDERR_FILENO, platform::TerminalText("ostrand: " + std::string(text) + "\n"));
}

// Standard output that cannot be written is a fault like any other file.
bool say(const std::string& text) {
  if (put(STDOUT_FILENO, text)) return true;
  complain("standard output cannot be written");
  return false;
}

ExitCode wrongUsage(std::string_view text, const CommandRow* command) {
  complain(text);
  put(STDERR_FILENO, "Try: ostrand help" +
                         (command != nullptr ? " " + std::string(command->name) : std::string()) +
                         "\n");
  return kWrongUsage;
}

std::string column(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 2, width), ' ');
  return text;
}

std::string optionHelp(const OptionRow& option) {
  std::string head = "  ";
  if (!option.shortName.empty()) head.append(option.shortName).append(", ");
  head += option.name;
  if (!option.value.empty()) head.append(" ").append(option.value);
  return column(std::move(head), 36).append(option.help).append("\n");
}

ExitCode showHelp(const CommandRow* command) {
  std::string text = "Usage: ostrand ";
  if (command != nullptr) {
    text.append(command->name).append(" [OPTION]... ").append(command->arguments);
    text.append("\nIn short: ").append(command->help).append(".\n\nOptions:\n");
    for (const OptionRow& option : kOptions) {
      if ((command->options & option.id) != 0) text += optionHelp(option);
    }
  } else {
    text += "COMMAND [OPTION]... FILE...\nPrograms for the data logger VK7300.\n\nCommands:\n";
    for (const CommandRow& row : kCommands) {
      std::string head = "  " + std::string(row.name) + " " + std::string(row.arguments);
      text += column(std::move(head), 36).append(row.help).append("\n");
    }
    text +=
        "\n\"ostrand help COMMAND\" tells the options of a command, \"ostrand --version\" the "
        "version.\n";
  }
  text +=
      "\nMessage boxes go to standard error. A question that nobody answers is answered in the\n"
      "way that writes nothing. SOURCE_DATE_EPOCH fixes the date and time in the files (UTC).\n"
      "Exit codes: 0 done, 1 a fault in a project or file, 2 wrong usage.\n";
  return say(text) ? kDone : kFault;
}

// ---- Reading the command line -------------------------------------------------------------------

bool takeAnswer(CommandLine& line, std::string_view value) {
  const std::size_t at = value.rfind('=');
  if (at == std::string_view::npos || at == 0) return false;
  for (const AnswerName& row : kAnswerNames) {
    if (!SameText(row.name, value.substr(at + 1))) continue;
    line.answers.byTitle.push_back({std::string(value.substr(0, at)), row.answer});
    return true;
  }
  return false;
}

bool takeOption(CommandLine& line, OptionId id, std::string_view value) {
  switch (id) {
    case kOutput:
      line.outputFolder = std::string(value) + (value.ends_with('/') ? "" : "/");
      return !value.empty();
    case kHostApp:
      line.hostApp = value;
      return true;
    case kForce:
      line.force = true;
      return true;
    case kAnswer:
      return takeAnswer(line, value);
    case kYes:
      line.answers.yes = true;
      return true;
    case kNoSync:
      line.syncing = platform::Syncing::kOff;
      return true;
    case kHelp:
      line.help = true;
      return true;
  }
  return false;
}

const OptionRow* findOption(const CommandRow& command, std::string_view name) {
  for (const OptionRow& row : kOptions) {
    const bool named = name == row.name || (!row.shortName.empty() && name == row.shortName);
    if (named && (command.options & row.id) != 0) return &row;
  }
  return nullptr;
}

// Fills `line`; gives what is wrong with the arguments, or an empty text.
std::string readArguments(const CommandRow& command, const std::vector<std::string_view>& arguments,
                          CommandLine& line) {
  bool optionsEnded = false;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string_view argument = arguments[at];
    if (optionsEnded || !argument.starts_with('-')) {
      if (Trim(argument).empty()) return "a file name is empty";
      line.files.push_back(argument);
      continue;
    }
    if (argument == "--") {
      optionsEnded = true;
      continue;
    }
    const std::string_view name = argument.starts_with("--") ? Before(argument, "=") : argument;
    const OptionRow* option = findOption(command, name);
    if (option == nullptr) return "there is no option " + std::string(name);
    const bool joined = name.size() < argument.size();
    if (option->value.empty() && joined) return "no value goes with " + std::string(name);
    std::string_view value = After(argument, "=");
    if (!option->value.empty() && !joined) {
      if (++at == arguments.size()) return "a value is missing after " + std::string(name);
      value = arguments[at];
    }
    if (!takeOption(line, option->id, value)) {
      return std::string(name) + " takes " + std::string(option->value) + ", not \"" +
             std::string(value) + "\"";
    }
  }
  if (line.help) return {};
  if (line.files.empty()) return "which project file?";
  if (!command.manyFiles && line.files.size() > 1) return "one file at a time, please";
  return {};
}

// ---- The commands -------------------------------------------------------------------------------

bool openProject(Ostrand& session, std::string_view file) {
  bool cancelled = false;
  session.OpenFile(file, cancelled);
  return !cancelled;
}

// Where the files of the session's project go, without extension.
std::string outputBase(const Run& run, const Ostrand& session) {
  const platform::SplitPath parts = platform::Split(session.CurrentFileName());
  const std::string& folder = run.line.outputFolder.empty() ? parts.folder : run.line.outputFolder;
  return folder + std::string(Ostrand::WithoutExtension(parts.title));
}

// Writes one file by `write`, unless another project of this run has taken its name.
template <class Write>
bool writeOnce(Run& run, const std::string& path, Write&& write) {
  const auto taken = std::find(run.written.begin(), run.written.end(), run.files.Find(path));
  if (taken != run.written.end()) {
    complain(path + " was written in this run already and is left as it is");
    return false;
  }
  if (!write()) return false;
  run.written.push_back(run.files.Find(path));
  return say("wrote " + run.written.back() + "\n");
}

bool generate(Run& run, Ostrand& session, std::string_view file) {
  if (!openProject(session, file)) return false;
  const std::string base = outputBase(run, session);
  return writeOnce(run, base + ".VKP", [&] { return session.WriteProgram(base); });
}

bool writeProject(Run& run, Ostrand& session) {
  const std::string base = outputBase(run, session);
  return writeOnce(run, base + ".VKG", [&] { return session.WriteProjectFile(base); });
}

bool resave(Run& run, Ostrand& session, std::string_view file) {
  return openProject(session, file) && writeProject(run, session);
}

bool startNew(Run& run, Ostrand& session, std::string_view file) {
  session.NameProject(file);
  if (session.BaseName().empty()) {
    complain(std::string(file) + " names no file");
    return false;
  }
  if (!run.line.force && run.files.Taken(session.CurrentFileName())) {
    complain(run.files.Find(session.CurrentFileName()) + " exists already; --force replaces it");
    return false;
  }
  return writeProject(run, session);
}

ExitCode runCommand(const CommandRow& command, const CommandLine& line) {
  std::optional<std::int64_t> epoch;
  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  if (fixed != nullptr && *fixed != '\0') {
    epoch = platform::PosixClock::EpochFromText(fixed);
    if (!epoch) {
      complain("SOURCE_DATE_EPOCH is no number of seconds: \"" + std::string(fixed) + "\"");
      return kWrongUsage;
    }
  }
  platform::PosixFileSystem files(line.syncing);
  platform::PosixClock clock(epoch);
  platform::TerminalForms forms(line.answers);
  if (!line.outputFolder.empty() && !files.IsFolder(line.outputFolder)) {
    complain(line.outputFolder + " is no folder");
    return kFault;
  }
  OstrandEvents nobodyListens;
  Run run{line, files, forms, {}};
  ExitCode result = kDone;
  for (const std::string_view file : line.files) {
    forms.Subject(file);
    Ostrand session(TheStore(), files, clock, forms, nobodyListens);
    session.HostApp(line.hostApp);
    const bool worked = command.command(run, session, file);
    const bool boxShown = forms.TakeBoxShown();
    if (!worked || boxShown) result = kFault;
  }
  return result;
}

const CommandRow* findCommand(std::string_view name) {
  const auto* found = std::find_if(kCommands.begin(), kCommands.end(),
                                   [&](const CommandRow& row) { return row.name == name; });
  return found == kCommands.end() ? nullptr : found;
}

ExitCode ostrandMain(const std::vector<std::string_view>& arguments) {
  if (arguments.empty()) return wrongUsage("which command?", nullptr);
  const std::string_view word = arguments.front();
  if (word == "--version") {
    return say("ostrand " + std::string(ORVUS_COMMON::kModuleVersion) + "\n") ? kDone : kFault;
  }
  const bool askedHelp = word == "help" || word == "--help" || word == "-h";
  if (askedHelp && arguments.size() == 1) return showHelp(nullptr);

  const std::string_view name = askedHelp ? arguments[1] : word;
  const CommandRow* command = findCommand(name);
  if (command == nullptr) {
    return wrongUsage("there is no command " + std::string(name), nullptr);
  }
  if (askedHelp) return showHelp(command);

  CommandLine line;
  const std::string wrong = readArguments(*command, {arguments.begin() + 1, arguments.end()}, line);
  if (!wrong.empty()) return wrongUsage(wrong, command);
  return line.help ? showHelp(command) : runCommand(*command, line);
}

}  // namespace
}  // namespace ostrand

int main(int count, char** arguments) {
  // A limit on the size of files is then an error of the write, which cleans up behind itself.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return ostrand::ostrandMain({arguments + std::min(count, 1), arguments + count});
  } catch (const std::exception& error) {
    ostrand::complain(std::string("cannot go on: ") + error.what());
    return ostrand::kFault;
  }
}
