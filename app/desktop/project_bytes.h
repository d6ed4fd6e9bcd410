// What is made from the open project without a change to it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "generator/preview.h"
#include "projectfile/read_report.h"
#include "session/ostrand.h"

namespace ostrand::desktop {

// The project file that a save would write now, but for the moment it is saved at.
std::string BytesToSave(const Ostrand& session, const ProjectStore& store);

// The bytes of a project file with this project; without its moment.
std::string BytesOfStore(const ProjectStore& store);

// The project of a project file's bytes. `report`, if any, gets what was not read.
std::unique_ptr<ProjectStore> StoreOf(std::string_view bytes,
                                      ORVUS_GENFILE::ReadReport* report = nullptr);

// The program that a save would write now, and its faults; in UTF-8.
ProgramPreview ProgramOf(const Ostrand& session, const ProjectStore& store);
// The same of a project file's bytes, under the name of the open project.
ProgramPreview ProgramOfFile(const Ostrand& session, std::string_view bytes);

// A session with a copy of the project, in which screens can be opened and left without a trace. It
// answers every question itself and shows nothing.
class QuietSession {
 public:
  // With the settings of the session, which must outlive it.
  QuietSession(const Ostrand& session, const ProjectStore& store);
  ~QuietSession();
  QuietSession(const QuietSession&) = delete;
  QuietSession& operator=(const QuietSession&) = delete;

  [[nodiscard]] Ostrand& Control();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace ostrand::desktop
