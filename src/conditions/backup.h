// What a screen restores when it does not end with Done.
#pragma once

#include <memory>

namespace ostrand {

// A copy of a part of the project that a screen edits in place. The destructor restores it, unless
// the edits were kept.
template <class Part>
class Backup {
 public:
  explicit Backup(Part& live) : live_(live), before_(std::make_unique<Part>(live)) {}
  ~Backup() { PutBack(); }
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;

  [[nodiscard]] const Part& Before() const { return *before_; }
  // Restores the present state from here on.
  void Retake() { *before_ = live_; }
  // Keeps the edits.
  void Keep() { kept_ = true; }
  void PutBack() {
    if (!kept_) live_ = *before_;
  }

 private:
  Part& live_;
  std::unique_ptr<Part> before_;
  bool kept_ = false;
};

}  // namespace ostrand
