// Completions for shells, from the tables of commands and options.
#include <algorithm>
#include <array>
#include <optional>

#include "commands.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

// What can follow: one of some words, or a file.
struct Wanted {
  std::vector<std::string_view> words;
  bool files = false;
  bool folders = false;
  std::string_view extension = {};  // of files; empty for all
};

// The words that an argument of a command or the value of an option can be.
Wanted wantedBy(std::string_view shown) {
  Wanted wanted;
  const std::string_view first = Before(shown, " ");
  if (Holds(first, "|") && !Holds(first, "=")) {
    wanted.words = Split(first, '|');
  } else if (first.starts_with("FILE.VKG")) {
    wanted.extension = ".VKG";
  } else if (first.starts_with("FILE.VKP")) {
    wanted.extension = ".VKP";
  }
  wanted.files = !wanted.extension.empty() || first.starts_with("FILE") || first == "PATH";
  wanted.folders = first == "DIR";
  return wanted;
}

std::string joined(const std::vector<std::string_view>& words) {
  std::string text;
  for (const std::string_view word : words) {
    if (!text.empty()) text += " ";
    text += word;
  }
  return text;
}

std::string commandNames() {
  std::string names;
  for (const CommandRow& command : Commands()) names.append(command.name).append(" ");
  return names + "help";
}

// A text in single quotes of a shell.
std::string quoted(std::string_view text) {
  std::string result = "'";
  for (const char letter : text) {
    if (letter == '\'') {
      result += "'\\''";
    } else {
      result += letter;
    }
  }
  return result + "'";
}

// ---- bash ---------------------------------------------------------------------------------------

std::string bashReply(const Wanted& wanted) {
  if (!wanted.words.empty()) {
    return "COMPREPLY=($(compgen -W " + quoted(joined(wanted.words)) + " -- \"$cur\"))";
  }
  if (wanted.folders) return "COMPREPLY=($(compgen -d -- \"$cur\"))";
  if (!wanted.extension.empty()) {
    const std::string extension(wanted.extension.substr(1));
    return "_ostrand_files " + extension;
  }
  return wanted.files ? "COMPREPLY=($(compgen -f -- \"$cur\"))" : "COMPREPLY=()";
}

std::string bashOptionCases(const CommandRow& command) {
  std::string cases;
  for (const OptionShown& option : OptionsOf(command)) {
    if (option.value.empty()) continue;
    cases.append("        ").append(option.name);
    if (!option.shortName.empty()) cases.append("|").append(option.shortName);
    cases += ") " + bashReply(wantedBy(option.value)) + "; return ;;\n";
  }
  return cases;
}

std::string bashCommand(const CommandRow& command) {
  std::string names;
  for (const OptionShown& option : OptionsOf(command)) {
    names.append(option.name).append(" ");
    if (!option.shortName.empty()) names.append(option.shortName).append(" ");
  }
  std::string text = "    " + std::string(command.name) + ")\n      case $prev in\n";
  text += bashOptionCases(command);
  text += "      esac\n      if [[ $cur == -* ]]; then\n        COMPREPLY=($(compgen -W ";
  text += quoted(Trim(names)) + " -- \"$cur\"))\n      else\n        ";
  return text + bashReply(wantedBy(command.arguments)) + "\n      fi ;;\n";
}

std::string forBash() {
  std::string text = R"(# Completion of ostrand for bash.
_ostrand_files() {
  local IFS=$'\n' file
  COMPREPLY=($(compgen -d -- "$cur"))
  for file in $(compgen -f -- "$cur"); do
    if [[ ! -d $file && ${file^^} == *.$1 ]]; then COMPREPLY+=("$file"); fi
  done
  compopt -o filenames 2>/dev/null
}
_ostrand() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command= word
  COMPREPLY=()
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ $word != -* ]]; then command=$word; break; fi
  done
  case $command in
    '' | help) COMPREPLY=($(compgen -W )";
  text += quoted(commandNames() + " --help --version") + " -- \"$cur\")) ;;\n";
  for (const CommandRow& command : Commands()) text += bashCommand(command);
  return text + "  esac\n}\ncomplete -F _ostrand ostrand\n";
}

// ---- zsh ----------------------------------------------------------------------------------------

std::string zshAction(const Wanted& wanted) {
  if (!wanted.words.empty()) return "(" + joined(wanted.words) + ")";
  if (wanted.folders) return "_files -/";
  if (!wanted.extension.empty()) {
    return "_files -g \"*(#i)" + std::string(wanted.extension) + "\"";
  }
  return wanted.files ? "_files" : " ";
}

// A text in brackets of _arguments.
std::string zshText(std::string_view text) {
  std::string result;
  for (const char letter : text) {
    if (Holds("[]:\\", {&letter, 1})) result += '\\';
    result += letter;
  }
  return result;
}

std::string zshCommand(const CommandRow& command) {
  std::string text = "    " + std::string(command.name) + ")\n      _arguments -s";
  for (const OptionShown& option : OptionsOf(command)) {
    const auto put = [&](std::string_view name) {
      // Short names are joined to their value or followed by it, long ones by "=" or a blank.
      std::string row(name);
      if (!option.value.empty()) row += name.starts_with("--") ? "=" : "+";
      row += "[" + zshText(option.help) + "]";
      if (!option.value.empty()) {
        row += ":" + zshText(Before(option.value, "=")) + ":" + zshAction(wantedBy(option.value));
      }
      text += " \\\n        " + quoted(row);
    };
    put(option.name);
    if (option.shortName.size() == 2) put(option.shortName);
    if (option.shortName.size() > 2) {
      text += " \\\n        " +
              quoted(std::string(option.shortName) + "[" + zshText(option.help) +
                     "]:" + zshText(option.value) + ":" + zshAction(wantedBy(option.value)));
    }
  }
  if (!command.arguments.empty()) {
    text += " \\\n        " + quoted("*:" + zshText(Before(command.arguments, "|")) + ":" +
                                     zshAction(wantedBy(command.arguments)));
  }
  return text + " ;;\n";
}

std::string forZsh() {
  std::string text = R"(#compdef ostrand
# Completion of ostrand for zsh.
_ostrand() {
  local -a commands
  commands=(
)";
  for (const CommandRow& command : Commands()) {
    text += "    " + quoted(std::string(command.name) + ":" + zshText(command.help)) + "\n";
  }
  text += R"(    'help:show the options of a command'
  )
  local at=2
  while (( at < CURRENT )) && [[ $words[at] == -* ]]; do (( at++ )); done
  if (( at >= CURRENT )); then
    _describe command commands
    return
  fi
  local command=$words[at]
  case $command in
    help) _describe command commands ;;
)";
  for (const CommandRow& command : Commands()) text += zshCommand(command);
  return text + "  esac\n}\n_ostrand \"$@\"\n";
}

// ---- fish ---------------------------------------------------------------------------------------

std::string fishValue(const Wanted& wanted) {
  if (!wanted.words.empty()) return " -x -a " + quoted(joined(wanted.words));
  if (wanted.folders) return " -x -a '(__fish_complete_directories)'";
  return wanted.files ? " -r -F" : " -x";
}

std::string fishCommand(const CommandRow& command) {
  const std::string start =
      "complete -c ostrand -n '__fish_seen_subcommand_from " + std::string(command.name) + "'";
  std::string text;
  for (const OptionShown& option : OptionsOf(command)) {
    text += start + " -l " + std::string(option.name.substr(2));
    if (option.shortName.size() == 2) text += " -s " + std::string(option.shortName.substr(1));
    if (option.shortName.size() > 2) text += " -o " + std::string(option.shortName.substr(1));
    if (!option.value.empty()) text += fishValue(wantedBy(option.value));
    text += " -d " + quoted(option.help) + "\n";
  }
  const Wanted wanted = wantedBy(command.arguments);
  if (!wanted.words.empty()) text += start + " -a " + quoted(joined(wanted.words)) + "\n";
  if (wanted.files || Holds(command.arguments, " FILE")) text += start + " -F\n";
  return text;
}

std::string forFish() {
  std::string text = "# Completion of ostrand for fish.\ncomplete -c ostrand -f\n";
  for (const CommandRow& command : Commands()) {
    text += "complete -c ostrand -n __fish_use_subcommand -a " + std::string(command.name) +
            " -d " + quoted(command.help) + "\n";
  }
  text +=
      "complete -c ostrand -n __fish_use_subcommand -a help -d 'show the options of a command'\n";
  text += "complete -c ostrand -n '__fish_seen_subcommand_from help' -a " + quoted(commandNames()) +
          "\n";
  for (const CommandRow& command : Commands()) text += fishCommand(command);
  return text;
}

struct Shell {
  std::string_view name;
  std::string (*text)();
};
constexpr std::array<Shell, 3> kShells = {{{"bash", forBash}, {"zsh", forZsh}, {"fish", forFish}}};

}  // namespace

ExitCode Completions(const CommandLine& line) {
  const auto shell = std::find_if(kShells.begin(), kShells.end(),
                                  [&](const Shell& row) { return row.name == line.words.front(); });
  if (shell == kShells.end()) {
    return WrongUsage("expected bash, zsh or fish, not " + std::string(line.words.front()),
                      "completions");
  }
  return Print(shell->text()) ? kDone : kFault;
}

}  // namespace ostrand::cli
