// Ratios against yardsticks that do the least that could be done with the same bytes. Results are
// compared before anything is measured.
#include <INIReader.h>
#include <benchmark/benchmark.h>
#include <fmt/compile.h>
#include <ini.h>
#include <spawn.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "generator/savedld.h"
#include "machine.h"
#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "projects.h"

extern char** environ;

namespace ostrand::bench {
namespace {

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "results differ: %s\n", what);
  std::exit(1);
}

const std::string& largestFile() {
  static const std::string bytes = [] {
    const auto store = NewStore();
    MakeLargestProject(*store);
    return ORVUS_GENFILE::ProjectFileText(*store, FixedClock().Now());
  }();
  return bytes;
}

// A store as a session has it when it is about to read.
ProjectStore& freshStore() {
  static const auto store = NewStore();
  ORVUS_COMMON::ClearStore(*store);
  ORVUS_COMMON::SetAllDefaults(*store);
  return *store;
}

int countLine(void* user, const char*, const char*, const char*) {
  ++*static_cast<long*>(user);
  return 1;
}

std::vector<std::string_view> linesOf(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find("\r\n");
    lines.push_back(bytes.substr(0, end));
    bytes.remove_prefix(end + 2);
  }
  return lines;
}

std::string throughFmt(const std::vector<std::string_view>& lines) {
  std::string copy;
  for (const std::string_view line : lines) {
    fmt::format_to(std::back_inserter(copy), FMT_COMPILE("{}\r\n"), line);
  }
  return copy;
}

void checkLoad() {
  ProjectStore& store = freshStore();
  ORVUS_GENFILE::ReadProjectText(store, largestFile());
  INIReader reader(largestFile().data(), largestFile().size());
  const auto same = [&](const char* section, const char* key, const std::string& value) {
    require(reader.Get(section, key, "?") == value, key);
  };
  same("THERMOCOUPLE BLOCKS", "AliasName(7,100)", store.TempBlock[7].Alias[100].AliasName);
  same("CANBUS ITEMS", "AliasName(128,64)", store.Can.Item[128].Alias[64].AliasName);
  same("CALCULATED FIELDS", "CalcField(50,2)", store.CalcFields.Field[50].CalcField[2]);
  require(ORVUS_GENFILE::ProjectFileText(store, FixedClock().Now()) == largestFile(), "reload");
}

void Load(benchmark::State& state) {
  ProjectStore& store = freshStore();
  for (auto _ : state) ORVUS_GENFILE::ReadProjectText(store, largestFile());
}

void LoadYardstickCount(benchmark::State& state) {
  for (auto _ : state) {
    long count = 0;
    ini_parse_string(largestFile().c_str(), countLine, &count);
    benchmark::DoNotOptimize(count);
  }
}

void LoadYardstickReader(benchmark::State& state) {
  for (auto _ : state) {
    INIReader reader(largestFile().data(), largestFile().size());
    benchmark::DoNotOptimize(reader.ParseError());
  }
}

void Save(benchmark::State& state) {
  ProjectStore& store = freshStore();
  ORVUS_GENFILE::ReadProjectText(store, largestFile());
  for (auto _ : state) {
    std::string bytes = ORVUS_GENFILE::ProjectFileText(store, FixedClock().Now());
    benchmark::DoNotOptimize(bytes.data());
  }
}

void SaveYardstick(benchmark::State& state) {
  const auto lines = linesOf(largestFile());
  require(throughFmt(lines) == largestFile(), "copied lines");
  for (auto _ : state) {
    std::string copy = throughFmt(lines);
    benchmark::DoNotOptimize(copy.data());
  }
}

struct Generation {
  Generation() : generator(freshStore(), files, clock, forms) { MakeLongestProgram(freshStore()); }
  NoFiles files;
  FixedClock clock;
  SilentForms forms;
  SAVEDLD generator;
};

void Generate(benchmark::State& state) {
  Generation run;
  for (auto _ : state) {
    std::string text = run.generator.ProgramText();
    benchmark::DoNotOptimize(text.data());
  }
  state.counters["lines"] = run.generator.Lines().LineCount();
}

void GenerateYardstick(benchmark::State& state) {
  Generation run;
  const std::string program = run.generator.ProgramText();
  const auto lines = linesOf(program);
  require(throughFmt(lines) == program, "program lines");
  for (auto _ : state) {
    std::string copy = throughFmt(lines);
    benchmark::DoNotOptimize(copy.data());
  }
}

void runProcess(std::vector<const char*> arguments) {
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", 1, 0);
  pid_t child = 0;
  require(posix_spawn(&child, arguments[0], &actions, nullptr,
                      const_cast<char* const*>(arguments.data()), environ) == 0,
          "process start");
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  waitpid(child, &status, 0);
  require(status == 0, arguments[0]);
}

void Process(benchmark::State& state) {
  for (auto _ : state) {
    runProcess({OSTRAND_PROGRAM, "generate", "--no-sync",
                OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG", "-o", OSTRAND_OUT_DIR});
  }
}

void ProcessYardstick(benchmark::State& state) {
  for (auto _ : state) runProcess({OSTRAND_EMPTY});
}

struct Comparison {
  const char* what;
  const char* measured;
  const char* yardstick;
  const char* aim;
};
constexpr std::array<Comparison, 5> kComparisons = {{
    {"load, to a handler that only counts", "Load", "LoadYardstickCount", "at most 1"},
    {"load, to INIReader", "Load", "LoadYardstickReader", "at most 0.33"},
    {"save, to copying lines by {fmt}", "Save", "SaveYardstick", "at most 2"},
    {"generate, to appending lines by {fmt}", "Generate", "GenerateYardstick", "at most 2"},
    {"whole process, to an empty one", "Process", "ProcessYardstick", "3 and 2 ms"},
}};

// Keeps the medians of the repetitions for the table of ratios.
class Medians : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name == "median")
        times_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
  }
  void PrintRatios() const {
    std::printf("\n%-40s %12s %12s %8s  %s\n", "ratio", "us", "yardstick", "ratio", "aim");
    for (const Comparison& row : kComparisons) {
      const auto measured = times_.find(row.measured);
      const auto yardstick = times_.find(row.yardstick);
      if (measured == times_.end() || yardstick == times_.end()) continue;
      std::printf("%-40s %12.1f %12.1f %8.2f  %s\n", row.what, measured->second, yardstick->second,
                  measured->second / yardstick->second, row.aim);
    }
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace
}  // namespace ostrand::bench

int main(int argc, char** argv) {
  using namespace ostrand::bench;
  checkLoad();
  const auto add = [](const char* name, void (*body)(benchmark::State&)) {
    benchmark::RegisterBenchmark(name, body)
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime()
        ->Repetitions(5)
        ->ReportAggregatesOnly();
  };
  add("Load", Load);
  add("LoadYardstickCount", LoadYardstickCount);
  add("LoadYardstickReader", LoadYardstickReader);
  add("Save", Save);
  add("SaveYardstick", SaveYardstick);
  add("Generate", Generate);
  add("GenerateYardstick", GenerateYardstick);
  add("Process", Process);
  add("ProcessYardstick", ProcessYardstick);
  benchmark::Initialize(&argc, argv);
  Medians reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintRatios();
  return 0;
}
