// The public control: one session with one project, as a host application embeds it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/scalars.h"
#include "session/colors.h"
#include "session/main_buttons.h"

namespace ostrand {

namespace ORVUS_GENFILE {
struct ReadReport;
}
namespace platform {
struct Surroundings;
}
struct CheckContext;
struct ProjectOrigin;
struct ProjectStore;
struct SessionState;
class RichText;
class StyledText;
class Settings;
class SocketObject;

// Reports of the control to its host. A host overrides what it needs.
class OstrandEvents {
 public:
  virtual ~OstrandEvents() = default;
  // The program at `sFileName` is ready to be sent to the logger.
  virtual void DownloadRequest(const std::string& /*sFileName*/, bool /*isInside*/) {}
  // For compatibility with hosts only; help texts go to the status line instead.
  virtual void HelpText(const std::string& /*sText*/) {}
  // The session has another project file, opened or saved under a new name.
  virtual void NewFile(const std::string& /*sFileName*/) {}
  // The right mouse button was pressed on a main button.
  virtual void PopupOptionsMenu() {}
  // A screen is about to open and asks for the host window's rectangle, to place itself.
  virtual void RequestParentMDISize(float& /*left*/, float& /*top*/, float& /*width*/,
                                    float& /*height*/) {}
  // The session is over.
  virtual void SessionComplete() {}

  // The state that a host displays has changed: unsaved edits, the main row or the print panel, the
  // summary, or the colours. Saves hosts from polling.
  virtual void DirtyChanged(bool /*dirty*/) {}
  virtual void ButtonsChanged() {}
  virtual void PrintPanelChanged(bool /*shown*/) {}
  virtual void SummaryDrawn() {}
  virtual void ColorsChanged() {}
};

// Where the keyboard is.
enum class Focus { kNone, kOper, kIDNum, kButton, kCancelPrint };
enum class Key { kUp, kDown, kEscape };

struct ProgramPreview;

// A missing project, and the file in which an interrupted save left it; empty for none.
struct InterruptedProject {
  std::string project;
  std::string left;
};

// Properties are pairs of overloads: AppPath() reads, AppPath(text) sets. Folders end in a
// separator; setting one adds it when missing. Both `\` and `/` separate folders.
//
// A host may call the control from an event and from DoEvents. During a save or a test compile
// (Busy), calls that would change the project or its files are refused: nothing happens, and they
// return the result that each declaration states. An exception from a host's handler propagates to
// the host; flags, buttons and pointer are then as after any other end of the action.
class Ostrand {
 public:
  // Start-up: clears the store, sets the defaults of a new project, builds the table of settings
  // and draws the summary. Store and host must outlive the control.
  Ostrand(ProjectStore& store, const platform::Surroundings& around, OstrandEvents& events);
  ~Ostrand();
  Ostrand(const Ostrand&) = delete;
  Ostrand& operator=(const Ostrand&) = delete;

  // The control whose user action is under way, null when there is none.
  static Ostrand* Current();

  // ---- Properties -------------------------------------------------------------------------------

  // Folder of the host and of the logger's compiler.
  [[nodiscard]] const std::string& AppPath() const;
  void AppPath(std::string_view folder);
  // Folder of the project.
  [[nodiscard]] const std::string& GenFilePath() const;
  void GenFilePath(std::string_view folder);
  // Folder of the help file; that of the module until a host sets another.
  [[nodiscard]] const std::string& HelpPath() const;
  void HelpPath(std::string_view folder);
  [[nodiscard]] static std::string_view HelpFileName() { return "OSTRAND.HLP"; }
  // Shows a text on the help line.
  void HelpText(const std::string& text);
  [[nodiscard]] static i32 InternalHelpContextID() { return 1800; }
  // Folder for temporary files.
  [[nodiscard]] const std::string& WorkDir() const;

  // Number in the maker's catalogue.
  [[nodiscard]] static std::string_view KVSItemNumber() { return "4318.02_QL5"; }
  // Version and date of the module.
  [[nodiscard]] static std::string_view Version();
  [[nodiscard]] static std::string_view VersionDate() { return "031002"; }

  // Full path of the project file, empty before the first open.
  [[nodiscard]] const std::string& CurrentFileName() const;
  // The project's name, "NoName" for one without a file.
  [[nodiscard]] const std::string& BaseName() const;
  // Saves the whole project and returns the path of its program, cut at its first ".". Hosts rely
  // on the save. While Busy it only returns the path.
  std::string CurBasicFileName();

  // The host's name; "Harrier", in any case, switches some behaviours.
  [[nodiscard]] const std::string& HostApp() const;
  void HostApp(std::string_view name);
  // Identity of the settings. Setting it loads the settings kept under it and applies the colours.
  [[nodiscard]] const std::string& RegistryApp() const;
  void RegistryApp(std::string_view name);
  // Stored for the host.
  [[nodiscard]] i16 WhoCalled() const;
  void WhoCalled(i16 value);
  [[nodiscard]] SocketObject* SocketControl() const;
  void SocketControl(SocketObject* socket);
  [[nodiscard]] bool isSocketConnected() const;
  void isSocketConnected(bool value);
  [[nodiscard]] bool isHarrierRunning() const;
  void isHarrierRunning(bool value);

  // Palettes: true picks the soft one.
  [[nodiscard]] bool SoftColors() const;
  void SoftColors(bool soft);
  [[nodiscard]] bool SoftTextHighlight() const;
  void SoftTextHighlight(bool soft);
  [[nodiscard]] bool UseLegacy() const;
  void UseLegacy(bool legacy);

  // ---- Methods ----------------------------------------------------------------------------------

  // Writes a number as four bytes at `pDst`, most significant first, and moves `pDst` past them.
  static void LongToMessage(i32 lng, unsigned char*& pDst);
  // Writes a text as its length, in the form of LongToMessage, and the low byte of each of its
  // 16-bit characters. The text is UTF-8, as file names are, or Windows-1252, as project texts are.
  static void StringToMessage(std::string_view Str, unsigned char*& pDst);
  // Asks the toolbar server of "Harrier" to send the program `FileName` to the logger.
  void HarrierDownload(const std::string& FileName);
  // Ends the session, unless the user cancels: asks about unsaved edits, keeps the settings, raises
  // SessionComplete. `iCancel` becomes -1 when the user cancelled or a handler of the host threw;
  // `bForce` rules out both, and the exception propagates after SessionComplete. While Busy the
  // call is refused, forced or not: `iCancel` becomes -1 without a SessionComplete. A second call
  // while one runs does nothing.
  void CloseSession(bool bForce, i16& iCancel);
  void GetSelectedColors(ColorTable& sColors) const;
  // Opens a project; an empty name asks the user. If the user chooses a name that does not exist, a
  // new project starts from the present store. `bCancel` becomes true, and the present project
  // stays, when the host's name does not exist or the file cannot be read, both after a message
  // box; also, without a box, when the user cancelled, while Busy and while a setup screen is open.
  void OpenFile(std::string_view sFileName, bool& bCancel);
  // Starts a new project that will be saved at `path` (by the rules of NameProject) in place of
  // the present one: the defaults of a project, with the user's scan interval and table sizes.
  // Asks nothing and touches no file. False, and no change, while Busy or a setup screen is open.
  bool NewProject(std::string_view path);
  // Shows the print panel in place of the main row.
  void PrintSelect();
  void SetSelectedColors(const ColorTable& sColors);
  void ShowHelpFile(i32 lContext);
  void OffSaveDownload() { SetSaveDownload(false); }
  // Asks whether to save unsaved edits, and saves. `bCancel` becomes true when the user cancelled,
  // when the checks prevent saving, when the project could not be saved, and while Busy.
  void AskToSaveAll(bool bForce, bool& bCancel);
  // Asks for a name and saves the project under it. A cancelled dialog writes nothing and sets
  // SaveCancelled. True when all files were written. While Busy it returns false and leaves
  // SaveCancelled and Saved unchanged.
  bool SaveDldFile();
  // Shows the option screen "Colors" or "Settings" and applies its changes; Done stores the
  // settings at once. Shows nothing while Busy.
  void ShowOptions(std::string_view sOption);
  // While the print panel is shown, these two take effect when the main row comes back.
  void SetQuitButton(bool Enable);
  void SetSaveDownload(bool Enable);
  // Cancels the open option screen, if any. The next ShowOptions shows a fresh one.
  void FormCleanup();

  // ---- What the user does -----------------------------------------------------------------------

  [[nodiscard]] const MainRow& MainButtons() const;
  // Presses a main button; ignored when it is disabled, and while Busy.
  void Click(int button);
  void RightClick(int button);
  void PointAt(int button);  // shows its help
  void PointAtQuit();
  void ClickQuit();
  // Whether the print panel is shown; its cancel button restores the main row.
  [[nodiscard]] bool PrintPanelShown() const;
  void CancelPrint();
  // While a screen is open, the panels of the control are hidden and not laid out.
  [[nodiscard]] bool Working() const;

  // The two text boxes beside the summary, of up to 30 characters; characters that no project file
  // can hold are dropped with a beep. A save writes the boxes to the store.
  static constexpr std::size_t kMaxBoxLetters = 30;
  [[nodiscard]] const std::string& txtOper() const;
  void txtOper(std::string_view text);
  [[nodiscard]] const std::string& txtIDNum() const;
  void txtIDNum(std::string_view text);
  void KeepTextBoxes();
  // A text box with the focus shows its text selected, in the highlight colour.
  [[nodiscard]] Focus FocusAt() const;
  [[nodiscard]] int FocusButton() const;  // with Focus::kButton
  void SetFocus(Focus focus, int button = 0);
  void KeyDown(Key key);

  [[nodiscard]] const Appearance& Colors() const;
  // Applies the colours of the settings.
  void ApplyColors();
  // The summary as last drawn.
  [[nodiscard]] const StyledText& SummaryBox() const;
  // Draws the summary, also into a box of the host if there is one, and sets `EstMeasTime`.
  bool Summarize(RichText* box = nullptr);

  // The screens of the buttons 0 to 15 and of ShowOptions, set by the host or the setup.
  [[nodiscard]] ScreenTable& Screens();
  void ColorsScreen(OptionDialog dialog);
  void SettingsScreen(OptionDialog dialog);

  // ---- State ------------------------------------------------------------------------------------

  [[nodiscard]] ProjectStore& Store();
  [[nodiscard]] const platform::Surroundings& Around() const;
  // The program of a project under the name of this one; see PreviewOf.
  [[nodiscard]] ProgramPreview Preview(const ProjectStore& store) const;
  [[nodiscard]] Settings& UserSettings();
  [[nodiscard]] const Settings& UserSettings() const;
  // Whether a save or a test compile runs, from its first question to its last file.
  [[nodiscard]] bool Busy() const;
  // Whether there may be unsaved edits.
  [[nodiscard]] bool DirtyFlag() const;
  // Reports that the project is as it was opened or last saved: DirtyFlag becomes false.
  void ForgetEdits();
  // The file of the project, as the session knows it.
  [[nodiscard]] ProjectOrigin Origin() const;
  // Replaces the project by `project`, a state that the host has kept, for the file of `origin`;
  // for the present file the session keeps what it knows of it. The project counts as edited.
  // False, and no change, while Busy or a setup screen is open.
  bool PutBack(const ProjectStore& project, const ProjectOrigin& origin);
  // Whether another program has changed the content of the project file since it was read or
  // written here. Reads the file only when its stamp has changed.
  [[nodiscard]] bool ChangedOnDisk() const;
  // Whether the last SaveDldFile was cancelled.
  [[nodiscard]] bool SaveCancelled() const;
  // Whether the last SaveDldFile wrote all files.
  [[nodiscard]] bool Saved() const;
  // Files that the last SavePipeline wrote, in order.
  [[nodiscard]] const std::vector<std::string>& SavedFiles() const;
  // Whether the last test compile ended without a program that compiles.
  [[nodiscard]] bool CompileFailed() const;
  // What the last test compile skipped, and why; empty when the compiler gave its reports.
  [[nodiscard]] const std::string& CompileSkipped() const;
  // Lines of the project file that were not read. A save drops them, after it has kept the old
  // file; OldFileKept is the name of that copy after the last save, empty for none.
  [[nodiscard]] const ORVUS_GENFILE::ReadReport& SkippedLines() const;
  [[nodiscard]] const std::string& OldFileKept() const;
  // What the last OpenFile found in place of a missing project.
  [[nodiscard]] const InterruptedProject& Interrupted() const;
  // A save that finds the project file changed by another program asks before it overwrites it;
  // `true` overwrites without asking.
  void OverwriteChanged(bool overwrite);
  // The last save was not done because another program has changed the project file.
  [[nodiscard]] bool ChangedOutside() const;
  // The sections that failed in the last program, each with its block or item and the line, in
  // Windows-1252; empty for a complete program. An incomplete program is written, but never sent.
  [[nodiscard]] const std::vector<std::string>& ProgramFaults() const;
  // Input of the checks.
  [[nodiscard]] CheckContext Checks();

  // ---- Steps of a save, for hosts without a user ------------------------------------------------

  // Writes the project file, the program, its table description and the wiring diagram, in this
  // order and under one lock of the project. Stops at the first failure and reports it; files
  // already written stay. True when all were written; false while Busy.
  bool SavePipeline();
  // Runs `body`, which writes files of the project `base`, while other saves of it are locked out;
  // a nested call only runs its body. Syncs the folder of program and documents once, at the end.
  // False when `body` returns false, when the sync fails, or when another save did not end; the
  // last two have been reported by then.
  bool UnderLock(std::string_view base, const std::function<bool()>& body);
  // The steps of the pipeline, for `base` and their extension. False while Busy, and when the file
  // could not be written, which has been reported by then. The wiring diagram is that of the last
  // program.
  bool WriteProjectFile(std::string_view base);
  bool WriteProgram(std::string_view base);
  bool WriteTableDescription(std::string_view base);
  bool WriteWiringDiagram(std::string_view base);
  // The bytes of the wiring diagram, from a separate run of the generator; empty while Busy.
  std::string WiringText();

  // The test compile by the logger's compiler; measured times go into the store. Does nothing while
  // Busy.
  void RunPreCompile();

  // Sets the session's project file to `path` by the rules for names: a title that contains ".VKG",
  // in upper case, stays; any other is cut at its first "." and gets ".VKG". Touches no file.
  void NameProject(std::string_view path);

  // The name up to its first ".VKG", otherwise up to its first ".VKP", otherwise all of it.
  static std::string_view WithoutExtension(std::string_view name);

 private:
  std::unique_ptr<SessionState> state_;
};

}  // namespace ostrand
