// A catalogue of the screens, for script authors.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/choice.h"
#include "session/ostrand.h"

namespace ostrand {

// Loads a sample project into the store, on which every screen can be opened: blocks of each kind,
// an item, a field.
void MakeCatalogProject(ProjectStore& store);

// Opens every screen from the main row, the options and other screens, and leaves it by Cancel;
// calls `visit` while each is open. A screen with several openers is visited several times.
void VisitScreens(Ostrand& control, const std::function<void(Screen&)>& visit);

// All screens with their controls, and the actions and values of each, found by opening every
// screen on the project in the control's store. Lines end in CR LF.
std::string ScreenCatalog(Ostrand& control);

// The items of a list, each in quotes after a blank; consecutive numbers as the first and the last.
std::string ItemsText(const std::vector<std::string>& items);
// The visible items of a choice.
std::string ItemsText(const Choice& choice);

}  // namespace ostrand
