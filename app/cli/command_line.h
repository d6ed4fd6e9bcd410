// The syntax of the command line, and its values.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lint/codes.h"
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
  kOutputOrStandard = 1U << 12,  // a folder, or "-"
  kSarifFormat = 1U << 13,
  kSeverity = 1U << 14,
  kWarningsAsErrors = 1U << 15,
  kCheck = 1U << 16,
  kDiff = 1U << 17,
  kDryRun = 1U << 18,
  kRecursive = 1U << 19,
  kJobs = 1U << 20,
  kDepfile = 1U << 21,
  kChecked = 1U << 22,
  kKeys = 1U << 23,
  kQuiet = 1U << 24,
  kVerbose = 1U << 25,
  kColor = 1U << 26,
  kVersion = 1U << 27,
  kLenient = 1U << 28,
  kDryRunOfScript = 1U << 29,
};

enum class Format { kText, kJson, kSarif };

// What becomes of the outputs of a command.
enum class Outputs {
  kWritten,
  kCompared,  // nothing is written: what would change is shown
  kPrinted,   // nothing is written but one output, to standard output
};

// The help of each option describes it.
struct CommandLine {
  std::string_view command;             // its name
  std::vector<std::string_view> words;  // not options; project files for most commands
  std::string outputFolder;             // with its separator; empty: beside the project
  bool toStandardOutput = false;
  std::string_view hostApp;
  bool force = false;
  bool rtf = false;
  Format format = Format::kText;
  Severity severity = Severity::kNotice;  // findings below it are left out
  bool warningsAsErrors = false;
  bool check = false;
  bool diff = false;
  bool dryRun = false;
  bool takesFolders = false;  // the command has -r
  bool recursive = false;
  int jobs = 1;  // 0: as many as the machine has processors
  std::string_view depfile;
  bool checked = false;
  bool keys = false;
  std::string sendHost;  // empty: send nothing
  std::string sendPort;
  std::string_view compiler;  // empty: the one in the settings
  bool store = false;
  bool lenient = false;
  platform::PreparedAnswers answers;
  platform::Syncing syncing = platform::Syncing::kOn;
  bool quiet = false;
  bool verbose = false;
  Color color = Color::kAuto;
  bool help = false;
  bool version = false;

  [[nodiscard]] Outputs OutputsAre() const {
    if (toStandardOutput) return Outputs::kPrinted;
    return check || diff || dryRun ? Outputs::kCompared : Outputs::kWritten;
  }
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

// An option as the help shows it.
struct OptionShown {
  std::string_view name;
  std::string_view shortName;  // empty for none
  std::string_view value;      // what the help calls it; "a|b" for a choice; empty for a switch
  std::string_view help;
};
// The options of a command, in the order of the help.
std::vector<OptionShown> OptionsOf(const CommandRow& command);

inline constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

// The index of the command's name: the first argument that is neither an option nor its value; the
// number of arguments if there is none.
std::size_t FindCommandName(std::span<const std::string_view> arguments);

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
