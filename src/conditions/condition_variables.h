// The variables that conditions name.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand {

// The variables that a row can name. Users see aliases; the program text and stored expressions
// name the element of the block, so that renaming an alias leaves them valid.
class ConditionVariables {
 public:
  // The kinds to list, in this order (VariableKind); empty for all.
  ConditionVariables(const ProjectStore& store, std::span<const i32> kinds);

  // As users see them, in list order.
  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
  // Index in Names() of a name, or of the name for an element, ignoring case; -1 when there is
  // none.
  [[nodiscard]] int Find(std::string_view name) const;

  // The element for a value of a block: "VBlk1(2)" for its alias, "VBlk1(1)" for the array. Other
  // names are returned unchanged.
  [[nodiscard]] std::string Variable(std::string_view name) const;
  // Converts all names in an expression, to elements and back to what users see.
  [[nodiscard]] std::string InVariables(std::string_view expression) const;
  [[nodiscard]] std::string InAliases(std::string_view expression) const;

 private:
  struct Entry {
    std::string name;
    std::string element;  // empty for a name outside blocks
  };
  // The element for a name; nothing for names outside blocks.
  [[nodiscard]] std::optional<std::string> elementOf(std::string_view name) const;

  std::vector<std::string> names_;
  std::vector<Entry> all_;
};

}  // namespace ostrand
