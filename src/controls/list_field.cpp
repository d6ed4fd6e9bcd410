#include "controls/list_field.h"

#include <algorithm>

#include "text/strings.h"

namespace ostrand {

ListField::~ListField() = default;

int ListField::ItemIndex() const {
  const auto at = std::find_if(Items.begin(), Items.end(),
                               [&](const std::string& item) { return SameText(item, Text()); });
  return at == Items.end() ? -1 : static_cast<int>(at - Items.begin());
}

bool ListField::Pick(std::string_view item) {
  for (const std::string& candidate : Items.All()) {
    if (!SameText(candidate, Trim(item))) continue;
    if (candidate == Text() && !isTyped()) return true;
    Text(candidate);
    fire(OnTake, "Click");
    return true;
  }
  return false;
}

}  // namespace ostrand
