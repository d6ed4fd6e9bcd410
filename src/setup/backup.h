// What a screen puts back when it does not end with Done.
#pragma once

namespace ostrand {

// Holds a part of the project as it was, while a screen edits it in place.
template <class T>
class Backup {
 public:
  explicit Backup(T& live) : live_(live), before_(live) {}
  ~Backup() { PutBack(); }
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;

  [[nodiscard]] const T& Before() const { return before_; }
  // The edits stay.
  void Keep() { over_ = true; }
  // Once; later calls do nothing.
  void PutBack() {
    if (!over_) live_ = before_;
    over_ = true;
  }

 private:
  T& live_;
  T before_;
  bool over_ = false;
};

}  // namespace ostrand
