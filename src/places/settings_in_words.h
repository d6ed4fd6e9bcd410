// What a project sets beside its blocks, in words.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand {

struct PlaceSettings {
  std::string place;  // "Table 2", "CAN item 1"; "Ports" for what all ports share
  std::vector<std::pair<std::string, std::string>> values;  // "interval unit", "min"
};

// The tables, ports, flags and analog outputs in use, the CAN module with its items, and the
// calculated fields, in the order of a project file as ProjectFileText makes it. What is off, has
// no value or follows from other settings is left out, and so is what goes into which table.
std::vector<PlaceSettings> SettingsInWords(std::string_view project);

}  // namespace ostrand
