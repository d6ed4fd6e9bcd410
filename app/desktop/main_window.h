// The window of the program: the menus, the main row, the tree and the pages.
#pragma once

#include <QMainWindow>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "button_panels.h"
#include "desktop_settings.h"
#include "guided_screens.h"
#include "notice_bar.h"
#include "pages/summary_page.h"
#include "platform/surroundings.h"
#include "project_tree.h"
#include "qt_forms.h"
#include "report/report_options.h"
#include "server_link.h"
#include "session/ostrand.h"
#include "watched_processes.h"
#include "work_keeper.h"

class QAction;
class QActionGroup;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QTabWidget;

namespace ostrand::desktop {

class ChannelsPage;
class FindingsPage;
class HelpWindow;
class ProgramView;
class TablesPage;
class WiringPage;

class MainWindow final : public QMainWindow, private OstrandEvents {
 public:
  // Store and surroundings must outlive it. `forms` shows boxes over the window; the surroundings
  // have it, or one that passes on to it. Copies of unsaved work are kept in `recoveryFolder`; none
  // if it is empty.
  MainWindow(ProjectStore& store, const platform::Surroundings& around, QtForms& forms,
             const QString& recoveryFolder = {});
  ~MainWindow() override;

  // Makes what the first paint of the window does not wait for: menus, tree and pages. It follows
  // that paint by itself. Nothing can be opened or done before.
  void Complete();
  // Called at the end of it.
  std::function<void()> OnComplete;

  [[nodiscard]] Ostrand& Session() { return session_; }
  // A project by its path, or one that the user is asked for; a message for one that cannot be
  // opened. False when the present project stays.
  bool Open(const std::string& path);
  // The same, after the user has decided about the edits of the present project.
  bool OpenInstead(const std::string& path);
  // An empty project that has no file yet.
  void StartNew();

  // Offers what windows that no longer run have left. True when one of these projects is open now.
  bool OfferUnsavedWork();

  // Whether a save would write something else than the project file holds.
  [[nodiscard]] bool HasEdits() const { return edited_; }
  // Whether the user may change the project now: no screen is open, nothing runs.
  [[nodiscard]] bool MayAct() const;
  // Opens the screens on the way to a place, unless one is open.
  void Go(const ScreenPlace& place);
  [[nodiscard]] bool IsGuiding() const { return screens_.IsGuiding(); }
  // The user guide, beside the window.
  void ShowHelp();
  // The size of all texts, in percent.
  void TextSize(int percent);

  [[nodiscard]] QPushButton* ButtonOf(int button) const { return panels_->Button(button); }
  [[nodiscard]] QTabWidget* Pages() const { return pages_; }
  [[nodiscard]] QLineEdit* OperatorBox() const { return operator_; }
  [[nodiscard]] QLineEdit* NumberBox() const { return number_; }
  [[nodiscard]] FindingsPage* Checks();
  [[nodiscard]] ProjectTree* Tree() const { return tree_; }
  [[nodiscard]] NoticeBar* Notice() const { return notice_; }
  // The screen that can be edited; null when none is open.
  [[nodiscard]] ScreenWindow* OpenScreen() const { return screens_.Top(); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct MenuRow {
    const char* title;
    void (MainWindow::*fill)(QMenu* menu);
  };
  static const std::array<MenuRow, 7> kMenus;

  enum PageNumber {
    kSummaryPage,
    kWiringPage,
    kChannelsPage,
    kProgramPage,
    kTablesPage,
    kChecksPage,
  };

  struct Command {
    QAction* action;
    int button;  // of the main row, or -1
  };

  void NewFile(const std::string& fileName) override;
  void SessionComplete() override { ended_ = true; }
  void PopupOptionsMenu() override;
  void ButtonsChanged() override;
  void SummaryDrawn() override;
  void ColorsChanged() override;

  void connectParts();
  void buildBoxes();
  void buildPages();
  // Pages other than the summary are made when they are first seen: the window opens sooner.
  void makePage(int number);
  void layOutRow();
  void layOutRest();
  void fillFileMenu(QMenu* menu);
  void fillEditMenu(QMenu* menu);
  void fillSetupMenu(QMenu* menu);
  void fillProgramMenu(QMenu* menu);
  void fillViewMenu(QMenu* menu);
  void fillOptionsMenu(QMenu* menu);
  void fillHelpMenu(QMenu* menu);
  QAction* command(QMenu* menu, const QString& text, const QKeySequence& key,
                   std::function<void()> run, int button = -1);

  // Everything that may change the project runs here; nothing else can be done meanwhile.
  // `name` is that of the undo step, if the project has changed.
  void act(const QString& name, const std::function<void()>& action);
  // After the session has another project, and after it was saved.
  void projectReplaced();
  void projectSaved();
  void takeSaved();

  void click(int button);
  void clickWidget(int button);  // by the user at the main row, where the focus then is
  void pointAt(const MainButton& button);
  void paintBox(QLineEdit* box);
  void save();
  void saveAs() { click(kSaveButton); }
  void saveAndSend();
  QString whyNotSent(const ServerLink& server);
  void testCompile();
  void askServer();
  void takeServer(const QString& address);
  void undo();
  void redo();
  void statePutBack();
  void checkDisk();
  void askOpen();
  void askCompare();
  void askPrint();
  void print(const ReportOptions& options);
  void exportTo(const QString& path, const ReportOptions& options);
  void search();
  void askNew();
  bool mayLeaveProject();
  [[nodiscard]] bool hasFile() const;

  void screenOpen(bool open);
  void programsChanged();
  void noteWhatWasRead();
  void showAll();
  void showEdited();
  void showTitle();
  void showCommands();
  void showPage();
  void showRecent();
  void takeTextSize();
  void fitHelpLine();
  void takeColors();
  void showAbout();
  void copyFromPage();
  void rememberWindow();
  [[nodiscard]] const ProjectStore& shownStore() const;

  ProjectStore& store_;
  QtForms& forms_;
  DesktopSettings settings_;
  qreal usualFontSize_;
  ButtonPanels* panels_;
  QLabel* helpLine_;
  QSplitter* split_;  // left and right part of the window
  QSplitter* left_;
  QWidget* right_;
  std::vector<QMenu*> menus_;
  ProjectTree* tree_ = nullptr;  // this and the next ones, until the window is complete
  QLineEdit* operator_ = nullptr;
  QLineEdit* number_ = nullptr;
  NoticeBar* notice_ = nullptr;
  QTabWidget* pages_ = nullptr;
  SummaryPage* summary_ = nullptr;
  WiringPage* wiring_ = nullptr;  // this and the next pages, until they are seen
  ChannelsPage* channels_ = nullptr;
  ProgramView* program_ = nullptr;
  TablesPage* tables_ = nullptr;
  FindingsPage* checks_ = nullptr;
  QMenu* recent_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QMenu* options_ = nullptr;
  QActionGroup* textSizes_ = nullptr;
  HelpWindow* help_ = nullptr;  // once it was asked for
  std::vector<Command> commands_;
  std::string savedBytes_;                // of the project as it was saved last
  std::unique_ptr<ProjectStore> before_;  // the project before the screen that is open
  QString runs_;                          // what is done while a program runs
  bool edited_ = false;
  bool named_ = false;     // the project has a name that the user knows
  bool namedNow_ = false;  // the present action has named the project
  bool acting_ = false;
  bool screenOpen_ = false;
  bool cancelled_ = false;  // the connection that is waited for
  bool ended_ = false;
  bool ready_ = false;  // all of the window is there
  WatchedProcesses processes_;
  platform::Surroundings around_;
  Ostrand session_;
  GuidedScreens screens_;
  WorkKeeper keeper_;
};

}  // namespace ostrand::desktop
