// The variables that conditions name.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand {

// The variables that a row can name. Users see aliases; the program text and what is stored of an
// expression name the element of the block, so that renaming an alias leaves them valid.
class ConditionVariables {
 public:
  // The kinds to list, in their order (VariableKind); none for all.
  ConditionVariables(const ProjectStore& store, std::span<const i32> kinds);

  // As users see them, in the order of the lists.
  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
  // The place in Names() of a name or of an element that a name stands for, in any case of
  // letters; -1 when there is none.
  [[nodiscard]] int Find(std::string_view name) const;

  // "VBlk1(2)" for the alias, and "VBlk1(1)" for the array, of a value of a block; any other name
  // as it is.
  [[nodiscard]] std::string Variable(std::string_view name) const;
  // The same for all names in an expression, and back to what users see.
  [[nodiscard]] std::string InVariables(std::string_view expression) const;
  [[nodiscard]] std::string InAliases(std::string_view expression) const;

 private:
  struct Entry {
    std::string name;
    std::string element;  // empty for what is no value of a block
  };
  // The element that a name stands for; nothing for any other name.
  [[nodiscard]] std::optional<std::string> elementOf(std::string_view name) const;

  std::vector<std::string> names_;
  std::vector<Entry> all_;
};

}  // namespace ostrand
