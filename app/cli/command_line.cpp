#include "command_line.h"

#include <algorithm>
#include <array>

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

bool takeHostApp(CommandLine& line, std::string_view value) {
  line.hostApp = value;
  return true;
}

bool takeFormat(CommandLine& line, std::string_view value) {
  line.json = value == "json";
  return line.json || value == "text";
}

// An IPv6 address contains colons and is given in brackets.
bool takeSend(CommandLine& line, std::string_view value) {
  const std::size_t at = value.rfind(':');
  if (at == std::string_view::npos || at == 0 || at + 1 == value.size()) return false;
  std::string_view host = value.substr(0, at);
  if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
  line.sendHost = host;
  line.sendPort = value.substr(at + 1);
  return !host.empty();
}

bool takeCompiler(CommandLine& line, std::string_view value) {
  line.compiler = value;
  return !value.empty();
}

bool takeStore(CommandLine& line, std::string_view) { return line.store = true; }

bool takeLenient(CommandLine& line, std::string_view) { return line.lenient = true; }

bool takeDryRun(CommandLine& line, std::string_view) { return line.dryRun = true; }

bool takeAnswer(CommandLine& line, std::string_view value) {
  const std::size_t at = value.rfind('=');
  if (at == std::string_view::npos || at == 0) return false;
  const std::optional<Answer> answer = AnswerNamed(value.substr(at + 1));
  if (answer) line.answers.byTitle.push_back({std::string(value.substr(0, at)), *answer});
  return answer.has_value();
}

bool takeYes(CommandLine& line, std::string_view) { return line.answers.yes = true; }

bool takeForce(CommandLine& line, std::string_view) { return line.force = true; }

bool takeRtf(CommandLine& line, std::string_view) { return line.rtf = true; }

bool takeNoSync(CommandLine& line, std::string_view) {
  line.syncing = platform::Syncing::kOff;
  return true;
}

bool takeHelp(CommandLine& line, std::string_view) { return line.help = true; }

struct OptionRow {
  OptionId id;
  std::string_view name;
  std::string_view shortName;
  std::string_view value;  // what the help calls the value; empty for a switch
  std::string_view help;
  Take take;
};

constexpr std::array<OptionRow, 14> kOptions = {{
    {kOutput, "--output", "-o", "DIR", "write into the existing folder DIR", takeOutput},
    {kHostApp, "--host-app", "", "NAME", "write for the host NAME, for example \"Harrier\"",
     takeHostApp},
    {kForce, "--force", "", "", "replace a file that exists or was changed since it was read",
     takeForce},
    {kRtf, "--rtf", "", "", "as rich text, for a word processor", takeRtf},
    {kFormat, "--format", "", "text|json", "format of the output", takeFormat},
    {kCompiler, "--compiler", "", "PATH", "compiler to use instead of the one in the settings",
     takeCompiler},
    {kSend, "--send", "", "HOST:PORT", "send the program through the toolbar server at HOST:PORT",
     takeSend},
    {kStore, "--store", "", "", "write the measured times into the project file", takeStore},
    {kLenient, "--lenient", "", "", "go on after refused keys, changed values and the like",
     takeLenient},
    {kDryRun, "--dry-run", "", "", "show what would change and write nothing", takeDryRun},
    {kAnswer, "--answer", "", "TITLE=yes|no|cancel|ok|overwrite", "answer to the message box TITLE",
     takeAnswer},
    {kYes, "--yes", "", "", "answer yes or ok to every other question", takeYes},
    {kNoSync, "--no-sync", "", "", "do not wait until files are on the disk (for benchmarks)",
     takeNoSync},
    {kHelp, "--help", "-h", "", "show this help", takeHelp},
}};

const OptionRow* findOption(const CommandRow& command, std::string_view name) {
  for (const OptionRow& row : kOptions) {
    const bool named = name == row.name || (!row.shortName.empty() && name == row.shortName);
    if (named && (command.options & row.id) != 0) return &row;
  }
  return nullptr;
}

std::string unknownOption(const CommandRow& command, std::string_view name) {
  std::vector<std::string_view> names;
  for (const OptionRow& row : kOptions) {
    if ((command.options & row.id) != 0) names.push_back(row.name);
  }
  return "unknown option " + std::string(name) + DidYouMean(name, names);
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

constexpr std::string_view kHelpEnd =
    "\nMessage boxes go to standard error. A question without an answer gets the one\n"
    "that writes nothing. SOURCE_DATE_EPOCH fixes the date and time in the files (UTC).\n"
    "Exit codes: 0 done, 1 a fault in a project or file, 2 wrong usage.\n";

// Takes the option at `at`, moving on to its value; what is wrong with it, or nothing.
std::string takeOption(const CommandRow& command, std::span<const std::string_view> arguments,
                       std::size_t& at, CommandLine& line) {
  const std::string_view argument = arguments[at];
  const std::string_view name = argument.starts_with("--") ? Before(argument, "=") : argument;
  const OptionRow* option = findOption(command, name);
  if (option == nullptr) return unknownOption(command, name);
  const bool joined = name.size() < argument.size();
  if (option->value.empty() && joined) return std::string(name) + " takes no value";
  std::string_view value = After(argument, "=");
  if (!option->value.empty() && !joined) {
    if (++at == arguments.size()) return std::string(name) + " needs a value";
    value = arguments[at];
  }
  if (option->take(line, value)) return {};
  return std::string(name) + " takes " + std::string(option->value) + ", not \"" +
         std::string(value) + "\"";
}

// What is wrong with the number of words, or nothing.
std::string wordsFault(const CommandRow& command, const CommandLine& line) {
  if (line.help) return {};
  if (line.words.size() < command.minWords) return std::string(command.missing);
  if (line.words.size() <= command.maxWords) return {};
  if (command.maxWords == 1) return std::string(command.name) + " takes one file";
  return "too many arguments: " + std::string(line.words[command.maxWords]);
}

}  // namespace

std::string ReadArguments(const CommandRow& command, std::span<const std::string_view> arguments,
                          CommandLine& line) {
  bool optionsEnded = false;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string_view argument = arguments[at];
    if (optionsEnded || !argument.starts_with('-') || argument == "-" || ToInt32(argument)) {
      if (Trim(argument).empty() && command.wordsAreFiles) return "empty file name";
      line.words.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (std::string fault = takeOption(command, arguments, at, line); !fault.empty()) {
      return fault;
    }
  }
  return wordsFault(command, line);
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
  for (const OptionRow& option : kOptions) {
    if ((command.options & option.id) != 0) text += optionHelp(option);
  }
  return text.append(kHelpEnd);
}

std::string GeneralHelp(std::span<const CommandRow> commands) {
  std::string text =
      "Usage: ostrand COMMAND [OPTION]... FILE...\nPrograms for the data logger VK7300.\n"
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
