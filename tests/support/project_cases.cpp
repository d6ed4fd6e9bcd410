#include "support/project_cases.h"

#include "projectfile/genfile.h"
#include "support/temp_folder.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A line with each "<18x>" expanded.
std::string repeated(std::string_view line) {
  std::string text;
  while (!line.empty()) {
    std::size_t at = 1;
    while (at < line.size() && isDigit(line[at])) ++at;
    if (line[0] == '<' && at > 1 && at + 1 < line.size() && line[at + 1] == '>') {
      text.append(static_cast<std::size_t>(Val(line.substr(1))), line[at]);
      line.remove_prefix(at + 2);
    } else {
      text += line[0];
      line.remove_prefix(1);
    }
  }
  return text;
}

void dropBlankEnd(std::vector<std::string>& lines) {
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
}

// The settings of "Reps(1-2)=3".
std::vector<std::string> spread(const std::string& line) {
  const std::size_t dash = line.find('-');
  const bool range = dash >= 2 && dash < line.find('=') && isDigit(line[dash - 1]) &&
                     (line[dash - 2] == '(' || line[dash - 2] == ',');
  if (!range) return {line};
  std::vector<std::string> lines;
  for (char index = line[dash - 1]; index <= line[dash + 1]; ++index) {
    lines.push_back(line.substr(0, dash - 1) + index + line.substr(dash + 2));
  }
  return lines;
}

}  // namespace

std::vector<ProjectCase> ReadProjectCases(std::string_view name) {
  const std::string text = ReadDisk(OSTRAND_SOURCE_DIR "/tests/" + std::string(name));
  std::vector<ProjectCase> cases;
  int number = 0;
  for (const std::string_view line : Split(text, '\n')) {
    ++number;
    if (line.starts_with('#')) continue;
    if (line.starts_with("=== ")) {
      const std::string place = std::string(name) + ":" + std::to_string(number) + ": ";
      cases.push_back({place + std::string(line.substr(4)), {{}}});
    } else if (line == "+++" || line.starts_with("--- ")) {
      dropBlankEnd(cases.back().steps.back().lines);
      cases.back().steps.push_back({line == "+++" ? "" : repeated(line.substr(4)), {}});
    } else if (!cases.empty()) {
      cases.back().steps.back().lines.push_back(repeated(line));
    }
  }
  for (ProjectCase& made : cases) dropBlankEnd(made.steps.back().lines);
  EXPECT_FALSE(cases.empty()) << name;
  return cases;
}

void TakeSettings(ProjectStore& store, const std::vector<std::string>& lines) {
  // With this header the reader keeps the given exceptions.
  std::string header = "[TC REF TABLES]";
  const auto saved = [&] { return ORVUS_GENFILE::ProjectFileText(store, {}); };
  for (std::string_view line : lines) {
    if (line.starts_with('[')) {
      const std::size_t end = line.find(']') + 1;
      header = "[TC REF TABLES]\n" + std::string(line.substr(0, end));
      line.remove_prefix(end);
    }
    for (const std::string_view setting : Split(line, ';')) {
      const std::string text(Trim(setting));
      if (text.empty()) continue;
      const std::string before = saved();
      for (const std::string& key : spread(text)) {
        ORVUS_GENFILE::ReadProjectText(store, header + "\n" + key);
      }
      EXPECT_TRUE(saved() != before) << "of no effect: " << text;
    }
  }
}

}  // namespace ostrand::testing
