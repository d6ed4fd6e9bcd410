// The public control: one session with one project, as a host application embeds it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "documents/rich_text.h"
#include "generator/savedld.h"
#include "model/store.h"
#include "model/variables.h"
#include "platform/file_identity.h"
#include "platform/socket.h"
#include "platform/surroundings.h"
#include "projectfile/read_report.h"
#include "session/main_buttons.h"
#include "session/settings.h"
#include "verify/check_context.h"

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
  // The right mouse button was pressed on a main button.
  virtual void PopupOptionsMenu() {}
  // A screen asks where the host's window is, to place itself.
  virtual void RequestParentMDISize(float& /*left*/, float& /*top*/, float& /*width*/,
                                    float& /*height*/) {}
  // The session is over.
  virtual void SessionComplete() {}
};

// Where the keyboard is.
enum class Focus { kNone, kOper, kIDNum, kButton, kCancelPrint };
enum class Key { kUp, kDown, kEscape };

// The colours of the control as they are painted; see Settings for their form.
struct Appearance {
  i32 FormBack = 0;
  i32 PanelBack = 0;
  i32 PanelText = 0;
  i32 SummaryBack = 0;
  i32 SummaryText = 0;
  i32 Highlight = 0;
};

// A missing project, and the file in which an interrupted save has left it; empty for none.
struct InterruptedProject {
  std::string project;
  std::string left;
};

// Properties are pairs of overloads: AppPath() reads, AppPath(text) sets. Folders end in a
// separator; setting one adds what is missing. Paths may part folders by `\` or `/`.
//
// A host may call the control from an event and from DoEvents. While a save or a test compile runs
// (Busy), what would change the project or its files under it is refused: nothing happens, and the
// caller gets the result that each declaration states. An exception out of a host's handler goes
// through to the host; flags, buttons and pointer are then as after any other end of the action.
class Ostrand {
 public:
  // Start-up: the store is cleared and takes the defaults of a new project, the table of settings
  // is built, the summary is drawn. Store and host must outlive the control.
  Ostrand(ProjectStore& store, const platform::Surroundings& around, OstrandEvents& events);
  Ostrand(const Ostrand&) = delete;
  Ostrand& operator=(const Ostrand&) = delete;

  // The control whose user action is under way, null when there is none.
  static Ostrand* Current();

  // ---- Properties -------------------------------------------------------------------------------

  // Folder of the host and of the logger's compiler.
  [[nodiscard]] const std::string& AppPath() const { return appPath_; }
  void AppPath(std::string_view folder);
  // Folder of the project.
  [[nodiscard]] const std::string& GenFilePath() const { return settings_.GenFilePath(); }
  void GenFilePath(std::string_view folder) { settings_.GenFilePath(folder); }
  // Folder of the help file; that of the module until a host sets another.
  [[nodiscard]] const std::string& HelpPath() const { return helpPath_; }
  void HelpPath(std::string_view folder);
  [[nodiscard]] static std::string_view HelpFileName() { return "OSTRAND.HLP"; }
  // Puts a text on the help line.
  void HelpText(const std::string& text) { around_.forms.SetHelpLine(text); }
  [[nodiscard]] static i32 InternalHelpContextID() { return kHelpContext; }
  // Folder for temporary files.
  [[nodiscard]] const std::string& WorkDir() const { return settings_.WorkDir(); }

  // Number in the maker's catalogue.
  [[nodiscard]] static std::string_view KVSItemNumber() { return "4318.02_QL5"; }
  // Version and date of the module.
  [[nodiscard]] static std::string_view Version();
  [[nodiscard]] static std::string_view VersionDate() { return "031002"; }

  // Full path of the project file, empty before the first open.
  [[nodiscard]] const std::string& CurrentFileName() const { return currentFileName_; }
  // The project's name, "NoName" for one without a file.
  [[nodiscard]] const std::string& BaseName() const { return baseName_; }
  // Saves the whole project and gives the path of its program, cut at its first ".". That reading
  // it saves is what hosts count on. While Busy it gives the path alone.
  std::string CurBasicFileName();

  // The host's name; "Harrier", in any case, switches some behaviours.
  [[nodiscard]] const std::string& HostApp() const { return hostApp_; }
  void HostApp(std::string_view name) { hostApp_ = name; }
  // Identity of the settings. Setting it loads the settings kept under it and applies the colours.
  [[nodiscard]] const std::string& RegistryApp() const { return settings_.RegistryApp(); }
  void RegistryApp(std::string_view name);
  // Kept for the host.
  [[nodiscard]] i16 WhoCalled() const { return whoCalled_; }
  void WhoCalled(i16 value) { whoCalled_ = value; }
  [[nodiscard]] SocketObject* SocketControl() const { return socketControl_; }
  void SocketControl(SocketObject* socket) { socketControl_ = socket; }
  [[nodiscard]] bool isSocketConnected() const { return isSocketConnected_; }
  void isSocketConnected(bool value) { isSocketConnected_ = value; }
  [[nodiscard]] bool isHarrierRunning() const { return isHarrierRunning_; }
  void isHarrierRunning(bool value) { isHarrierRunning_ = value; }

  // Palettes: true picks the soft one.
  [[nodiscard]] bool SoftColors() const { return settings_.SoftColors(); }
  void SoftColors(bool soft) { settings_.SoftColors(soft); }
  [[nodiscard]] bool SoftTextHighlight() const { return settings_.SoftTextHighlight(); }
  void SoftTextHighlight(bool soft) { settings_.SoftTextHighlight(soft); }
  [[nodiscard]] bool UseLegacy() const { return settings_.UseLegacy(); }
  void UseLegacy(bool legacy) { settings_.UseLegacy(legacy); }

  // ---- Methods ----------------------------------------------------------------------------------

  // A number as four bytes at `pDst`, most significant first; `pDst` then stands behind them.
  static void LongToMessage(i32 lng, unsigned char*& pDst);
  // A text as its length, written as LongToMessage does, and the low byte of each of its 16-bit
  // characters. The text is UTF-8, as file names are, or Windows-1252, as project texts are.
  static void StringToMessage(std::string_view Str, unsigned char*& pDst);
  // Asks the toolbar server of "Harrier" to send the program `FileName` to the logger.
  void HarrierDownload(const std::string& FileName);
  // Ends the session, unless the user cancels: asks about unsaved edits, keeps the settings, raises
  // SessionComplete. `iCancel` becomes -1 when it was cancelled or when an exception of the host
  // came between, which `bForce` rules out; the exception goes on after SessionComplete. While Busy
  // it is refused, forced or not: `iCancel` becomes -1 and there is no SessionComplete. A second
  // call while one runs does nothing.
  void CloseSession(bool bForce, i16& iCancel);
  // Name, value and default of each colour.
  void GetSelectedColors(Settings::ColorTable& sColors) const;
  // Opens a project; an empty name asks the user. A name chosen by the user that does not exist
  // starts a new project from the store as it is. `bCancel` becomes true, and the project before
  // stays, when the host's name does not exist or the file cannot be read, which the user has been
  // told; and, without a word, when the user cancelled, while Busy and while a setup screen is
  // open.
  void OpenFile(std::string_view sFileName, bool& bCancel);
  // Starts a new project that will be saved at `path` (by the rules of NameProject) in place of
  // the present one: the defaults of a project, with the user's scan interval and table sizes.
  // Asks nothing and touches no file. False, and no change, while Busy or a setup screen is open.
  bool NewProject(std::string_view path);
  // Shows what can be printed in place of the main row.
  void PrintSelect();
  void SetSelectedColors(const Settings::ColorTable& sColors);
  void ShowHelpFile(i32 lContext);
  void OffSaveDownload() { SetSaveDownload(false); }
  // Asks whether to save unsaved edits, and saves. `bCancel` becomes true when the user cancelled,
  // when the checks found what stands against it, when the project could not be saved, and while
  // Busy.
  void AskToSaveAll(bool bForce, bool& bCancel);
  // Asks for a name and saves the project under it. A cancelled dialog writes nothing and sets
  // SaveCancelled. True when all files were written; false, with SaveCancelled and Saved as they
  // were, while Busy.
  bool SaveDldFile();
  // Shows the option screen "Colors" or "Settings" and takes what it changed; Done keeps the
  // settings at once. Shows nothing while Busy.
  void ShowOptions(std::string_view sOption);
  // While the print panel is shown, these two take effect when the main row comes back.
  void SetQuitButton(bool Enable) { mainRow().EnableQuit(Enable); }
  void SetSaveDownload(bool Enable) { mainRow().Enable(kSaveAndSendButton, Enable); }
  // Cancels the option screen that is open, if one is. The next ShowOptions shows a fresh one.
  void FormCleanup();

  // ---- What the user does -----------------------------------------------------------------------

  [[nodiscard]] const MainRow& MainButtons() const { return row_; }
  // A press of a main button; nothing when it is disabled, and while Busy.
  void Click(int button);
  void RightClick(int button);
  void PointAt(int button);  // shows its help
  void PointAtQuit();
  void ClickQuit();
  // The panel of what can be printed is shown; its cancel button brings the main row back as it
  // was.
  [[nodiscard]] bool PrintPanelShown() const { return printPanelShown_; }
  void CancelPrint();
  // While a screen is open the panels of the control are hidden and it lays out nothing.
  [[nodiscard]] bool Working() const { return working_; }

  // The two text boxes beside the summary, which take up to 30 characters; what no project file can
  // keep is left out with a beep. They enter the store when the project is saved.
  static constexpr std::size_t kMaxBoxLetters = 30;
  [[nodiscard]] const std::string& txtOper() const { return txtOper_; }
  void txtOper(std::string_view text) { txtOper_ = typedText(text); }
  [[nodiscard]] const std::string& txtIDNum() const { return txtIDNum_; }
  void txtIDNum(std::string_view text) { txtIDNum_ = typedText(text); }
  void KeepTextBoxes();
  // A text box with the focus shows its text selected, on the highlight colour.
  [[nodiscard]] Focus FocusAt() const { return focus_; }
  [[nodiscard]] int FocusButton() const { return focusButton_; }  // with Focus::kButton
  void SetFocus(Focus focus, int button = 0);
  void KeyDown(Key key);

  [[nodiscard]] const Appearance& Colors() const { return appearance_; }
  // Takes the colours of the settings.
  void ApplyColors();
  // The summary as it was last drawn.
  [[nodiscard]] const RtfText& SummaryBox() const { return summary_; }
  // Draws the summary, which also sets `EstMeasTime`.
  bool Summarize();

  // The screens of the buttons 0 to 15 and of ShowOptions, which a host or the setup fills in.
  [[nodiscard]] ScreenTable& Screens() { return screens_; }
  void ColorsScreen(OptionDialog dialog) { colorsScreen_ = std::move(dialog); }
  void SettingsScreen(OptionDialog dialog) { settingsScreen_ = std::move(dialog); }

  // ---- State ------------------------------------------------------------------------------------

  [[nodiscard]] ProjectStore& Store() { return store_; }
  [[nodiscard]] const platform::Surroundings& Around() const { return around_; }
  [[nodiscard]] Settings& UserSettings() { return settings_; }
  [[nodiscard]] const Settings& UserSettings() const { return settings_; }
  // A save or a test compile runs, from its first question to its last file.
  [[nodiscard]] bool Busy() const { return saving_ || compiling_; }
  // Unsaved edits may exist.
  [[nodiscard]] bool DirtyFlag() const { return dirtyFlag_; }
  // The last SaveDldFile was cancelled.
  [[nodiscard]] bool SaveCancelled() const { return saveCancelled_; }
  // The last SaveDldFile wrote all files.
  [[nodiscard]] bool Saved() const { return saved_; }
  // Files that the last SavePipeline wrote, in their order.
  [[nodiscard]] const std::vector<std::string>& SavedFiles() const { return savedFiles_; }
  // The last test compile did not end with a program that compiles.
  [[nodiscard]] bool CompileFailed() const { return compileFailed_; }
  // What the last test compile skipped, and why; empty when the compiler gave its reports.
  [[nodiscard]] const std::string& CompileSkipped() const { return compileSkipped_; }
  // Lines of the project file that its reading has skipped. A save drops them, and keeps the old
  // file first; the name of that copy after the last save, empty for none.
  [[nodiscard]] const ORVUS_GENFILE::ReadReport& SkippedLines() const { return readReport_; }
  [[nodiscard]] const std::string& OldFileKept() const { return oldFileKept_; }
  // What the last OpenFile found in place of a project that is missing.
  [[nodiscard]] const InterruptedProject& Interrupted() const { return interrupted_; }
  // A save that finds the project file changed by another program asks before it overwrites it;
  // with `true` it overwrites without a question.
  void OverwriteChanged(bool overwrite) { overwriteChanged_ = overwrite; }
  // The last save was not done, since another program has changed the project file.
  [[nodiscard]] bool ChangedOutside() const { return changedOutside_; }
  // The sections that failed in the last program, each with its block or item and the line, in
  // Windows-1252; empty for a complete program. One with faults is written, and never sent.
  [[nodiscard]] const std::vector<std::string>& ProgramFaults() const {
    return generator_.Faults();
  }
  // What the checks work on.
  [[nodiscard]] CheckContext Checks();

  // Writes the project file, the program, its table description and the wiring diagram, in this
  // order and under one lock of the project. The first failure is reported and ends it; what was
  // written stays. True when all was written; false
  // while Busy.
  bool SavePipeline();
  // Runs `body`, which writes files of the project `base`, with other saves of it kept out; inside
  // such a body it just runs. The folder of its program and documents is synced once, at the end.
  // False when `body` says so, when that fails, or when another save did not end; the last two have
  // been reported then.
  bool UnderLock(std::string_view base, const std::function<bool()>& body);
  // The steps of the pipeline, for `base` and their extension. False when the file could not be
  // written, which has been reported then, and while Busy. The wiring diagram is that of the last
  // program.
  bool WriteProjectFile(std::string_view base);
  bool WriteProgram(std::string_view base);
  bool WriteTableDescription(std::string_view base);
  bool WriteWiringDiagram(std::string_view base);
  // The bytes of the wiring diagram, for its own run of the generator; empty while Busy.
  std::string WiringText();

  // The test compile by the logger's compiler; measured times go into the store. Does nothing while
  // Busy.
  void RunPreCompile();

  // Makes `path` the session's project file by the rules for names: a title that holds ".VKG", in
  // this case, stays; any other loses what follows its first "." and takes ".VKG". Touches no file.
  void NameProject(std::string_view path);

  // The name up to its first ".VKG", or else up to its first ".VKP", or all of it.
  static std::string_view WithoutExtension(std::string_view name);

 private:
  static constexpr i32 kHelpContext = 1800;
  class Held;

  void openNamed(bool fromDialog, bool& cancel);
  void showProject();
  [[nodiscard]] bool loadProject();
  void showNotFound();
  void keepOldFile(const std::string& path);
  bool underLockOf(const std::string& project, std::string_view base,
                   const std::function<bool()>& body);
  bool settle(std::string_view base);
  bool syncFolder(std::string_view base);
  [[nodiscard]] Result<> syncedFolder(std::string_view base);
  [[nodiscard]] std::string placeOf(std::string_view base);
  bool saveUnchanged(std::string_view base, const std::function<bool()>& body);
  [[nodiscard]] std::optional<platform::FileIdentity> changedOnDisk(std::string_view base);
  bool askToOverwrite(const std::string& path);
  bool keepLock();
  void tellKept();
  void takeTextBoxes();
  [[nodiscard]] std::string typedText(std::string_view keys);
  void loadSettings();
  void enableButtons();
  [[nodiscard]] MainRow& mainRow() { return printPanelShown_ ? rowBeforePrint_ : row_; }
  void runButton(int button);
  void saveByButton(bool send);
  bool checkAndSave(bool send);
  bool saveClean(bool send);
  void send();
  void keepSettings();
  // The routines behind the public ones of the same name, for callers that hold Busy themselves.
  void askToSaveAll(bool force, bool& cancel);
  void saveDldFile();
  bool savePipeline();
  bool writeProject(std::string_view base);
  bool writeProgram(std::string_view base);
  bool writeTableDescription(std::string_view base);
  bool writeWiringDiagram(std::string_view base);
  void runPreCompile();
  void testCompileIn(const std::string& folder);
  bool confirmBadSave(bool send, bool upgrade);
  bool confirmUpgrade();
  bool findCompiler(std::string_view missing, std::string_view question);
  [[nodiscard]] bool hostIsHarrier() const;

  ProjectStore& store_;
  platform::Surroundings around_;
  OstrandEvents& events_;
  SAVEDLD generator_;
  Settings settings_;
  CalcVarRefs calcVarRefs_;
  RtfText summary_;
  MainRow row_;
  ScreenTable screens_;
  MainRow rowBeforePrint_;
  OptionDialog colorsScreen_;
  OptionDialog settingsScreen_;
  Appearance appearance_;

  std::string currentFileName_;
  std::string baseName_;
  std::string appPath_;
  std::string helpPath_;
  std::string hostApp_;
  std::string txtOper_;
  std::string txtIDNum_;
  std::string compileSkipped_;
  std::vector<std::string> savedFiles_;
  ORVUS_GENFILE::ReadReport readReport_;
  std::string oldFileKept_;
  InterruptedProject interrupted_;
  platform::FileIdentity known_;           // the project file as it was last read or written
  platform::ProjectLock* lock_ = nullptr;  // of the save under way; null on a disk without locks
  std::string lockedBase_;                 // its project; empty for none
  std::string keptAs_;                     // what that save found and kept
  SocketObject* socketControl_ = nullptr;
  i16 whoCalled_ = 0;
  Focus focus_ = Focus::kNone;
  int focusButton_ = 0;
  bool isSocketConnected_ = false;
  bool isHarrierRunning_ = false;
  bool dirtyFlag_ = false;
  bool saveCancelled_ = false;
  bool saved_ = false;
  bool compileFailed_ = false;
  bool saving_ = false;
  bool compiling_ = false;
  bool screenOpen_ = false;
  bool closing_ = false;
  bool working_ = false;
  bool printPanelShown_ = false;
  bool overwriteChanged_ = false;
  bool changedOutside_ = false;
  bool unsynced_ = false;  // the folder of the locked project has new outputs
};

}  // namespace ostrand
