// The widgets of the kinds of controls, for `Bind` alone.
#pragma once

#include "bind.h"
#include "controls/choice.h"
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

}  // namespace ostrand::desktop
