// A key of the project file, taken apart.
#pragma once

#include <array>
#include <string_view>

namespace ostrand::ORVUS_GENFILE {

// The forms of a key's brackets.
enum class Brackets {
  kCommas,  // (2,3), or none at all
  kSpaced,  // (2, 3)
  kStart,   // (2 Start)
  kStop,    // (2 Stop)
};

// Name and indices of a key. Indices have no blanks, signs or leading zeros; a key with anything
// else in its brackets is all name, which no table contains.
struct Key {
  std::string_view name;
  std::array<int, 4> index{};
  int count = 0;  // of indices
  Brackets brackets = Brackets::kCommas;

  [[nodiscard]] bool Has(int indices, Brackets kind = Brackets::kCommas) const {
    return count == indices && brackets == kind;
  }
};

Key ParseKey(std::string_view text);

}  // namespace ostrand::ORVUS_GENFILE
