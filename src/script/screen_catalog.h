// What there is at the screens, for who writes a script.
#pragma once

#include <string>
#include <vector>

#include "controls/choice.h"
#include "session/ostrand.h"

namespace ostrand {

// All screens with their controls, what can be done with each and what each takes, found by opening
// every one on a sample project in the control's store. Lines end in CR LF.
std::string ScreenCatalog(Ostrand& control);

// The items of a list, each behind a blank and in quotes; numbers that follow each other as the
// first and the last.
std::string ItemsText(const std::vector<std::string>& items);
// Those of a choice that are seen.
std::string ItemsText(const Choice& choice);

}  // namespace ostrand
