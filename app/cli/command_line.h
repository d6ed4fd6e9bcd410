// The syntax of the command line, and its values.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/terminal_forms.h"
#include "terminal.h"

namespace ostrand::cli {

enum OptionId : unsigned {
  kOutput = 1U << 0,
  kHostApp = 1U << 1,
  kForce = 1U << 2,
  kAnswer = 1U << 3,
  kYes = 1U << 4,
  kNoSync = 1U << 5,
  kHelp = 1U << 6,
  kRtf = 1U << 7,
  kFormat = 1U << 8,
  kSend = 1U << 9,
  kCompiler = 1U << 10,
  kStore = 1U << 11,
  kLenient = 1U << 12,
  kDryRun = 1U << 13,
};

// The help of each option describes it.
struct CommandLine {
  std::vector<std::string_view> words;  // not options; project files for most commands
  std::string outputFolder;             // with its separator; empty: beside the project
  std::string_view hostApp;
  bool force = false;
  bool rtf = false;
  bool json = false;
  std::string sendHost;  // empty: send nothing
  std::string sendPort;
  std::string_view compiler;  // empty: the one in the settings
  bool store = false;
  bool lenient = false;
  bool dryRun = false;
  platform::PreparedAnswers answers;
  platform::Syncing syncing = platform::Syncing::kOn;
  bool help = false;
};

using Command = ExitCode (*)(const CommandLine& line);

struct CommandRow {
  std::string_view name;
  std::string_view arguments;  // as the help shows them
  std::string_view help;
  unsigned options;  // OptionId bits
  bool wordsAreFiles;
  std::size_t minWords;
  std::size_t maxWords;
  std::string_view missing;  // the error when there are too few words
  Command command;
};

inline constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

// Reports an error in the arguments of the command `name`, which may be empty, and how to get help.
ExitCode WrongUsage(std::string_view text, std::string_view name);

// Fills `line`; returns an error in the arguments, or an empty text.
std::string ReadArguments(const CommandRow& command, std::span<const std::string_view> arguments,
                          CommandLine& line);

// The help of one command.
std::string CommandHelp(const CommandRow& command);
// The help of all.
std::string GeneralHelp(std::span<const CommandRow> commands);

}  // namespace ostrand::cli
