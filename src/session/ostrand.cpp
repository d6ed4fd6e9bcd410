#include "session/ostrand.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "model/defaults.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "platform/paths.h"
#include "projectfile/genfile.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kProjectExtension = ".VKG";
constexpr std::string_view kProgramExtension = ".VKP";
constexpr std::string_view kFilter = "(*.VKG)|*.VKG|(All Files)|*.*";

// The control of the present user action, for what is called without one.
Ostrand* currentControl = nullptr;

// Holds the process-wide reference for the time of a user action, actions within actions included.
class UserAction {
 public:
  explicit UserAction(Ostrand& control) : before_(std::exchange(currentControl, &control)) {}
  ~UserAction() { currentControl = before_; }
  UserAction(const UserAction&) = delete;
  UserAction& operator=(const UserAction&) = delete;

 private:
  Ostrand* before_;
};

// A new project in place of whatever the store held.
void startProject(ProjectStore& store) {
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
}

}  // namespace

Ostrand::Ostrand(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
                 platform::Forms& forms, OstrandEvents& events)
    : store_(store),
      files_(files),
      clock_(clock),
      forms_(forms),
      events_(events),
      generator_(store, files, clock, forms) {
  startProject(store_);
  takeTextBoxes();
}

Ostrand* Ostrand::Current() { return currentControl; }

void Ostrand::AppPath(std::string_view folder) { appPath_ = platform::WithSeparator(folder); }

void Ostrand::GenFilePath(std::string_view folder) {
  genFilePath_ = platform::WithSeparator(folder);
}

void Ostrand::HelpPath(std::string_view folder) { helpPath_ = platform::WithSeparator(folder); }

void Ostrand::WorkDir(std::string_view folder) { workDir_ = platform::WithSeparator(folder); }

std::string_view Ostrand::Version() const { return ORVUS_COMMON::kModuleVersion; }

std::string Ostrand::CurBasicFileName() {
  SavePipeline();
  return std::string(Before(currentFileName_, ".")).append(kProgramExtension);
}

void Ostrand::NameProject(std::string_view path) {
  const platform::SplitPath parts = platform::Split(path);
  genFilePath_ = parts.folder.empty() ? files_.WorkingFolder() : parts.folder;
  baseName_ = Before(parts.title, ".");
  if (Holds(parts.title, kProjectExtension)) {
    currentFileName_ = path;
  } else if (Holds(parts.title, ".")) {
    currentFileName_ = genFilePath_ + baseName_;
    currentFileName_ += kProjectExtension;
  } else {
    currentFileName_ = std::string(path).append(kProjectExtension);
  }
}

std::string_view Ostrand::WithoutExtension(std::string_view name) {
  return Before(name, Holds(name, kProjectExtension) ? kProjectExtension : kProgramExtension);
}

void Ostrand::OpenFile(std::string_view sFileName, bool& bCancel) {
  const UserAction action(*this);
  bCancel = true;
  forms_.SetPointer(platform::Pointer::kBusy);
  Guarded(forms_, "Ostrand.OpenFile", [&] {
    currentFileName_.clear();
    const bool fromDialog = Trim(sFileName).empty();
    std::optional<std::string> name(sFileName);
    if (fromDialog) {
      name = forms_.AskOpen({.title = "OPEN GENERATOR FILE",
                             .filter = std::string(kFilter),
                             .defaultExtension = std::string(kProjectExtension),
                             .initialFolder = genFilePath_,
                             .fileName = "",
                             .helpContext = 1800});
    }
    if (!name) return;
    NameProject(*name);
    bCancel = !openNamed(fromDialog);
    if (!bCancel) takeTextBoxes();
  });
  forms_.SetPointer(platform::Pointer::kNormal);
}

// Whether the session has a project to go on with.
bool Ostrand::openNamed(bool fromDialog) {
  if (files_.Taken(currentFileName_)) {
    if (!loadProject()) return false;
    events_.NewFile(currentFileName_);
    return true;
  }
  // A new name from the dialog is how a new project starts.
  if (!fromDialog) showNotFound();
  return fromDialog;
}

bool Ostrand::loadProject() {
  const auto bytes = ORVUS_GENFILE::ReadProjectFile(files_, currentFileName_);
  if (bytes && bytes.Value()) {  // only now may the project before go
    startProject(store_);
    ORVUS_GENFILE::ReadProjectText(store_, *bytes.Value());
    return true;
  }
  std::string reason = currentFileName_;
  if (!bytes) {
    reason = bytes.ErrorText();
  } else if (const auto again = files_.Read(currentFileName_); !again) {
    reason = again.ErrorText();  // no regular file, or gone in this very moment
  }
  forms_.ShowBox({.title = "FILE CANNOT BE READ",
                  .text = "The requested program generator file could not be read: \r\n" + reason,
                  .icon = platform::Icon::kExclamation});
  return false;
}

void Ostrand::showNotFound() {
  forms_.ShowBox({.title = "FILE NOT FOUND",
                  .text = "The requested program generator file: \r\n" + Upper(currentFileName_) +
                          "\r\n\r\ncould not be located on this computer.",
                  .icon = platform::Icon::kExclamation});
}

void Ostrand::takeTextBoxes() {
  txtOper_ = store_.Gen.Operator;
  txtIDNum_ = store_.Gen.IDNumber;
}

void Ostrand::SaveDldFile() {
  const UserAction action(*this);
  saveCancelled_ = false;
  Guarded(forms_, "Ostrand.SaveDldFile", [&] {
    const std::optional<std::string> name =
        forms_.AskSave({.title = "SAVE .VKG .VKP .VKW .VKD",
                        .filter = std::string(kFilter),
                        .defaultExtension = std::string(kProjectExtension),
                        .initialFolder = genFilePath_,
                        .fileName = baseName_ == "NoName" ? "EditTemp" : baseName_,
                        .helpContext = 4400});
    saveCancelled_ = !name;
    if (!name) return;
    NameProject(*name);
    events_.NewFile(currentFileName_);
    store_.Gen.PCTime = ShortMomentText(clock_.Now());
    SavePipeline();
  });
}

bool Ostrand::SavePipeline() {
  const UserAction action(*this);
  store_.Gen.Operator = txtOper_;
  store_.Gen.IDNumber = txtIDNum_;
  if (currentFileName_.empty() || SameText(currentFileName_, "NoName.VKG")) {
    currentFileName_ = workDir_ + "EditTemp.VKG";
  }
  // A copy: what runs below may name the project anew.
  const std::string base(WithoutExtension(currentFileName_));
  const std::string saving = "Saving " + Upper(base);

  forms_.SetHelpLine(saving + ".VKG.");
  if (!WriteProjectFile(base)) return false;
  forms_.SetHelpLine(saving + ".VKP.");
  if (!WriteProgram(base)) return false;
  forms_.SetHelpLine("");
  return true;
}

bool Ostrand::WriteProjectFile(std::string_view base) {
  return Guarded(forms_, "ORVUS_GENFILE.SaveProjectFile", [&] {
    const Result<> saved = ORVUS_GENFILE::SaveProjectFile(store_, files_, clock_, base);
    if (!saved) throw FileAccess(saved.ErrorText());
  });
}

bool Ostrand::WriteProgram(std::string_view base) {
  generator_.HostApp(hostApp_);
  generator_.BaseName(baseName_);
  return generator_.SaveTheDld(base);
}

void Ostrand::LongToMessage(i32 lng, unsigned char* pDst) {
  const auto bits = static_cast<std::uint32_t>(lng);
  for (int byte = 0; byte < 4; ++byte) {
    pDst[byte] = static_cast<unsigned char>(bits >> (24 - 8 * byte));
  }
}

void Ostrand::StringToMessage(std::string_view Str, unsigned char* pDst) {
  LongToMessage(static_cast<i32>(Str.size()), pDst);
  std::copy(Str.begin(), Str.end(), pDst + 4);
}

}  // namespace ostrand
