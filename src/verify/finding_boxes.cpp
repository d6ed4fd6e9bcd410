#include "verify/finding_boxes.h"

#include "platform/box.h"

namespace ostrand {

std::string TextsOf(const Findings& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    if (&finding != &findings.front()) text += "\r\n";
    text += finding.text;
  }
  return text;
}

void ShowEach(platform::Forms& forms, const Findings& findings) {
  for (const Finding& finding : findings) ShowWarning(forms, finding.title, finding.text);
}

}  // namespace ostrand
