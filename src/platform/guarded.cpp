#include "platform/guarded.h"

#include "text/number.h"

namespace ostrand {

void ReportFault(platform::Forms& forms, std::string_view routine, const Fault& fault) {
  forms.Beep();
  forms.SetPointer(platform::Pointer::kNormal);
  platform::MessageBox box;
  box.title = kTroubleTitle;
  box.text = "Unexpected error " + NumberText(fault.number) + ", \"" + fault.description +
             "\" has occurred in " + std::string(routine) +
             ".\r\n Press \"OK\" and the program will continue.";
  box.icon = platform::Icon::kExclamation;
  if (fault.number == kFileAccess) box.diskError = fault.description;
  forms.ShowBox(box);
}

}  // namespace ostrand
