// The window of the program: the main row, the pages, and the menus.
#pragma once

#include <QMainWindow>
#include <array>
#include <memory>
#include <string>

#include "guided_screens.h"
#include "qt_forms.h"
#include "session/ostrand.h"

class QAction;
class QPushButton;
class QTabWidget;
class QTextEdit;

namespace ostrand::desktop {

class FindingsPage;
class ProgramView;
class TablesPage;

class MainWindow final : public QMainWindow, private OstrandEvents {
 public:
  // Store and surroundings must outlive it. `forms` shows boxes over the window; the surroundings
  // have it, or one that passes on to it.
  MainWindow(ProjectStore& store, const platform::Surroundings& around, QtForms& forms);
  ~MainWindow() override;

  [[nodiscard]] Ostrand& Session() { return session_; }
  // A project by its path, with a message for one that cannot be opened; false then.
  bool Open(const std::string& path);
  // An empty project that has no file yet.
  void StartNew();

  // Opens the screens on the way to a place, unless one is open.
  void Go(const ScreenPlace& place);
  [[nodiscard]] bool IsGuiding() const { return screens_.IsGuiding(); }

  // Whether a save would write something else than the project file holds.
  [[nodiscard]] bool HasEdits() const;

  [[nodiscard]] QPushButton* ButtonOf(int button) const;
  [[nodiscard]] QTabWidget* Pages() const { return pages_; }
  [[nodiscard]] QLineEdit* OperatorBox() const { return operator_; }
  [[nodiscard]] QLineEdit* NumberBox() const { return number_; }
  [[nodiscard]] FindingsPage* Checks() const { return checks_; }
  // The screen that can be edited; null when none is open.
  [[nodiscard]] ScreenWindow* OpenScreen() const { return screens_.Top(); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void NewFile(const std::string& fileName) override;
  void SessionComplete() override { ended_ = true; }
  void DirtyChanged(bool dirty) override;
  void ButtonsChanged() override;
  void SummaryDrawn() override;
  void ColorsChanged() override;

  void buildMainRow();
  void buildBoxes();
  void buildPages();
  void buildMenus();
  void screenOpen(bool open);
  void click(int button);
  void askOpen();
  void search();
  void askCompare();
  void askNew();
  bool mayLeaveProject();
  void showAll();
  void showTitle();
  void showButtons();
  void showPage();
  void showSummary();

  ProjectStore& store_;
  QtForms& forms_;
  QWidget* row_;
  std::array<QPushButton*, kLastButton + 1> buttons_{};
  std::array<QAction*, kLastButton + 1> actions_{};
  QLineEdit* operator_;
  QLineEdit* number_;
  QTabWidget* pages_;
  QTextEdit* summary_;
  ProgramView* program_;
  TablesPage* tables_;
  FindingsPage* checks_;
  std::string saved_;  // what a save would have written when the project was opened or saved
  bool ended_ = false;
  bool ready_ = false;  // all of the window is there
  Ostrand session_;
  GuidedScreens screens_;
};

}  // namespace ostrand::desktop
