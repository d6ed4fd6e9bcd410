// The command `ostrand`: a host on a terminal.
#include <algorithm>
#include <csignal>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "text/nearest.h"
#include "version.h"

namespace ostrand::cli {
namespace {

const CommandRow* findCommand(std::string_view name) {
  const auto commands = Commands();
  const auto found = std::find_if(commands.begin(), commands.end(),
                                  [&](const CommandRow& row) { return row.name == name; });
  return found == commands.end() ? nullptr : &*found;
}

ExitCode unknownCommand(std::string_view name) {
  std::vector<std::string_view> names;
  for (const CommandRow& row : Commands()) names.push_back(row.name);
  return WrongUsage("unknown command " + std::string(name) + DidYouMean(name, names), "");
}

ExitCode show(std::string_view text) { return Print(text) ? kDone : kFault; }

ExitCode run(const CommandRow& command, std::vector<std::string_view> arguments) {
  CommandLine line;
  const std::string wrong = ReadArguments(command, arguments, line);
  if (!wrong.empty()) return WrongUsage(wrong, command.name);
  if (line.help) return show(CommandHelp(command));
  if (line.version) return show(VersionText());
  SetColor(line.color);
  return command.command(line);
}

ExitCode ostrandMain(std::vector<std::string_view> arguments) {
  const std::size_t at = FindCommandName(arguments);
  const bool named = at < arguments.size();
  const auto holds = [&](std::string_view word) {
    const auto end = arguments.begin() + static_cast<std::ptrdiff_t>(at);
    return std::find(arguments.begin(), end, word) != end;
  };
  if (!named && (holds("--version") || holds("-V"))) return show(VersionText());
  const bool help = named ? arguments[at] == "help" : holds("--help") || holds("-h");
  if (help && at + 1 >= arguments.size()) return show(GeneralHelp(Commands()));
  if (!named) {
    const bool strange = !arguments.empty() && !help;
    return WrongUsage(strange ? "missing command after " + std::string(arguments.back())
                              : std::string("missing command"),
                      "");
  }

  const std::string_view name = help ? arguments[at + 1] : arguments[at];
  const CommandRow* command = findCommand(name);
  if (command == nullptr) return unknownCommand(name);
  if (help) return show(CommandHelp(*command));
  arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(at));
  return run(*command, std::move(arguments));
}

}  // namespace
}  // namespace ostrand::cli

int main(int count, char** arguments) {
  // A file size limit then fails the write, which cleans up.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return ostrand::cli::ostrandMain({arguments + std::min(count, 1), arguments + count});
  } catch (const std::exception& error) {
    ostrand::cli::ReportError(std::string("fatal error: ") + error.what());
    return ostrand::cli::kFault;
  }
}
