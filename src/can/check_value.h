// Check boxes for boolean values of a project.
#pragma once

#include "controls/control.h"
#include "model/store.h"

namespace ostrand {

// Sets the value to the state of the box. A value in another form stays when it means the same.
inline void TakeTruth(const CheckBox& box, flag& value) {
  if (box.Checked() != (value != 0)) value = box.Checked() ? kTrue : kFalse;
}

}  // namespace ostrand
