#include "generator/section_faults.h"

#include <algorithm>
#include <vector>

#include "generator/families.h"
#include "model/intervals.h"
#include "model/names.h"
#include "text/letters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr Family kBlockFamilies[] = {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse,
                                     Family::kTK40M};
// What the constants of a block are called, without their family and number.
constexpr std::string_view kConstants[] = {"RNG",  "TYPE",  "REP", "SETL", "INT",  "MULT",
                                           "OSET", "EXCIT", "GF",  "CODE", "CONF", "OPT"};

// Heads the statements that request a CAN item; its number follows.
constexpr std::string_view kCanLoop = "CANBUS Loop #";

bool isNameLetter(char letter) {
  return IsDigit(letter) || IsLetter(letter) || letter == '_' ||
         static_cast<unsigned char>(letter) >= 0x80;
}

// The names in a line, without its comment.
std::vector<std::string_view> wordsOf(std::string_view line) {
  line = Before(line, "'");
  std::vector<std::string_view> words;
  while (!line.empty()) {
    const auto end = static_cast<std::size_t>(
        std::find_if_not(line.begin(), line.end(), isNameLetter) - line.begin());
    if (end > 0) words.push_back(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return words;
}

std::string titleOf(Family family, int n) {
  return std::string(Trim(Joined({TextsOf(family).blockTitle, n})));
}

// Whether the program uses the word for a block: an array or a constant.
bool namesBlock(std::string_view word, Family family, int n) {
  const OrvusDataObjTypes kind = TextsOf(family).kind;
  return Holds(word, SourceName(kind, n)) ||
         std::any_of(std::begin(kConstants), std::end(kConstants),
                     [&](std::string_view what) { return word == ConstantName(kind, what, n); });
}

// The block with a repetition of that alias; 0 for none.
template <class Group>
int blockOfAlias(const Group& group, std::string_view word) {
  for (int b = 1; b <= std::min<int>(group.BlockCount, Group::kLast); ++b) {
    const auto aliases = group[b].Alias.Made();  // others have no name
    const auto reps = std::clamp<std::ptrdiff_t>(group[b].Reps, 0, std::ssize(aliases));
    if (std::any_of(aliases.begin(), aliases.begin() + reps,
                    [&](const RepAlias& alias) { return alias.AliasName == word; })) {
      return b;
    }
  }
  return 0;
}

std::string blockOf(const ProjectStore& store, std::string_view word) {
  for (const Family family : kBlockFamilies) {
    for (int n = 1; n <= kBlocks; ++n) {
      if (namesBlock(word, family, n)) return titleOf(family, n);
    }
  }
  const std::pair<Family, int> found[] = {
      {Family::kTemp, blockOfAlias(store.TempBlock, word)},
      {Family::kVolt, blockOfAlias(store.VoltBlock, word)},
      {Family::kBridge, blockOfAlias(store.BridgeBlock, word)},
      {Family::kPulse, blockOfAlias(store.PulseBlock[0], word)},
      {Family::kPulse, blockOfAlias(store.PulseBlock[1], word)},
      {Family::kTK40M, blockOfAlias(store.TK40MBlock, word)},
  };
  for (const auto& [family, n] : found) {
    if (n > 0) return titleOf(family, n);
  }
  return {};
}

// An item's constants begin with its name, so the longest matching name wins.
std::string itemOf(const ProjectStore& store, std::string_view word) {
  int best = 0;
  std::size_t length = 0;
  for (int i = 1; i <= std::min<int>(store.Can.CanCount, kCanItems); ++i) {
    const std::string& name = store.Can.Item[i].Name;
    if (name.size() <= length || !word.starts_with(name)) continue;
    best = i;
    length = name.size();
  }
  return best == 0 ? std::string() : titleOf(Family::kCan, best);
}

std::string fieldOf(const ProjectStore& store, std::string_view word) {
  for (int c = 1; c <= std::min<int>(store.CalcFields.CalcFieldCount, kCalcFields); ++c) {
    if (store.CalcFields.Field[c].CalcField[1] == word) return Joined({"Calculated Field ", c});
  }
  return {};
}

std::string tableOf(const ProjectStore& store, std::string_view word) {
  for (int t = 1; t <= kTables; ++t) {
    if (store.Tables[t].TableName == word) return Joined({"Table ", t});
  }
  return {};
}

// The block, item, field or table that a line is about; empty for none.
std::string subjectOf(const ProjectStore& store, std::string_view line) {
  if (Holds(line, kCanLoop)) {
    return titleOf(Family::kCan, static_cast<int>(Val(After(line, kCanLoop))));
  }
  const std::vector<std::string_view> words = wordsOf(line);
  for (const auto find : {blockOf, itemOf, fieldOf, tableOf}) {
    for (const std::string_view word : words) {
      if (std::string found = find(store, word); !found.empty()) return found;
    }
  }
  return {};
}

// A failure between two lines concerns the subject of the last group of lines, unless the scan
// interval, the only divisor, is 0.
std::string subjectAtEnd(const ProjectStore& store, const ProgramLines& lines) {
  if (ORVUS_COMMON::ScanIntervalMicros(store) == 0) return "the scan interval, which is 0";
  for (int i = lines.LineCount(); i > 0 && !Trim(lines[i]).empty(); --i) {
    if (std::string found = subjectOf(store, lines[i]); !found.empty()) return found;
  }
  return {};
}

}  // namespace

std::string PlaceOfFault(const ProjectStore& store, const ProgramLines& lines) {
  std::string_view line = Trim(lines.Unstored());
  const bool between = line.empty();
  for (int i = lines.LineCount(); line.empty() && i > 0; --i) line = Trim(lines[i]);
  std::string place = between ? subjectAtEnd(store, lines) : subjectOf(store, line);
  if (!place.empty()) place = "in " + place + ", ";
  return place.append(between ? "after: " : "at: ").append(line);
}

}  // namespace ostrand
