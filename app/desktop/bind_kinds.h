// The widgets of the kinds of controls, for `Bind` alone.
#pragma once

#include "bind.h"
#include "controls/choice.h"
#include "controls/counted_list.h"
#include "controls/text_field.h"

namespace ostrand::desktop {

// A label, figure, line of code, lamp or picture.
std::unique_ptr<BoundControl> BindShown(Control& control, ControlWindow& window);
std::unique_ptr<BoundControl> BindField(TextField& field, ControlWindow& window);
std::unique_ptr<BoundControl> BindChoice(Choice& choice, ControlWindow& window);

// Widths in letters.
inline constexpr int kCodeWidth = 36;
inline constexpr int kCodeCellWidth = 18;

void SetMinimumLetters(QWidget& widget, int letters);

// The items of a choice or list as they were shown last.
template <class T>
class ShownItems {
 public:
  // True when the items are others now. They are compared only after a possible change.
  bool Take(const CountedList<T>& items) {
    if (changes_ == items.Changes()) return false;
    changes_ = items.Changes();
    if (items_ == items.All()) return false;
    items_ = items.All();
    return true;
  }
  [[nodiscard]] const std::vector<T>& All() const { return items_; }

 private:
  std::vector<T> items_;
  std::size_t changes_ = 0;
};

}  // namespace ostrand::desktop
