// What there is at the screens, for whoever writes a script.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/choice.h"
#include "session/ostrand.h"

namespace ostrand {

// Puts a sample project into the store, on which every screen can be opened: blocks of each kind,
// an item, a field.
void MakeCatalogProject(ProjectStore& store);

// Opens every screen from the main row, the options and other screens, and leaves it by Cancel;
// `visit` sees each while it is open. One that several open comes more than once.
void VisitScreens(Ostrand& control, const std::function<void(Screen&)>& visit);

// All screens with their controls, what can be done with each and what each takes, found by opening
// every one on the project in the control's store. Lines end in CR LF.
std::string ScreenCatalog(Ostrand& control);

// The items of a list, each behind a blank and in quotes; numbers that follow each other as the
// first and the last.
std::string ItemsText(const std::vector<std::string>& items);
// Those of a choice that are seen.
std::string ItemsText(const Choice& choice);

}  // namespace ostrand
