#include "places/search.h"

#include <algorithm>
#include <array>
#include <optional>

#include "model/enums.h"
#include "model/names.h"
#include "model/store.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Keys whose value is a name, which is what a user looks for.
constexpr std::array<std::string_view, 4> kNames = {"AliasName", "TableName", "CalcField", "Name"};

// Outputs, levels and the other values of a sensor: found by the sensor or the block. A range is
// found by its name.
constexpr std::array<std::string_view, 8> kSkipped = {
    "Table(",   "Alias",  "HistogramCode",    "RainHistoCode",
    "RainCode", "PCTime", "VersionLastSaved", "RangeNo"};

std::string_view stemOf(std::string_view key) { return key.substr(0, key.find('(')); }

bool isName(std::string_view key) {
  return std::find(kNames.begin(), kNames.end(), stemOf(key)) != kNames.end() &&
         (!key.starts_with("CalcField(") || key.ends_with(",1)"));
}

bool isSkipped(std::string_view key) {
  const bool level =
      key.size() > 5 && (key.substr(2).starts_with("Lev") || key.substr(2).starts_with("NumDims"));
  return level || std::any_of(kSkipped.begin(), kSkipped.end(),
                              [key](std::string_view skipped) { return key.starts_with(skipped); });
}

struct ArrayRow {
  OrvusDataObjTypes kind;
  std::string_view section;
};
constexpr std::array<ArrayRow, 5> kArrays = {{
    {ORVUS_DOBJ_BLK_TEMP, "[THERMOCOUPLE BLOCKS]"},
    {ORVUS_DOBJ_BLK_VOLT, "[VOLTAGE BLOCKS]"},
    {ORVUS_DOBJ_BLK_BRIDGE, "[BRIDGE BLOCKS]"},
    {ORVUS_DOBJ_BLK_PULSE, "[PULSE BLOCKS]"},
    {ORVUS_DOBJ_BLK_TK40M, "[TK40M BLOCKS]"},
}};

// "VBlk2(3)" as the alias of that sensor, if the project has the block with so many sensors.
std::optional<SearchEntry> elementOf(std::string_view query,
                                     const std::vector<SearchEntry>& entries) {
  const std::size_t open = query.find('(');
  if (open == std::string_view::npos || !query.ends_with(')')) return {};
  const int sensor = static_cast<int>(Val(query.substr(open + 1)));
  for (const ArrayRow& row : kArrays) {
    for (int block = 1; block <= kBlocks; ++block) {
      if (!SameText(SourceName(row.kind, block), query.substr(0, open))) continue;
      const std::string number = NumberText(block);
      const std::string reps = "Reps(" + number + ")";
      const auto found =
          std::find_if(entries.begin(), entries.end(), [&](const SearchEntry& entry) {
            return entry.section == row.section && entry.key == reps;
          });
      if (found == entries.end() || sensor < 1 || sensor > Val(found->detail)) return {};
      const std::string key = "AliasName(" + number + "," + NumberText(sensor) + ")";
      return SearchEntry{SourceName(row.kind, block) + "(" + NumberText(sensor) + ")",
                         PlaceOfKey(row.section, key).place, std::string(row.section), key};
    }
  }
  return {};
}

std::vector<std::string> wordsOf(std::string_view query) {
  std::vector<std::string> words;
  for (std::string_view rest = Trim(query); !rest.empty();) {
    words.push_back(Upper(Before(rest, " ")));
    rest = Trim(After(rest, " "));
  }
  return words;
}

// 0 for the best. Query and words are in upper case.
int rankOf(const SearchEntry& entry, std::string_view query,
           const std::vector<std::string>& words) {
  const std::string upper = Upper(entry.text);
  if (upper == query) return 0;
  if (upper.starts_with(query)) return entry.screen.empty() ? 2 : 1;
  if (upper.find(query) != std::string::npos) return 3;
  const bool inText = std::all_of(words.begin(), words.end(), [&](const std::string& word) {
    return upper.find(word) != std::string::npos;
  });
  return inText ? 4 : 5;
}

}  // namespace

ProjectIndex::ProjectIndex(std::string_view project, const std::vector<NamedScreen>& screens) {
  for (const NamedScreen& screen : screens) {
    entries_.push_back({std::string(screen.caption),
                        "Screen",
                        {},
                        {},
                        screen.screen,
                        Upper(std::string(screen.caption) + " Screen")});
  }
  std::string_view section;
  while (!project.empty()) {
    const std::string_view line = TakeLine(project);
    const std::size_t equal = line.find('=');
    if (equal == std::string_view::npos) {
      if (line.starts_with('[')) section = line;
    } else {
      add(section, line.substr(0, equal), Trim(line.substr(equal + 1)));
    }
  }
}

void ProjectIndex::add(std::string_view section, std::string_view key, std::string_view value) {
  const bool named = isName(key);
  if (named ? value.empty() : isSkipped(key)) return;
  const KeyPlace place = PlaceOfKey(section, key);
  if (place.screen.steps.empty() || place.words.empty()) return;
  const std::string full = place.place + ": " + place.words;
  SearchEntry entry{full, ValueInWords(section, key, value, true), std::string(section),
                    std::string(key)};
  if (named) {
    entry.text = value;
    entry.detail = full;
  }
  entry.hay = Upper(entry.text + "\n" + entry.detail + "\n" + entry.key);
  entries_.push_back(std::move(entry));
}

std::vector<SearchEntry> ProjectIndex::Find(std::string_view query, std::size_t count) const {
  const std::string trimmed(Trim(query));
  const std::string upper = Upper(trimmed);
  const std::vector<std::string> words = wordsOf(query);
  if (words.empty()) return {};
  std::vector<std::pair<int, const SearchEntry*>> found;
  for (const SearchEntry& entry : entries_) {
    const bool holdsAll = std::all_of(words.begin(), words.end(), [&](const std::string& word) {
      return entry.hay.find(word) != std::string::npos;
    });
    if (holdsAll) found.emplace_back(rankOf(entry, upper, words), &entry);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  std::vector<SearchEntry> results;
  if (const auto element = elementOf(trimmed, entries_)) results.push_back(*element);
  for (const auto& [rank, entry] : found) {
    if (results.size() == count) break;
    results.push_back(*entry);
  }
  return results;
}

ScreenPlace PlaceOf(const SearchEntry& entry) {
  if (!entry.screen.empty()) return {{{entry.screen}}, {}};
  return PlaceOfKey(entry.section, entry.key).screen;
}

}  // namespace ostrand
