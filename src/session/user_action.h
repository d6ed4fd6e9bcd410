// What a user action holds and releases however it ends.
#pragma once

#include <utility>

#include "platform/forms.h"

namespace ostrand {

class Ostrand;

// Holds the process-wide reference for the time of a user action, actions within actions included.
class UserAction {
 public:
  explicit UserAction(Ostrand& control);
  ~UserAction();
  UserAction(const UserAction&) = delete;
  UserAction& operator=(const UserAction&) = delete;

 private:
  Ostrand* before_;
};

// Sets a flag for the time of this object.
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

// Runs `body`, then `end`, which also runs when the body throws. Of two failures the first goes on.
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
