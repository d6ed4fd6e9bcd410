// The common report of a runtime failure.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/forms.h"
#include "text/fault.h"

namespace ostrand {

// The number of a failure of the disk.
inline constexpr int kFileAccess = 75;

// A failure of the disk; `text` is that of its Error and names the path.
inline Fault FileAccess(std::string text) { return {kFileAccess, std::move(text)}; }

inline constexpr std::string_view kTroubleTitle = "TROUBLE";

// Shows the box of that title for a fault that happened in `routine` ("SAVEDLD.Constants"), with a
// beep and the normal pointer.
void ReportFault(platform::Forms& forms, std::string_view routine, const Fault& fault);

// Runs `body`; a Fault in it is reported under `routine` and the caller goes on. True when the
// body ran to its end. The one place that catches a Fault.
template <class Body>
bool Guarded(platform::Forms& forms, std::string_view routine, Body&& body) {
  try {
    body();
    return true;
  } catch (const Fault& fault) {
    ReportFault(forms, routine, fault);
    return false;
  }
}

}  // namespace ostrand
