#include "places/settings_in_words.h"

#include <algorithm>
#include <array>
#include <set>

#include "places/key_places.h"
#include "places/project_values.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// A section with items, and the key that says whether one is in use, without its brackets; empty
// where every item of the file is.
struct ListedSection {
  std::string_view header;
  std::string_view inUse;
};
constexpr std::array<ListedSection, 6> kListed = {{
    {"[TABLE SETUP]", "TableOn"},
    {"[PORT SETUP]", "Include"},
    {"[FLAG CONTROL]", "FlagInclude"},
    {"[EXCITE CONTROL]", "Include"},
    {"[CANBUS ITEMS]", ""},
    {"[CALCULATED FIELDS]", ""},
}};

bool isOn(std::string_view header, const KeyValue& value) {
  return ValueInWords(header, value.key, value.value, true) != "off";
}

// The items in use by their places.
std::set<std::string> itemsOf(const ListedSection& row, const ValueSection& section) {
  std::set<std::string> items;
  for (const KeyValue& value : section.values) {
    const std::string item = PlaceOfKey(row.header, value.key).item;
    if (item.empty()) continue;
    const bool counts =
        row.inUse.empty() || (Before(value.key, "(") == row.inUse && isOn(row.header, value));
    if (counts) items.insert(item);
  }
  return items;
}

void add(std::vector<PlaceSettings>& all, const ListedSection& row, const ValueSection& section) {
  const std::set<std::string> items = itemsOf(row, section);
  if (items.empty()) return;
  for (const KeyValue& value : section.values) {
    const KeyPlace place = PlaceOfKey(row.header, value.key);
    const bool ofPart = Holds(place.place, ", ");  // what a table stores, a sensor
    const bool unused = !place.item.empty() && !items.contains(place.item);
    if (place.derived || place.screen.steps.empty() || ofPart || unused) continue;
    std::string words = ValueInWords(row.header, value.key, value.value, true);
    if (words == "off" || words == "none") continue;
    const auto same = std::find_if(
        all.begin(), all.end(), [&](const PlaceSettings& one) { return one.place == place.place; });
    PlaceSettings& settings = same == all.end() ? all.emplace_back() : *same;
    settings.place = place.place;
    settings.values.emplace_back(place.words, std::move(words));
  }
}

}  // namespace

std::vector<PlaceSettings> SettingsInWords(std::string_view project) {
  const ProjectValues values = ParseValues(project);
  std::vector<PlaceSettings> all;
  for (const std::string_view header : values.headers) {
    const auto row = std::find_if(kListed.begin(), kListed.end(),
                                  [&](const ListedSection& one) { return one.header == header; });
    if (row != kListed.end()) add(all, *row, values.sections.at(header));
  }
  return all;
}

}  // namespace ostrand
