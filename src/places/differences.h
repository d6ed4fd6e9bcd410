// The differences of two projects in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

enum class Change {
  kValue,    // another value
  kAdded,    // a block, table, flag or other item that only the second project has
  kRemoved,  // one that only the first project has
};

struct Difference {
  Change change = Change::kValue;
  std::string section;  // "[VOLTAGE BLOCKS]"
  std::string key;      // "Range(2)"; of an added or removed item its first key
  std::string place;    // "Voltage block 2"
  std::string words;    // "range"; empty for an item
  // As the files have them, without outer blanks; empty where a file does not have the key.
  std::string before;
  std::string after;
  // The same in words; empty for an item.
  std::string wasInWords;
  std::string isInWords;
};

// How an item that only one of the projects has is listed.
enum class ItemDetail {
  kOnce,    // as one difference
  kByKeys,  // with a difference for each of its keys that has a value; they have no value before
};

// Compares two project files as ProjectFileText makes them, in Windows-1252: the order of keys,
// blanks around values and the moment and version of the last save do not count. Of a key that is
// repeated the last value counts, as in reading. A key that follows from others is left out if one
// of those differs too. In the order of the sections and keys; none for equal projects.
std::vector<Difference> DifferencesOf(std::string_view before, std::string_view after,
                                      ItemDetail detail = ItemDetail::kOnce);

// "Voltage block 2: range 5000 mV, was 1000 mV"; "Voltage block 3: added"; "Voltage block 3: range
// 5000 mV" for a key of an item that is listed by keys.
std::string InWords(const Difference& difference);

}  // namespace ostrand
