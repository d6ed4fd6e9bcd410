// What is made from the open project without a change to it.
#pragma once

#include <string>

#include "session/ostrand.h"

namespace ostrand::desktop {

// The project file that a save would write now, but for the moment it is saved at.
std::string BytesToSave(const Ostrand& session, const ProjectStore& store);

// The program that a save would write now, and its faults as they are reported; UTF-8.
struct ProgramPreview {
  std::string text;
  std::vector<std::string> faults;
};
ProgramPreview ProgramOf(const Ostrand& session, const ProjectStore& store);

}  // namespace ostrand::desktop
