#include "project_bytes.h"

#include "model/defaults.h"
#include "model/new_store.h"
#include "platform/quiet_forms.h"
#include "platform/surroundings.h"
#include "projectfile/genfile.h"
#include "text/codepage.h"

namespace ostrand::desktop {
namespace {

// With the texts of the main window, which enter the project when it is saved.
std::unique_ptr<ProjectStore> copyOf(const Ostrand& session, const ProjectStore& store) {
  std::unique_ptr<ProjectStore> copy = NewStore();
  *copy = store;
  copy->Gen.Operator = session.txtOper();
  copy->Gen.IDNumber = session.txtIDNum();
  return copy;
}

ProgramPreview programOf(const Ostrand& session, const ProjectStore& project) {
  ProgramPreview preview = session.Preview(project);
  preview.text = Utf8FromWindows1252(preview.text);
  for (std::string& fault : preview.faults) fault = Utf8FromWindows1252(fault);
  return preview;
}

}  // namespace

std::string BytesToSave(const Ostrand& session, const ProjectStore& store) {
  return ORVUS_GENFILE::ProjectFileText(*copyOf(session, store), platform::Moment{});
}

std::string BytesOfStore(const ProjectStore& store) {
  std::unique_ptr<ProjectStore> copy = NewStore();
  *copy = store;
  return ORVUS_GENFILE::ProjectFileText(*copy, platform::Moment{});
}

std::unique_ptr<ProjectStore> StoreOf(std::string_view bytes, ORVUS_GENFILE::ReadReport* report) {
  std::unique_ptr<ProjectStore> store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ORVUS_COMMON::SetLoggerConstants(*store);
  ORVUS_GENFILE::ReadReport read = ORVUS_GENFILE::ReadProjectText(*store, bytes);
  if (report != nullptr) *report = std::move(read);
  return store;
}

ProgramPreview ProgramOf(const Ostrand& session, const ProjectStore& store) {
  return programOf(session, *copyOf(session, store));
}

ProgramPreview ProgramOfFile(const Ostrand& session, std::string_view bytes) {
  return programOf(session, *StoreOf(bytes));
}

struct QuietSession::State {
  explicit State(const Ostrand& session) : around(session.Around().With(forms)) {}

  platform::QuietForms forms;
  platform::Surroundings around;
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around, nobodyListens};
};

QuietSession::QuietSession(const Ostrand& session, const ProjectStore& store)
    : state_(std::make_unique<State>(session)) {
  state_->control.RegistryApp(session.RegistryApp());
  *state_->store = *copyOf(session, store);
}

QuietSession::~QuietSession() = default;

Ostrand& QuietSession::Control() { return state_->control; }

}  // namespace ostrand::desktop
