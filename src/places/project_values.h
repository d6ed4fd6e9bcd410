// The keys of a project file by their sections, as far as they belong to the project.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

namespace ostrand {

struct KeyValue {
  std::string_view key;
  std::string_view value;  // without outer blanks; of a repeated key the last one
};

struct ValueSection {
  std::vector<KeyValue> values;  // in the order of their first mention
  std::map<std::string_view, std::size_t> at;

  // The value of a key; null without it.
  [[nodiscard]] const std::string_view* Find(std::string_view key) const;
};

struct ProjectValues {
  std::vector<std::string_view> headers;  // in the order of the file: "[VOLTAGE BLOCKS]"
  std::map<std::string_view, ValueSection> sections;
};

// The moment and the version of the last save are left out. The result refers to `text`.
ProjectValues ParseValues(std::string_view text);

}  // namespace ostrand
