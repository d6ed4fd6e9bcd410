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
struct ProjectStore;
struct SessionState;
class RichText;
class StyledText;
class Settings;
class SocketObject;

// What the control reports to its host. A host overrides what it wants to hear.
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
  // A screen is about to open and asks for the host window's rectangle, to place itself.
  virtual void RequestParentMDISize(float& /*left*/, float& /*top*/, float& /*width*/,
                                    float& /*height*/) {}
  // The session is over.
  virtual void SessionComplete() {}

  // What a host shows and would have to ask for again and again: the edits are unsaved or saved
  // now, the main row or the print panel has changed, the summary was drawn anew, the colours are
  // others.
  virtual void DirtyChanged(bool /*dirty*/) {}
  virtual void ButtonsChanged() {}
  virtual void PrintPanelChanged(bool /*shown*/) {}
  virtual void SummaryDrawn() {}
  virtual void ColorsChanged() {}
};

// Where the keyboard is.
enum class Focus { kNone, kOper, kIDNum, kButton, kCancelPrint };
enum class Key { kUp, kDown, kEscape };

// A missing project, and the file in which an interrupted save has left it; empty for none.
struct InterruptedProject {
  std::string project;
  std::string left;
};

// Properties are pairs of overloads: AppPath() reads, AppPath(text) sets. Folders end in a
// separator; setting one adds what is missing. Both `\` and `/` separate folders.
//
// A host may call the control from an event and from DoEvents. While a save or a test compile runs
// (Busy), calls that would change the project or its files are refused: nothing happens, and the
// caller gets the result that each declaration states. An exception from a host's handler reaches
// the host; flags, buttons and pointer are then as after any other end of the action.
class Ostrand {
 public:
  // Start-up: the store is cleared and takes the defaults of a new project, the table of settings
  // is built, the summary is drawn. Store and host must outlive the control.
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
  // Puts a text on the help line.
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
  // on the save. While Busy it returns the path alone.
  std::string CurBasicFileName();

  // The host's name; "Harrier", in any case, switches some behaviours.
  [[nodiscard]] const std::string& HostApp() const;
  void HostApp(std::string_view name);
  // Identity of the settings. Setting it loads the settings kept under it and applies the colours.
  [[nodiscard]] const std::string& RegistryApp() const;
  void RegistryApp(std::string_view name);
  // Kept for the host.
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
  // SessionComplete. `iCancel` becomes -1 when the user cancelled or a handler of the host threw,
  // both ruled out by `bForce`; the exception goes on after SessionComplete. While Busy it is
  // refused, forced or not: `iCancel` becomes -1 and there is no SessionComplete. A second call
  // while one runs does nothing.
  void CloseSession(bool bForce, i16& iCancel);
  void GetSelectedColors(ColorTable& sColors) const;
  // Opens a project; an empty name asks the user. A name chosen by the user that does not exist
  // starts a new project from the store as it is. `bCancel` becomes true, and the present project
  // stays, when the host's name does not exist or the file cannot be read, both after a message
  // box; and silently when the user cancelled, while Busy and while a setup screen is open.
  void OpenFile(std::string_view sFileName, bool& bCancel);
  // Starts a new project that will be saved at `path` (by the rules of NameProject) in place of
  // the present one: the defaults of a project, with the user's scan interval and table sizes.
  // Asks nothing and touches no file. False, and no change, while Busy or a setup screen is open.
  bool NewProject(std::string_view path);
  // Shows what can be printed in place of the main row.
  void PrintSelect();
  void SetSelectedColors(const ColorTable& sColors);
  void ShowHelpFile(i32 lContext);
  void OffSaveDownload() { SetSaveDownload(false); }
  // Asks whether to save unsaved edits, and saves. `bCancel` becomes true when the user cancelled,
  // when the checks prevent saving, when the project could not be saved, and while Busy.
  void AskToSaveAll(bool bForce, bool& bCancel);
  // Asks for a name and saves the project under it. A cancelled dialog writes nothing and sets
  // SaveCancelled. True when all files were written; false, with SaveCancelled and Saved as they
  // were, while Busy.
  bool SaveDldFile();
  // Shows the option screen "Colors" or "Settings" and takes what it changed; Done keeps the
  // settings at once. Shows nothing while Busy.
  void ShowOptions(std::string_view sOption);
  // While the print panel is shown, these two take effect when the main row comes back.
  void SetQuitButton(bool Enable);
  void SetSaveDownload(bool Enable);
  // Cancels the option screen that is open, if one is. The next ShowOptions shows a fresh one.
  void FormCleanup();

  // ---- What the user does -----------------------------------------------------------------------

  [[nodiscard]] const MainRow& MainButtons() const;
  // A press of a main button; nothing when it is disabled, and while Busy.
  void Click(int button);
  void RightClick(int button);
  void PointAt(int button);  // shows its help
  void PointAtQuit();
  void ClickQuit();
  // The panel of what can be printed is shown; its cancel button brings the main row back as it
  // was.
  [[nodiscard]] bool PrintPanelShown() const;
  void CancelPrint();
  // While a screen is open the panels of the control are hidden and it lays out nothing.
  [[nodiscard]] bool Working() const;

  // The two text boxes beside the summary, of up to 30 characters; a character that no project file
  // can hold is dropped with a beep. They enter the store when the project is saved.
  static constexpr std::size_t kMaxBoxLetters = 30;
  [[nodiscard]] const std::string& txtOper() const;
  void txtOper(std::string_view text);
  [[nodiscard]] const std::string& txtIDNum() const;
  void txtIDNum(std::string_view text);
  void KeepTextBoxes();
  // A text box with the focus shows its text selected, on the highlight colour.
  [[nodiscard]] Focus FocusAt() const;
  [[nodiscard]] int FocusButton() const;  // with Focus::kButton
  void SetFocus(Focus focus, int button = 0);
  void KeyDown(Key key);

  [[nodiscard]] const Appearance& Colors() const;
  // Takes the colours of the settings.
  void ApplyColors();
  // The summary as it was last drawn.
  [[nodiscard]] const StyledText& SummaryBox() const;
  // Draws the summary, which also sets `EstMeasTime`; into a box of the host as well, if there is
  // one.
  bool Summarize(RichText* box = nullptr);

  // The screens of the buttons 0 to 15 and of ShowOptions, set by the host or the setup.
  [[nodiscard]] ScreenTable& Screens();
  void ColorsScreen(OptionDialog dialog);
  void SettingsScreen(OptionDialog dialog);

  // ---- State ------------------------------------------------------------------------------------

  [[nodiscard]] ProjectStore& Store();
  [[nodiscard]] const platform::Surroundings& Around() const;
  [[nodiscard]] Settings& UserSettings();
  [[nodiscard]] const Settings& UserSettings() const;
  // A save or a test compile runs, from its first question to its last file.
  [[nodiscard]] bool Busy() const;
  // Unsaved edits may exist.
  [[nodiscard]] bool DirtyFlag() const;
  // The last SaveDldFile was cancelled.
  [[nodiscard]] bool SaveCancelled() const;
  // The last SaveDldFile wrote all files.
  [[nodiscard]] bool Saved() const;
  // Files that the last SavePipeline wrote, in their order.
  [[nodiscard]] const std::vector<std::string>& SavedFiles() const;
  // The last test compile did not end with a program that compiles.
  [[nodiscard]] bool CompileFailed() const;
  // What the last test compile skipped, and why; empty when the compiler gave its reports.
  [[nodiscard]] const std::string& CompileSkipped() const;
  // Lines of the project file that were not read. A save drops them, and keeps the old file first;
  // OldFileKept is the name of that copy after the last save, empty for none.
  [[nodiscard]] const ORVUS_GENFILE::ReadReport& SkippedLines() const;
  [[nodiscard]] const std::string& OldFileKept() const;
  // What the last OpenFile found in place of a project that is missing.
  [[nodiscard]] const InterruptedProject& Interrupted() const;
  // A save that finds the project file changed by another program asks before it overwrites it;
  // with `true` it overwrites without a question.
  void OverwriteChanged(bool overwrite);
  // The last save was not done, since another program has changed the project file.
  [[nodiscard]] bool ChangedOutside() const;
  // The sections that failed in the last program, each with its block or item and the line, in
  // Windows-1252; empty for a complete program. One with faults is written, and never sent.
  [[nodiscard]] const std::vector<std::string>& ProgramFaults() const;
  // What the checks work on.
  [[nodiscard]] CheckContext Checks();

  // ---- Steps of a save, for hosts without a user ------------------------------------------------

  // Writes the project file, the program, its table description and the wiring diagram, in this
  // order and under one lock of the project. The first failure is reported and ends it; what was
  // written stays. True when all was written; false while Busy.
  bool SavePipeline();
  // Runs `body`, which writes files of the project `base`, with other saves of it kept out; inside
  // such a body it just runs. The folder of its program and documents is synced once, at the end.
  // False when `body` returns false, when that sync fails, or when another save did not end; the
  // last two have been reported then.
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
  std::unique_ptr<SessionState> state_;
};

}  // namespace ostrand
