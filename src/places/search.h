// Finds sensors, names, tables, flags, keys and screens of a project.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "places/key_places.h"

namespace ostrand {

struct SearchEntry {
  std::string text;     // "OilTemp", "Voltage block 2: range"
  std::string detail;   // "Thermocouple block 1, sensor 1: alias", "5000 mV"
  std::string section;  // of the key that it leads to; empty for a screen
  std::string key;
  std::string_view screen = {};  // of an entry that is a screen itself
  std::string hay = {};          // everything that it is found by, in upper case
};

class ProjectIndex {
 public:
  // The text of the project file, in Windows-1252, and screens by their names with what a user
  // knows them by: {"frmVoltBlock", "Voltages"}.
  struct NamedScreen {
    std::string_view screen;
    std::string_view caption;
  };
  ProjectIndex(std::string_view project, const std::vector<NamedScreen>& screens);

  // The entries that hold all words of the query, at most `count` of them, in any case of letters.
  // Those whose text begins with the query come first, then those whose text has it. An element of
  // a block's array, "VBlk2(3)", is found by its name.
  [[nodiscard]] std::vector<SearchEntry> Find(std::string_view query, std::size_t count) const;

 private:
  void add(std::string_view section, std::string_view key, std::string_view value);

  std::vector<SearchEntry> entries_;
};

// The way to what was found.
ScreenPlace PlaceOf(const SearchEntry& entry);

}  // namespace ostrand
