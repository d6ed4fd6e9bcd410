#include "controls/edits.h"

namespace ostrand {

platform::Answer AskSaveEdits(platform::Forms& forms) {
  platform::MessageBox box;
  box.title = "MEASUREMENT BLOCKS";
  box.text =
      "Edits were made to the measurement configurations.  Save changes before exiting screen?";
  box.icon = platform::Icon::kQuestion;
  box.buttons = platform::Buttons::kYesNoCancel;
  return forms.ShowBox(box);
}

}  // namespace ostrand
