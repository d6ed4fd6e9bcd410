// Lists of blocks that edit the store in place: how they take their edits back.
#pragma once

#include <functional>
#include <memory>

#include "model/store.h"
#include "setup/backup.h"
#include "setup/controls/edits.h"

namespace ostrand {

// The blocks of a group as they were when their list opened, and the conditions of the tables, in
// which a renamed sensor is renamed too.
template <class Group>
class BlockEdits {
 public:
  BlockEdits(Group& group, TableSetup& tables)
      : group_(group), before_(std::make_unique<Group>(group)), conditions_(tables) {}

  // The list shows so many blocks; what it made of the group up to here is no edit.
  void Begin(int count) {
    *before_ = group_;
    count_ = count;
  }

  // The edits stay.
  void Keep() { conditions_.Keep(); }

  // The list of now so many blocks is cancelled: whether it may close. The user is asked about
  // edits: No takes them back, Yes runs `save`, which ends the list in its own way.
  [[nodiscard]] bool Cancel(platform::Forms& forms, int count, const std::function<void()>& save) {
    if (group_ == *before_ && count == count_) return true;
    const platform::Answer answer = AskSaveEdits(forms);
    if (answer == platform::Answer::kNo) group_ = *before_;
    if (answer == platform::Answer::kYes) save();
    return answer == platform::Answer::kNo;
  }

 private:
  Group& group_;
  std::unique_ptr<Group> before_;
  Backup<TableSetup> conditions_;
  int count_ = 0;
};

}  // namespace ostrand
