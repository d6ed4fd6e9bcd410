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

  Choice(Screen& screen, std::string_view name) : Control(screen, ControlKind::kChoice, name) {}
  std::function<void()> OnPick;  // after a pick
  // Whether picking the item that is picked already is a pick too. Elsewhere it changes nothing.
  bool PicksAgain = false;

  std::vector<Item> Items;  // counted from 0
  void SetItems(std::initializer_list<std::string_view> texts);

  // Place of the item picked, -1 for none.
  [[nodiscard]] int Index() const { return index_; }
  // Picks as a click would. A place outside of the list picks nothing and fires nothing.
  void Index(int index);
  // Shows an item as picked, -1 or a place outside for none, without any event.
  void Show(int index);
  [[nodiscard]] std::string Text() const override;
  // An item by its text, blanks around it and upper and lower case apart, whether it can be picked
  // or not; null when there is none.
  [[nodiscard]] const Item* Find(std::string_view item) const;
  // The first of that text that can be picked; false when there is none.
  bool Pick(std::string_view item) override;

 private:
  int index_ = -1;
};

}  // namespace ostrand
