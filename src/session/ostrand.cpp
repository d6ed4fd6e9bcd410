#include "session/ostrand.h"

#include <utility>

#include "documents/summary.h"
#include "generator/preview.h"
#include "model/defaults.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "session/session_state.h"
#include "session/user_action.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The control of the present user action, for routines without a reference to it.
Ostrand* currentControl = nullptr;

}  // namespace

UserAction::UserAction(Ostrand& control) : before_(std::exchange(currentControl, &control)) {}

UserAction::~UserAction() { currentControl = before_; }

SessionState::SessionState(Ostrand& theControl, ProjectStore& theStore,
                           const platform::Surroundings& machine, OstrandEvents& host)
    : control(theControl),
      store(theStore),
      around(machine),
      events(host),
      generator(theStore, machine.files, machine.clock, machine.forms),
      settings(machine.settings, machine.registry, machine.temporaryFolder),
      helpPath(platform::WithSeparator(machine.moduleFolder)) {}

Ostrand::Ostrand(ProjectStore& store, const platform::Surroundings& around, OstrandEvents& events)
    : state_(std::make_unique<SessionState>(*this, store, around, events)) {
  state_->StartProject();
  AppPath(state_->settings.Compilers());
  ApplyColors();
  state_->TakeTextBoxes();
  state_->main.row.DisableAll();
  Summarize();
}

Ostrand::~Ostrand() = default;

Ostrand* Ostrand::Current() { return currentControl; }

// ---- Properties ---------------------------------------------------------------------------------

const std::string& Ostrand::AppPath() const { return state_->appPath; }
void Ostrand::AppPath(std::string_view folder) {
  state_->appPath = platform::WithSeparator(folder);
}
const std::string& Ostrand::GenFilePath() const { return state_->settings.GenFilePath(); }
void Ostrand::GenFilePath(std::string_view folder) { state_->settings.GenFilePath(folder); }
const std::string& Ostrand::HelpPath() const { return state_->helpPath; }
void Ostrand::HelpPath(std::string_view folder) {
  state_->helpPath = platform::WithSeparator(folder);
}
void Ostrand::HelpText(const std::string& text) { state_->around.forms.SetHelpLine(text); }
const std::string& Ostrand::WorkDir() const { return state_->settings.WorkDir(); }
std::string_view Ostrand::Version() { return ORVUS_COMMON::kModuleVersion; }
const std::string& Ostrand::CurrentFileName() const { return state_->currentFileName; }
const std::string& Ostrand::BaseName() const { return state_->baseName; }

std::string Ostrand::CurBasicFileName() {
  SavePipeline();
  return std::string(Before(state_->currentFileName, ".")).append(kProgramExtension);
}

const std::string& Ostrand::HostApp() const { return state_->hostApp; }
void Ostrand::HostApp(std::string_view name) { state_->hostApp = name; }
bool SessionState::HostIsHarrier() const { return SameText(hostApp, "Harrier"); }

const std::string& Ostrand::RegistryApp() const { return state_->settings.RegistryApp(); }
void Ostrand::RegistryApp(std::string_view name) {
  state_->settings.RegistryApp(name);
  state_->LoadSettings();
}

i16 Ostrand::WhoCalled() const { return state_->whoCalled; }
void Ostrand::WhoCalled(i16 value) { state_->whoCalled = value; }
SocketObject* Ostrand::SocketControl() const { return state_->socketControl; }
void Ostrand::SocketControl(SocketObject* socket) { state_->socketControl = socket; }
bool Ostrand::isSocketConnected() const { return state_->isSocketConnected; }
void Ostrand::isSocketConnected(bool value) { state_->isSocketConnected = value; }
bool Ostrand::isHarrierRunning() const { return state_->isHarrierRunning; }
void Ostrand::isHarrierRunning(bool value) { state_->isHarrierRunning = value; }

bool Ostrand::SoftColors() const { return state_->settings.SoftColors(); }
void Ostrand::SoftColors(bool soft) { state_->settings.SoftColors(soft); }
bool Ostrand::SoftTextHighlight() const { return state_->settings.SoftTextHighlight(); }
void Ostrand::SoftTextHighlight(bool soft) { state_->settings.SoftTextHighlight(soft); }
bool Ostrand::UseLegacy() const { return state_->settings.UseLegacy(); }
void Ostrand::UseLegacy(bool legacy) { state_->settings.UseLegacy(legacy); }

ProjectStore& Ostrand::Store() { return state_->store; }
ProgramPreview Ostrand::Preview(const ProjectStore& store) const {
  return PreviewOf(store, Around(), BaseName(), HostApp());
}

const platform::Surroundings& Ostrand::Around() const { return state_->around; }
Settings& Ostrand::UserSettings() { return state_->settings; }
const Settings& Ostrand::UserSettings() const { return state_->settings; }
bool Ostrand::Busy() const { return state_->saving || state_->compiling; }
bool Ostrand::DirtyFlag() const { return state_->dirtyFlag; }
void Ostrand::ForgetEdits() { state_->MarkDirty(false); }

// ---- Settings -----------------------------------------------------------------------------------

void SessionState::LoadSettings() {
  settings.LoadSettings(true);
  control.ApplyColors();
  if (std::string notice = settings.TakeNotice(); !notice.empty()) {
    around.forms.ShowBox(
        {.title = "SETTINGS", .text = std::move(notice), .icon = platform::Icon::kInformation});
  }
}

void Ostrand::ApplyColors() {
  const Appearance before = state_->main.appearance;
  state_->main.appearance = {.FormBack = state_->settings.ColorValue(0),
                             .PanelBack = state_->settings.ColorValue(1),
                             .PanelText = state_->settings.ColorValue(2),
                             .SummaryBack = state_->settings.ColorValue(3),
                             .SummaryText = state_->settings.ColorValue(4),
                             .Highlight = state_->settings.HighlightColor()};
  if (state_->main.appearance != before) state_->events.ColorsChanged();
}

void Ostrand::GetSelectedColors(ColorTable& sColors) const {
  sColors = state_->settings.GetSelectedColors();
}

void Ostrand::SetSelectedColors(const ColorTable& sColors) {
  Guarded(state_->around.forms, "Ostrand.SetSelectedColors", [&] {
    state_->settings.SetSelectedColors(sColors);
    ApplyColors();
  });
}

void Ostrand::ColorsScreen(OptionDialog dialog) { state_->colorsScreen = std::move(dialog); }
void Ostrand::SettingsScreen(OptionDialog dialog) { state_->settingsScreen = std::move(dialog); }

void Ostrand::ShowOptions(std::string_view sOption) {
  if (Busy()) return;
  const UserAction action(*this);
  const auto ended = [](const OptionDialog& dialog) { return dialog.Show && dialog.Show(); };
  const auto show = [&] {
    bool done = false;
    if (sOption == "Colors") done = ended(state_->colorsScreen);
    if (sOption == "Settings") {
      state_->settings.CopyToTable();
      done = ended(state_->settingsScreen);
      state_->settings.LoadSettings(false);
    }
    if (done) state_->KeepSettings();
  };
  Finally([&] { Guarded(state_->around.forms, "Ostrand.ShowOptions", show); },
          [&] {
            ApplyColors();
            Summarize();
          });
}

// The settings are stored at once: the next opening reads them from the user's store.
void SessionState::KeepSettings() {
  if (const Result<> kept = settings.SaveSettings(); !kept) throw FileAccess(kept.ErrorText());
}

void Ostrand::FormCleanup() {
  for (const OptionDialog* dialog : {&state_->colorsScreen, &state_->settingsScreen}) {
    if (dialog->Cancel) dialog->Cancel();
  }
}

// ---- Summary and help ---------------------------------------------------------------------------

const StyledText& Ostrand::SummaryBox() const { return state_->main.summary; }

bool Ostrand::Summarize(RichText* box) {
  const SummaryLook look{.projectName = state_->baseName,
                         .text = state_->main.appearance.SummaryText,
                         .heading = state_->main.appearance.Highlight,
                         .numbers = state_->settings.View().SummaryNumbers};
  const auto draw = [&](RichText& into) {
    return ostrand::Summarize(state_->store, look, into, state_->around.forms);
  };
  const bool drawn = draw(state_->main.summary) && (box == nullptr || draw(*box));
  state_->events.SummaryDrawn();
  return drawn;
}

void Ostrand::ShowHelpFile(i32 lContext) {
  state_->around.forms.ShowHelp(state_->helpPath + std::string(HelpFileName()), lContext);
}

}  // namespace ostrand
