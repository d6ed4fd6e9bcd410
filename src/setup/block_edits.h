// Lists of blocks that edit the store in place: how they take their edits back.
#pragma once

#include <functional>

#include "model/store.h"
#include "setup/backup.h"
#include "setup/controls/edits.h"

namespace ostrand {

// The blocks of a group as they were when their list opened, and the conditions of the tables, in
// which a renamed sensor is renamed too.
template <class Group>
class BlockEdits {
 public:
  BlockEdits(Group& group, TableSetup& tables) : blocks_(group), conditions_(tables) {}

  // The list shows so many blocks; what it made of the group up to here is no edit.
  void Begin(int count) {
    blocks_.Retake();
    count_ = count;
  }

  // The edits stay.
  void Keep() {
    blocks_.Keep();
    conditions_.Keep();
  }

  // The list of now so many blocks is cancelled: whether it may close. The user is asked about
  // edits: No takes them back, Yes runs `save`, which ends the list in its own way.
  [[nodiscard]] bool Cancel(platform::Forms& forms, int count, const std::function<void()>& save) {
    if (!blocks_.Changed() && count == count_) return true;
    const platform::Answer answer = AskSaveEdits(forms);
    if (answer == platform::Answer::kNo) blocks_.PutBack();
    if (answer == platform::Answer::kYes) save();
    return answer == platform::Answer::kNo;
  }

 private:
  Backup<Group> blocks_;
  Backup<TableSetup> conditions_;
  int count_ = 0;
};

}  // namespace ostrand
