// The commands of `ostrand`.
#pragma once

#include <span>

#include "command_line.h"

namespace ostrand::cli {

// All commands, in the order of the help.
std::span<const CommandRow> Commands();

// Each runs its line.
ExitCode Check(const CommandLine& line);
ExitCode Lint(const CommandLine& line);
ExitCode Save(const CommandLine& line);
ExitCode Compile(const CommandLine& line);
ExitCode Generate(const CommandLine& line);
ExitCode Resave(const CommandLine& line);
ExitCode StartNew(const CommandLine& line);
ExitCode Recover(const CommandLine& line);
ExitCode Differ(const CommandLine& line);
ExitCode Summary(const CommandLine& line);
ExitCode Wiring(const CommandLine& line);
ExitCode ChangeSettings(const CommandLine& line);
ExitCode PlayScreens(const CommandLine& line);
ExitCode ListScreens(const CommandLine& line);
ExitCode WriteScript(const CommandLine& line);
ExitCode GetKeys(const CommandLine& line);
ExitCode LookAtCanList(const CommandLine& line);
ExitCode Completions(const CommandLine& line);

}  // namespace ostrand::cli
