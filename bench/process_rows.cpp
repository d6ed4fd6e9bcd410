// Whole processes on one example, against an empty process. The settings of the user are not read.
#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "process.h"
#include "row.h"

namespace ostrand::bench {
namespace {

using Words = std::vector<std::string>;

const std::string kProject = OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG";

void run(const Words& words) {
  Require(RunProcess(words).status == 0, fmt::format("{}", fmt::join(words, " ")));
}

// The output folder, in memory if possible: replacing a file on a disk takes longer than all the
// rest.
class OutFolder {
 public:
  OutFolder() { Require(mkdtemp(path_.data()) != nullptr, path_); }
  ~OutFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  OutFolder(const OutFolder&) = delete;
  OutFolder& operator=(const OutFolder&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_ =
      std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : OSTRAND_OUT_DIR) + "/bench-XXXXXX";
};

const std::string& outFolder() {
  static const OutFolder folder;
  return folder.Path();
}

Words command(Words words) {
  setenv("HOME", outFolder().c_str(), 1);
  setenv("XDG_CONFIG_HOME", outFolder().c_str(), 1);
  words.insert(words.begin(), OSTRAND_PROGRAM);
  return words;
}

Row processRow(std::string_view name, std::string_view what, double aim, const Words& words) {
  return {name, what, aim, [words] {
            const Words whole = command(words);
            constexpr int kPairs = 101;
            return RatioOf(
                kPairs, 0, [&] { run(whole); }, [] { run({OSTRAND_EMPTY}); });
          }};
}

Words generation() { return {"generate", "--no-sync", kProject, "-o", outFolder()}; }

// One cost of a command, measured by a small process: the memory of this one would count for its
// children.
double costOf(std::string_view what, const Words& words) {
  std::string line = fmt::format("{} {}", OSTRAND_COSTS, what);
  for (const std::string& word : words) line += " '" + word + "'";
  FILE* const answer = popen(line.c_str(), "r");
  Require(answer != nullptr, line);
  double cost = 0;
  Require(std::fscanf(answer, "%lf", &cost) == 1 && pclose(answer) == 0, line);
  return cost;
}

Figure peakMemory() {
  constexpr double kKilo = 1024;
  return {costOf("memory", command(generation())) / kKilo,
          fmt::format("empty process {:.1f}", costOf("memory", {OSTRAND_EMPTY}) / kKilo)};
}

Figure pageFaults() {
  return {costOf("faults", command(generation())),
          fmt::format("empty process {}", costOf("faults", {OSTRAND_EMPTY}))};
}

}  // namespace

std::vector<Row> ProcessRows() {
  return {
      processRow("p-generate", "process of generate, to an empty one", 2, generation()),
      processRow("p-check", "process of check, to an empty one", 2, {"check", kProject}),
      processRow("p-summary", "process of summary, to an empty one", 2, {"summary", kProject}),
      processRow("p-resave", "process of resave, to an empty one", 2,
                 {"resave", "--no-sync", kProject, "-o", outFolder()}),
      processRow("p-screen", "process of screen with 50 lines, to an empty one", 2,
                 {"screen", "--no-sync", kProject, OSTRAND_SOURCE_DIR "/bench/screen.txt", "-o",
                  outFolder()}),
      processRow("p-version", "process of --version, to an empty one", 1.2, {"--version"}),
      processRow("p-help", "process of --help, to an empty one", 1.2, {"--help"}),
      {"memory", "peak memory of generate, MB", 4.5, peakMemory},
      {"faults", "page faults of generate", 170, pageFaults},
  };
}

}  // namespace ostrand::bench
