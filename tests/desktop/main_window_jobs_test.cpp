// What the main window does with a project on a real disk: saves, compiles, sends, and what it
// refuses.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <filesystem>
#include <optional>

#include "contrast.h"
#include "help_window.h"
#include "open_lock.h"
#include "platform/posix/posix_filesystem.h"
#include "recovery.h"
#include "script/screen_catalog.h"
#include "session/settings.h"
#include "support/listener.h"
#include "support/stand_ins.h"
#include "support/temp_folder.h"
#include "texts.h"
#include "window_session.h"

namespace ostrand {
namespace {

const std::string kExample = OSTRAND_SOURCE_DIR "/examples/building-climate.VKG";

class Jobs : public ::testing::Test {
 protected:
  Jobs() {
    std::filesystem::copy_file(kExample, project_);
    ::setenv("STAND_IN", "", 1);
    settings_.sections["ostrand-desktop\\Window"] = {{"LoggerServer", server_.Name()}};
  }

  // The disk may be another one.
  void start(platform::FileSystem& disk) {
    around_.emplace(disk, clock_, forms_, work_.Path());
    around_->settings = settings_;
    window_.emplace(*store_, around_->all, forms_, recovery_);
    window_->show();
    EXPECT_FALSE(window_->MayAct());  // the first paint does not wait for tree and pages
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*window_));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window_->MayAct(); }));
  }
  void open() {
    start(disk_);
    ASSERT_TRUE(window_->Open(project_));
    window_->Session().UserSettings().CompilerPath(OSTRAND_STAND_IN);
    window_->Session().UserSettings().WarningMessageMask(0);
  }
  void trigger(const QString& text) { testing::Trigger(*window_, text); }
  // The session then has its dirty flag.
  void leaveScreen() {
    const testing::EachTurn leaver([this] {
      if (window_->OpenScreen() != nullptr) window_->OpenScreen()->reject();
    });
    QTest::mouseClick(window_->ButtonOf(kConfigurationButton), Qt::LeftButton);
  }
  void edit() {
    window_->OperatorBox()->setFocus();
    QTest::keyClick(window_->OperatorBox(), Qt::Key_End);
    QTest::keyClick(window_->OperatorBox(), Qt::Key_Z);
    EXPECT_TRUE(window_->isWindowModified());
  }

  testing::TempFolder folder_;
  testing::TempFolder work_;
  const std::string project_ = folder_ / "house.VKG";
  testing::Listener server_;
  platform::PosixFileSystem disk_{platform::Syncing::kOff};
  testing::FixedClock clock_;
  desktop::QtForms forms_;
  testing::MemorySettingsStore settings_;  // at the start
  QString recovery_;                       // folder of the copies; none if it is empty
  std::optional<testing::TestSurroundings> around_;
  std::unique_ptr<ProjectStore> store_ = NewStore();
  std::optional<desktop::MainWindow> window_;
};

// ---- Saving and sending -------------------------------------------------------------------------

TEST_F(Jobs, SaveToTheFileOfTheProjectWithoutAsking) {
  open();
  edit();
  const testing::Answers nothingIsAsked;
  trigger("Save");
  EXPECT_FALSE(window_->isWindowModified());
  EXPECT_EQ(window_->Notice()->Text(), "Saved " + QString::fromStdString(project_) + ".");
  EXPECT_NE(testing::ReadDisk(project_).find("H. Quistz"), std::string::npos);
  for (const char* name : {"house.VKP", "house.VKD", "house.VKW"}) {
    EXPECT_TRUE(std::filesystem::exists(folder_ / name)) << name;
  }
}

TEST_F(Jobs, AskAboutEditsBeforeTheProjectIsLeft) {
  for (const QString answer : {"Cancel", "No", "Yes"}) {
    for (const bool screen : {false, true}) {  // whether the session knows of edits
      SCOPED_TRACE(answer.toStdString() + (screen ? ", screen" : ", box"));
      testing::WriteDisk(project_, testing::ReadDisk(kExample));
      window_.reset();
      open();
      if (screen) leaveScreen();
      edit();
      testing::Answers answers({answer});
      EXPECT_EQ(window_->close(), answer != "Cancel");
      EXPECT_EQ(answers.titles, QStringList("QUIT GENERATOR"));
      const bool written = testing::ReadDisk(project_).find("H. Quistz") != std::string::npos;
      EXPECT_EQ(written, answer == "Yes");
    }
  }
}

TEST_F(Jobs, ReplaceNoProjectThatAnotherWindowHas) {
  const std::string before = testing::ReadDisk(project_);
  const QString mine = QString::fromStdString(project_);
  const QString free = QString::fromStdString(folder_ / "free.VKG");
  testing::WriteDisk(folder_ / "other.VKG", before);
  desktop::OpenLock other;
  desktop::OpenLock another;
  ASSERT_EQ(other.Take(project_), desktop::OpenLock::State::kHeld);
  ASSERT_EQ(another.Take(folder_ / "other.VKG"), desktop::OpenLock::State::kHeld);
  testing::Answers answers({"Read only"});
  open();
  EXPECT_EQ(window_->windowTitle(), "house[*] (read only) - Ostrand");
  leaveScreen();
  edit();
  answers.titles.clear();

  answers.captions = {"OK"};
  trigger("Save");
  EXPECT_EQ(answers.titles, QStringList("READ ONLY"));
  answers.titles.clear();
  answers.captions = {"Yes", "OK"};
  EXPECT_FALSE(window_->close());
  EXPECT_EQ(answers.titles, QStringList({"QUIT GENERATOR", "READ ONLY"}));
  EXPECT_EQ(testing::ReadDisk(project_), before);

  // The file dialog asks first whether a file is to be replaced.
  answers.captions = {"Yes", "OK", "Yes", "OK"};
  QStringList paths = {mine, QString::fromStdString(folder_ / "other.VKG"), free};
  const testing::EachTurn inDialogs([&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    if (paths.empty()) return dialog->reject();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(paths.takeFirst());
    static_cast<QDialog*>(dialog)->accept();
  });
  trigger("Save as...");
  EXPECT_TRUE(paths.empty());
  EXPECT_EQ(testing::ReadDisk(project_), before);
  EXPECT_EQ(testing::ReadDisk(folder_ / "other.VKG"), before);
  EXPECT_NE(testing::ReadDisk(folder_ / "free.VKG").find("H. Quistz"), std::string::npos);
  EXPECT_EQ(window_->windowTitle(), "free[*] - Ostrand");
  EXPECT_EQ(other.Check(), desktop::OpenLock::State::kHeld);
  EXPECT_EQ(another.Check(), desktop::OpenLock::State::kHeld);
}

TEST_F(Jobs, SaveAProjectThatTheOtherWindowHasGivenUp) {
  for (const bool written : {false, true}) {  // by the other window
    window_.reset();
    desktop::OpenLock other;
    ASSERT_EQ(other.Take(project_), desktop::OpenLock::State::kHeld);
    testing::Answers answers({"Read only"});
    open();
    answers.titles.clear();
    if (written) {
      std::string changed = testing::ReadDisk(project_);
      testing::WriteDisk(project_, changed.replace(changed.find("H. Quist"), 8, "R. Quist"));
    }
    other.Release();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window_->windowTitle().contains("read only"); }));
    EXPECT_EQ(window_->OperatorBox()->text(), written ? "R. Quist" : "H. Quist");
    EXPECT_NE(window_->Notice()->Text(), "");
    EXPECT_EQ(other.Take(project_), desktop::OpenLock::State::kOther);
    EXPECT_EQ(answers.titles, QStringList());
  }
}

TEST_F(Jobs, RecoverNothingOverAProjectThatAnotherWindowHas) {
  const std::string before = testing::ReadDisk(project_);
  desktop::OpenLock other;
  ASSERT_EQ(other.Take(project_), desktop::OpenLock::State::kHeld);
  std::string work = before;
  work.replace(work.find("H. Quist"), 8, "R. Quist");
  recovery_ = desktop::PathText(work_ / "recovery");
  ProjectOrigin origin;
  origin.path = project_;
  EXPECT_TRUE(desktop::Recovery(recovery_).Keep(origin, work));
  start(disk_);
  testing::Answers answers({"Recover", "Read only"});
  EXPECT_TRUE(window_->OfferUnsavedWork());
  EXPECT_EQ(window_->OperatorBox()->text(), "R. Quist");
  answers.titles.clear();
  answers.captions = {"OK"};
  trigger("Save");
  EXPECT_EQ(answers.titles, QStringList("READ ONLY"));
  EXPECT_EQ(testing::ReadDisk(project_), before);
  EXPECT_TRUE(window_->isWindowModified());
}

TEST_F(Jobs, AskForTheNameOfANewProjectInTheFolderOfTheSettings) {
  settings_.sections["QUILLON\\QUILLON"] = {{"GenPath", folder_.Path()}};
  testing::WriteDisk(folder_ / "NoName.VKG", "another project");
  start(disk_);
  window_->StartNew();
  edit();
  QString folder;
  const testing::EachTurn canceller([&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    folder = dialog->directory().path() + '/';
    dialog->reject();
  });
  testing::Answers noCompiler({"No"});
  trigger("Save");
  EXPECT_EQ(folder.toStdString(), folder_.Path());
  EXPECT_EQ(testing::ReadDisk(folder_ / "NoName.VKG"), "another project");
  EXPECT_TRUE(window_->isWindowModified());
}

TEST_F(Jobs, SayWhetherAProgramWasSent) {
  const QString server = QString::fromStdString(server_.Name());
  const QString saved = "Saved " + QString::fromStdString(project_) + ".";
  struct Case {
    const char* compiler;
    QString server;
    std::string alias;  // of a second sensor of that name
    QStringList answers;
    QString notice;
  };
  const Case cases[] = {
      {"", server, "", {}, "Compiled, saved and sent to " + server + "."},
      {"bad", server, "", {"OK"}, saved + " Not sent: the program does not compile."},
      {"",
       "127.0.0.1:1",
       "",
       {},
       "Not saved and not sent. No connection: 127.0.0.1:1: Connection refused."},
      {"",
       server,
       "HallRH",
       {"OK", "No"},
       " Not sent: there was no test compile. See the page Checks."},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.notice.toStdString());
    testing::WriteDisk(project_, testing::ReadDisk(kExample));
    settings_.sections["ostrand-desktop\\Window"]["LoggerServer"] = row.server.toStdString();
    ::setenv("STAND_IN", row.compiler, 1);
    open();
    edit();
    if (!row.alias.empty()) store_->VoltBlock[2].Alias[1].AliasName = row.alias;
    forms_.SaveAs(project_);
    testing::Answers answers(row.answers);
    QTest::mouseClick(window_->ButtonOf(kSaveAndSendButton), Qt::LeftButton);
    EXPECT_EQ(window_->Notice()->Text().right(row.notice.size()), row.notice);
    const bool written = testing::ReadDisk(project_).find("H. Quistz") != std::string::npos;
    EXPECT_EQ(window_->isWindowModified(), !written);
    EXPECT_EQ(written, row.notice.startsWith("Compiled") || row.notice.startsWith("Saved"));
    if (row.server == server) {
      const std::string bytes = server_.Received();
      EXPECT_EQ(bytes.find(folder_ / "house.VKP") != std::string::npos,
                row.notice.startsWith("Compiled"));
    }
    EXPECT_EQ(window_->Session().HostApp(), "");
    window_->Session().ForgetEdits();
    window_.reset();
  }
}

TEST_F(Jobs, EndTheCompilerAtOnceWhenCancelled) {
  open();
  edit();
  int alive = 0;
  bool mayAct = true;
  testing::EachTurn canceller([&] {
    alive = testing::StandInsAlive();
    if (alive == 0 || !window_->Notice()->CancelButton()->isVisible()) return;
    canceller.stop();
    mayAct = window_->MayAct() || window_->ButtonOf(kSaveButton)->isEnabled();
    EXPECT_FALSE(window_->close()) << "while the compiler runs";
    QTest::mouseClick(window_->Notice()->CancelButton(), Qt::LeftButton);
  });
  ::setenv("STAND_IN", "hang", 1);
  trigger("Test compile");
  EXPECT_GT(alive, 0);
  EXPECT_FALSE(mayAct);
  EXPECT_EQ(testing::StandInsAlive(), 0);
  EXPECT_TRUE(window_->Notice()->Text().contains("cancelled"))
      << window_->Notice()->Text().toStdString();
  EXPECT_TRUE(window_->MayAct());
  EXPECT_TRUE(window_->isWindowModified());
  EXPECT_FALSE(std::filesystem::exists(work_ / "TEMP$$$$.VKP"));
}

// ---- Bad input ----------------------------------------------------------------------------------

TEST_F(Jobs, StayUsableAfterAnInputThatIsNoProject) {
  open();
  edit();
  std::filesystem::create_directory(folder_ / "folder.VKG");
  ASSERT_EQ(::mkfifo((folder_ / "pipe.VKG").c_str(), 0600), 0);
  testing::WriteDisk(folder_ / "large.VKG", "");
  std::filesystem::resize_file(folder_ / "large.VKG", 100'000'000);
  struct Case {
    const char* name;
    QString title;
    QString reason;
  };
  const Case cases[] = {
      {"missing.VKG", "FILE NOT FOUND", "could not be located on this computer."},
      {"folder.VKG", "FILE CANNOT BE READ", "folder.VKG: Is a directory"},
      {"pipe.VKG", "FILE CANNOT BE READ", "pipe.VKG: Not a regular file"},
      {"large.VKG", "FILE CANNOT BE READ", "large.VKG: File too large"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    testing::Answers answers({"OK"});
    EXPECT_FALSE(window_->Open(folder_ / row.name));
    EXPECT_EQ(answers.titles, QStringList(row.title));
    EXPECT_TRUE(answers.text.endsWith(row.reason)) << answers.text.toStdString();
    EXPECT_EQ(window_->windowTitle(), "house[*] - Ostrand");
    EXPECT_TRUE(window_->isWindowModified());
    EXPECT_TRUE(window_->MayAct());
  }
}

TEST_F(Jobs, ReportLinesThatWereNotRead) {
  testing::WriteDisk(project_, testing::ReadDisk(project_) + "[GEN VERSION]\r\nnonsense\r\n" +
                                   std::string(2000, '\x01') + "\r\n");
  open();
  EXPECT_TRUE(window_->Notice()->Text().startsWith("2 lines of the file could not be read"))
      << window_->Notice()->Text().toStdString();
  trigger("Save");
  EXPECT_TRUE(window_->Notice()->Text().contains("The old file is kept as"))
      << window_->Notice()->Text().toStdString();
}

// Each call of a save fails once: the old project or the new one is there, and the edits are kept.
TEST_F(Jobs, KeepEditsWhenTheDiskIsFull) {
  const std::string old = testing::ReadDisk(project_);
  for (int failAt = 1;; ++failAt) {
    SCOPED_TRACE(failAt);
    testing::MemoryFileSystem disk;
    disk.files = {{"/house.VKG", old}, {OSTRAND_STAND_IN, "a compiler without reports"}};
    testing::FaultyFileSystem faulty(disk, failAt, true);
    start(faulty);
    testing::Answers answers;
    answers.otherwise = "OK";
    const bool opened = window_->Open("/house.VKG");
    if (opened) {
      window_->Session().UserSettings().CompilerPath(OSTRAND_STAND_IN);
      window_->Session().UserSettings().WarningMessageMask(0);
      edit();
      trigger("Save");
    }
    const bool failed = faulty.Calls() >= failAt;
    const std::string now = disk.files["/house.VKG"];
    const bool isNew = now.find("H. Quistz") != std::string::npos;
    EXPECT_TRUE(now == old || isNew);
    if (opened) {  // what is not saved is reported and kept; leftovers that stay do no harm
      EXPECT_EQ(window_->OperatorBox()->text(), "H. Quistz");
      EXPECT_EQ(window_->isWindowModified(), !answers.titles.empty());
      EXPECT_TRUE(isNew || window_->isWindowModified());
    }
    window_->Session().ForgetEdits();
    window_.reset();
    if (!failed) break;
  }
}

// ---- What is remembered and shown ---------------------------------------------------------------

TEST_F(Jobs, RememberTheWindowAndItsProjects) {
  open();
  window_->Pages()->setCurrentIndex(1);
  window_->TextSize(150);
  window_->resize(700, 500);
  EXPECT_TRUE(window_->close());
  const QSize size = window_->size();
  settings_ = around_->settings;
  window_.reset();
  start(disk_);
  EXPECT_EQ(window_->Pages()->currentIndex(), 1);
  EXPECT_EQ(window_->size(), size);
  const qreal large = QApplication::font().pointSizeF();
  trigger("1  " + QString::fromStdString(project_));
  EXPECT_EQ(window_->windowTitle(), "house[*] - Ostrand");
  trigger("Smaller text");
  EXPECT_LT(QApplication::font().pointSizeF(), large);
  window_.reset();
  // Values that make no sense are not taken.
  settings_.sections["ostrand-desktop\\Window"] = {{"Geometry", "zz"},
                                                   {"Split", "0102"},
                                                   {"Page", "-7"},
                                                   {"TextSize", "9000"},
                                                   {"LoggerServer", "nowhere"}};
  settings_.notice = "The settings could not be read.";
  start(disk_);
  EXPECT_EQ(window_->Pages()->currentIndex(), 0);
  EXPECT_LT(QApplication::font().pointSizeF(), large);
  testing::Answers answers({"OK"});
  window_->StartNew();
  EXPECT_EQ(answers.titles, QStringList("SETTINGS"));
  EXPECT_FALSE(window_->ButtonOf(kSaveAndSendButton)->isEnabled());
}

// The badges and the tree against the project, on one that has something of everything.
TEST_F(Jobs, ShowWhatAProjectHas) {
  open();
  window_->StartNew();
  EXPECT_EQ(window_->Tree()->topLevelItemCount(), 1);
  for (const int button : {kTK40MButton, kCanButton}) {
    EXPECT_TRUE(window_->ButtonOf(button)->toolTip().endsWith(" first."));
  }
  EXPECT_FALSE(window_->ButtonOf(kVoltageButton)->toolTip().contains(" first."));
  MakeCatalogProject(*store_);
  store_->CalcFields.CalcFieldCount = 1;
  store_->CalcFields.Field[1].CalcField[1] = "Sum";
  store_->CalcFields.Field[1].CalcField[2] = "a+b";
  store_->VoltBlock[1].Alias[2].AliasName = "Pressure";
  store_->Flags[3].FlagInclude = store_->Ports.Slot[0].Ports[2].Include = kTrue;
  store_->ExciteOut.Slot[0][1].Include = kTrue;
  window_->Session().ForgetEdits();
  leaveScreen();
  std::string badges;
  for (const desktop::ButtonFace& face : desktop::ButtonFaces()) {
    const auto* button = dynamic_cast<desktop::MainButton*>(window_->ButtonOf(face.button));
    badges += std::to_string(button->Counted());
    if (button->Counted() > 0) {
      EXPECT_TRUE(button->accessibleName().contains(QString::number(button->Counted())));
    }
  }
  EXPECT_EQ(badges, "001111121111100");
  // The first item of each kind opens its screen.
  std::string opened;
  const testing::EachTurn looker([&] {
    desktop::ScreenWindow* screen = window_->OpenScreen();
    if (screen == nullptr || window_->IsGuiding()) return;
    const Control* control = screen->Shown().Focused();
    if (opened.empty()) opened = screen->Shown().Name() + (control ? " " + control->Name() : "");
    screen->reject();
  });
  QString tree;
  std::string ways;
  for (QTreeWidgetItemIterator at(window_->Tree()); *at != nullptr; ++at) {
    const QTreeWidgetItem* parent = (*at)->parent();
    if (parent == nullptr || (parent->parent() == nullptr && parent->child(0) == *at)) {
      opened.clear();
      emit window_->Tree()->itemDoubleClicked(*at, 0);
      ways += opened + "\n";
    }
    for (const QTreeWidgetItem* up = (*at)->parent(); up != nullptr; up = up->parent()) tree += ' ';
    tree += (*at)->text(0) + '\n';
  }
  EXPECT_EQ(
      ways,
      "frmConfig CanBusQty\nfrmExecute ExecutionTime\n"
      "frmTempBlock BlockCount\nfrmTempSetup Reps\nfrmVoltBlock BlockCount\nfrmVoltSetup Reps\n"
      "frmBrdgBlock BlockCount\nfrmBrdgSetup Style\nfrmPulseBlock BlockCount\nfrmPulseSetup Reps\n"
      "frmTK40MBlock BlockCount\nfrmTK40MSetup Reps\nfrmOutInt Table\nfrmOutInt Table\n"
      "frmFlags FlagInclude1\nfrmFlags FlagInclude3\nfrmPorts ByteMode\nfrmPorts ViewCode1\n"
      "frmExcite ExcitePublic\nfrmExcite Include1\nfrmCalculated Formulas\n"
      "frmCalculated Formulas\nfrmCanBus CanBusEnabled\nfrmCanBus CanBusEnabled\n");
  EXPECT_EQ(tree.toStdString(),
            "Logger VK7300\n Scan interval 10 mSec\n Multiplexers TK40M: 1\n CAN modules: 1\n"
            "Thermocouples\n Block 1: 2 sensors\n  TBlk1(1)\n  TBlk1(2)\n"
            "Voltages\n Block 1: 2 sensors\n  VBlk1(1)\n  Pressure\n"
            "Bridges\n Block 1: 2 sensors\n  BBlk1(1)\n  BBlk1(2)\n Block 2: 0 sensors\n"
            "Pulse inputs\n Block 1: 2 sensors\n  PBlk1(1)\n  PBlk1(2)\n"
            "Multiplexers\n Block 1: 2 sensors\n  ABlk1(1)\n  ABlk1(2)\n"
            "Output tables\n Table1: 10 mSec, 0 bytes\n"
            "Flags\n Flag 3\nPorts\n Port 2\nAnalog outputs\n CAO1\n"
            "Calculated fields\n Sum = a+b\nCAN items\n Item 1\n");
}

TEST_F(Jobs, GoFromTheTreeToASensorAndOpenAFileThatIsDropped) {
  open();
  const std::string& alias = store_->VoltBlock[1].Alias[2].AliasName;
  const auto found = window_->Tree()->findItems(QString::fromStdString(alias),
                                                Qt::MatchRecursive | Qt::MatchExactly);
  ASSERT_EQ(found.size(), 1);
  std::string focused;
  const testing::EachTurn watcher([&] {
    desktop::ScreenWindow* screen = window_->OpenScreen();
    if (screen == nullptr || window_->IsGuiding()) return;
    const Control* control = screen->Shown().Focused();
    if (focused.empty() && control != nullptr) focused = screen->Shown().Name() + control->Name();
    screen->reject();
  });
  window_->Tree()->setFocus();
  window_->Tree()->setCurrentItem(found.front());
  QTest::keyClick(window_->Tree(), Qt::Key_Return);
  EXPECT_EQ(focused, "frmFldNameAliasName2");
  EXPECT_TRUE(window_->Tree()->hasFocus());

  window_->StartNew();
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QString::fromStdString(project_))});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&*window_, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&*window_, &drop);
  QCoreApplication::processEvents();
  EXPECT_EQ(window_->windowTitle(), "house[*] - Ostrand");
}

// On the desktop of a small laptop.
TEST_F(Jobs, CutNoTextOfTheMainRow) {
  for (const char* size : {"100", "200"}) {
    SCOPED_TRACE(size);
    settings_.sections["ostrand-desktop\\Window"]["TextSize"] = size;
    window_.reset();
    open();
    for (const desktop::ButtonFace& face : desktop::ButtonFaces()) {
      const QPushButton* button = window_->ButtonOf(face.button);
      EXPECT_GE(button->width(), button->sizeHint().width()) << face.caption;
      EXPECT_GE(button->height(), button->sizeHint().height()) << face.caption;
    }
    const auto* help = window_->statusBar()->findChild<QLabel*>();
    EXPECT_GE(help->height(), QFontMetrics(QApplication::font()).height());
    const QPushButton* last = window_->ButtonOf(kSaveButton);
    if (std::string_view(size) != "100") continue;
    EXPECT_LE(last->mapTo(&*window_, last->rect().bottomLeft()).y(),
              window_->Tree()->mapTo(&*window_, QPoint()).y())
        << "all buttons are seen without scrolling";
  }
}

TEST_F(Jobs, ShowTheGuideAndLeaveByEscape) {
  open();
  QTest::keyClick(&*window_, Qt::Key_F1);
  const auto* guide = window_->findChild<desktop::HelpWindow*>();
  ASSERT_NE(guide, nullptr);
  EXPECT_TRUE(guide->Browser()->toPlainText().contains("VK7300"));
  int pictures = 0;
  for (const QTextFormat& format : guide->Browser()->document()->allFormats()) {
    if (!format.isImageFormat()) continue;
    ++pictures;
    EXPECT_FALSE(QImage(":/help/" + format.toImageFormat().name()).isNull());
    EXPECT_LE(format.toImageFormat().width(), guide->Browser()->viewport()->width());
  }
  EXPECT_GE(pictures, 7) << "a page each, and a screen";
  QTest::keyClick(&*window_, Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

// ---- Colours ------------------------------------------------------------------------------------

TEST(Contrasts, AreEnoughToRead) {
  EXPECT_NEAR(desktop::Contrast(Qt::black, Qt::white), 21, 0.01);
  EXPECT_EQ(desktop::Readable(Qt::black, Qt::white), QColor(Qt::black));
  for (int text = 0; text < 4096; text += 31) {
    for (int back = 0; back < 4096; back += 61) {
      const QColor background((back >> 8) * 17, (back >> 4 & 15) * 17, (back & 15) * 17);
      const QColor color((text >> 8) * 17, (text >> 4 & 15) * 17, (text & 15) * 17);
      ASSERT_GE(desktop::Contrast(desktop::Readable(color, background), background),
                desktop::kMinContrast);
    }
  }
}

TEST_F(Jobs, FollowADarkDesktop) {
  open();
  const QPalette usual = QApplication::palette();
  QApplication::setPalette(QPalette(QColor(40, 40, 40)));
  QCoreApplication::processEvents();
  const QTextEdit* summary = window_->findChild<desktop::SummaryPage*>();
  const QColor back = summary->palette().color(QPalette::Base);
  EXPECT_LT(back.lightness(), 100);
  QTextCursor cursor(summary->document());
  do {
    EXPECT_GE(desktop::Contrast(cursor.charFormat().foreground().color(), back),
              desktop::kMinContrast);
  } while (cursor.movePosition(QTextCursor::NextBlock));
  QApplication::setPalette(usual);
}

}  // namespace
}  // namespace ostrand
