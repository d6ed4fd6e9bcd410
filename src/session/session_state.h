// The state of a session, and the steps shared by several sources of the control. For these sources
// only; a host sees session/ostrand.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/rich_text.h"
#include "generator/savedld.h"
#include "model/store.h"
#include "model/variables.h"
#include "platform/file_identity.h"
#include "platform/filesystem.h"
#include "platform/surroundings.h"
#include "projectfile/read_report.h"
#include "session/main_buttons.h"
#include "session/ostrand.h"
#include "session/settings.h"

namespace ostrand {

inline constexpr std::string_view kProjectExtension = ".VKG";
inline constexpr std::string_view kProgramExtension = ".VKP";
inline constexpr std::string_view kProjectFilter = "(*.VKG)|*.VKG|(All Files)|*.*";
inline constexpr std::string_view kNoName = "NoName";

// What the user sees besides the screens.
struct MainScreenState {
  MainRow row;
  MainRow rowBeforePrint;
  std::string txtOper;
  std::string txtIDNum;
  Focus focus = Focus::kNone;
  int focusButton = 0;
  bool printPanelShown = false;
  bool working = false;
  bool screenOpen = false;
  Appearance appearance;
  StyledText summary;
};

// The last save, or the one under way.
struct SaveState {
  bool cancelled = false;
  bool saved = false;
  bool changedOutside = false;
  std::vector<std::string> files;
  std::string oldFileKept;
  std::string keptAs;                     // the remainder of an earlier save
  platform::ProjectLock* lock = nullptr;  // null on a disk without locks
  std::string lockedBase;                 // the locked project; empty for none
  bool unsynced = false;                  // the folder of the locked project has new outputs
};

struct SessionState {
  SessionState(Ostrand& theControl, ProjectStore& theStore, const platform::Surroundings& machine,
               OstrandEvents& host);

  [[nodiscard]] bool HostIsHarrier() const;
  // Turns the store into a new project.
  void StartProject();
  // The user's text, limited to what a text box accepts.
  [[nodiscard]] std::string TypedText(std::string_view keys);
  // Shows another project: text boxes, main row and summary.
  void ShowProject();
  // Copies the store into the text boxes.
  void TakeTextBoxes();
  // Sets the main row for the project.
  void EnableButtons();
  // Marks the project as different from its file, or the same.
  void MarkDirty(bool dirty);
  // Loads the settings and applies the colours.
  void LoadSettings();
  // Writes the settings into the user's store. Raises a Fault on failure.
  void KeepSettings();
  // Whether there is a compiler; the user may be asked to find it. The question follows the text
  // `missing`.
  bool FindCompiler(std::string_view missing, std::string_view question);

  // The control's routines of the same name, for callers that hold Busy themselves.
  void SaveDldFile();
  bool SavePipeline();
  bool WriteProgram(std::string_view base);
  void RunPreCompile();

  Ostrand& control;
  ProjectStore& store;
  platform::Surroundings around;
  OstrandEvents& events;
  SAVEDLD generator;
  Settings settings;
  CalcVarRefs calcVarRefs;

  std::string currentFileName;
  std::string baseName{kNoName};
  platform::FileIdentity known;  // the project file as last read or written
  ORVUS_GENFILE::ReadReport readReport;
  InterruptedProject interrupted;
  bool dirtyFlag = false;
  bool overwriteChanged = false;

  std::string appPath;
  std::string helpPath;
  std::string hostApp;
  SocketObject* socketControl = nullptr;
  i16 whoCalled = 0;
  bool isSocketConnected = false;
  bool isHarrierRunning = false;

  ScreenTable screens;
  OptionDialog colorsScreen;
  OptionDialog settingsScreen;
  MainScreenState main;
  SaveState save;
  bool compileFailed = false;
  std::string compileSkipped;

  // What runs at present.
  bool saving = false;
  bool compiling = false;
  bool closing = false;
};

}  // namespace ostrand
