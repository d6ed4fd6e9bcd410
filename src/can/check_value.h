// Check boxes over the truth values of a project.
#pragma once

#include "controls/control.h"
#include "model/store.h"

namespace ostrand {

// The value becomes what the box shows. One of another form stays when it means the same.
inline void TakeTruth(const CheckBox& box, flag& value) {
  if (box.Checked() != (value != 0)) value = box.Checked() ? kTrue : kFalse;
}

}  // namespace ostrand
