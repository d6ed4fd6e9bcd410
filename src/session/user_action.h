// Resources of a user action, released however it ends.
#pragma once

#include <utility>

#include "platform/forms.h"

namespace ostrand {

class Ostrand;

// Holds the process-wide reference during a user action, including nested actions.
class UserAction {
 public:
  explicit UserAction(Ostrand& control);
  ~UserAction();
  UserAction(const UserAction&) = delete;
  UserAction& operator=(const UserAction&) = delete;

 private:
  Ostrand* before_;
};

// Sets a flag for the lifetime of this object.
class Marked {
 public:
  explicit Marked(bool& mark) : mark_(mark), before_(std::exchange(mark, true)) {}
  ~Marked() { mark_ = before_; }
  Marked(const Marked&) = delete;
  Marked& operator=(const Marked&) = delete;

 private:
  bool& mark_;
  bool before_;
};

// Runs `body`, then `end`, even when the body throws. Of two failures the first propagates.
template <class Body, class End>
void Finally(Body&& body, End&& end) {
  try {
    body();
  } catch (...) {
    try {
      end();
    } catch (...) {  // the caller gets the failure that came first
    }
    throw;
  }
  end();
}

// Runs `body` under the busy pointer.
template <class Body>
void WithBusyPointer(platform::Forms& forms, Body&& body) {
  forms.SetPointer(platform::Pointer::kBusy);
  Finally(body, [&] { forms.SetPointer(platform::Pointer::kNormal); });
}

}  // namespace ostrand
