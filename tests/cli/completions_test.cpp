// Help, man page and completions have the same commands and options.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;
using testing::RunOstrand;
using testing::WriteDisk;

using Options = std::map<std::string, std::set<std::string>>;  // by command

// The words of a text that begin with "-", without what is joined to them.
std::set<std::string> optionsIn(std::string_view text) {
  std::set<std::string> options;
  for (auto word : Split(text, ' ')) {
    word = word.substr(0, std::min(word.find_first_of(",=\n+["), word.size()));
    if (word.size() > 1 && word.starts_with('-') && word != "--") options.emplace(word);
  }
  return options;
}

// From the help of each command; the first words of its rows.
Options optionsOfHelp() {
  Options all;
  const std::string help = RunOstrand({"help"}).out;
  for (const auto line : Split(Before(After(help, "Commands:\n"), "\n\n"), '\n')) {
    const std::string command(Before(line.substr(2), " "));
    const std::string rows = RunOstrand({"help", command}).out;
    for (const auto row : Split(After(rows, "Options:\n"), '\n')) {
      if (!row.starts_with("  -")) continue;
      all[command].merge(optionsIn(Before(row.substr(2), "  ")));
    }
  }
  return all;
}

// What bash offers after these words; the last one is completed.
std::set<std::string> offered(const std::string& script, const std::vector<std::string>& words,
                              const std::string& folder) {
  std::string line = "cd '" + folder + "'; source '" + script + "'; COMP_WORDS=(";
  for (const std::string& word : words) line += "'" + word + "' ";
  line += "); COMP_CWORD=" + std::to_string(words.size() - 1);
  line += "; _ostrand; printf '%s\\n' \"${COMPREPLY[@]}\" > '" + folder + "/reply'";
  WriteDisk(folder + "/run.sh", line);
  EXPECT_EQ(std::system(("bash --norc '" + folder + "/run.sh'").c_str()), 0);
  std::set<std::string> replies;
  const std::string bytes = ReadDisk(folder + "/reply");
  for (const auto reply : Split(bytes, '\n')) {
    if (!reply.empty()) replies.emplace(reply);
  }
  return replies;
}

class Completions : public ::testing::Test {
 protected:
  std::string scriptOf(const std::string& shell) {
    std::string path = folder / ("ostrand." + shell);
    WriteDisk(path, RunOstrand({"completions", shell}).out);
    return path;
  }
  const testing::TempFolder folder;
};

TEST_F(Completions, OfBashOfferWhatTheHelpShows) {
  const std::string script = scriptOf("bash");
  const std::string work = folder / "work";
  std::filesystem::create_directories(work + "/sub");
  for (const char* name : {"pump.VKG", "rig.vkg", "pump.VKP"}) WriteDisk(work + "/" + name, "");
  const Options help = optionsOfHelp();
  EXPECT_GE(help.size(), 16U);
  std::set<std::string> commands = {"help"};
  for (const auto& [command, options] : help) {
    EXPECT_EQ(offered(script, {"ostrand", command, "-"}, work), options) << command;
    commands.insert(command);
  }
  EXPECT_EQ(offered(script, {"ostrand", "--color", "never", ""}, work), std::set<std::string>());
  std::set<std::string> first = commands;
  first.insert({"--help", "--version"});
  EXPECT_EQ(offered(script, {"ostrand", ""}, work), first);
  EXPECT_EQ(offered(script, {"ostrand", "check", "--format", ""}, work),
            (std::set<std::string>{"text", "json", "sarif"}));
  EXPECT_EQ(offered(script, {"ostrand", "-q", "generate", "-o", ""}, work),
            std::set<std::string>{"sub"});
  EXPECT_EQ(offered(script, {"ostrand", "check", ""}, work),
            (std::set<std::string>{"sub", "pump.VKG", "rig.vkg"}));
  EXPECT_EQ(offered(script, {"ostrand", "completions", "f"}, work), std::set<std::string>{"fish"});
}

// The texts of the other shells, row by row.
TEST_F(Completions, OfZshAndFishHaveTheOptionsOfTheHelp) {
  const std::string zsh = RunOstrand({"completions", "zsh"}).out;
  const std::string fish = RunOstrand({"completions", "fish"}).out;
  for (const auto& [command, options] : optionsOfHelp()) {
    const std::string block(Before(After(zsh, "    " + command + ")\n"), ";;"));
    std::set<std::string> inZsh;
    for (const auto row : Split(block, '\n')) {
      const std::string_view option = After(row, "        '");
      if (option.starts_with('-')) inZsh.merge(optionsIn(Before(option, "[")));
    }
    EXPECT_EQ(inZsh, options) << command;

    std::set<std::string> inFish;
    for (const auto row : Split(fish, '\n')) {
      if (!Holds(row, "_from " + command + "' -l ")) continue;
      inFish.emplace("--" + std::string(Before(After(row, " -l "), " ")));
      const std::string_view names = Before(row, " -d ");
      for (const std::string_view mark : {" -s ", " -o "}) {
        if (Holds(names, mark)) inFish.emplace("-" + std::string(Before(After(names, mark), " ")));
      }
    }
    EXPECT_EQ(inFish, options) << command;
  }
}

TEST_F(Completions, OfAllShellsAreParsed) {
  for (const std::string shell : {"bash", "zsh", "fish"}) {
    if (std::system(("command -v " + shell + " >/dev/null").c_str()) != 0) continue;
    EXPECT_EQ(std::system((shell + " -n '" + scriptOf(shell) + "'").c_str()), 0) << shell;
  }
  EXPECT_EQ(RunOstrand({"completions", "ksh"}).code, 2);
}

// The entries of the page's options: their names, and the commands they are for; none for all.
struct Entry {
  std::set<std::string> names;
  std::set<std::string> commands;
};

std::vector<Entry> entriesOf(std::string_view options) {
  std::vector<Entry> entries;
  while (Holds(options, "\n.TP\n")) {
    options = After(options, "\n.TP\n");
    const std::string_view text = Before(options, "\n.TP\n");
    Entry& entry = entries.emplace_back();
    std::string head(Before(text, "\n"));
    std::replace(head.begin(), head.end(), '"', ' ');
    entry.names = optionsIn(head);
    for (const auto line : Split(text, '\n')) {
      if (!line.starts_with(".RB ( ")) continue;
      std::string commands(line.substr(4));
      for (char& letter : commands) {
        if (Holds("\",()", {&letter, 1})) letter = ' ';
      }
      for (const auto word : Split(commands, ' ')) entry.commands.emplace(word);
    }
  }
  return entries;
}

// The man page has each command in its synopsis and its list, and an entry for each of its options;
// the guide has each command in its table.
TEST(ManPage, CoversTheHelp) {
  std::string page = ReadDisk(OSTRAND_SOURCE_DIR "/docs/ostrand.1");
  std::erase(page, '\\');
  const std::string guide = ReadDisk(OSTRAND_SOURCE_DIR "/docs/user-guide.md");
  const std::vector<Entry> entries = entriesOf(Before(After(page, "\n.SH OPTIONS\n"), "\n.SH "));
  for (const auto& [command, names] : optionsOfHelp()) {
    EXPECT_TRUE(Holds(guide, "| `ostrand " + command + " ")) << command;
    EXPECT_TRUE(Holds(page, "\n.B ostrand " + command)) << command;
    EXPECT_TRUE(Holds(page, "\n.TP\n.B " + command + "\n")) << command;
    for (const std::string& name : names) {
      const bool found = std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.names.contains(name) &&
               (entry.commands.empty() || entry.commands.contains(command));
      });
      EXPECT_TRUE(found) << command << " " << name;
    }
  }
}

}  // namespace
}  // namespace ostrand
