// The public control: one session with one project, as a host application embeds it.
#pragma once

#include <string>
#include <string_view>

#include "generator/savedld.h"
#include "model/store.h"
#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// What the control tells its host. A host overrides what it wants to hear.
class OstrandEvents {
 public:
  virtual ~OstrandEvents() = default;
  // The program at `sFileName` is ready to be sent to the logger.
  virtual void DownloadRequest(const std::string& /*sFileName*/, bool /*isInside*/) {}
  // Declared for hosts that know it; help texts go to the status line instead.
  virtual void HelpText(const std::string& /*sText*/) {}
  // The session has another project file, opened or saved under a new name.
  virtual void NewFile(const std::string& /*sFileName*/) {}
  virtual void PopupOptionsMenu() {}
  // A screen asks where the host's window is, to place itself.
  virtual void RequestParentMDISize(float& /*left*/, float& /*top*/, float& /*width*/,
                                    float& /*height*/) {}
  virtual void SessionComplete() {}
};

// The host's connection to its communication server.
class SocketObject {
 public:
  virtual ~SocketObject() = default;
  virtual void SendData(std::string_view bytes) = 0;
};

// Properties are pairs of overloads: AppPath() reads, AppPath(text) sets. Folders end in a
// separator; setting one adds what is missing. Paths may part folders by `\` or `/`.
class Ostrand {
 public:
  // Start-up: the store is cleared and takes the defaults of a new project. The surroundings, the
  // store and the host must outlive the control.
  Ostrand(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
          platform::Forms& forms, OstrandEvents& events);
  Ostrand(const Ostrand&) = delete;
  Ostrand& operator=(const Ostrand&) = delete;

  // The control whose user action is under way, null when there is none.
  static Ostrand* Current();

  // Folder of the host and of the logger's compiler.
  [[nodiscard]] const std::string& AppPath() const { return appPath_; }
  void AppPath(std::string_view folder);
  // Folder of the project.
  [[nodiscard]] const std::string& GenFilePath() const { return genFilePath_; }
  void GenFilePath(std::string_view folder);
  [[nodiscard]] const std::string& HelpPath() const { return helpPath_; }
  void HelpPath(std::string_view folder);
  // Folder for temporary files.
  [[nodiscard]] const std::string& WorkDir() const { return workDir_; }
  void WorkDir(std::string_view folder);

  // Full path of the project file, empty before the first open.
  [[nodiscard]] const std::string& CurrentFileName() const { return currentFileName_; }
  // Title of the project file without its extension; "NoName" for an unnamed project.
  [[nodiscard]] const std::string& BaseName() const { return baseName_; }
  // Saves the whole project, then names its program. Hosts count on the save.
  std::string CurBasicFileName();

  [[nodiscard]] std::string_view KVSItemNumber() const { return "4318.02_QL5"; }
  [[nodiscard]] std::string_view HelpFileName() const { return "OSTRAND.HLP"; }
  // Version of the module, "6.1.0.07".
  [[nodiscard]] std::string_view Version() const;
  [[nodiscard]] std::string_view VersionDate() const { return "031002"; }
  [[nodiscard]] i32 InternalHelpContextID() const { return 1800; }
  // The logger type that data objects take their limits from.
  [[nodiscard]] i32 LoggerTypeCode() const { return 1; }

  // Shows a text in the status line.
  void HelpText(const std::string& text) { forms_.SetHelpLine(text); }

  // The host's name; "Harrier", in any case, switches some behaviours.
  [[nodiscard]] const std::string& HostApp() const { return hostApp_; }
  void HostApp(std::string_view name) { hostApp_ = name; }
  // Identity of the settings.
  [[nodiscard]] const std::string& RegistryApp() const { return registryApp_; }
  void RegistryApp(std::string_view name) { registryApp_ = name; }
  // Kept for the host.
  [[nodiscard]] i16 WhoCalled() const { return whoCalled_; }
  void WhoCalled(i16 value) { whoCalled_ = value; }
  [[nodiscard]] SocketObject* SocketControl() const { return socketControl_; }
  void SocketControl(SocketObject* socket) { socketControl_ = socket; }
  [[nodiscard]] bool isSocketConnected() const { return isSocketConnected_; }
  void isSocketConnected(bool value) { isSocketConnected_ = value; }
  [[nodiscard]] bool isHarrierRunning() const { return isHarrierRunning_; }
  void isHarrierRunning(bool value) { isHarrierRunning_ = value; }

  // Unsaved edits may exist.
  [[nodiscard]] bool DirtyFlag() const { return dirtyFlag_; }
  // The last SaveDldFile was cancelled.
  [[nodiscard]] bool SaveCancelled() const { return saveCancelled_; }

  // The two text boxes beside the summary. They enter the store when the project is saved.
  [[nodiscard]] const std::string& txtOper() const { return txtOper_; }
  void txtOper(std::string_view text) { txtOper_ = text; }
  [[nodiscard]] const std::string& txtIDNum() const { return txtIDNum_; }
  void txtIDNum(std::string_view text) { txtIDNum_ = text; }

  // Opens a project; an empty name asks the user. A name chosen by the user that does not exist
  // starts a new project from the store as it is. `bCancel` becomes true, and the user has been
  // told why, when the host's name does not exist or the file cannot be read; and, without a word,
  // when the user cancelled.
  void OpenFile(std::string_view sFileName, bool& bCancel);

  // Asks for a name and saves the project under it. A cancelled dialog writes nothing and sets
  // SaveCancelled.
  void SaveDldFile();

  // Writes the project file and the program, in this order. The first failure is reported and
  // ends it; what was written stays. True when all was written.
  bool SavePipeline();

  // The steps of the pipeline, for `base` + ".VKG" and `base` + ".VKP". False when the file could
  // not be written, which has been reported then.
  bool WriteProjectFile(std::string_view base);
  bool WriteProgram(std::string_view base);

  // Makes `path` the session's project file by the rules for names: a title that holds ".VKG", in
  // this case, stays; any other loses what follows its first "." and takes ".VKG". Touches no file.
  void NameProject(std::string_view path);

  // The name up to its first ".VKG", or else up to its first ".VKP", or all of it.
  static std::string_view WithoutExtension(std::string_view name);

  // A number as four bytes at `pDst`, most significant first.
  static void LongToMessage(i32 lng, unsigned char* pDst);
  // A text as its length, written as LongToMessage does, and its bytes: 4 + size in all.
  static void StringToMessage(std::string_view Str, unsigned char* pDst);

 private:
  [[nodiscard]] bool openNamed(bool fromDialog);
  [[nodiscard]] bool loadProject();
  void showNotFound();
  void takeTextBoxes();

  ProjectStore& store_;
  platform::FileSystem& files_;
  platform::Clock& clock_;
  platform::Forms& forms_;
  OstrandEvents& events_;
  SAVEDLD generator_;

  std::string currentFileName_;
  std::string baseName_ = "NoName";
  std::string genFilePath_;
  std::string appPath_;
  std::string helpPath_;
  std::string workDir_;
  std::string registryApp_ = "QUILLON";
  std::string hostApp_;
  std::string txtOper_;
  std::string txtIDNum_;
  SocketObject* socketControl_ = nullptr;
  i16 whoCalled_ = 0;
  bool isSocketConnected_ = false;
  bool isHarrierRunning_ = false;
  bool dirtyFlag_ = false;
  bool saveCancelled_ = false;
};

}  // namespace ostrand
