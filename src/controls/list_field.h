// A field with a list: what it holds is typed or picked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/text_field.h"

namespace ostrand {

class ListField : public TextField {
 public:
  ListField(Screen& screen, std::string_view name, KeyFilter filter)
      : TextField(screen, ControlKind::kEditList, name, filter) {}

  std::vector<std::string> Items;  // what can be picked

  // The place of the text among the items, in any case of letters; -1 for a text that is none.
  [[nodiscard]] int ItemIndex() const;
  // An item by its text, blanks around it and upper and lower case apart; it takes effect at once,
  // unless the field holds it already.
  bool Pick(std::string_view item) override;
};

}  // namespace ostrand
