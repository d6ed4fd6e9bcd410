// The process-wide reference to the control.
#pragma once

namespace ostrand {

class Ostrand;

// Holds the reference for the time of a user action, actions within actions included.
class UserAction {
 public:
  explicit UserAction(Ostrand& control);
  ~UserAction();
  UserAction(const UserAction&) = delete;
  UserAction& operator=(const UserAction&) = delete;

 private:
  Ostrand* before_;
};

}  // namespace ostrand
