#include "places/differences.h"

#include <algorithm>
#include <set>

#include "places/key_places.h"
#include "places/project_values.h"
#include "text/strings.h"

namespace ostrand {
namespace {

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

// A key that differs.
struct Changed {
  std::string_view key;
  const std::string_view* before;
  const std::string_view* after;
  KeyPlace place;
};

std::vector<Changed> changedKeys(std::string_view header, const ValueSection& before,
                                 const ValueSection& after) {
  std::vector<Changed> changes;
  for (const KeyValue& old : before.values) {
    const std::string_view* now = after.Find(old.key);
    if (now != nullptr && *now == old.value) continue;
    changes.push_back({old.key, &old.value, now, PlaceOfKey(header, old.key)});
  }
  for (const KeyValue& added : after.values) {
    if (before.Find(added.key) != nullptr) continue;
    changes.push_back({added.key, nullptr, &added.value, PlaceOfKey(header, added.key)});
  }
  return changes;
}

std::set<std::string> itemsOf(std::string_view header, const ValueSection& section) {
  std::set<std::string> items;
  for (const KeyValue& value : section.values) items.insert(PlaceOfKey(header, value.key).item);
  return items;
}

class SectionDifferences {
 public:
  SectionDifferences(std::string_view header, const ValueSection& before, const ValueSection& after)
      : header_(header), changes_(changedKeys(header, before, after)) {
    const bool onlyOne = before.values.empty() != after.values.empty();
    for (Changed& change : changes_) {
      if (onlyOne && change.place.item.empty()) change.place.item = change.place.place;
    }
    const bool oneSided = std::any_of(changes_.begin(), changes_.end(), [](const Changed& change) {
      return change.before == nullptr || change.after == nullptr;
    });
    if (!oneSided) return;
    before_ = itemsOf(header, before);
    after_ = itemsOf(header, after);
  }

  void AddTo(std::vector<Difference>& differences, ItemDetail detail) {
    std::set<std::string> items;  // that have been added or removed
    for (const Changed& change : changes_) {
      const std::string& item = change.place.item;
      if (isWhole(change)) {
        if (items.insert(item).second) {
          const Change kind = change.before == nullptr ? Change::kAdded : Change::kRemoved;
          differences.push_back(
              {kind, std::string(header_), std::string(change.key), item, {}, {}, {}, {}, {}});
        }
        if (detail == ItemDetail::kByKeys && hasValue(change)) {
          differences.push_back(valueOf(change));
          differences.back().wasInWords.clear();
          differences.back().isInWords = ValueInWords(header_, change.key, *change.after, true);
        }
      } else if (!change.place.derived || !isExplained(change)) {
        differences.push_back(valueOf(change));
      }
    }
  }

 private:
  // Belongs to an item that only one of the projects has.
  [[nodiscard]] bool isWhole(const Changed& change) const {
    const std::string& item = change.place.item;
    if (item.empty()) return false;
    if (change.before == nullptr) return !before_.contains(item);
    return change.after == nullptr && !after_.contains(item);
  }

  static bool hasValue(const Changed& change) {
    return change.after != nullptr && !change.after->empty() && !change.place.derived;
  }

  // Whether a key that this one can follow from differs too.
  [[nodiscard]] bool isExplained(const Changed& change) const {
    return std::any_of(changes_.begin(), changes_.end(), [&](const Changed& other) {
      const bool canExplain = change.place.item.empty() || other.place.item == change.place.item;
      return !other.place.derived && canExplain;
    });
  }

  [[nodiscard]] Difference valueOf(const Changed& change) const {
    const auto raw = [](const std::string_view* value) {
      return value == nullptr ? std::string() : std::string(*value);
    };
    const auto inWords = [&](const std::string_view* value) {
      return ValueInWords(header_, change.key, value == nullptr ? std::string_view{} : *value,
                          value != nullptr);
    };
    Difference made{Change::kValue,     std::string(header_),   std::string(change.key),
                    change.place.place, change.place.words,     raw(change.before),
                    raw(change.after),  inWords(change.before), inWords(change.after)};
    if (made.wasInWords == made.isInWords) {  // -1 and 1 are both on
      made.wasInWords = change.before == nullptr ? "none" : quoted(made.before);
      made.isInWords = change.after == nullptr ? "none" : quoted(made.after);
    }
    return made;
  }

  std::string_view header_;
  std::vector<Changed> changes_;
  std::set<std::string> before_;  // items, as far as they are needed
  std::set<std::string> after_;
};

}  // namespace

std::vector<Difference> DifferencesOf(std::string_view before, std::string_view after,
                                      ItemDetail detail) {
  const ProjectValues one = ParseValues(before);
  const ProjectValues other = ParseValues(after);
  std::vector<std::string_view> headers = one.headers;
  for (const std::string_view header : other.headers) {
    if (!one.sections.contains(header)) headers.push_back(header);
  }
  const ValueSection none;
  const auto sectionOf = [&none](const ProjectValues& file,
                                 std::string_view header) -> const ValueSection& {
    const auto found = file.sections.find(header);
    return found == file.sections.end() ? none : found->second;
  };
  std::vector<Difference> differences;
  for (const std::string_view header : headers) {
    SectionDifferences(header, sectionOf(one, header), sectionOf(other, header))
        .AddTo(differences, detail);
  }
  return differences;
}

std::string InWords(const Difference& difference) {
  const std::string place = difference.place + ": ";
  if (difference.change == Change::kAdded) return place + "added";
  if (difference.change == Change::kRemoved) return place + "removed";
  const std::string value = place + difference.words + " " + difference.isInWords;
  return difference.wasInWords.empty() ? value : value + ", was " + difference.wasInWords;
}

}  // namespace ostrand
