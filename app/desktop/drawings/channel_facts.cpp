#include "drawings/channel_facts.h"

#include <algorithm>
#include <map>

#include "text/mask.h"
#include "text/number.h"

namespace ostrand::desktop {
namespace {

void add(std::vector<InputRun>& runs, int input) {
  if (!runs.empty() && runs.back().last == input - 1) {
    runs.back().last = input;
  } else {
    runs.push_back({input, input});
  }
}

struct GroupRow {
  std::string_view title;
  std::string_view prefix;  // of the printed names, before a number
};
constexpr std::array<GroupRow, 4> kGroups = {
    {{"Excitation", "VX"}, {"Analog output", "CAO"}, {"Pulse input", "P"}, {"Control port", "C"}}};

bool isNumbered(std::string_view name, std::string_view prefix) {
  return name.starts_with(prefix) && ToInt16(name.substr(prefix.size())).has_value();
}

}  // namespace

InputUse InputUseOf(const Wiring& wiring) {
  InputUse use;
  std::map<std::pair<WireKind, int>, std::vector<InputRun>> users;
  for (const TerminalStrip& strip : wiring.panel) {
    for (const WireTerminal& terminal : strip.places) {
      const int input = terminal.singleEnded;
      if (input == 0) continue;
      if (terminal.users.empty()) add(use.free, input);
      if (IsConflict(terminal.users)) add(use.conflicts, input);
      for (const WireUse& user : terminal.users) add(users[{user.kind, user.number}], input);
    }
  }
  for (auto& [user, runs] : users) use.users.push_back({user.first, user.second, std::move(runs)});
  return use;
}

std::string RunsText(const std::vector<InputRun>& runs) {
  std::string text;
  for (const InputRun& run : runs) {
    if (!text.empty()) text += ", ";
    text += NumberText(run.first);
    if (run.last > run.first) text += " to " + NumberText(run.last);
  }
  return text.empty() ? "none" : text;
}

InputCount CountOf(const std::vector<InputRun>& runs) {
  InputCount count;
  for (const InputRun& run : runs) {
    count.singleEnded += run.last - run.first + 1;
    count.differential += std::max(0, run.last / 2 - run.first / 2);
  }
  return count;
}

std::vector<TerminalGroup> OtherTerminalsOf(const Wiring& wiring) {
  std::vector<TerminalGroup> groups;
  for (const GroupRow& row : kGroups) {
    TerminalGroup& group = groups.emplace_back(TerminalGroup{row.title, {}});
    for (const TerminalStrip& strip : wiring.panel) {
      for (const WireTerminal& terminal : strip.places) {
        if (isNumbered(terminal.name, row.prefix)) group.terminals.push_back(&terminal);
      }
    }
    std::sort(
        group.terminals.begin(), group.terminals.end(),
        [](const WireTerminal* one, const WireTerminal* other) { return one->name < other->name; });
  }
  return groups;
}

std::vector<ScanShare> LongestFirst(const ProjectStore& store) {
  std::vector<ScanShare> shares = ScanShares(store);
  std::stable_sort(shares.begin(), shares.end(), [](const ScanShare& one, const ScanShare& other) {
    return one.micros > other.micros;
  });
  return shares;
}

std::string PercentText(double micros, double interval) {
  if (interval <= 0) return {};
  return FormatNumber(micros / interval * 100, "#,##0.0") + " %";
}

}  // namespace ostrand::desktop
