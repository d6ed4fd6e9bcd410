// Ratios against yardsticks that do the minimum for the same bytes. Results are compared before
// anything is measured.
#include <fmt/compile.h>
#include <fmt/format.h>
#include <ini.h>

#include <cstring>
#include <iterator>
#include <memory>

#include "by_hand.h"
#include "generator/savedld.h"
#include "machine.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "projects.h"
#include "row.h"

namespace ostrand::bench {
namespace {

const std::string& largestFile() {
  static const std::string bytes = [] {
    const auto store = NewStore();
    MakeLargestProject(*store);
    return ORVUS_GENFILE::ProjectFileText(*store, FixedClock().Now());
  }();
  return bytes;
}

// A store as a session has it before it reads a project.
std::unique_ptr<ProjectStore> freshStore() {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  return store;
}

Figure inRounds(const std::function<void()>& measured, const std::function<void()>& yardstick) {
  constexpr int kRounds = 25;
  constexpr double kLongEnough = 0.01;
  return RatioOf(kRounds, kLongEnough, measured, yardstick);
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

Figure load() {
  const auto store = freshStore();
  ORVUS_GENFILE::ReadProjectText(*store, largestFile());
  Require(ORVUS_GENFILE::ProjectFileText(*store, FixedClock().Now()) == largestFile(),
          "a project read and written again");
  return inRounds([&] { ORVUS_GENFILE::ReadProjectText(*store, largestFile()); },
                  [] {
                    long count = 0;
                    ini_parse_string(largestFile().c_str(), countLine, &count);
                    Use(static_cast<std::size_t>(count));
                  });
}

Figure save() {
  const auto store = freshStore();
  ORVUS_GENFILE::ReadProjectText(*store, largestFile());
  const auto lines = linesOf(largestFile());
  Require(throughFmt(lines) == largestFile(), "the copied lines of a project");
  return inRounds([&] { Use(ORVUS_GENFILE::ProjectFileText(*store, FixedClock().Now()).size()); },
                  [&] { Use(throughFmt(lines).size()); });
}

struct Generation {
  Generation() { MakeLongestProgram(*store); }
  std::unique_ptr<ProjectStore> store = NewStore();
  NoFiles files;
  FixedClock clock;
  SilentForms forms;
  SAVEDLD generator{*store, files, clock, forms};
};

Figure generate() {
  Generation run;
  Require(ProgramByHand(*run.store, run.clock.Now()) == run.generator.ProgramText(),
          "the program by hand");
  return inRounds([&] { Use(run.generator.ProgramText().size()); },
                  [&] { Use(ProgramByHand(*run.store, run.clock.Now()).size()); });
}

Figure generateToFloor() {
  Generation run;
  const std::string program = run.generator.ProgramText();
  const auto lines = linesOf(program);
  Require(throughFmt(lines) == program, "the copied lines of a program");
  return inRounds([&] { Use(run.generator.ProgramText().size()); },
                  [&] { Use(throughFmt(lines).size()); });
}

}  // namespace

std::vector<Row> InnerRows() {
  return {{"load", "load, to inih that only counts the lines", 0.25, load},
          {"save", "save to bytes, to copying its lines by {fmt}", 2, save},
          {"generate", "generate, to the same by hand with {fmt}", 1.1, generate},
          {"floor", "generate, to copying its lines by {fmt}, listed", 0, generateToFloor}};
}

}  // namespace ostrand::bench
