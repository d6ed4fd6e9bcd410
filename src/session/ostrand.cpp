#include "session/ostrand.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "documents/summary.h"
#include "model/defaults.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "platform/paths.h"
#include "projectfile/genfile.h"
#include "session/user_action.h"
#include "text/strings.h"
#include "verify/verify_before_save.h"

namespace ostrand {
namespace {

constexpr std::string_view kProjectExtension = ".VKG";
constexpr std::string_view kProgramExtension = ".VKP";
constexpr std::string_view kFilter = "(*.VKG)|*.VKG|(All Files)|*.*";
constexpr std::string_view kNoName = "NoName";
constexpr std::string_view kOwnRegistryApp = "QUILLON";
constexpr int kSaveHelpContext = 4400;

// The control of the present user action, for what is called without one.
Ostrand* currentControl = nullptr;

// A new project in place of whatever the store held.
void startProject(ProjectStore& store) {
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
}

// What the user wants every new project to begin with. The settings keep any number; one that no
// project can have stands for the usual one.
void giveUserDefaults(ProjectStore& store, const OptionValues& options) {
  const OptionValues usual;
  const i32 units = options.DefaultScanIntervalUnits;
  const bool scanFits = options.DefaultScanInterval >= 1 && units >= 0 && units <= 3;
  const OptionValues& scan = scanFits ? options : usual;
  store.Scan.ExecutionTime = static_cast<float>(scan.DefaultScanInterval);
  store.Scan.ExecTimeUnits = static_cast<i16>(scan.DefaultScanIntervalUnits);
  const OptionValues& records = options.DefaultTableNumRecs >= 1 ? options : usual;
  for (int t = 1; t <= kTables; ++t) {
    store.Tables[t].AutoSize = options.DefaultTableAutoSize == 1 ? kTrue : kFalse;
    store.Tables[t].Buffer = records.DefaultTableNumRecs;
  }
}

}  // namespace

UserAction::UserAction(Ostrand& control) : before_(std::exchange(currentControl, &control)) {}

UserAction::~UserAction() { currentControl = before_; }

Ostrand::Ostrand(ProjectStore& store, const platform::Surroundings& around, OstrandEvents& events)
    : store_(store),
      around_(around),
      events_(events),
      generator_(store, around.files, around.clock, around.forms),
      settings_(around.settings, around.registry, around.temporaryFolder),
      baseName_(kNoName),
      helpPath_(platform::WithSeparator(around.moduleFolder)) {
  startProject(store_);
  AppPath(settings_.Compilers());
  ApplyColors();
  takeTextBoxes();
  row_.DisableAll();
  Summarize();
}

Ostrand* Ostrand::Current() { return currentControl; }

void Ostrand::AppPath(std::string_view folder) { appPath_ = platform::WithSeparator(folder); }

void Ostrand::HelpPath(std::string_view folder) { helpPath_ = platform::WithSeparator(folder); }

std::string_view Ostrand::Version() { return ORVUS_COMMON::kModuleVersion; }

std::string Ostrand::CurBasicFileName() {
  SavePipeline();
  return std::string(Before(currentFileName_, ".")).append(kProgramExtension);
}

bool Ostrand::hostIsHarrier() const { return SameText(hostApp_, "Harrier"); }

// ---- Settings -----------------------------------------------------------------------------------

void Ostrand::RegistryApp(std::string_view name) {
  settings_.RegistryApp(name);
  loadSettings();
}

void Ostrand::loadSettings() {
  settings_.LoadSettings(true);
  ApplyColors();
  if (std::string notice = settings_.TakeNotice(); !notice.empty()) {
    around_.forms.ShowBox(
        {.title = "SETTINGS", .text = std::move(notice), .icon = platform::Icon::kInformation});
  }
}

void Ostrand::ApplyColors() {
  appearance_ = {.FormBack = settings_.ColorValue(0),
                 .PanelBack = settings_.ColorValue(1),
                 .PanelText = settings_.ColorValue(2),
                 .SummaryBack = settings_.ColorValue(3),
                 .SummaryText = settings_.ColorValue(4),
                 .Highlight = settings_.HighlightColor()};
}

void Ostrand::GetSelectedColors(Settings::ColorTable& sColors) const {
  sColors = settings_.GetSelectedColors();
}

void Ostrand::SetSelectedColors(const Settings::ColorTable& sColors) {
  Guarded(around_.forms, "Ostrand.SetSelectedColors", [&] {
    settings_.SetSelectedColors(sColors);
    ApplyColors();
  });
}

void Ostrand::ShowOptions(std::string_view sOption) {
  if (Busy()) return;
  const UserAction action(*this);
  const auto ended = [](const OptionDialog& dialog) { return dialog.Show && dialog.Show(); };
  const auto show = [&] {
    bool done = false;
    if (sOption == "Colors") done = ended(colorsScreen_);
    if (sOption == "Settings") {
      settings_.CopyToTable();
      done = ended(settingsScreen_);
      settings_.LoadSettings(false);
    }
    if (done) keepSettings();
  };
  Finally([&] { Guarded(around_.forms, "Ostrand.ShowOptions", show); },
          [&] {
            ApplyColors();
            Summarize();
          });
}

// The settings go into the user's store at once: the next opening reads them from there.
void Ostrand::keepSettings() {
  if (const Result<> kept = settings_.SaveSettings(); !kept) throw FileAccess(kept.ErrorText());
}

void Ostrand::FormCleanup() {
  for (const OptionDialog* dialog : {&colorsScreen_, &settingsScreen_}) {
    if (dialog->Cancel) dialog->Cancel();
  }
}

bool Ostrand::Summarize() {
  const SummaryLook look{.projectName = baseName_,
                         .text = appearance_.SummaryText,
                         .heading = appearance_.Highlight,
                         .numbers = settings_.View().SummaryNumbers};
  return ostrand::Summarize(store_, look, summary_, around_.forms);
}

void Ostrand::ShowHelpFile(i32 lContext) {
  around_.forms.ShowHelp(helpPath_ + std::string(HelpFileName()), lContext);
}

// ---- Opening and naming -------------------------------------------------------------------------

void Ostrand::NameProject(std::string_view path) {
  const platform::SplitPath parts = platform::Split(path);
  const std::string folder = parts.folder.empty() ? around_.files.WorkingFolder() : parts.folder;
  // The settings keep it, and another session would look for it elsewhere.
  if (folder.empty()) throw FileAccess("The folder of " + std::string(path) + " cannot be told");
  GenFilePath(folder);
  baseName_ = Before(parts.title, ".");
  if (Holds(parts.title, kProjectExtension)) {
    currentFileName_ = path;
  } else if (Holds(parts.title, ".")) {
    currentFileName_ = GenFilePath() + baseName_;
    currentFileName_ += kProjectExtension;
  } else {
    currentFileName_ = std::string(path).append(kProjectExtension);
  }
}

std::string_view Ostrand::WithoutExtension(std::string_view name) {
  return Before(name, Holds(name, kProjectExtension) ? kProjectExtension : kProgramExtension);
}

void Ostrand::OpenFile(std::string_view sFileName, bool& bCancel) {
  bCancel = true;
  if (Busy() || screenOpen_) return;
  const UserAction action(*this);
  const std::string fileBefore = std::exchange(currentFileName_, "");
  const std::string baseBefore = baseName_;
  const std::string folderBefore = GenFilePath();
  const auto open = [&] {
    if (RegistryApp() == kOwnRegistryApp) loadSettings();
    const bool fromDialog = Trim(sFileName).empty();
    std::optional<std::string> name(sFileName);
    if (fromDialog) {
      name = around_.forms.AskOpen({.title = "OPEN GENERATOR FILE",
                                    .filter = std::string(kFilter),
                                    .defaultExtension = std::string(kProjectExtension),
                                    .initialFolder = GenFilePath(),
                                    .fileName = "",
                                    .helpContext = kHelpContext});
    }
    if (!name) return;
    NameProject(*name);
    openNamed(fromDialog, bCancel);
  };
  // Whatever ended it, names and store are those of one project.
  const auto settle = [&] {
    if (!bCancel) return showProject();
    currentFileName_ = fileBefore;
    baseName_ = baseBefore;
    GenFilePath(folderBefore);
  };
  WithBusyPointer(around_.forms, [&] {
    Finally([&] { Guarded(around_.forms, "Ostrand.OpenFile", open); }, settle);
  });
}

// `cancel` becomes false as soon as the session has the project of the present name.
void Ostrand::openNamed(bool fromDialog, bool& cancel) {
  interrupted_ = {};
  const bool there = around_.files.Taken(currentFileName_);
  const bool opened = there ? loadProject() : fromDialog;
  if (!there && !fromDialog) showNotFound();
  if (!opened) {
    const auto left = ORVUS_GENFILE::InterruptedSave(around_.files, currentFileName_);
    if (left) interrupted_ = {currentFileName_, *left};
    return;
  }
  cancel = false;
  if (!there) {  // a new name from the dialog is how a new project starts
    readReport_ = {};
    known_ = {ORVUS_GENFILE::PlaceOf(around_.files, currentFileName_), false, std::nullopt, 0, 0};
  }
  calcVarRefs_ = CollectCalcVarRefs(store_);
  if (there) events_.NewFile(currentFileName_);
}

void Ostrand::showProject() {
  takeTextBoxes();
  enableButtons();
  Summarize();
}

bool Ostrand::NewProject(std::string_view path) {
  if (Busy() || screenOpen_) return false;
  const UserAction action(*this);
  return Guarded(around_.forms, "Ostrand.NewProject", [&] {
    if (RegistryApp() == kOwnRegistryApp) loadSettings();
    startProject(store_);
    giveUserDefaults(store_, settings_.Options());
    NameProject(path);
    calcVarRefs_ = CollectCalcVarRefs(store_);
    readReport_ = {};
    known_ = {};
    dirtyFlag_ = false;
    showProject();
  });
}

bool Ostrand::loadProject() {
  const std::string path = ORVUS_GENFILE::PlaceOf(around_.files, currentFileName_);
  const auto stamp = around_.files.Stamp(path);
  const auto bytes = ORVUS_GENFILE::ReadProjectFile(around_.files, currentFileName_);
  if (bytes && bytes.Value()) {  // only now may the project before go
    known_ = platform::IdentityOf(path, *bytes.Value(), stamp);
    startProject(store_);
    readReport_ = ORVUS_GENFILE::ReadProjectText(store_, *bytes.Value());
    dirtyFlag_ = false;
    return true;
  }
  std::string reason = currentFileName_;
  if (!bytes) {
    reason = bytes.ErrorText();
  } else if (const auto again = around_.files.Read(currentFileName_); !again) {
    reason = again.ErrorText();  // no regular file, or gone in this very moment
  }
  around_.forms.ShowBox(
      {.title = "FILE CANNOT BE READ",
       .text = "The requested program generator file could not be read: \r\n" + reason,
       .icon = platform::Icon::kExclamation});
  return false;
}

void Ostrand::showNotFound() {
  around_.forms.ShowBox({.title = "FILE NOT FOUND",
                         .text = "The requested program generator file: \r\n" +
                                 Upper(currentFileName_) +
                                 "\r\n\r\ncould not be located on this computer.",
                         .icon = platform::Icon::kExclamation});
}

void Ostrand::takeTextBoxes() {
  txtOper_ = store_.Gen.Operator;
  txtIDNum_ = store_.Gen.IDNumber;
}

// ---- Saving and ending --------------------------------------------------------------------------

CheckContext Ostrand::Checks() {
  return {store_, around_.forms, settings_.WarningMessageMask(), calcVarRefs_};
}

bool Ostrand::SaveDldFile() {
  if (Busy()) return false;
  const Marked saving(saving_);
  saveDldFile();
  return saved_;
}

void Ostrand::saveDldFile() {
  const UserAction action(*this);
  saveCancelled_ = false;
  saved_ = false;
  Guarded(around_.forms, "Ostrand.SaveDldFile", [&] {
    const std::optional<std::string> name =
        around_.forms.AskSave({.title = "SAVE .VKG .VKP .VKW .VKD",
                               .filter = std::string(kFilter),
                               .defaultExtension = std::string(kProjectExtension),
                               .initialFolder = GenFilePath(),
                               .fileName = baseName_ == kNoName ? "EditTemp" : baseName_,
                               .helpContext = kSaveHelpContext});
    saveCancelled_ = !name;
    if (!name) return;
    NameProject(*name);
    events_.NewFile(currentFileName_);
    store_.Gen.PCTime = ShortMomentText(around_.clock.Now());
    saved_ = savePipeline();
    if (saved_) dirtyFlag_ = false;
    Summarize();
  });
}

void Ostrand::AskToSaveAll(bool bForce, bool& bCancel) {
  bCancel = true;
  if (Busy()) return;
  const Marked saving(saving_);
  askToSaveAll(bForce, bCancel);
}

void Ostrand::askToSaveAll(bool force, bool& cancel) {
  using platform::Answer;
  using platform::Buttons;
  cancel = false;
  if (!dirtyFlag_) return;
  const UserAction action(*this);
  Guarded(around_.forms, "Ostrand.AskToSaveAll", [&] {
    around_.forms.Beep();
    const Answer answer = around_.forms.ShowBox(
        {.title = "QUIT GENERATOR",
         .text = "Do you want to save changes made to " + currentFileName_ + "?",
         .icon = platform::Icon::kQuestion,
         .buttons = force ? Buttons::kYesNo : Buttons::kYesNoCancel});
    cancel = answer == Answer::kCancel;
    if (answer != Answer::kYes) return;
    bool upgrade = false;
    ORVUS_COMMON::VerifyBeforeSave(Checks(), cancel, upgrade);
    if (cancel) return;
    cancel = !savePipeline();  // a session that ends now would lose the edits
    if (!cancel) dirtyFlag_ = false;
  });
}

void Ostrand::CloseSession(bool bForce, i16& iCancel) {
  if (closing_) return;
  if (Busy()) {
    iCancel = kTrue;
    return;
  }
  const Marked closing(closing_);
  const UserAction action(*this);
  bool cancel = false;
  std::exception_ptr failure;  // of the host, which waits for SessionComplete all the same
  const auto run = [&](const auto& step) {
    try {
      step();
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
  };
  run([&] {
    around_.forms.SetHelpLine("");
    AskToSaveAll(bForce, cancel);
  });
  run([&] { Guarded(around_.forms, "Ostrand.CloseSession", [&] { keepSettings(); }); });
  cancel = !bForce && (cancel || failure);
  iCancel = cancel ? kTrue : kFalse;
  if (!cancel) run([&] { events_.SessionComplete(); });
  if (failure) std::rethrow_exception(failure);
}

}  // namespace ostrand
