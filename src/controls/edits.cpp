#include "controls/edits.h"

namespace ostrand {

Screen::Opener OpenedBy(Button& button, std::string_view screen) {
  return {std::string(screen), {}, [&button](std::string_view) {
            return button.Usable() && button.Press();
          }};
}

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
