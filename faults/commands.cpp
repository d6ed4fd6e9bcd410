#include "commands.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace ostrand::faults {
namespace {

namespace fs = std::filesystem;

// No box for a successful compile: its path differs from run to run.
constexpr std::string_view kSettings =
    "[QUILLON\\QUILLON]\n"
    "WarningMessageMask = 4095\n"
    "DefaultNumFlags = 5\n"
    "DefaultTableNumRecs = 2500\n"
    "Unknown Row = kept\n";

constexpr std::string_view kScript =
    "open frmExecute\n"
    "  type ExecutionTime 20\n"
    "done\n";

constexpr std::string_view kOptionsScript =
    "open frmOptOrvus\n"
    "  type DefaultNumFlags 7\n"
    "done\n";

const std::vector<std::string> kSaved = {"p/pump.VKG", "p/pump.VKP", "p/pump.VKD", "p/pump.VKW"};
const std::string kUserSettings = "home/ostrand/settings";

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Tree emptyPlace() {
  return {{"p/", ""},
          {"work/", ""},
          {"home/", ""},
          {"home/ostrand/", ""},
          {kUserSettings, std::string(kSettings)}};
}

// Replaces the path of the tree, since settings contain paths.
std::string withoutPlace(std::string bytes, const std::string& place) {
  for (std::size_t at = bytes.find(place); at != std::string::npos; at = bytes.find(place, at)) {
    bytes.replace(at, place.size(), "ROOT");
  }
  return bytes;
}

// The tree after the command runs on `before`; `reports` if it may end with code 1.
Tree made(const std::string& root, const Programs& programs, const Tree& before,
          const std::vector<std::string>& words, long epoch, bool reports = false) {
  WriteTree(root, before);
  const Command command = CommandBelow(root, programs, words, epoch);
  const Run run = RunPlain(command);
  if (run.code != 0 && !(reports && run.code == 1)) {
    std::string text = "ostrand";
    for (const std::string& word : words) text += " " + word;
    throw std::runtime_error(text + ": code " + std::to_string(run.code) + "\n" +
                             readFile(command.out) + readFile(command.err));
  }
  return ReadTree(root);
}

// Changes each file in more than its date, so that it is not left alone.
void differ(Tree& tree) {
  for (const std::string& name : kSaved) tree.at(name) += "\r\n";
}

}  // namespace

Tree ReadTree(const std::string& folder) {
  Tree tree;
  std::error_code failed;
  for (const auto& entry : fs::recursive_directory_iterator(folder, failed)) {
    const std::string name = fs::relative(entry.path(), folder).string();
    if (name.find('/') == std::string::npos && !entry.is_directory()) continue;  // the outputs
    if (entry.is_symlink()) {
      tree[name] = "-> " + fs::read_symlink(entry.path()).string();
    } else if (entry.is_directory()) {
      tree[name + "/"];
    } else {
      tree[name] = withoutPlace(readFile(entry.path()), folder);
    }
  }
  return tree;
}

void WriteTree(const std::string& folder, const Tree& tree) {
  fs::create_directories(folder);
  for (const auto& entry : fs::directory_iterator(folder)) fs::remove_all(entry.path());
  for (const auto& [name, bytes] : tree) {
    const fs::path path = fs::path(folder) / name;
    if (name.ends_with('/')) {
      fs::create_directories(path);
    } else {
      std::ofstream(path, std::ios::binary) << bytes;
    }
  }
}

Command CommandBelow(const std::string& root, const Programs& programs,
                     const std::vector<std::string>& words, long epoch) {
  return {.program = programs.ostrand,
          .words = words,
          .environment = {"HOME=" + root + "/home", "XDG_CONFIG_HOME=" + root + "/home",
                          "OSTRAND_REGISTRY=" + root + "/home/registry", "TMPDIR=" + root + "/work",
                          "PATH=/usr/bin:/bin", "SOURCE_DATE_EPOCH=" + std::to_string(epoch)},
          .folder = root + "/p",
          .out = root + "/out",
          .err = root + "/err"};
}

std::vector<Subject> MakeSubjects(const std::string& root, const Programs& programs) {
  const std::vector<std::string> save = {"save", "pump.VKG", "--yes", "--compiler",
                                         programs.compiler};
  const std::vector<std::string> resave = {"resave", "pump.VKG"};
  const std::vector<std::string> fresh = {"new", "pump.VKG"};
  const std::vector<std::string> over = {"new", "--force", "pump.VKG"};
  const std::vector<std::string> play = {"screen", "pump.VKG", "script.txt"};
  const std::vector<std::string> set = {"settings", "set", "DefaultNumFlags", "6"};

  Tree given = emptyPlace();
  given["p/pump.VKG"] = readFile(programs.project);
  given = made(root, programs, given, resave, kOldEpoch);
  given = made(root, programs, given, {"generate", "pump.VKG"}, kOldEpoch);
  differ(given);
  Tree scripted = given;
  scripted["p/script.txt"] = kScript;
  Tree optioned = given;
  optioned["p/script.txt"] = kOptionsScript;
  Tree noSettings = emptyPlace();
  noSettings.erase(kUserSettings);
  noSettings.erase("home/ostrand/");

  const std::vector<std::string> project = {"pump",   "script", "settings",       "registry",
                                            "output", "work",   programs.compiler};
  std::vector<Subject> subjects = {
      {"save", save, save, kSaved, project, given, {}},
      {"screen", play, play, {"p/pump.VKG"}, project, scripted, {}},
      {"screen, options", play, play, {kUserSettings, "p/pump.VKG"}, project, optioned, {}},
      {"settings set",
       set,
       set,
       {kUserSettings},
       {"settings", "home/", "output"},
       emptyPlace(),
       {}},
      {"settings set, first",
       set,
       set,
       {kUserSettings},
       {"settings", "home/", "output"},
       noSettings,
       {}},
      {"new", fresh, over, {"p/pump.VKG"}, project, emptyPlace(), {}},
      {"new --force", over, over, {"p/pump.VKG"}, project, given, {}},
      {"resave", resave, resave, {"p/pump.VKG"}, project, given, {}},
  };
  for (Subject& subject : subjects) {
    subject.after.push_back(made(root, programs, subject.before, subject.words, kNewEpoch));
  }
  // A failed compile or a missing compiler keeps the old times and is reported.
  for (const std::string compiler : {"/bin/false", "/no/compiler"}) {
    std::vector<std::string> without = save;
    without.back() = compiler;
    subjects.front().after.push_back(made(root, programs, given, without, kNewEpoch, true));
  }
  return subjects;
}

}  // namespace ostrand::faults
