// Lists of blocks that edit the store in place: how they take their edits back.
#pragma once

#include <memory>

#include "model/store.h"
#include "setup/controls/edits.h"

namespace ostrand {

// A part of the store as it was when a screen opened.
template <class Part>
class KeptPart {
 public:
  explicit KeptPart(Part& part) : part_(part), before_(std::make_unique<Part>(part)) {}

  [[nodiscard]] bool Changed() const { return !(part_ == *before_); }
  void Restore() { part_ = *before_; }
  void Retake() { *before_ = part_; }

 private:
  Part& part_;
  std::unique_ptr<Part> before_;
};

}  // namespace ostrand
