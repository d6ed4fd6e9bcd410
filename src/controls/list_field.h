// A field with a list: its text is typed or picked.
#pragma once

#include <string>
#include <string_view>

#include "controls/counted_list.h"
#include "controls/text_field.h"

namespace ostrand {

class ListField : public TextField {
 public:
  ListField(Screen& screen, std::string_view name, KeyFilter filter)
      : TextField(screen, ControlKind::kEditList, name, filter) {}
  ~ListField() override;

  CountedList<std::string> Items;  // what can be picked

  // Index of the text among the items, ignoring case; -1 when it is not one of them.
  [[nodiscard]] int ItemIndex() const;
  // Picks an item by its text, ignoring case and surrounding blanks. Takes effect at once, unless
  // the field already holds it.
  bool Pick(std::string_view item) override;
};

}  // namespace ostrand
