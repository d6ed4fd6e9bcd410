// Undo and redo over whole screens.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

#include "model/store.h"
#include "session/project_origin.h"

namespace ostrand::desktop {

// A state of the project, and the file it belongs to.
struct KeptProject {
  std::unique_ptr<ProjectStore> store;
  ProjectOrigin origin;
  std::size_t saved = 0;  // hash of what the project file holds, to recognize edits
};

// The changes of a session, the latest first. A change is kept as the state before it: as a copy of
// the store, and beyond `kMaxCopies` as the compressed project file, which lacks only what no save
// keeps, such as the tables that are switched off.
class UndoHistory {
 public:
  static constexpr std::size_t kMaxSteps = 50;
  static constexpr std::size_t kMaxBytes = 16'000'000;
  static constexpr std::size_t kMaxCopies = 12'000'000;  // bytes of the copies

  // Records a change that has been made, by the state before it. Redo is no longer possible.
  void Add(std::string name, KeptProject before);
  void Clear();

  // Names of the changes that Undo and Redo concern; empty when there is none.
  [[nodiscard]] std::string UndoName() const { return nameOf(undo_); }
  [[nodiscard]] std::string RedoName() const { return nameOf(redo_); }
  // The state before the last change. `now`, the present state, is what Redo returns to. There must
  // be a change.
  KeptProject Undo(KeptProject now) { return step(undo_, redo_, std::move(now)); }
  KeptProject Redo(KeptProject now) { return step(redo_, undo_, std::move(now)); }

  // Memory of all states, in bytes.
  [[nodiscard]] std::size_t Bytes() const;

 private:
  struct Step {
    std::string name;
    KeptProject state;   // without a store when it is compressed
    std::string packed;  // the compressed project file
    std::size_t bytes = 0;
  };
  using Steps = std::deque<Step>;

  static std::string nameOf(const Steps& steps);
  static Step stepOf(std::string name, KeptProject state);
  static KeptProject step(Steps& from, Steps& to, KeptProject now);
  void limit();

  Steps undo_;
  Steps redo_;
};

// Memory of a store, in bytes; an estimate that counts short texts within their members.
std::size_t BytesOf(const ProjectStore& store);

}  // namespace ostrand::desktop
