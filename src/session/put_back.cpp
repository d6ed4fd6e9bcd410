// For hosts that keep states of a project: undo, recovery after a crash, changes on the disk.
#include "platform/guarded.h"
#include "session/project_origin.h"
#include "session/session_state.h"
#include "session/user_action.h"

namespace ostrand {

ProjectOrigin Ostrand::Origin() const {
  return {state_->currentFileName, state_->known, state_->readReport};
}

bool Ostrand::PutBack(const ProjectStore& project, const ProjectOrigin& origin) {
  if (Busy() || state_->main.screenOpen) return false;
  const UserAction action(*this);
  return Guarded(state_->around.forms, "Ostrand.PutBack", [&] {
    // A save may have come between, after which the older identity is that of no file.
    if (origin.path != state_->currentFileName) {
      NameProject(origin.path);
      state_->known = origin.known;
      state_->readReport = origin.readReport;
    }
    state_->store = project;
    state_->calcVarRefs = CollectCalcVarRefs(state_->store);
    state_->MarkDirty(true);
    state_->ShowProject();
  });
}

bool Ostrand::ChangedOnDisk() const {
  if (state_->known.path.empty()) return false;
  return platform::ChangedSince(state_->around.files, state_->known, state_->known.path)
      .has_value();
}

}  // namespace ostrand
