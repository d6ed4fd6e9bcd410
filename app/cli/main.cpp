// The command `ostrand`: a host on a terminal.
#include <algorithm>
#include <csignal>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "model/defaults.h"
#include "text/nearest.h"

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

ExitCode ostrandMain(const std::vector<std::string_view>& arguments) {
  if (arguments.empty()) return WrongUsage("missing command", "");
  const std::string_view word = arguments.front();
  if (word == "--version") {
    return show("ostrand " + std::string(ORVUS_COMMON::kModuleVersion) + "\n");
  }
  const bool askedHelp = word == "help" || word == "--help" || word == "-h";
  if (askedHelp && arguments.size() == 1) return show(GeneralHelp(Commands()));

  const std::string_view name = askedHelp ? arguments[1] : word;
  const CommandRow* command = findCommand(name);
  if (command == nullptr) return unknownCommand(name);
  if (askedHelp) return show(CommandHelp(*command));

  CommandLine line;
  const std::string wrong = ReadArguments(*command, std::span(arguments).subspan(1), line);
  if (!wrong.empty()) return WrongUsage(wrong, command->name);
  return line.help ? show(CommandHelp(*command)) : command->command(line);
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
