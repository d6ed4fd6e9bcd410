// Renamed sensors, and how screens undo the renaming.
#pragma once

#include <string>
#include <vector>

#include "model/store.h"

namespace ostrand {

// A copy of the texts of a project that name variables. The destructor undoes renaming, unless it
// was kept.
class NamesBackup {
 public:
  explicit NamesBackup(ProjectStore& store);
  ~NamesBackup() {
    if (!kept_) putBack();
  }
  NamesBackup(const NamesBackup&) = delete;
  NamesBackup& operator=(const NamesBackup&) = delete;

  // Keeps the new names.
  void Keep() { kept_ = true; }

 private:
  struct Text {
    const std::string* place;  // no text moves while the store lives
    std::string text;
  };

  void putBack();

  ProjectStore& store_;
  std::vector<Text> before_;  // non-empty texts, in the order of the visit
  bool kept_ = false;
};

}  // namespace ostrand
