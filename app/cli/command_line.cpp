#include "command_line.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/box.h"
#include "text/nearest.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

using platform::Answer;

// Takes the value of an option; false when it does not fit.
using Take = bool (*)(CommandLine& line, std::string_view value);

bool takeOutput(CommandLine& line, std::string_view value) {
  line.outputFolder = std::string(value) + (value.ends_with('/') ? "" : "/");
  return !value.empty();
}

bool takeOutputOrStandard(CommandLine& line, std::string_view value) {
  line.toStandardOutput = value == "-";
  if (!line.toStandardOutput) return takeOutput(line, value);
  line.outputFolder.clear();
  return true;
}

bool takeHostApp(CommandLine& line, std::string_view value) {
  line.hostApp = value;
  return true;
}

// The position of a value in the choices that the help shows, "a|b|c"; nothing if it is not there.
std::optional<int> choiceOf(std::string_view choices, std::string_view value) {
  const auto words = Split(choices, '|');
  const auto word = std::find(words.begin(), words.end(), value);
  if (word == words.end()) return std::nullopt;
  return static_cast<int>(word - words.begin());
}

constexpr std::string_view kTextFormats = "text|json";
constexpr std::string_view kAllFormats = "text|json|sarif";  // in the order of Format
constexpr std::string_view kSeverities = "error|warning|notice";
constexpr std::string_view kColors = "auto|always|never";

template <class Value>
bool takeChoice(Value& taken, std::string_view choices, std::string_view value) {
  const std::optional<int> choice = choiceOf(choices, value);
  if (choice) taken = static_cast<Value>(*choice);
  return choice.has_value();
}

bool takeFormat(CommandLine& line, std::string_view value) {
  return takeChoice(line.format, kTextFormats, value);
}

bool takeSarifFormat(CommandLine& line, std::string_view value) {
  return takeChoice(line.format, kAllFormats, value);
}

bool takeSeverity(CommandLine& line, std::string_view value) {
  return takeChoice(line.severity, kSeverities, value);
}

bool takeColor(CommandLine& line, std::string_view value) {
  return takeChoice(line.color, kColors, value);
}

constexpr int kMaxJobs = 256;

bool takeJobs(CommandLine& line, std::string_view value) {
  const auto jobs = ToInt32(value);
  if (!jobs || *jobs < 0 || *jobs > kMaxJobs) return false;
  line.jobs = *jobs;
  return true;
}

bool takeDepfile(CommandLine& line, std::string_view value) {
  line.depfile = value;
  return !value.empty();
}

// Switches.
template <bool CommandLine::*Member>
bool takeSwitch(CommandLine& line, std::string_view) {
  return line.*Member = true;
}

// An IPv6 address contains colons and is given in brackets.
bool takeSend(CommandLine& line, std::string_view value) {
  const std::size_t at = value.rfind(':');
  if (at == std::string_view::npos || at == 0 || at + 1 == value.size()) return false;
  std::string_view host = value.substr(0, at);
  if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
  line.sendHost = host;
  line.sendPort = value.substr(at + 1);
  // A port has a number or a name.
  const std::optional<double> port = ToDouble(line.sendPort);
  return !host.empty() && (!port || (*port >= 1 && *port <= 65535));
}

bool takeCompiler(CommandLine& line, std::string_view value) {
  line.compiler = value;
  return !value.empty();
}

bool takeAnswer(CommandLine& line, std::string_view value) {
  const std::size_t at = value.rfind('=');
  if (at == std::string_view::npos || at == 0) return false;
  const std::optional<Answer> answer = AnswerNamed(value.substr(at + 1));
  if (answer) line.answers.byTitle.push_back({std::string(value.substr(0, at)), *answer});
  return answer.has_value();
}

bool takeYes(CommandLine& line, std::string_view) { return line.answers.yes = true; }

bool takeNoSync(CommandLine& line, std::string_view) {
  line.syncing = platform::Syncing::kOff;
  return true;
}

struct OptionRow {
  OptionId id;
  std::string_view name;
  std::string_view shortName;
  std::string_view value;  // what the help calls the value; empty for a switch
  std::string_view help;
  Take take;
};

constexpr auto kOptions = std::to_array<OptionRow>({
    {kOutput, "--output", "-o", "DIR", "write into the existing folder DIR", takeOutput},
    {kOutputOrStandard, "--output", "-o", "DIR",
     "write into the existing folder DIR; - is standard output", takeOutputOrStandard},
    {kHostApp, "--host-app", "", "NAME", "write for the host NAME, for example \"Harrier\"",
     takeHostApp},
    {kForce, "--force", "", "", "replace a file that exists or was changed, write unchanged ones",
     takeSwitch<&CommandLine::force>},
    {kCheck, "--check", "", "", "write nothing; exit code 1 when a file would change",
     takeSwitch<&CommandLine::check>},
    {kDiff, "--diff", "", "", "write nothing; show the lines that would change",
     takeSwitch<&CommandLine::diff>},
    {kDryRun, "--dry-run", "", "", "write nothing; list the files that would be written",
     takeSwitch<&CommandLine::dryRun>},
    {kDryRunOfScript, "--dry-run", "", "", "show what would change and write nothing",
     takeSwitch<&CommandLine::dryRun>},
    {kChecked, "--checked", "", "", "write nothing of a project whose checks prevent saving",
     takeSwitch<&CommandLine::checked>},
    {kRecursive, "--recursive", "-r", "", "take the files of a folder and of all folders in it",
     takeSwitch<&CommandLine::recursive>},
    {kJobs, "--jobs", "-j", "N", "handle N files at a time; 0 is one for each processor", takeJobs},
    {kDepfile, "--depfile", "-MF", "FILE", "write the outputs and their projects as rules for make",
     takeDepfile},
    {kRtf, "--rtf", "", "", "as rich text, for a word processor", takeSwitch<&CommandLine::rtf>},
    {kFormat, "--format", "", kTextFormats, "format of the output", takeFormat},
    {kSarifFormat, "--format", "", kAllFormats, "format of the findings", takeSarifFormat},
    {kSeverity, "--severity", "", kSeverities, "leave out findings below this severity",
     takeSeverity},
    {kWarningsAsErrors, "--warnings-as-errors", "", "", "count warnings as errors",
     takeSwitch<&CommandLine::warningsAsErrors>},
    {kKeys, "--keys", "", "", "show sections, keys and stored values instead of words",
     takeSwitch<&CommandLine::keys>},
    {kCompiler, "--compiler", "", "PATH", "compiler to use instead of the one in the settings",
     takeCompiler},
    {kSend, "--send", "", "HOST:PORT", "send the program through the toolbar server at HOST:PORT",
     takeSend},
    {kStore, "--store", "", "", "write the measured times into the project file",
     takeSwitch<&CommandLine::store>},
    {kLenient, "--lenient", "", "", "go on after refused keys, changed values and the like",
     takeSwitch<&CommandLine::lenient>},
    {kAnswer, "--answer", "", "TITLE=yes|no|cancel|ok|overwrite", "answer to the message box TITLE",
     takeAnswer},
    {kYes, "--yes", "", "", "answer yes or ok to every other question", takeYes},
    {kNoSync, "--no-sync", "", "", "do not wait until files are on the disk (for benchmarks)",
     takeNoSync},
    {kQuiet, "--quiet", "-q", "", "print errors only", takeSwitch<&CommandLine::quiet>},
    {kVerbose, "--verbose", "-v", "", "print more about each file",
     takeSwitch<&CommandLine::verbose>},
    {kColor, "--color", "", kColors, "colors; auto is on a terminal, unless NO_COLOR is set",
     takeColor},
    {kHelp, "--help", "-h", "", "show this help", takeSwitch<&CommandLine::help>},
    {kVersion, "--version", "-V", "", "show version, build and commit",
     takeSwitch<&CommandLine::version>},
});

// Options of any command for a null `command`.
bool isOptionOf(const OptionRow& row, const CommandRow* command) {
  return command == nullptr || (command->options & row.id) != 0;
}

// An option in an argument, and what is left of the argument after it.
struct FoundOption {
  const OptionRow* row = nullptr;  // null for an unknown option
  std::string name;
  std::optional<std::string_view> joined;  // "DIR" of "--output=DIR" and "-oDIR", "r" of "-qr"
};

FoundOption findLong(const CommandRow* command, std::string_view argument) {
  FoundOption found;
  found.name = Before(argument, "=");
  if (found.name.size() < argument.size()) found.joined = argument.substr(found.name.size() + 1);
  for (const OptionRow& row : kOptions) {
    if (row.name == found.name && isOptionOf(row, command)) found.row = &row;
  }
  return found;
}

// `letters` is a group of short options without its sign.
FoundOption findShort(const CommandRow* command, std::string_view letters) {
  FoundOption found;
  std::size_t length = 1;
  for (const OptionRow& row : kOptions) {
    if (row.shortName.empty() || !isOptionOf(row, command)) continue;
    const std::string_view letter = row.shortName.substr(1);
    if (!letters.starts_with(letter) || letter.size() < length) continue;
    length = letter.size();
    found.row = &row;
  }
  found.name = "-" + std::string(letters.substr(0, length));
  if (length < letters.size()) found.joined = letters.substr(length);
  return found;
}

std::string column(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 2, width), ' ');
  return text;
}

std::string optionHelp(const OptionShown& option) {
  std::string head = "  ";
  if (!option.shortName.empty()) head.append(option.shortName).append(", ");
  head += option.name;
  if (!option.value.empty()) head.append(" ").append(option.value);
  return column(std::move(head), 36).append(option.help).append("\n");
}

constexpr std::string_view kHelpEnd =
    "\nMessage boxes go to standard error. A question without an answer gets the one\n"
    "that writes nothing. SOURCE_DATE_EPOCH fixes the date and time in the files (UTC).\n"
    "Exit codes: 0 done, 1 a fault in a project or file, 2 wrong usage.\n";

std::string unknownOption(const CommandRow& command, const std::string& name) {
  std::vector<std::string_view> names;
  for (const OptionRow& row : kOptions) {
    if (isOptionOf(row, &command)) names.push_back(row.name);
  }
  return "unknown option " + name + DidYouMean(name, names);
}

std::string valueFault(const OptionRow& option, std::string_view name, std::string_view value) {
  const std::string takes =
      option.id == kJobs ? "a number from 0 to " + NumberText(kMaxJobs) : std::string(option.value);
  return std::string(name) + " takes " + takes + ", not \"" + std::string(value) + "\"";
}

// Takes one option, moving on to its value; what is wrong with it, or nothing.
std::string takeFound(const CommandRow& command, const FoundOption& found,
                      std::span<const std::string_view> arguments, std::size_t& at,
                      CommandLine& line) {
  if (found.row == nullptr) return unknownOption(command, found.name);
  if (found.row->value.empty()) {
    found.row->take(line, {});
    return {};
  }
  if (!found.joined && ++at == arguments.size()) return found.name + " needs a value";
  const std::string_view value = found.joined ? *found.joined : arguments[at];
  return found.row->take(line, value) ? std::string() : valueFault(*found.row, found.name, value);
}

// Takes the options of the argument at `at`, moving on to the value of the last one.
std::string takeOptions(const CommandRow& command, std::span<const std::string_view> arguments,
                        std::size_t& at, CommandLine& line) {
  const std::string_view argument = arguments[at];
  if (argument.starts_with("--")) {
    const FoundOption found = findLong(&command, argument);
    const bool isSwitch = found.row != nullptr && found.row->value.empty();
    if (isSwitch && found.joined) return found.name + " takes no value";
    return takeFound(command, found, arguments, at, line);
  }
  std::optional<std::string_view> letters = argument.substr(1);
  while (letters) {
    const FoundOption found = findShort(&command, *letters);
    if (std::string fault = takeFound(command, found, arguments, at, line); !fault.empty())
      return fault;
    letters = found.row->value.empty() ? found.joined : std::nullopt;
  }
  return {};
}

// Whether the value of the argument's last option is the next argument.
bool valueFollows(std::string_view argument) {
  if (argument.starts_with("--")) {
    const FoundOption found = findLong(nullptr, argument);
    return found.row != nullptr && !found.row->value.empty() && !found.joined;
  }
  std::optional<std::string_view> letters = argument.substr(1);
  while (letters) {
    const FoundOption found = findShort(nullptr, *letters);
    if (found.row == nullptr) return false;
    if (!found.row->value.empty()) return !found.joined;
    letters = found.joined;
  }
  return false;
}

// What is wrong with the number of words, or nothing.
std::string wordsFault(const CommandRow& command, const CommandLine& line) {
  if (line.help || line.version) return {};
  if (line.toStandardOutput && (line.check || line.diff || line.dryRun)) {
    return "-o - prints a file; --check, --diff and --dry-run print none";
  }
  if (line.words.size() < command.minWords) return std::string(command.missing);
  if (line.words.size() <= command.maxWords) return {};
  if (command.maxWords == 1) {
    return std::string(command.name) +
           (command.wordsAreFiles ? " takes one file" : " takes one word");
  }
  return "too many arguments: " + std::string(line.words[command.maxWords]);
}

}  // namespace

std::string ReadArguments(const CommandRow& command, std::span<const std::string_view> arguments,
                          CommandLine& line) {
  line.command = command.name;
  line.takesFolders = (command.options & kRecursive) != 0;
  bool optionsEnded = false;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string_view argument = arguments[at];
    if (optionsEnded || argument == "-" || !argument.starts_with('-') || ToInt32(argument)) {
      if (Trim(argument).empty() && command.wordsAreFiles) return "empty file name";
      line.words.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (std::string fault = takeOptions(command, arguments, at, line); !fault.empty()) {
      return fault;
    }
  }
  return wordsFault(command, line);
}

std::size_t FindCommandName(std::span<const std::string_view> arguments) {
  std::size_t at = 0;
  while (at < arguments.size() && arguments[at].size() > 1 && arguments[at].starts_with('-')) {
    at += valueFollows(arguments[at]) ? 2 : 1;
  }
  return std::min(at, arguments.size());
}

std::vector<OptionShown> OptionsOf(const CommandRow& command) {
  std::vector<OptionShown> options;
  for (const OptionRow& row : kOptions) {
    if ((command.options & row.id) == 0) continue;
    options.push_back({row.name, row.shortName, row.value, row.help});
  }
  return options;
}

ExitCode WrongUsage(std::string_view text, std::string_view name) {
  ReportError(text);
  std::string hint = "Try: ostrand help";
  if (!name.empty()) hint.append(" ").append(name);
  PrintHint(hint + "\n");
  return kWrongUsage;
}

std::string CommandHelp(const CommandRow& command) {
  std::string text = "Usage: ostrand ";
  text.append(command.name).append(" [OPTION]... ").append(command.arguments).append("\n");
  text += Upper(command.help.substr(0, 1));
  text.append(command.help.substr(1)).append(".\n\nOptions:\n");
  for (const OptionShown& option : OptionsOf(command)) text += optionHelp(option);
  return text.append(kHelpEnd);
}

std::string GeneralHelp(std::span<const CommandRow> commands) {
  std::string text =
      "Usage: ostrand [OPTION]... COMMAND [OPTION]... FILE...\nPrograms for the data logger "
      "VK7300.\n"
      "\nCommands:\n";
  for (const CommandRow& row : commands) {
    std::string head = "  " + std::string(row.name) + " " + std::string(row.arguments);
    text += column(std::move(head), 36).append(row.help).append("\n");
  }
  text +=
      "\nRun \"ostrand help COMMAND\" for the options of a command, \"ostrand --version\" for the "
      "version.\n";
  return text.append(kHelpEnd);
}

}  // namespace ostrand::cli
