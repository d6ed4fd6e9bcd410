// Kills the command at each of its system calls and makes each of them fail, then checks what is
// left. One line for each command; exit code 1 if anything is wrong.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <random>
#include <sstream>
#include <thread>

#include "judge.h"
#include "system_calls.h"

namespace ostrand::faults {
namespace {

namespace fs = std::filesystem;

enum ExitCode : int { kClean = 0, kFound = 1, kUsage = 2, kCannotTrace = 77 };

constexpr int kTries = 3;  // for a point whose call differs from the first run
constexpr double kMaxMissed =
    0.01;  // maximum share of missed points before the sweep counts as failed

struct Options {
  Programs programs{OSTRAND_PROGRAM, OSTRAND_STAND_IN,
                    OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG"};
  std::string folder;   // working folder
  std::string command;  // sweeps this command only
  std::string point;    // runs this point only and shows it in full
  unsigned every = 1;
  unsigned seed = std::random_device{}();
  unsigned jobs = std::max(1U, std::thread::hardware_concurrency());
};

constexpr std::string_view kHelp =
    "Usage: ostrand_faults [OPTION]...\n"
    "Runs commands of ostrand, kills them at each system call and makes each call fail.\n\n"
    "  --every N        takes one point of N, chosen by the seed\n"
    "  --seed S         chooses the same points again\n"
    "  --command NAME   sweeps one command: \"save\", \"settings set\", ...\n"
    "  --point POINT    with --command: runs one point and shows what it leaves,\n"
    "                   as \"kill 12\", \"once 12 EIO\", \"on 12 EIO\", \"full 12\", \"short 12\"\n"
    "  --jobs N         processes at once\n"
    "  --folder DIR     works in DIR\n"
    "  --program PATH   the command to run\n\n"
    "Exit codes: 0 nothing wrong, 1 something wrong, 2 wrong usage, 77 programs cannot be traced\n"
    "on this machine.\n";

// ---- Points -------------------------------------------------------------------------------------

struct KindName {
  Fault::Kind kind;
  std::string_view name;
};

constexpr std::array<KindName, 5> kKindNames = {{{Fault::Kind::kKill, "kill"},
                                                 {Fault::Kind::kOnce, "once"},
                                                 {Fault::Kind::kOn, "on"},
                                                 {Fault::Kind::kFull, "full"},
                                                 {Fault::Kind::kShort, "short"}}};

std::string nameOf(const Fault& fault) {
  std::string text;
  for (const KindName& row : kKindNames) {
    if (row.kind == fault.kind) text = row.name;
  }
  text += " " + std::to_string(fault.at);
  return fault.error == 0 ? text : text + " " + std::string(ErrorName(fault.error));
}

bool readPoint(const std::string& text, Fault& fault) {
  std::istringstream words(text);
  std::string kind;
  std::string error;
  if (!(words >> kind >> fault.at)) return false;
  if (words >> error) fault.error = ErrorByName(error);
  for (const KindName& row : kKindNames) {
    if (row.name == kind) fault.kind = row.kind;
  }
  return fault.kind != Fault::Kind::kNothing;
}

std::vector<Fault> pointsOf(const std::vector<SeenCall>& calls) {
  std::vector<Fault> points;
  for (std::size_t at = 0; at < calls.size(); ++at) {
    points.push_back({Fault::Kind::kKill, at, 0});
    const CallRow* row = FindCall(calls[at].number);
    if (row == nullptr || !CanFail(calls[at].number, calls[at].command)) continue;
    for (const int error : row->errors) {
      points.push_back({Fault::Kind::kOnce, at, error});
      // A program may retry an interrupted call forever; a failing wait for children does not occur
      // on a real machine.
      if (error != EINTR && error != ECHILD) points.push_back({Fault::Kind::kOn, at, error});
    }
    if (calls[at].takesSpace) points.push_back({Fault::Kind::kFull, at, 0});
    if ((row->traits & kWrites) != 0) points.push_back({Fault::Kind::kShort, at, 0});
  }
  return points;
}

// ---- Running ------------------------------------------------------------------------------------

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Outcome outcomeOf(const Command& command, Run run) {
  return {std::move(run), readFile(command.out), readFile(command.err)};
}

// The run without a fault.
struct Normal {
  Outcome outcome;
  std::size_t moments = 0;      // calls before which a file could not be read
  std::size_t firstMoment = 0;  // the first of these
};

Normal runNormally(const std::string& root, const Programs& programs, const Subject& subject) {
  const Command command = CommandBelow(root, programs, subject.words, kNewEpoch);
  Normal normal;
  // As fast as the runs with a fault: a slower one would read a folder once where these read it
  // again.
  WriteTree(root, subject.before);
  normal.outcome = outcomeOf(command, RunTraced(command, {}));
  WriteTree(root, subject.before);
  RunTraced(command, {}, [&](std::size_t at) {
    if (FilesReadable(subject, ReadTree(root))) return;
    if (normal.moments++ == 0) normal.firstMoment = at;
  });
  return normal;
}

struct PointResult {
  Outcome met;
  Tree left;
  std::vector<Finding> findings;
  bool missed = false;
};

PointResult runPoint(const std::string& root, const Programs& programs, const Subject& subject,
                     const Outcome& normal, const Fault& fault) {
  PointResult result;
  const Command command = CommandBelow(root, programs, subject.words, kNewEpoch);
  for (int tries = 0; tries < kTries; ++tries) {
    WriteTree(root, subject.before);
    result.met = outcomeOf(command, RunTraced(command, fault));
    const auto& calls = result.met.run.calls;
    result.missed =
        fault.at >= calls.size() || calls[fault.at].number != normal.run.calls[fault.at].number;
    if (!result.missed) break;
  }
  if (result.missed) return result;
  result.left = ReadTree(root);
  result.findings = Judge(subject, fault, normal, result.met, result.left);
  const Command again = CommandBelow(root, programs, subject.again, kNewEpoch);
  const Outcome next = outcomeOf(again, RunPlain(again));
  for (Finding& finding : JudgeNext(subject, next, ReadTree(root))) {
    result.findings.push_back(std::move(finding));
  }
  return result;
}

// ---- The sweep of one command -------------------------------------------------------------------

struct Tally {
  std::size_t points = 0;
  std::size_t missed = 0;
  std::array<std::size_t, kWrongs> wrong{};
  std::vector<std::string> lines;  // one for each finding
};

std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

void add(Tally& tally, const Fault& fault, const SeenCall& call, const PointResult& result) {
  ++tally.points;
  if (result.missed) {
    ++tally.missed;
    return;
  }
  // Each kind counts once for a point.
  std::array<bool, kWrongs> counted{};
  for (const Finding& finding : result.findings) {
    if (!counted[finding.wrong]) ++tally.wrong[finding.wrong];
    counted[finding.wrong] = true;
    std::string line = nameOf(fault) + " (" + CallName(call.number);
    if (!call.path.empty()) line += " " + call.path;
    line += "): " + std::string(kWrongNames[finding.wrong]) + ": " + finding.text;
    tally.lines.push_back(oneLine(std::move(line)));
  }
}

void write(std::ostream& to, const Tally& tally) {
  to << tally.points << ' ' << tally.missed;
  for (const std::size_t count : tally.wrong) to << ' ' << count;
  to << '\n';
  for (const std::string& line : tally.lines) to << line << '\n';
}

void addFrom(std::istream& from, Tally& tally) {
  Tally part;
  from >> part.points >> part.missed;
  for (std::size_t& count : part.wrong) from >> count;
  tally.points += part.points;
  tally.missed += part.missed;
  for (std::size_t wrong = 0; wrong < kWrongs; ++wrong) tally.wrong[wrong] += part.wrong[wrong];
  std::string line;
  std::getline(from, line);
  while (std::getline(from, line)) tally.lines.push_back(line);
}

// Runs every so many-th point, as a process that ends here.
[[noreturn]] void sweepShare(const Options& options, const Subject& subject, const Outcome& normal,
                             const std::vector<Fault>& points, unsigned worker) {
  try {
    AdoptOrphans();
    const std::string own = options.folder + "/worker" + std::to_string(worker);
    Tally part;
    for (std::size_t at = worker; at < points.size(); at += options.jobs) {
      const PointResult result = runPoint(own, options.programs, subject, normal, points[at]);
      add(part, points[at], normal.run.calls[points[at].at], result);
    }
    std::ofstream report(own + ".report");
    write(report, part);
    report.close();
    ::_exit(report ? 0 : 1);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    ::_exit(1);
  }
}

std::string endOf(int status) {
  return WIFEXITED(status) ? "code " + std::to_string(WEXITSTATUS(status))
                           : "signal " + std::to_string(WTERMSIG(status));
}

// Shares the points among processes; each works in a separate folder.
Tally sweep(const Options& options, const Subject& subject, const Normal& normal) {
  Tally tally;
  tally.wrong[kMoment] = normal.moments;
  if (normal.moments > 0) {
    tally.lines.push_back("no project before call " + std::to_string(normal.firstMoment) + " and " +
                          std::to_string(normal.moments - 1) + " later ones");
  }
  std::vector<Fault> points = pointsOf(normal.outcome.run.calls);
  if (options.every > 1) {
    std::mt19937 random(options.seed);
    std::shuffle(points.begin(), points.end(), random);
    points.resize((points.size() + options.every - 1) / options.every);
  }
  std::vector<pid_t> workers;
  for (unsigned worker = 0; worker < options.jobs; ++worker) {
    const pid_t child = ::fork();
    if (child != 0) {
      workers.push_back(child);
      continue;
    }
    sweepShare(options, subject, normal.outcome, points, worker);
  }
  for (const pid_t worker : workers) {
    int status = 0;
    ::waitpid(worker, &status, 0);
    if (status != 0) throw std::runtime_error("a part of the sweep ended with " + endOf(status));
  }
  for (unsigned worker = 0; worker < options.jobs; ++worker) {
    std::ifstream report(options.folder + "/worker" + std::to_string(worker) + ".report");
    addFrom(report, tally);
    report.close();
    fs::remove(options.folder + "/worker" + std::to_string(worker) + ".report");
  }
  return tally;
}

bool isClean(const Tally& tally) {
  return std::all_of(tally.wrong.begin(), tally.wrong.end(), [](auto count) { return count == 0; });
}

void printHead() {
  std::cout << std::left << std::setw(22) << "command" << std::right << std::setw(8) << "points";
  for (const std::string_view name : kWrongNames) {
    std::cout << std::setw(static_cast<int>(name.size()) + 2) << name;
  }
  std::cout << std::setw(9) << "missed\n";
}

void print(const std::string& name, const Tally& tally) {
  std::cout << std::left << std::setw(22) << name << std::right << std::setw(8) << tally.points;
  for (std::size_t wrong = 0; wrong < kWrongs; ++wrong) {
    std::cout << std::setw(static_cast<int>(kWrongNames[wrong].size()) + 2) << tally.wrong[wrong];
  }
  std::cout << std::setw(8) << tally.missed << std::endl;
}

// ---- One point ----------------------------------------------------------------------------------

int showPoint(const Options& options, const Subject& subject, const Normal& normal) {
  Fault fault;
  if (!readPoint(options.point, fault) || fault.at >= normal.outcome.run.calls.size()) {
    std::cerr << "there is no point " << options.point << "\n";
    return kUsage;
  }
  AdoptOrphans();
  const PointResult result =
      runPoint(options.folder + "/worker0", options.programs, subject, normal.outcome, fault);
  const auto& calls = normal.outcome.run.calls;
  for (std::size_t at = fault.at < 5 ? 0 : fault.at - 5; at < calls.size() && at < fault.at + 6;
       ++at) {
    std::cout << (at == fault.at ? "> " : "  ") << at << ' ' << CallName(calls[at].number) << ' '
              << calls[at].descriptor << ' ' << calls[at].path << "\n";
  }
  std::cout << "\ncode " << result.met.run.code << "\n--- output\n"
            << result.met.out << "--- errors\n"
            << result.met.err << "--- files\n";
  for (const auto& [name, bytes] : result.left) std::cout << bytes.size() << '\t' << name << "\n";
  Tally tally;
  add(tally, fault, calls[fault.at], result);
  std::cout << "--- findings\n";
  for (const std::string& line : tally.lines) std::cout << line << "\n";
  return isClean(tally) ? kClean : kFound;
}

// ---- The command line ---------------------------------------------------------------------------

bool readNumber(const std::string& text, unsigned& number) {
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

bool readOptions(const std::vector<std::string>& words, Options& options) {
  for (std::size_t at = 0; at + 1 < words.size(); at += 2) {
    const std::string& name = words[at];
    const std::string& value = words[at + 1];
    bool fits = true;
    if (name == "--every") {
      fits = readNumber(value, options.every) && options.every > 0;
    } else if (name == "--seed") {
      fits = readNumber(value, options.seed);
    } else if (name == "--jobs") {
      fits = readNumber(value, options.jobs) && options.jobs > 0;
    } else if (name == "--command") {
      options.command = value;
    } else if (name == "--point") {
      options.point = value;
    } else if (name == "--folder") {
      options.folder = fs::absolute(value);
    } else if (name == "--program") {
      options.programs.ostrand = fs::absolute(value);
    } else {
      fits = false;
    }
    if (!fits) return false;
  }
  return words.size() % 2 == 0 && (options.point.empty() || !options.command.empty());
}

// The folder of this run, in memory if possible.
std::string ownFolder(const std::string& asked) {
  std::string name = asked;
  if (name.empty()) {
    name = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : fs::temp_directory_path().string();
  }
  name += "/ostrand-faults-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error(name + ": " + std::strerror(errno));
  }
  return name;
}

int sweepAll(const Options& options) {
  const std::string root = options.folder + "/worker0";
  const std::vector<Subject> subjects = MakeSubjects(root, options.programs);
  const bool known = options.command.empty() ||
                     std::any_of(subjects.begin(), subjects.end(), [&](const Subject& subject) {
                       return subject.name == options.command;
                     });
  if (!known) {
    std::cerr << "there is no command " << options.command << "\n";
    return kUsage;
  }
  if (options.point.empty()) {
    std::cout << "one point of " << options.every << ", seed " << options.seed << "\n";
    printHead();
  }
  int result = kClean;
  std::vector<std::string> lines;
  for (const Subject& subject : subjects) {
    if (!options.command.empty() && subject.name != options.command) continue;
    const Normal normal = runNormally(root, options.programs, subject);
    if (normal.outcome.run.missing != 0) {
      std::cerr << "skipped: programs cannot be traced here: "
                << std::strerror(static_cast<int>(normal.outcome.run.missing)) << "\n";
      return kCannotTrace;
    }
    if (normal.outcome.run.code != 0) {
      std::cerr << subject.name << ": code " << normal.outcome.run.code << "\n"
                << normal.outcome.err;
      return kFound;
    }
    if (!options.point.empty()) return showPoint(options, subject, normal);
    const Tally tally = sweep(options, subject, normal);
    print(subject.name, tally);
    for (const std::string& line : tally.lines) lines.push_back(subject.name + ": " + line);
    const bool reached =
        static_cast<double>(tally.missed) <= kMaxMissed * static_cast<double>(tally.points);
    if (!isClean(tally) || !reached) result = kFound;
  }
  for (const std::string& line : lines) std::cout << line << "\n";
  return result;
}

int faultsMain(const std::vector<std::string>& words) {
  Options options;
  if (!readOptions(words, options)) {
    std::cerr << kHelp;
    return kUsage;
  }
  options.folder = ownFolder(options.folder);
  AdoptOrphans();
  int result = kFound;
  try {
    result = sweepAll(options);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
  }
  std::error_code failed;
  fs::remove_all(options.folder, failed);
  return result;
}

}  // namespace
}  // namespace ostrand::faults

int main(int count, char** words) {
  try {
    return ostrand::faults::faultsMain({words + std::min(count, 1), words + count});
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return ostrand::faults::kFound;
  }
}
