// What a screen puts back when it does not end with Done.
#pragma once

#include <memory>

namespace ostrand {

// Holds a part of the project as it was, while a screen edits it in place. The edits go with this
// object, unless they were to stay.
template <class Part>
class Backup {
 public:
  explicit Backup(Part& live) : live_(live), before_(std::make_unique<Part>(live)) {}
  ~Backup() { PutBack(); }
  Backup(const Backup&) = delete;
  Backup& operator=(const Backup&) = delete;

  [[nodiscard]] const Part& Before() const { return *before_; }
  // What is there now is what is put back.
  void Retake() { *before_ = live_; }
  // The edits stay.
  void Keep() { over_ = true; }
  // Once; later calls do nothing.
  void PutBack() {
    if (!over_) live_ = *before_;
    over_ = true;
  }

 private:
  Part& live_;
  std::unique_ptr<Part> before_;
  bool over_ = false;
};

}  // namespace ostrand
