// One of several: a list or a group of options.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "controls/control.h"

namespace ostrand {

class Choice : public Control {
 public:
  struct Item {
    std::string Text;
    bool Enabled = true;
    bool Visible = true;
    std::string ToolTip;
  };

  Choice(Screen& screen, std::string_view name) : Control(screen, ControlKind::kDropDown, name) {}
  std::function<void()> OnPick;  // after a pick
  // Whether picking the picked item again fires too. Otherwise it changes nothing.
  bool PicksAgain = false;

  std::vector<Item> Items;  // counted from 0
  void SetItems(std::initializer_list<std::string_view> texts);
  void Add(std::string_view text, std::string_view toolTip = {});

  // Index of the picked item, -1 for none.
  [[nodiscard]] int Index() const { return index_; }
  // Sets it without any event; an index outside of the list picks none.
  void Index(int index);
  // Picks as a click would. An index outside of the list picks none and fires nothing.
  void PickAt(int index);
  [[nodiscard]] std::string Text() const override;
  // An item by its text, ignoring case and blanks around it, whether it can be picked or not; null
  // when there is none.
  [[nodiscard]] const Item* Find(std::string_view item) const;
  // Picks the first item of that text that can be picked; false when there is none.
  bool Pick(std::string_view item) override;

 private:
  int index_ = -1;
};

}  // namespace ostrand
