// One of several: a list or a group of options.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "controls/control.h"
#include "controls/counted_list.h"

namespace ostrand {

class Choice : public Control {
 public:
  struct Item {
    std::string Text;
    bool Enabled = true;
    bool Visible = true;
    std::string ToolTip;

    bool operator==(const Item&) const = default;
  };

  Choice(Screen& screen, std::string_view name) : Control(screen, ControlKind::kDropDown, name) {}
  ~Choice() override;
  std::function<void()> OnPick;  // after a pick
  // Whether picking the picked item again fires events too. Otherwise it changes nothing.
  bool PicksAgain = false;

  CountedList<Item> Items;  // counted from 0
  void SetItems(std::initializer_list<std::string_view> texts);
  void Add(std::string_view text, std::string_view toolTip = {});

  // Index of the picked item, -1 for none.
  [[nodiscard]] int Index() const { return index_; }
  // Sets it without events; an index outside the list picks none.
  void Index(int index);
  // Clicks an item; false for one that is disabled or hidden.
  bool ClickAt(int index);
  // Picks like a click. An index outside the list picks none and fires nothing.
  void PickAt(int index);
  [[nodiscard]] std::string Text() const override;
  // The item with this text, ignoring case and surrounding blanks, even if it cannot be picked;
  // null when there is none.
  [[nodiscard]] const Item* Find(std::string_view item) const;
  // Picks the first available item with this text; false when there is none.
  bool Pick(std::string_view item) override;

 private:
  int index_ = -1;
};

}  // namespace ostrand
